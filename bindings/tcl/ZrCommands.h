// The commands of the zrboard package.
#ifndef ZR_TCL_ZRCOMMANDS_H
#define ZR_TCL_ZRCOMMANDS_H

#include <string>

#include <tcl.h>

namespace zrtcl {
void createPropertyCommands(Tcl_Interp* interp);
void createWalkCommands(Tcl_Interp* interp);
void createBoardFileCommands(Tcl_Interp* interp);
void createSessionCommands(Tcl_Interp* interp);
// An error with the command's usage line behind the reason.
int usageError(Tcl_Interp* interp, const char* usage, const std::string& reason);
}  // namespace zrtcl

#endif
