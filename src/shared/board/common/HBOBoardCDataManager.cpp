// The board of one project.
#include "HBOBoardCDataManager.h"

#include <boost/filesystem.hpp>

#include <tcl.h>

#include "ComMsgMgr.h"
#include "HBOBoard.h"
#include "HBOBoardUtils.h"
#include "HBOCase.h"
#include "HBOPartCReposMgr.h"
#include "HEXAll.h"
#include "HPAParamMgr.h"
#include "HTCTclInterp.h"
#include "HUTEnv.h"

namespace fs = boost::filesystem;

namespace {

const char* const kScope = "board";
const char* const kCreationChannel = "board.BoardCreation";

template <class... A>
HEXError error(int argc, int line, const char* format, const A&... args) {
    return HEXError(
        ComMsgMgrInstance::createInstance::eval(argc, __FILE__, line, kScope, ComMsgMgr::MSG_ERROR, format, args...));
}

void debugRepo(const std::string& text, HBOBoard* board) {
    HBOBoardUtils::DumpDebugStr("board.debugBoardRepo", text, board);
}

}  // namespace

HBOBoardCDataManager::HBOBoardCDataManager()
    : m_board(nullptr), m_tcl_loaded(false), m_repos_mgr(new HBOPartCReposMgr(false)) {}

HBOBoardCDataManager::~HBOBoardCDataManager() {
    delete m_repos_mgr;
}

HBOBoard* HBOBoardCDataManager::getBoard(std::string name, bool& via_legacy, bool try_legacy) {
    HBOBoard* board = m_repos_mgr->getInfoForBoardPart(name);
    if (board || !try_legacy)
        return board;
    board = m_repos_mgr->getInfoForBoardPart(m_repos_mgr->getBoardPartNameForBoard(name));
    if (board)
        via_legacy = true;
    return board;
}

bool HBOBoardCDataManager::setBoard(std::string name, std::string part, bool soft, bool try_legacy) {
    if (HBOCase::iequals(name, m_board ? m_board->getName() : std::string()))
        return false;
    if (name.empty()) {
        m_board = nullptr;
        return true;
    }
    bool viaLegacy = false;
    HBOBoard* board = getBoard(name, viaLegacy, try_legacy);
    if (!board) {
        std::vector<std::string> paths;
        m_repos_mgr->getUserRepositoryPaths(paths);
        const std::string joined = HBOBoardUtils::join(paths, "', '");
        if (!soft)
            throw error(2, __LINE__, "@49-71@%s%s", name, joined);
        ComMsgMgr::sendMsg::eval(2, __FILE__, __LINE__, kScope, ComMsgMgr::MSG_CRITICAL_WARNING, "@49-71@%s%s", name,
                                 joined);
        return false;
    }
    if (viaLegacy)
        ComMsgMgr::sendMsg::eval(0, __FILE__, __LINE__, kScope, ComMsgMgr::MSG_INFO, "@49-70@");
    WarnIfNotLatestBoard(board);
    setBoardStrategy(board);
    if (board->isPartNameSupportedByBoard(part) && !board->isPartUpdated())
        board->updateBoardPart(part);
    return true;
}

bool HBOBoardCDataManager::setBoard(HBOBoard* board, std::string, bool, bool) {
    if (board && !board->isConstraintsDataPopulated() && board->populateConstraintsData("") != 0)
        board = nullptr;
    m_board = board;
    return true;
}

bool HBOBoardCDataManager::setBoardStrategy(HBOBoard* board) {
    if (!board)
        return false;
    // A fresh board of the chosen name keeps the old pointer; the forced form replaces it.
    if (m_board && HBOCase::upper(m_board->getName()) == HBOCase::upper(board->getName()))
        return true;
    if (board->isConstraintsDataPopulated() || board->populateConstraintsData("") == 0) {
        m_board = board;
        return true;
    }
    m_board = nullptr;
    return false;
}

bool HBOBoardCDataManager::setBoardStrategyForced(HBOBoard* board) {
    if (!board)
        return false;
    if (!board->isConstraintsDataPopulated() && board->populateConstraintsData("") != 0)
        return false;
    m_board = board;
    return true;
}

bool HBOBoardCDataManager::unsetBoardStrategy() {
    m_board = nullptr;
    return true;
}

void HBOBoardCDataManager::getBoardPartRepoPaths(HSTVector<std::string>& out) const {
    out.clear();
    m_repos_mgr->getUserRepositoryPaths(out);
}

