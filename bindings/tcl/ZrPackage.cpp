// The zrboard package: what `package require zrboard` runs in a tclsh.
#include <algorithm>
#include <vector>

#include "HBOBoard.h"
#include "HBOPropertySetup.h"
#include "HBOParser.h"
#include "ZrCommands.h"
#include "ZrHandles.h"
#include "native_cache_base.h"

namespace zrtcl {

namespace {

// Boards read from files by script, until the catalogue commands take over.
std::vector<HBOBoard*>& ownBoards() {
    static std::vector<HBOBoard*> boards;
    return boards;
}

// Past this point Tcl is going away: the caches must not touch its objects,
// and the boards read by script go with it.
void onTclExit(ClientData) {
    zrc::tcltasks::native_cache_base::set_tcl_exiting(true);
    for (HBOBoard* board : ownBoards())
        delete board;
    ownBoards().clear();
}

int readBoardFile(ClientData, Tcl_Interp* interp, int objc, Tcl_Obj* const objv[]) {
    const char* usage = "read_board_file PATH";
    if (objc != 2)
        return usageError(interp, usage, "wrong number of arguments");
    HBOBoard* board = new HBOBoard;
    HBOParser parser;
    if (!parser.parseFile(Tcl_GetString(objv[1]), board)) {
        delete board;
        return usageError(interp, usage, std::string("could not read the board file '") + Tcl_GetString(objv[1]) +
                                             "'; see the messages above");
    }
    ownBoards().push_back(board);
    Tcl_SetObjResult(interp, handleOf(board));
    return TCL_OK;
}

int deleteBoard(ClientData, Tcl_Interp* interp, int objc, Tcl_Obj* const objv[]) {
    const char* usage = "delete_board BOARD";
    if (objc != 2)
        return usageError(interp, usage, "wrong number of arguments");
    std::vector<Ref> refs;
    if (!resolve(interp, objv[1], refs))
        return usageError(interp, usage, Tcl_GetStringResult(interp));
    for (const Ref& r : refs) {
        HBOBoard* board = r.as<HBOBoard>();
        auto it = std::find(ownBoards().begin(), ownBoards().end(), board);
        if (it == ownBoards().end())
            return usageError(interp, usage, "'" + nameOf(r) + "' is not a board read by read_board_file");
        ownBoards().erase(it);
        delete board;
    }
    Tcl_ResetResult(interp);
    return TCL_OK;
}


}  // namespace

void createBoardFileCommands(Tcl_Interp* interp) {
    Tcl_CreateObjCommand(interp, "read_board_file", readBoardFile, nullptr, nullptr);
    Tcl_CreateObjCommand(interp, "delete_board", deleteBoard, nullptr, nullptr);
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
    return Tcl_PkgProvide(interp, "zrboard", ZR_PACKAGE_VERSION);
}
