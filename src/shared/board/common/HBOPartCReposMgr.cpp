// The catalogue of one project. It reads only the project's repositories and
// lays its own boards over those of the process-wide catalogue.
#include "HBOPartCReposMgr.h"

#include <exception>
#include <memory>

#include <boost/algorithm/string/split.hpp>
#include <boost/algorithm/string/trim.hpp>
#include <boost/filesystem.hpp>

#include "ComMsgMgr.h"
#include "HBOBoard.h"
#include "HBOBoardCReposMgr.h"
#include "HBOBoardUtils.h"
#include "HBOCase.h"
#include "HBOParser.h"
#include "HUTFile.h"

namespace fs = boost::filesystem;

namespace {

// The manager made last: every constructor sets it, every destructor clears
// it, and clearBoard goes through it.
HBOPartCReposMgr* g_current = nullptr;

void reportCaught(const std::string& text) {
    ComMsgMgr::sendMsg::eval(1, __FILE__, __LINE__, "board", ComMsgMgr::MSG_WARNING, "@49-44@%s", text);
}

void debugRepo(const std::string& text, HBOBoard* board) {
    HBOBoardUtils::DumpDebugStr("board.debugBoardRepo", text, board);
}

std::string latestKeyOf(const HBOBoard& board) {
    return board.getVendor() + ":" + board.getLibrary() + ":" + board.getBoardName();
}

}  // namespace

void HBOPartCReposMgr::clearBoard(HBOBoard* board) {
    HBOPartCReposMgr* mgr = g_current;
    if (!mgr || !board)
        return;
    for (BoardMap* map : {&mgr->m_boardpart_map, &mgr->m_user_boardpart_map, &mgr->m_latest_boardpart_map}) {
        for (BoardMap::iterator it = map->begin(); it != map->end(); ++it) {
            if (it->second == board) {
                map->erase(it);
                break;
            }
        }
    }
}

HBOPartCReposMgr::HBOPartCReposMgr(bool from_param)
    : m_repos_mgr(HBOBoardCReposMgr::getGlobal()), m_connectors_dirty(true) {
    if (from_param)
        addUserRepoFromParam();
    scanUserRepositories();
    mergeBoards();
    populateFamilyBoards();
    populateLatestBoards();
    g_current = this;
}

HBOPartCReposMgr::~HBOPartCReposMgr() {
    clearAll();
    m_user_repo_list.clear();
    // The installed boards' connector caches may name connectors of the boards just deleted.
    if (m_repos_mgr)
        rebuildGlobalConnectorCaches();
    // The global catalogue is not released: the reference stays taken.
    g_current = nullptr;
}

void HBOPartCReposMgr::addUserRepoFromParam() {
    std::string value;
    if (!HBOBoardUtils::getUserRepoPathFromParam(value))
        return;
    std::vector<std::string> paths;
    for (std::string path : HBOBoardUtils::parseTclList(value)) {
        boost::algorithm::trim(path, std::locale::classic());
        if (!path.empty()) {
            HUTFileUtils::makeAbsolutePath(path);
            std::string canonical;
            if (HUTFile(path).getCanonicalName(canonical))
                path = canonical;
        }
        paths.push_back(path);
    }
    setUserRepositoryPaths(paths);
}

bool HBOPartCReposMgr::setUserRepositoryPaths(const std::vector<std::string>& paths) {
    m_user_repo_list.clear();
    for (const std::string& p : paths)
        if (!p.empty())
            m_user_repo_list.push_back(p);
    refreshBoardParts();
    return true;
}

void HBOPartCReposMgr::refreshBoardParts() {
    clearAll();
    scanUserRepositories();
    mergeBoards();
    m_connectors_dirty = true;
    rebuildConnectorsCompatibilityCache();
    populateFamilyBoards();
    populateLatestBoards();
}

void HBOPartCReposMgr::getAllBoardParts(HSTVector<HBOBoard*>& out) {
    for (const auto& entry : m_boardpart_map)
        out.push_back(entry.second);
}

void HBOPartCReposMgr::getAllLatestBoardParts(HSTVector<HBOBoard*>& out) {
    for (const auto& entry : m_latest_boardpart_map)
        out.push_back(entry.second);
}

void HBOPartCReposMgr::getAllActiveBoardParts(std::vector<HBOBoardComponent*>& out) {
    for (const auto& entry : m_boardpart_map)
        out.push_back(entry.second ? entry.second->getActivePart() : nullptr);
}

