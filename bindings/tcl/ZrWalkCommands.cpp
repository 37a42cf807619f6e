// The walks down a board: each takes -of_objects and an optional name pattern
// (glob, any case) and gives the objects found, each once, in model order.
#include <functional>
#include <string>
#include <vector>

#include "ZrCommands.h"
#include "ZrHandles.h"
#include "ZrWalkSteps.h"

namespace zrtcl {

namespace {

using zrbind::Walk;
using zrbind::walkResult;
using zrbind::walks;

int walk(ClientData data, Tcl_Interp* interp, int objc, Tcl_Obj* const objv[]) {
    const Walk& w = *static_cast<const Walk*>(data);
    const std::string usageText = std::string(w.name) + " -of_objects OBJECTS ?PATTERN?";
    const char* usage = usageText.c_str();
    Tcl_Obj* of = nullptr;
    const char* pattern = nullptr;
    for (int i = 1; i < objc; ++i) {
        std::string arg = Tcl_GetString(objv[i]);
        if (arg == "-of_objects") {
            if (++i == objc)
                return usageError(interp, usage, "-of_objects needs a value");
            of = objv[i];
        } else if (!arg.empty() && arg[0] == '-') {
            return usageError(interp, usage, "unknown option '" + arg + "'");
        } else if (pattern) {
            return usageError(interp, usage, "only one pattern may be given");
        } else {
            pattern = Tcl_GetString(objv[i]);
        }
    }
    if (!of)
        return usageError(interp, usage, "-of_objects is required");
    std::vector<Ref> from, found;
    if (!resolve(interp, of, from))
        return usageError(interp, usage, Tcl_GetStringResult(interp));
    for (const Ref& r : from)
        if (!w.step(r, found))
            return usageError(interp, usage,
                              std::string("-of_objects takes ") + w.sources + ", not the " + r.kind() + " '" +
                                  nameOf(r) + "'");
    std::function<bool(const std::string&)> keep;
    if (pattern)
        keep = [pattern](const std::string& name) { return Tcl_StringCaseMatch(name.c_str(), pattern, TCL_MATCH_NOCASE) != 0; };
    Tcl_SetObjResult(interp, handleList(walkResult(found, keep)));
    return TCL_OK;
}

}  // namespace

void createWalkCommands(Tcl_Interp* interp) {
    for (const Walk& w : walks())
        Tcl_CreateObjCommand(interp, w.name, walk, const_cast<Walk*>(&w), nullptr);
}

}  // namespace zrtcl
