// get_property, list_property, report_property, set_property, undo and redo.
#include "HCPProperty.h"
#include "HTCErrors.h"
#include "ZrCommands.h"
#include "ZrHandles.h"
#include "ZrSession.h"

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
    const std::string text = zrbind::propertyReport(ref.any());
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
