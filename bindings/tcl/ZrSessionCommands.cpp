// The catalogue, the project session and the parameters: get_boards,
// current_board, refresh_boards, set_board_repo_paths, set_param, get_param.
#include <functional>
#include <string>
#include <vector>

#include "HBOBoard.h"
#include "HBOBoardCDataManager.h"
#include "HBOBoardCReposMgr.h"
#include "HEXAll.h"
#include "ZrCommands.h"
#include "ZrHandles.h"
#include "ZrSession.h"

namespace zrtcl {

namespace {

using zrbind::Session;
using zrbind::boardsOfObjects;
using zrbind::catalogueBoards;
using zrbind::kRepoParam;

const char* const kGetBoardsUsage = "get_boards ?-latest? ?-of_objects OBJECTS? ?PATTERN?";
const char* const kCurrentUsage = "current_board ?NAME?";
const char* const kRefreshUsage = "refresh_boards";
const char* const kRepoUsage = "set_board_repo_paths PATHS";
const char* const kSetParamUsage = "set_param NAME VALUE";
const char* const kGetParamUsage = "get_param NAME";
void deleteSession(ClientData data, Tcl_Interp*) { delete static_cast<Session*>(data); }

Session& sessionOf(ClientData data) { return *static_cast<Session*>(data); }

std::function<bool(const std::string&)> matcher(const char* pattern) {
    if (!pattern)
        return nullptr;
    return [pattern](const std::string& name) {
        return Tcl_StringCaseMatch(name.c_str(), pattern, TCL_MATCH_NOCASE) != 0;
    };
}

int getBoards(ClientData, Tcl_Interp* interp, int objc, Tcl_Obj* const objv[]) {
    bool latest = false;
    Tcl_Obj* of = nullptr;
    const char* pattern = nullptr;
    for (int i = 1; i < objc; ++i) {
        std::string arg = Tcl_GetString(objv[i]);
        if (arg == "-latest") {
            latest = true;
        } else if (arg == "-of_objects") {
            if (++i == objc)
                return usageError(interp, kGetBoardsUsage, "-of_objects needs a value");
            of = objv[i];
        } else if (!arg.empty() && arg[0] == '-') {
            return usageError(interp, kGetBoardsUsage, "unknown option '" + arg + "'");
        } else if (pattern) {
            return usageError(interp, kGetBoardsUsage, "only one pattern may be given");
        } else {
            pattern = Tcl_GetString(objv[i]);
        }
    }
    if (of && latest)
        return usageError(interp, kGetBoardsUsage, "-latest and -of_objects can't be given together");
    std::vector<Ref> result;
    if (of) {
        std::vector<Ref> from;
        if (!resolve(interp, of, from))
            return usageError(interp, kGetBoardsUsage, Tcl_GetStringResult(interp));
        std::string error = boardsOfObjects(from, matcher(pattern), result);
        if (!error.empty())
            return usageError(interp, kGetBoardsUsage, "-" + error);
    } else {
        result = catalogueBoards(latest, matcher(pattern));
    }
    Tcl_SetObjResult(interp, handleList(result));
    return TCL_OK;
}

int currentBoard(ClientData data, Tcl_Interp* interp, int objc, Tcl_Obj* const objv[]) {
    if (objc > 2)
        return usageError(interp, kCurrentUsage, "wrong number of arguments");
    HBOBoardCDataManager& session = sessionOf(data).get();
    if (objc == 2) {
        // A board handle names its board; any other text is a board name.
        std::string name = Tcl_GetString(objv[1]);
        std::vector<Ref> refs;
        if (!name.empty() && resolve(interp, objv[1], refs) && refs.size() == 1 && refs[0].as<HBOBoard>())
            name = refs[0].as<HBOBoard>()->getName();
        Tcl_ResetResult(interp);
        try {
            session.setBoard(name, "", false, true);
        } catch (const HEXAll& e) {
            return usageError(interp, kCurrentUsage, e.what());
        }
    }
    HBOBoard* board = session.getBoardStrategy();
    Tcl_SetObjResult(interp, board ? handleOf(board) : Tcl_NewObj());
    return TCL_OK;
}

int refreshBoards(ClientData, Tcl_Interp* interp, int objc, Tcl_Obj* const[]) {
    if (objc != 1)
        return usageError(interp, kRefreshUsage, "wrong number of arguments");
    zrbind::catalogue().refreshBoards();
    Tcl_ResetResult(interp);
    return TCL_OK;
}

int setParamValue(Tcl_Interp* interp, const char* usage, const std::string& name, const std::string& value) {
    std::string error = zrbind::setParam(name, value);
    if (!error.empty())
        return usageError(interp, usage, error);
    Tcl_ResetResult(interp);
    return TCL_OK;
}

int setBoardRepoPaths(ClientData, Tcl_Interp* interp, int objc, Tcl_Obj* const objv[]) {
    if (objc != 2)
        return usageError(interp, kRepoUsage, "wrong number of arguments");
    int n = 0;
    Tcl_Obj** items = nullptr;
    if (Tcl_ListObjGetElements(nullptr, objv[1], &n, &items) != TCL_OK)
        return usageError(interp, kRepoUsage,
                          std::string("PATHS must be a list, not '") + Tcl_GetString(objv[1]) + "'");
    return setParamValue(interp, kRepoUsage, kRepoParam, Tcl_GetString(objv[1]));
}

int setParam(ClientData, Tcl_Interp* interp, int objc, Tcl_Obj* const objv[]) {
    if (objc != 3)
        return usageError(interp, kSetParamUsage, "wrong number of arguments");
    return setParamValue(interp, kSetParamUsage, Tcl_GetString(objv[1]), Tcl_GetString(objv[2]));
}

int getParam(ClientData, Tcl_Interp* interp, int objc, Tcl_Obj* const objv[]) {
    if (objc != 2)
        return usageError(interp, kGetParamUsage, "wrong number of arguments");
    std::string name = Tcl_GetString(objv[1]);
    std::string value;
    if (!zrbind::getParam(name, value))
        return usageError(interp, kGetParamUsage, "unknown parameter '" + name + "'");
    Tcl_SetObjResult(interp, Tcl_NewStringObj(value.data(), static_cast<int>(value.size())));
    return TCL_OK;
}

}  // namespace

void createSessionCommands(Tcl_Interp* interp) {
    Session* session = new Session;
    Tcl_SetAssocData(interp, "zrboard::session", deleteSession, session);
    Tcl_CreateObjCommand(interp, "get_boards", getBoards, nullptr, nullptr);
    Tcl_CreateObjCommand(interp, "current_board", currentBoard, session, nullptr);
    Tcl_CreateObjCommand(interp, "refresh_boards", refreshBoards, nullptr, nullptr);
    Tcl_CreateObjCommand(interp, "set_board_repo_paths", setBoardRepoPaths, nullptr, nullptr);
    Tcl_CreateObjCommand(interp, "set_param", setParam, nullptr, nullptr);
    Tcl_CreateObjCommand(interp, "get_param", getParam, nullptr, nullptr);
}

}  // namespace zrtcl
