// The catalogue, the project session and the parameters: get_boards,
// current_board, refresh_boards, set_board_repo_paths, set_param, get_param.
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "HBOBoard.h"
#include "HBOBoardCDataManager.h"
#include "HBOBoardCReposMgr.h"
#include "HBOBoardComponent.h"
#include "HBOBusIf.h"
#include "HBOComponentMode.h"
#include "HBOModelPort.h"
#include "HBOPartCReposMgr.h"
#include "HBOPinProps.h"
#include "HEXAll.h"
#include "HPAParamMgr.h"
#include "HUTGuiEventBroker.h"
#include "ZrCommands.h"
#include "ZrHandles.h"

namespace zrtcl {

namespace {

const char* const kGetBoardsUsage = "get_boards ?-latest? ?-of_objects OBJECTS? ?PATTERN?";
const char* const kCurrentUsage = "current_board ?NAME?";
const char* const kRefreshUsage = "refresh_boards";
const char* const kRepoUsage = "set_board_repo_paths PATHS";
const char* const kSetParamUsage = "set_param NAME VALUE";
const char* const kGetParamUsage = "get_param NAME";
const char* const kRepoParam = "board.repoPaths";

// The project session of one interpreter. A catalogue refresh deletes user
// boards, so the chosen board is let go before it and chosen again by name
// after it; the re-choice waits for the next command, because the refresh
// may run inside the session's own catalogue.
struct Session {
    HBOBoardCDataManager* manager = nullptr;
    std::string rebindName;
    bool stale = false;
    std::vector<std::unique_ptr<HUTGuiEventConnectionHandle>> listeners;

    Session() {
        auto letGo = [this](const HUTGuiEvent::GuiEventBase&) {
            if (!manager || stale)
                return;
            HBOBoard* b = manager->getBoardStrategy();
            rebindName = b ? b->getName() : std::string();
            manager->unsetBoardStrategy();
            stale = true;
        };
        listeners.emplace_back(HUTGuiEventBroker::addListener(HUTGuiEvent::kCatalogModifyPre, letGo));
    }
    ~Session() {
        for (auto& l : listeners)
            l->disconnect();
        delete manager;
    }

    HBOBoardCDataManager& get();
};

HBOBoardCReposMgr& catalogue() {
    // The package holds one reference for the life of the process; later
    // calls only look it up.
    static HBOBoardCReposMgr* held = HBOBoardCReposMgr::getGlobal();
    return *held;
}

// Refreshes the catalogue at once when the user's repositories changed, so
// that handles of dropped boards go now, not at some later look-up.
void syncCatalogue() {
    std::vector<HBOBoard*> ignored;
    catalogue().getAllBoards(ignored);
}

HBOBoardCDataManager& Session::get() {
    if (!manager)
        manager = new HBOBoardCDataManager;
    // A refresh still due would otherwise come in the middle of the
    // re-choice below and take the name it needs.
    syncCatalogue();
    if (stale) {
        stale = false;
        manager->getBoardPartReposMgr()->refreshBoardParts();
        if (!rebindName.empty())
            manager->setBoard(rebindName, "", true, false);
        rebindName.clear();
    }
    return *manager;
}

void deleteSession(ClientData data, Tcl_Interp*) { delete static_cast<Session*>(data); }

Session& sessionOf(ClientData data) { return *static_cast<Session*>(data); }

HBOBoard* boardOf(const Ref& r) {
    if (HBOBoardComponent* c = r.as<HBOBoardComponent>())
        return c->getBoard();
    HBOBoardComponent* owner = nullptr;
    HBOBusIf* busIf = r.as<HBOBusIf>();
    if (HBOModelPort* p = r.as<HBOModelPort>())
        busIf = p->getOwner();
    if (busIf)
        owner = busIf->getOwnerComponent();
    else if (HBOPinProps* p = r.as<HBOPinProps>())
        owner = p->getOwner();
    else if (HBOComponentMode* m = r.as<HBOComponentMode>())
        owner = m->getOwnerComponent();
    else
        return nullptr;
    return owner ? owner->getBoard() : nullptr;
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
    std::vector<HBOBoard*> boards;
    if (of) {
        std::vector<Ref> from;
        if (!resolve(interp, of, from))
            return usageError(interp, kGetBoardsUsage, Tcl_GetStringResult(interp));
        for (const Ref& r : from) {
            HBOBoard* b = boardOf(r);
            if (!b)
                return usageError(interp, kGetBoardsUsage,
                                  std::string("-of_objects takes components, interfaces, ports, pins or modes, not the ") +
                                      r.kind() + " '" + nameOf(r) + "'");
            boards.push_back(b);
        }
    } else if (latest) {
        catalogue().getAllLatestBoards(boards);
    } else {
        catalogue().getAllBoards(boards);
    }
    std::vector<Ref> result;
    std::set<const HBOBoard*> seen;
    for (HBOBoard* b : boards) {
        if (!b || !seen.insert(b).second)
            continue;
        if (pattern && !Tcl_StringCaseMatch(b->getName().c_str(), pattern, TCL_MATCH_NOCASE))
            continue;
        result.push_back(refOf(b));
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
    catalogue().refreshBoards();
    Tcl_ResetResult(interp);
    return TCL_OK;
}

// Setting a parameter: unknown names and values the parameter can't take
// are errors; the user's repositories take effect at once.
int setParamValue(Tcl_Interp* interp, const char* usage, const std::string& name, const std::string& value) {
    HPAParamMgr* params = HPAParamMgr::getParamMgr();
    if (!params->paramExists(name))
        return usageError(interp, usage, "unknown parameter '" + name + "'");
    if (!params->setValue(name, value)) {
        const HPAParam* p = params->findParam(name);
        return usageError(interp, usage,
                          "parameter '" + name + "' takes a " + (p ? p->getKindName() : "different") +
                              " value, not '" + value + "'");
    }
    if (name == kRepoParam)
        syncCatalogue();
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
    HPAParamMgr* params = HPAParamMgr::getParamMgr();
    if (!params->paramExists(name))
        return usageError(interp, kGetParamUsage, "unknown parameter '" + name + "'");
    std::string value = params->getValueAsString(name);
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