bool HBOBoardCDataManager::setBoardPartRepoPaths(HSTVector<std::string> paths, bool& board_changed) {
    std::vector<std::string> old;
    m_repos_mgr->getUserRepositoryPaths(old);
    if (old == static_cast<const std::vector<std::string>&>(paths))
        return false;
    if (!m_board)
        return m_repos_mgr->setUserRepositoryPaths(paths);

    // What identifies the choice has to be read now: the refresh deletes project boards.
    const std::string partName = m_board->getBaseBoardActivePartName();
    const bool wasUserDefined = m_board->isUserDefined();
    const bool wasIntegrated = m_board->isIntegratedBoard();
    std::vector<ConnectionPair> pairs;
    if (wasIntegrated)
        for (const HBOBoard::IntegratedConnection& c : m_board->getIntegratedBoardConnections())
            pairs.emplace_back(c.get<0>(), (c.get<1>() ? c.get<1>()->getName() : std::string()) + ":" + c.get<2>());

    const bool result = m_repos_mgr->setUserRepositoryPaths(paths);
    if (!result || partName.empty()) {
        // Without a name to find it again, a board the refresh may have deleted is let go.
        if (wasUserDefined || wasIntegrated) {
            m_board = nullptr;
            board_changed = true;
        }
        return result;
    }

    bool viaLegacy = false;
    if (!wasIntegrated) {
        HBOBoard* fresh = getBoard(partName, viaLegacy, true);
        if (wasUserDefined || fresh != m_board) {
            m_board = fresh;
            board_changed = true;
        }
        return result;
    }

    try {
        const std::string name =
            createUniqBoardNameForIntegratedBoard(HBOBoardUtils::getBoardNameFromBoardPart(partName), pairs);
        HBOBoard* base = getBoard(partName, viaLegacy, true);
        if (!base)
            throw error(1, __LINE__, "@49-82@%s", partName);
        HBOBoard* rebuilt = createIntegratdBoard(static_cast<const HBOBoard*>(base), pairs, name);
        m_repos_mgr->unregisterUserBoard(rebuilt->getActivePartName());
        m_repos_mgr->registerUserBoard(rebuilt);
        if (m_repos_mgr->getInfoForBoardPart(rebuilt->getName()) != rebuilt) {
            // A project board of that name came first, so nobody would own the rebuilt one.
            delete rebuilt;
            rebuilt = nullptr;
        }
        m_board = rebuilt;
    } catch (...) {
        m_board = nullptr;
    }
    board_changed = true;
    return result;
}

bool HBOBoardCDataManager::registerUserBoard(HBOBoard* board) {
    return m_repos_mgr->registerUserBoard(board);
}

bool HBOBoardCDataManager::unregisterUserBoard(const std::string& name) {
    return m_repos_mgr->unregisterUserBoard(name);
}

bool HBOBoardCDataManager::getBusIfByName(HBOBusIf*& out, const std::string& name) {
    return m_board && m_board->getBusIfByName(out, name);
}

bool HBOBoardCDataManager::getModelPortByName(HBOModelPort*& out, const std::string& name) {
    return m_board && m_board->getModelPortByName(out, name);
}

bool HBOBoardCDataManager::getModelPortSeq(std::vector<HBOModelPort*>& out) {
    return m_board && m_board->getModelPortSeq(out);
}

void HBOBoardCDataManager::WarnIfNotLatestBoard(HBOBoard* board) {
    if (!board)
        return;
    std::string userRepoPath;
    HBOBoardUtils::getUserRepoPathFromParam(userRepoPath);
    debugRepo("HBOBoardCDataManager::WarnIfNotLatestBoard, userRepoPath: " + userRepoPath, board);
    if (HBOBoardUtils::parseTclList(userRepoPath).empty())
        return;
    const std::string& boardFile = board->getBoardFile();
    debugRepo("  >> current boardFile " + boardFile + " , version " + board->getVersion(), board);
    // Boards of the download store are the installation's own newer copies.
    for (const std::string& dir : HUTEnv::getQDEDataDirList())
        if (boardFile.find(dir + HBOBoardUtils::getDirSeparator() + "zarn" + HBOBoardUtils::getDirSeparator() +
                           "boards") != std::string::npos)
            return;
    const std::string vlnv =
        board->getVendor() + ":" + board->getLibrary() + ":" + board->getBoardName() + ":" + board->getVersion();
    if (m_repos_mgr->hasCorrBoardInInstall(vlnv))
        ComMsgMgr::sendMsg::eval(1, __FILE__, __LINE__, kScope, ComMsgMgr::MSG_WARNING, "@49-151@%s", vlnv);
}

