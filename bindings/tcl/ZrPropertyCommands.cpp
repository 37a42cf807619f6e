// get_property, list_property, report_property, set_property, undo and redo.
#include <algorithm>

#include "HCPProperty.h"
#include "HTCErrors.h"
#include "ZrCommands.h"
#include "ZrHandles.h"

namespace zrtcl {

int usageError(Tcl_Interp* interp, const char* usage, const std::string& reason) {
    std::string text = reason + "\nusage: " + usage;
    Tcl_SetObjResult(interp, Tcl_NewStringObj(text.data(), static_cast<int>(text.size())));
    return TCL_ERROR;
}

namespace {

const char* const kGetUsage = "get_property NAME OBJECT";
const char* const kListUsage = "list_property OBJECT";
const char* const kReportUsage = "report_property OBJECT";
const char* const kSetUsage = "set_property NAME VALUE OBJECTS";

// Exactly one object from value.
bool single(Tcl_Interp* interp, Tcl_Obj* value, const char* usage, Ref& out) {
    std::vector<Ref> refs;
    if (!resolve(interp, value, refs)) {
        usageError(interp, usage, Tcl_GetStringResult(interp));
        return false;
    }
    if (refs.size() != 1) {
        usageError(interp, usage, "expected one object, got " + std::to_string(refs.size()));
        return false;
    }
    out = refs[0];
    return true;
}

int getProperty(ClientData, Tcl_Interp* interp, int objc, Tcl_Obj* const objv[]) {
    if (objc != 3)
        return usageError(interp, kGetUsage, "wrong number of arguments");
    Ref ref;
    if (!single(interp, objv[2], kGetUsage, ref))
        return TCL_ERROR;
    std::string name = Tcl_GetString(objv[1]);
    Tcl_ResetResult(interp);
    HATAttrAny value;
    try {
        if (!HCPProperty::getProperty(interp, ref.any(), name, value))
            return usageError(interp, kGetUsage,
                              "no property '" + name + "' on " + ref.kind() + " '" + nameOf(ref) + "'");
    } catch (const std::exception& e) {
        return usageError(interp, kGetUsage, e.what());
    }
    return TCL_OK;
}

int listProperty(ClientData, Tcl_Interp* interp, int objc, Tcl_Obj* const objv[]) {
    if (objc != 2)
        return usageError(interp, kListUsage, "wrong number of arguments");
    Ref ref;
    if (!single(interp, objv[1], kListUsage, ref))
        return TCL_ERROR;
    Tcl_Obj* names = Tcl_NewListObj(0, nullptr);
    for (const HCPProperty::ListedProperty& p : HCPProperty::listProperties(ref.any()))
        Tcl_ListObjAppendElement(nullptr, names, Tcl_NewStringObj(p.name.data(), static_cast<int>(p.name.size())));
    Tcl_SetObjResult(interp, names);
    return TCL_OK;
}

// One line per property: name, type, read-only, value, in columns.
int reportProperty(ClientData, Tcl_Interp* interp, int objc, Tcl_Obj* const objv[]) {
    if (objc != 2)
        return usageError(interp, kReportUsage, "wrong number of arguments");
    Ref ref;
    if (!single(interp, objv[1], kReportUsage, ref))
        return TCL_ERROR;
    struct Row {
        std::string name, type, readOnly, value;
    };
    std::vector<Row> rows{{"Property", "Type", "Read-only", "Value"}};
    for (const HCPProperty::ListedProperty& p : HCPProperty::listProperties(ref.any())) {
        std::string value;
        if (p.dynamic) {
            value = p.value.getCharStringVal();
        } else {
            HATAttrAny any;
            // Read without an interpreter, the report being the result, and
            // without advisory warnings: nobody asked for those properties by name.
            if (HCPProperty::getProperty(nullptr, ref.any(), p.name, any, false))
                value = any.toString();
        }
        rows.push_back({p.name, HATAttrTypes::typeName(p.spec.getAttrType()), p.spec.isReadOnly() ? "true" : "false",
                        value});
    }
    std::size_t w0 = 0, w1 = 0, w2 = 0;
    for (const Row& r : rows) {
        w0 = std::max(w0, r.name.size());
        w1 = std::max(w1, r.type.size());
        w2 = std::max(w2, r.readOnly.size());
    }
    auto pad = [](const std::string& s, std::size_t width) { return s + std::string(width - s.size() + 2, ' '); };
    std::string text;
    for (const Row& r : rows) {
        std::string line = pad(r.name, w0) + pad(r.type, w1) + pad(r.readOnly, w2) + r.value;
        line.erase(line.find_last_not_of(' ') + 1);
        text += (text.empty() ? "" : "\n") + line;
    }
    Tcl_SetObjResult(interp, Tcl_NewStringObj(text.data(), static_cast<int>(text.size())));
    return TCL_OK;
}

int setProperty(ClientData, Tcl_Interp* interp, int objc, Tcl_Obj* const objv[]) {
    if (objc != 4)
        return usageError(interp, kSetUsage, "wrong number of arguments");
    std::vector<Ref> refs;
    if (!resolve(interp, objv[3], refs))
        return usageError(interp, kSetUsage, Tcl_GetStringResult(interp));
    HCPProperty::Setter::Objects objects;
    for (const Ref& r : refs)
        objects.append(r.any());
    try {
        if (HCPProperty::setProperty(interp, objects, Tcl_GetString(objv[1]), HATAttr(Tcl_GetString(objv[2]))) != 0)
            return usageError(interp, kSetUsage, "the property could not be set");
    } catch (const std::exception& e) {
        return usageError(interp, kSetUsage, e.what());
    }
    Tcl_ResetResult(interp);
    return TCL_OK;
}

int undoOrRedo(ClientData redo, Tcl_Interp* interp, int objc, Tcl_Obj* const[]) {
    const char* usage = redo ? "redo" : "undo";
    if (objc != 1)
        return usageError(interp, usage, "wrong number of arguments");
    if (!(redo ? HCPProperty::redo() : HCPProperty::undo()))
        return usageError(interp, usage, redo ? "nothing to redo" : "nothing to undo");
    Tcl_ResetResult(interp);
    return TCL_OK;
}

}  // namespace

void createPropertyCommands(Tcl_Interp* interp) {
    Tcl_CreateObjCommand(interp, "get_property", getProperty, nullptr, nullptr);
    Tcl_CreateObjCommand(interp, "list_property", listProperty, nullptr, nullptr);
    Tcl_CreateObjCommand(interp, "report_property", reportProperty, nullptr, nullptr);
    Tcl_CreateObjCommand(interp, "set_property", setProperty, nullptr, nullptr);
    Tcl_CreateObjCommand(interp, "undo", undoOrRedo, nullptr, nullptr);
    Tcl_CreateObjCommand(interp, "redo", undoOrRedo, reinterpret_cast<ClientData>(1), nullptr);
}

}  // namespace zrtcl
