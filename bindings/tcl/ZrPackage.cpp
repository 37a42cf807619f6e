// The zrboard package: what `package require zrboard` runs in a tclsh.
#include <string>

#include "HBOBoard.h"
#include "HBOPropertySetup.h"
#include "ZrCommands.h"
#include "ZrHandles.h"
#include "ZrSession.h"
#include "native_cache_base.h"

namespace zrtcl {

namespace {

// Past this point Tcl is going away: the caches must not touch its objects,
// and the boards read by script go with it.
void onTclExit(ClientData) {
    zrc::tcltasks::native_cache_base::set_tcl_exiting(true);
    zrbind::dropReadBoards();
}

int readBoardFile(ClientData, Tcl_Interp* interp, int objc, Tcl_Obj* const objv[]) {
    const char* usage = "read_board_file PATH";
    if (objc != 2)
        return usageError(interp, usage, "wrong number of arguments");
    std::string error;
    HBOBoard* board = zrbind::readBoardFile(Tcl_GetString(objv[1]), error);
    if (!board)
        return usageError(interp, usage, error);
    Tcl_SetObjResult(interp, handleOf(board));
    return TCL_OK;
}

}  // namespace

void createBoardFileCommands(Tcl_Interp* interp) {
    Tcl_CreateObjCommand(interp, "read_board_file", readBoardFile, nullptr, nullptr);
}

}  // namespace zrtcl

extern "C" __attribute__((visibility("default"))) int Zrboard_Init(Tcl_Interp* interp) {
    static bool registered = false;
    if (!registered) {
        HBOPropertySetup::registerAll();
        Tcl_CreateExitHandler(zrtcl::onTclExit, nullptr);
        registered = true;
    }
    zrtcl::createPropertyCommands(interp);
    zrtcl::createWalkCommands(interp);
    zrtcl::createBoardFileCommands(interp);
    zrtcl::createSessionCommands(interp);
    return Tcl_PkgProvide(interp, "zrboard", ZR_PACKAGE_VERSION);
}