HBOBoard* HBOPartCReposMgr::getInfoForBoardPart(const std::string& name) {
    std::string key = HBOCase::lower(HBOBoardUtils::getBoardKeyFromBoardPart(name));
    BoardMap::const_iterator hit = m_boardpart_map.find(key);
    if (hit != m_boardpart_map.end())
        return hit->second;
    std::string version;
    if (!getLatestVersionForBoard(key, version))
        return nullptr;
    key.replace(key.find('*'), 1, version);
    hit = m_boardpart_map.find(key);
    return hit != m_boardpart_map.end() ? hit->second : nullptr;
}

bool HBOPartCReposMgr::getLatestVersionForBoard(const std::string& name, std::string& version) {
    version.clear();
    std::vector<std::string> fields;
    boost::algorithm::split(fields, name, [](char c) { return c == ':'; });
    if (fields.size() != 3 || fields[2] != "*")
        return false;
    // A board without a library files under "vendor::board".
    BoardMap::const_iterator hit = m_latest_boardpart_map.find(fields[0] + "::" + fields[1]);
    if (hit != m_latest_boardpart_map.end() && hit->second)
        version = hit->second->getVersion();
    return !version.empty();
}

std::string HBOPartCReposMgr::getBoardPartNameForBoard(const std::string& old_name) {
    return m_repos_mgr ? m_repos_mgr->getBoardPartNameForBoard(old_name) : std::string();
}

bool HBOPartCReposMgr::hasCorrBoardInInstall(std::string vlnv) const {
    return m_static_replaced_by_user.count(vlnv) != 0;
}

bool HBOPartCReposMgr::registerUserBoard(HBOBoard* board) {
    if (!board)
        return true;
    if (m_user_boardpart_map.insert(BoardMap::value_type(board->getName(), board)).second) {
        mergeBoards();
        populateFamilyBoards();
        populateLatestBoards();
    }
    return true;
}

bool HBOPartCReposMgr::unregisterUserBoard(const std::string& name) {
    BoardMap::iterator it = m_user_boardpart_map.find(name);
    if (it == m_user_boardpart_map.end())
        return true;
    delete it->second;
    m_user_boardpart_map.erase(it);
    mergeBoards();
    populateFamilyBoards();
    populateLatestBoards();
    // A deleted daughter board must not stay in any board's connector cache.
    m_connectors_dirty = true;
    rebuildConnectorsCompatibilityCache();
    return true;
}

void HBOPartCReposMgr::rebuildGlobalConnectorCaches() {
    std::vector<HBOBoard*> all;
    m_repos_mgr->getAllBoards(all);
    for (HBOBoard* board : all)
        if (board)
            board->rebuildConnectorsCompatibilityCache(all);
}

void HBOPartCReposMgr::rebuildConnectorsCompatibilityCache() {
    if (!m_connectors_dirty)
        return;
    HSTVector<HBOBoard*> all;
    getAllBoardParts(all);
    const std::vector<HBOBoard*>& boards = all;
    for (HBOBoard* board : all)
        if (board)
            board->rebuildConnectorsCompatibilityCache(boards);
    m_connectors_dirty = false;
}

void HBOPartCReposMgr::clearAll() {
    clearProjectBoards();
    m_boardpart_map.clear();
    m_family_board_map.clear();
    m_latest_boardpart_map.clear();
    m_static_replaced_by_user.clear();
}

void HBOPartCReposMgr::clearProjectBoards() {
    for (const auto& entry : m_user_boardpart_map)
        delete entry.second;
    m_user_boardpart_map.clear();
}

void HBOPartCReposMgr::scanUserRepositories() {
    try {
        clearProjectBoards();
        std::vector<std::string> existing;
        for (const std::string& path : m_user_repo_list) {
            boost::system::error_code ec;
            if (!fs::exists(path, ec))
                continue;
            fs::path canonical = fs::canonical(fs::path(path), fs::current_path(), ec);
            existing.push_back((ec ? fs::path(path) : canonical).generic_string());
        }
        for (const std::string& repo : existing) {
            m_current_repo = repo;
            findBoardFiles(repo);
            m_current_repo.clear();
        }
    } catch (const std::string& text) {
        m_current_repo.clear();
        reportCaught(text);
    } catch (const std::exception& e) {
        m_current_repo.clear();
        reportCaught(e.what());
    }
}

