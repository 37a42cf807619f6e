// Finding and filing boards: the one-time scan of the installation, the walk
// of user and project repositories at each refresh, and the maps derived
// from the catalogue afterwards.
#include "HBOBoardCReposMgr.h"

#include <dirent.h>

#include <cerrno>
#include <memory>

#include <boost/filesystem.hpp>

#include "ComMsgMgr.h"
#include "HBOBoard.h"
#include "HBOBoardCatalogModifyPostEvent.h"
#include "HBOBoardCatalogModifyPreEvent.h"
#include "HBOBoardUtils.h"
#include "HBOCase.h"
#include "HBOParser.h"
#include "HUTEnv.h"

namespace fs = boost::filesystem;

namespace {

const char* const kRepoDebug = "board.debugBoardRepo";

void debugRepo(const std::string& text, HBOBoard* board = nullptr) {
    HBOBoardUtils::DumpDebugStr(kRepoDebug, text, board);
}

void reportCaught(const std::string& text) {
    ComMsgMgr::sendMsg::eval(1, __FILE__, __LINE__, "board", ComMsgMgr::MSG_WARNING, "@49-44@%s", text);
}

// Canonical and in generic form. File system faults come back as a thrown
// text, which the callers report and survive.
std::string canonicalPath(const fs::path& path) {
    boost::system::error_code ec;
    fs::path canon = fs::canonical(path, fs::current_path(), ec);
    if (ec)
        throw std::string(path.string() + ": " + ec.message());
    return canon.generic_string();
}

bool pathExists(const fs::path& path) {
    boost::system::error_code ec;
    return fs::exists(fs::status(path, ec));
}

// A link back to a directory above (or at) the one being walked would make
// the walk endless.
bool linksToAncestor(const fs::path& link, const fs::path& dir) {
    boost::system::error_code ec;
    const fs::path target = fs::canonical(link, ec);
    if (ec)
        return false;
    const fs::path here = fs::canonical(dir, ec);
    if (ec)
        return false;
    auto t = target.begin();
    auto h = here.begin();
    for (; t != target.end() && h != here.end(); ++t, ++h)
        if (*t != *h)
            return false;
    return t == target.end();
}

bool isBoardFileName(const fs::path& file) {
    const fs::path name = file.filename();
    return name.native().size() == 9 && HBOCase::lower(name.native()) == "board.xml";
}

}  // namespace

void HBOBoardCReposMgr::populateStaticBoardPartList() {
    debugRepo("HBOBoardCReposMgr::populateStaticBoardPartList");
    const std::vector<std::string> dataDirs = HUTEnv::getQDEDataDirList();
    const std::string sep = HBOBoardUtils::getDirSeparator();
    std::vector<std::string> searchPaths;
    auto consider = [&](const std::string& candidate) {
        if (!pathExists(candidate))
            return;
        try {
            searchPaths.push_back(canonicalPath(candidate));
        } catch (const std::string& text) {
            reportCaught(text);
        }
    };
    // Every board_parts directory before any board_files one: the first filing of a name wins.
    for (const std::string& dir : dataDirs)
        consider(dir + sep + "boards" + sep + "board_parts");
    if (HBOBoardUtils::isV2SchemaEnabled()) {
        for (const std::string& dir : dataDirs) {
            consider(dir + sep + "boards" + sep + "board_files");
            consider(dir + sep + "zarn" + sep + "boards");
        }
    }
    for (const std::string& path : searchPaths) {
        debugRepo(" -- find board in " + path);
        ComMsgMgr::sendScopedMsg::eval(1, __FILE__, __LINE__, "board", "board.findBoards", ComMsgMgr::MSG_DEBUG1,
                                       "HBOBoardCReposMgr::populateStaticBoardPartList initiating search of '%s'\n",
                                       path);
        m_current_repo = path;
        findBoardFiles(path, true);
        m_current_repo.clear();
    }
}

bool HBOBoardCReposMgr::findBoardFiles(const std::string& directory, bool is_static) {
    if (!pathExists(directory)) {
        ComMsgMgr::sendScopedMsg::eval(1, __FILE__, __LINE__, "board", "board.findBoards", ComMsgMgr::MSG_DEBUG1,
                                       "HBOBoardCReposMgr::findBoardFiles searching '%s'\n", directory);
        if (!directory.empty())
            ComMsgMgr::sendMsg::eval(1, __FILE__, __LINE__, "board", ComMsgMgr::MSG_WARNING, "@49-91@%s", directory);
        return false;
    }
    // Below a directory named in canonical form, every entry reached without
    // a symbolic link is in canonical form too: the thousands of board files
    // of an installation then need no resolving of their paths one by one.
    boost::system::error_code ec;
    const fs::path canon = fs::canonical(directory, fs::current_path(), ec);
    return walkBoardFiles(directory, is_static, !ec && canon.generic_string() == directory);
}