bool HBOBoardCDataManager::loadBoardTcl() {
    if (m_tcl_loaded)
        return true;
    if (!HPAParamMgr::getParamMgr()->getValueAsBool("project.enableBITabFlow"))
        return false;
    bool ran = false;
    try {
        const std::string sep = HBOBoardUtils::getDirSeparator();
        std::string root;
        HUTEnv::getQDEAppRoot(root);
        const std::string script = root + sep + "scripts" + sep + "board" + sep + "init.tcl";
        boost::system::error_code ec;
        const fs::path path(script);
        if (fs::exists(path, ec) && path.extension().string() == ".tcl") {
            std::string previous;
            HBOBoardUtils::getCurrDir(previous);
            // The script may name its neighbours by relative paths.
            if (fs::is_directory(path.parent_path(), ec))
                HBOBoardUtils::changeDir(path.parent_path().string());
            Tcl_Interp* interp = HTCTclInterp::getDefaultInterp();
            const int code = Tcl_EvalFile(interp, script.c_str());
            HBOBoardUtils::changeDir(previous);
            if (code != TCL_ERROR) {
                ran = true;
            } else {
                const char* info = Tcl_GetVar(interp, "errorInfo", TCL_GLOBAL_ONLY);
                ComMsgMgr::sendMsg::eval(2, __FILE__, __LINE__, kScope, ComMsgMgr::MSG_ERROR, "@49-46@%s%s", script,
                                         std::string(info ? info : ""));
            }
        }
    } catch (const std::string& text) {
        ComMsgMgr::sendMsg::eval(1, __FILE__, __LINE__, kScope, ComMsgMgr::MSG_WARNING, "@49-44@%s", text);
    }
    // Once is enough, also for a script that failed or is missing.
    m_tcl_loaded = true;
    return ran;
}

std::string HBOBoardCDataManager::createUniqBoardNameForIntegratedBoard(
    const std::string& base, const std::vector<ConnectionPair>& connections) {
    std::string name = base;
    for (const ConnectionPair& c : connections)
        name += "_" + c.first + "_" +
                HBOBoardUtils::getBoardNameFromBoardPart(HBOBoardUtils::getBoardKeyFromBoardPart(c.second)) + "_" +
                HBOBoardUtils::getBoardPartNameFromVLNV(c.second);
    return name;
}

HBOBoard* HBOBoardCDataManager::createIntegratdBoard(const std::string& base_part,
                                                     const std::vector<ConnectionPair>& connections,
                                                     const std::string& name) {
    bool viaLegacy = false;
    const HBOBoard* base = getBoard(base_part, viaLegacy, true);
    if (!base)
        throw error(1, __LINE__, "@49-82@%s", base_part);
    return createIntegratdBoard(base, connections, name);
}

HBOBoard* HBOBoardCDataManager::createIntegratdBoard(const std::string& base_part,
                                                     const std::vector<ConnectionTuple>& connections,
                                                     const std::string& name) {
    bool viaLegacy = false;
    const HBOBoard* base = getBoard(base_part, viaLegacy, true);
    if (!base)
        throw error(2, __LINE__, "@49-80@%s%s", base_part, name);
    return HBOBoard::createBoard(base, connections, name);
}

HBOBoard* HBOBoardCDataManager::createIntegratdBoard(const HBOBoard* base,
                                                     const std::vector<ConnectionTuple>& connections,
                                                     const std::string& name) {
    return HBOBoard::createBoard(base, connections, name);
}

HBOBoard* HBOBoardCDataManager::createIntegratdBoard(const HBOBoard* base,
                                                     const std::vector<ConnectionPair>& connections,
                                                     const std::string& name) {
    if (!base)
        throw error(0, __LINE__, "@49-86@");
    if (base->isIntegratedBoard())
        throw error(1, __LINE__, "@49-78@%s", base->getName());
    ComMsgMgr::sendScopedMsg::eval(3, __FILE__, __LINE__, kScope, kCreationChannel, ComMsgMgr::MSG_DEBUG1,
                                   "Creating Integrated Board %s : Base Board=%s, Connections Size=%d\n", name,
                                   base->getName(), static_cast<int>(connections.size()));
    for (std::size_t i = 0; i < connections.size(); ++i)
        ComMsgMgr::sendScopedMsg::eval(3, __FILE__, __LINE__, kScope, kCreationChannel, ComMsgMgr::MSG_DEBUG1,
                                       "  Connection(%d): Base Board Connector=%s, Daughter Board Connector=%s\n",
                                       static_cast<int>(i), connections[i].first, connections[i].second);

    // Every daughter is resolved and refused before anything is built.
    std::vector<ConnectionTuple> tuples;
    tuples.reserve(connections.size());
    for (const ConnectionPair& c : connections) {
        const std::string key = HBOBoardUtils::getBoardKeyFromBoardPart(c.second);
        const std::string connector = HBOBoardUtils::getBoardPartNameFromVLNV(c.second);
        bool viaLegacy = false;
        const HBOBoard* daughter = getBoard(key, viaLegacy, true);
        if (!daughter)
            throw error(2, __LINE__, "@49-81@%s%s", key, name);
        if (daughter->isIntegratedBoard())
            throw error(1, __LINE__, "@49-79@%s", daughter->getName());
        tuples.push_back(ConnectionTuple(c.first, daughter, connector));
    }
    return HBOBoard::createBoard(base, tuples, name);
}