bool HBOPartCReposMgr::findBoardFiles(const std::string& directory, int depth) {
    // Deeper than any repository layout: only a loop of links gets here.
    const int kMaxDepth = 64;
    boost::system::error_code ec;
    if (depth > kMaxDepth || !fs::exists(directory, ec))
        return false;
    for (fs::directory_iterator it(directory, ec), end; !ec && it != end; it.increment(ec)) {
        const fs::path& entry = it->path();
        const fs::file_status status = fs::status(entry, ec);
        if (ec) {
            ec.clear();
            continue;
        }
        if (fs::is_directory(status)) {
            findBoardFiles(entry.string(), depth + 1);
        } else if (fs::is_regular_file(status) && HBOCase::lower(entry.filename().string()) == "board.xml") {
            boost::system::error_code cec;
            const fs::path canonical = fs::canonical(entry, cec);
            addBoardPart((cec ? entry : canonical).generic_string());
        }
    }
    return false;
}

HBOBoard* HBOPartCReposMgr::addBoardPart(const std::string& path) {
    std::unique_ptr<HBOBoard> board(new HBOBoard());
    HBOParser parser;
    try {
        if (!parser.parseFile(path, board.get()))
            return nullptr;
    } catch (const std::string& text) {
        reportCaught(text);
    }
    const std::string key = HBOCase::lower(board->getName());
    if (m_user_boardpart_map.count(key))
        return nullptr;
    board->setUserDefinedFlag(true);
    board->setRepository(m_current_repo);
    // Every call takes a reference of the global catalogue that nothing gives back.
    HBOBoardCReposMgr::getGlobal()->populatePreferenceData(board.get());
    HBOBoard* filed = board.release();
    m_user_boardpart_map[key] = filed;
    return filed;
}

void HBOPartCReposMgr::mergeBoards() {
    m_boardpart_map.clear();
    m_static_replaced_by_user.clear();
    for (const auto& entry : m_user_boardpart_map) {
        debugRepo("Add user board to map : " + (entry.second ? entry.second->getName() : std::string()),
                  entry.second);
        m_boardpart_map[HBOCase::lower(entry.first)] = entry.second;
    }
    if (m_repos_mgr) {
        std::vector<HBOBoard*> global;
        m_repos_mgr->getAllBoards(global);
        for (HBOBoard* board : global) {
            if (!board)
                continue;
            debugRepo("Add static board to map : " + board->getName(), board);
            m_boardpart_map.insert(BoardMap::value_type(HBOCase::lower(board->getName()), board));
            debugRepo("Add static board to map : " + board->getName(), board);
        }
        m_repos_mgr->getStaticBoardsReplacedByUser(m_static_replaced_by_user);
    }
    if (HBOBoardUtils::isV2SchemaEnabled())
        for (const auto& entry : m_user_boardpart_map)
            if (entry.second && entry.second->isIntegratedBoard())
                resolveIntegratedBoard(entry.second);
}

void HBOPartCReposMgr::resolveIntegratedBoard(HBOBoard* board) {
    const std::map<std::string, std::string> connectedBoards = board->getConnectedBoards();
    for (const auto& entry : connectedBoards) {
        const HBOBoard* found = getInfoForBoardPart(entry.second);
        if (found && HBOBoardUtils::isSchema20OrGreater(found))
            board->appendBoard(found, entry.first);
    }
    const std::map<std::string, std::string> connectedComponents = board->getConnectedComponents();
    for (const auto& entry : connectedComponents) {
        std::string a = entry.first;
        std::string b = entry.second;
        for (std::string* s : {&a, &b}) {
            const std::string::size_type hash = s->find('#');
            if (hash != std::string::npos)
                s->replace(hash, 1, "_");
        }
        board->createConnection(a, b);
    }
}

void HBOPartCReposMgr::populateFamilyBoards() {
    m_family_board_map.clear();
    for (const auto& entry : m_boardpart_map)
        if (entry.second)
            m_family_board_map[entry.second->getFamily()].push_back(entry.second);
}

void HBOPartCReposMgr::populateLatestBoards() {
    m_latest_boardpart_map.clear();
    for (const auto& entry : m_boardpart_map) {
        HBOBoard* board = entry.second;
        if (!board)
            continue;
        HBOBoard*& slot = m_latest_boardpart_map[latestKeyOf(*board)];
        if (!slot || HBOBoardUtils::version_compare(slot->getVersion(), board->getVersion()) < 0)
            slot = board;
    }
}