namespace {

struct DirCloser {
    void operator()(DIR* d) const { ::closedir(d); }
};

std::string systemError(const std::string& directory, int error) {
    return directory + ": " + boost::system::error_code(error, boost::system::system_category()).message();
}

}  // namespace

bool HBOBoardCReposMgr::walkBoardFiles(const std::string& directory, bool is_static, bool canonical) {
    ComMsgMgr::sendScopedMsg::eval(1, __FILE__, __LINE__, "board", "board.findBoards", ComMsgMgr::MSG_DEBUG1,
                                   "HBOBoardCReposMgr::findBoardFiles searching '%s'\n", directory);
    const fs::path dir(directory);
    try {
        std::unique_ptr<DIR, DirCloser> listing(::opendir(directory.c_str()));
        if (!listing)
            throw systemError(directory, errno);
        // Entries in the order the file system gives them; a directory with a
        // board is still descended into. The listing tells most entries' kinds,
        // so only links and entries of unknown kind are looked at one by one.
        for (;;) {
            errno = 0;
            const dirent* item = ::readdir(listing.get());
            if (!item) {
                if (errno != 0)
                    throw systemError(directory, errno);
                break;
            }
            const char* name = item->d_name;
            if (name[0] == '.' && (name[1] == '\0' || (name[1] == '.' && name[2] == '\0')))
                continue;
            const fs::path entry = dir / name;
            bool link = false;
            fs::file_type kind;
            if (item->d_type == DT_DIR) {
                kind = fs::directory_file;
            } else if (item->d_type == DT_REG) {
                kind = fs::regular_file;
            } else {
                boost::system::error_code statusError;
                const fs::file_status own = fs::symlink_status(entry, statusError);
                link = fs::is_symlink(own);
                kind = (link ? fs::status(entry, statusError) : own).type();
            }
            if (kind == fs::directory_file) {
                if (link && linksToAncestor(entry, dir))
                    continue;
                if (walkBoardFiles(entry.string(), is_static, canonical && !link))
                    return true;
            } else if (kind == fs::regular_file) {
                if (!isBoardFileName(entry))
                    continue;
                if (canonical && !link)
                    addBoardPart(entry.generic_string(), is_static, true);
                else
                    addBoardPart(canonicalPath(entry), is_static);
            }
        }
    } catch (const std::string& text) {
        reportCaught(text);
        return false;
    }
    return false;
}

HBOBoard* HBOBoardCReposMgr::addBoardPart(const std::string& path, bool is_static, bool canonical) {
    HBOBoard* board = new HBOBoard();
    HBOParser* parser = new HBOParser();
    try {
        const std::string file = canonical ? path : canonicalPath(path);
        if (!parser->parseFile(file, board)) {
            delete parser;
            delete board;
            return nullptr;
        }
    } catch (const std::string& text) {
        // Unlike a failed read, the board stays as far as it was read.
        reportCaught(text);
    }
    populatePreferenceData(board);
    parser->migrateV1ToV2(board);

    const std::string key = HBOCase::lower(board->getName());
    BoardMap& map = is_static ? m_static_boardpart_map : m_user_boardpart_map;
    if (map.count(key)) {
        delete parser;
        delete board;
        return nullptr;
    }
    board->setRepository(m_current_repo);
    board->setUserDefinedFlag(!is_static);
    map.emplace(key, board);
    debugRepo((is_static ? "m_static_boardpart_map  " : "m_user_boardpart_map  ") + key, board);
    delete parser;
    return board;
}

void HBOBoardCReposMgr::walkRepositoryList(const std::string& tclList) {
    for (const std::string& path : HBOBoardUtils::parseTclList(tclList)) {
        m_current_repo = path;
        findBoardFiles(path, false);
        m_current_repo.clear();
    }
}

