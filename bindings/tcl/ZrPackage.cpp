// The zrboard package: what `package require zrboard` runs in a tclsh.
#include <filesystem>
#include <map>
#include <string>
#include <system_error>

#include "HBOBoard.h"
#include "HBOPropertySetup.h"
#include "HBOParser.h"
#include "ZrCommands.h"
#include "ZrHandles.h"
#include "native_cache_base.h"

namespace zrtcl {

namespace {

// Boards read by read_board_file, by the path as given made absolute. A
// board file outside every repository is read this way; reading the same
// file again replaces the earlier board, so that a script can edit a file
// and look again without piling up boards.
std::map<std::string, HBOBoard*>& ownBoards() {
    static std::map<std::string, HBOBoard*> boards;
    return boards;
}

// Past this point Tcl is going away: the caches must not touch its objects,
// and the boards read by script go with it.
void onTclExit(ClientData) {
    zrc::tcltasks::native_cache_base::set_tcl_exiting(true);
    for (auto& entry : ownBoards())
        delete entry.second;
    ownBoards().clear();
}

int readBoardFile(ClientData, Tcl_Interp* interp, int objc, Tcl_Obj* const objv[]) {
    const char* usage = "read_board_file PATH";
    if (objc != 2)
        return usageError(interp, usage, "wrong number of arguments");
    const std::string path = Tcl_GetString(objv[1]);
    std::error_code ec;
    const std::filesystem::path absolute = std::filesystem::absolute(path, ec);
    const std::string key = ec ? path : absolute.lexically_normal().string();
    HBOBoard* board = new HBOBoard;
    HBOParser parser;
    if (!parser.parseFile(path, board)) {
        delete board;
        return usageError(interp, usage, "could not read the board file '" + path + "'; see the messages above");
    }
    HBOBoard*& kept = ownBoards()[key];
    delete kept;
    kept = board;
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