void HBOBoardCReposMgr::populateBoardPartList() {
    m_boardpart_map.clear();
    m_user_boardpart_map.clear();
    m_static_replaced_by_user.clear();
    // The project's repositories first: they win a clash against the user's.
    if (!m_project_repo.empty())
        walkRepositoryList(m_project_repo);
    walkRepositoryList(m_user_repo_paths);

    for (const auto& entry : m_user_boardpart_map) {
        debugRepo("Adding user nboard ", entry.second);
        m_boardpart_map.emplace_hint(m_boardpart_map.end(), entry.first, entry.second);
    }
    for (const auto& entry : m_static_boardpart_map) {
        HBOBoard* board = entry.second;
        if (!board)
            continue;
        const std::string key = HBOCase::lower(board->getName());
        if (!m_boardpart_map.count(key)) {
            m_boardpart_map.emplace(key, board);
            debugRepo("Adding static nboard ", board);
        } else if (m_user_boardpart_map.count(key)) {
            m_static_replaced_by_user.insert(board->getVendor() + ":" + board->getLibrary() + ":" +
                                             board->getBoardName() + ":" + board->getVersion());
            debugRepo("Adding user to static nboard " + board->getName(), board);
        }
    }

    if (HBOBoardUtils::isV2SchemaEnabled()) {
        for (const auto& entry : m_boardpart_map)
            if (entry.second->isIntegratedBoard())
                resolveIntegratedBoard(entry.second);
    }
}

void HBOBoardCReposMgr::resolveIntegratedBoard(HBOBoard* board) {
    const std::map<std::string, std::string> connectedBoards = board->getConnectedBoards();
    for (const auto& entry : connectedBoards) {
        HBOBoard* found = getInfoForBoard(entry.second);
        if (found && HBOBoardUtils::isSchema20OrGreater(found))
            board->appendBoard(found, entry.first);
    }
    const std::map<std::string, std::string> connectedComponents = board->getConnectedComponents();
    auto firstHashToUnderscore = [](std::string s) {
        const std::size_t hash = s.find('#');
        if (hash != std::string::npos)
            s[hash] = '_';
        return s;
    };
    for (const auto& entry : connectedComponents)
        board->createConnection(firstHashToUnderscore(entry.first), firstHashToUnderscore(entry.second));
}

void HBOBoardCReposMgr::refreshBoards() {
    HBOBoardCatalogModifyPreEvent(this).doEvent();
    ComMsgMgr::sendScopedMsg::eval(1, __FILE__, __LINE__, "board", "board.event", ComMsgMgr::MSG_DEBUG1,
                                   "%s: REFRESHING BOARDS!\n", __FILE__);
    try {
        clearUserBoards();
        populateBoardPartList();
        m_connectors_dirty = true;
        rebuildConnectorsCompatibilityCache();
        populateLatestBoards();
        populateFamilyBoards();
    } catch (...) {
        ComMsgMgr::sendScopedMsg::eval(1, __FILE__, __LINE__, "board", "board.error", ComMsgMgr::MSG_DEBUG1,
                                       "%s: unexpected exception in HBOBoardCReposMgr::refreshBoards\n", __FILE__);
    }
    ComMsgMgr::sendScopedMsg::eval(1, __FILE__, __LINE__, "board", "board.event", ComMsgMgr::MSG_DEBUG1,
                                   "%s: DONE REFRESHING BOARDS!\n", __FILE__);
    HBOBoardCatalogModifyPostEvent(this).doEvent();
}

void HBOBoardCReposMgr::setProjectRepo(const std::string& paths) {
    m_project_repo = paths;
    refreshBoards();
}

void HBOBoardCReposMgr::syncUserRepoPaths() {
    std::string paths;
    if (HBOBoardUtils::getUserRepoPathFromParam(paths) && paths != m_user_repo_paths) {
        m_user_repo_paths = paths;
        refreshBoards();
    }
}

void HBOBoardCReposMgr::rebuildConnectorsCompatibilityCache() {
    if (!m_connectors_dirty)
        return;
    std::vector<HBOBoard*> allBoards;
    getGlobal()->getAllBoards(allBoards);
    for (HBOBoard* board : allBoards)
        board->rebuildConnectorsCompatibilityCache(allBoards);
    m_connectors_dirty = false;
}

void HBOBoardCReposMgr::populateLatestBoards() {
    for (const auto& entry : m_boardpart_map) {
        HBOBoard* board = entry.second;
        const std::string key = board->getVendor() + ":" + board->getLibrary() + ":" + board->getBoardName();
        HBOBoard*& kept = m_latest_boardpart_map[key];
        if (!kept || HBOBoardUtils::version_compare(kept->getVersion(), board->getVersion()) < 0)
            kept = board;
    }
}

void HBOBoardCReposMgr::populateFamilyBoards() {
    m_family_board_map.clear();
    for (const auto& entry : m_boardpart_map)
        m_family_board_map[entry.second->getFamily()].push_back(entry.second);
}
