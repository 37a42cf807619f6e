// Look-ups by name: catalogue names, board part names, the short and old names
// that earlier projects carry, and the filters that keep the newest boards.
#include "HBOBoardCReposMgr.h"

#include "ComMsgMgr.h"
#include "HBOBoard.h"
#include "HBOBoardComponent.h"
#include "HBOBoardUtils.h"
#include "HBOCase.h"

namespace {

std::string latestKey(const HBOBoard* board) {
    return board->getVendor() + ":" + board->getLibrary() + ":" + board->getBoardName();
}

}  // namespace

void HBOBoardCReposMgr::populateFamousNames() {
    // The last row carries a misformed vendor that old project files still bear.
    m_famous_name_map = {
        {"bdh4", "trellimade:ordana:bdh4:c"},
        {"bdb2", "korvelhw:ordana:bdb2:c"},
        {"bdb6", "korvelhw:ordana:bdb6:b"},
        {"bdc1", "korvelhw:pellis7:bdc1:1.0"},
        {"bdd5", "korvelhw:marlun7:bdd5:1.0"},
        {"bde7", "korvelhw:halcyr7:bde7:a"},
        {"korvel:halcyr7:bde7:a", "korvelhw:halcyr7:bde7:a"},
    };
}

void HBOBoardCReposMgr::populateLegacyBoardNames() {
    // Versions shift between an old name and its successor, so no rule can replace this table.
    m_legacy_name_map = {
        {"trellimade:ordana:bdh3:e", "trellimade:bdh3:part0:1.0"},
        {"trellimade:ordana:bdh4:c", "trellimade:bdh4:part0:0.9"},
        {"trellimade:ordana:bdh4:d", "trellimade:bdh4:part0:1.1"},
        {"korvelhw:pellis7:bdc1:1.0", "korvelhw:bdc1:part0:1.0"},
        {"korvelhw:marlun7:bdd5:1.0", "korvelhw:bdd5:part0:0.9"},
        {"korvelhw:marlun7:bdd5:1.1", "korvelhw:bdd5:part0:1.0"},
        {"korvelhw:halcyr7:bde7:1.1", "korvelhw:bde7:part0:1.0"},
        {"korvelhw:halcyr7:bde7:a", "korvelhw:bde7:part0:0.9"},
        {"korvelhw:halcyr7:bde9:1.0", "korvelhw:bde9:part0:1.0"},
        {"korvelhw:ordana:bdb2:1.0", "korvelhw:bdb2:part0:1.0"},
        {"korvelhw:ordana:bdb2:c", "korvelhw:bdb2:part0:0.9"},
        {"korvelhw:ordana:bdb6:1.1", "korvelhw:bdb6:part0:1.0"},
        {"korvelhw:ordana:bdb6:b", "korvelhw:bdb6:part0:0.9"},
    };
}

std::string HBOBoardCReposMgr::getBoardPartNameForBoard(const std::string& old_name) {
    if (old_name.empty())
        return std::string();
    auto found = m_legacy_name_map.find(HBOCase::lower(old_name));
    return found == m_legacy_name_map.end() ? std::string() : found->second;
}

HBOBoard* HBOBoardCReposMgr::getInfoForBoard(const std::string& name) {
    syncUserRepoPaths();
    const std::string key = HBOBoardUtils::getBoardKeyFromBoardPart(name);
    if (key.empty())
        return nullptr;
    auto found = m_boardpart_map.find(HBOCase::lower(key));
    if (found != m_boardpart_map.end())
        return found->second;
    return getInfoForFamousBoard(name);
}

HBOBoard* HBOBoardCReposMgr::getInfoForFamousBoard(const std::string& name) {
    if (name.empty())
        return nullptr;
    const std::string lowerName = HBOCase::lower(name);
    auto famous = m_famous_name_map.find(lowerName);
    const std::string actual = famous == m_famous_name_map.end() ? std::string() : famous->second;
    // The actual name is never itself a short name (the one full-name row maps to
    // a name without a row), so this recursion ends after one step.
    HBOBoard* board = getInfoForBoard(actual);
    if (!board)
        return nullptr;
    if (lowerName.find(':') == std::string::npos)
        ComMsgMgr::sendMsg::eval(2, __FILE__, __LINE__, "board", ComMsgMgr::MSG_CRITICAL_WARNING, "@49-35@%s%s",
                                 actual, lowerName);
    return board;
}

void HBOBoardCReposMgr::getAllLatestBoards(std::vector<HBOBoard*>& out) {
    syncUserRepoPaths();
    out.reserve(out.size() + m_latest_boardpart_map.size());
    for (const auto& entry : m_latest_boardpart_map)
        out.push_back(entry.second);
}

bool HBOBoardCReposMgr::filterLatestVersionBoardParts(std::vector<HBOBoardComponent*>& parts) {
    std::map<std::string, HBOBoard*> kept;
    for (HBOBoardComponent* part : parts) {
        HBOBoard* board = part ? part->getBoard() : nullptr;
        if (!board)
            continue;
        HBOBoard*& slot = kept[latestKey(board)];
        // Of equal versions the earlier in the list stays.
        if (!slot || HBOBoardUtils::version_compare(slot->getVersion(), board->getVersion()) < 0)
            slot = board;
    }
    parts.clear();
    for (const auto& entry : kept)
        parts.push_back(entry.second->getActivePart());
    return true;
}

bool HBOBoardCReposMgr::filterLatestRevisionBoardParts(std::vector<HBOBoardComponent*>& parts) {
    std::map<std::string, std::vector<HBOBoard*>> kept;
    for (HBOBoardComponent* part : parts) {
        HBOBoard* board = part ? part->getBoard() : nullptr;
        if (!board)
            continue;
        std::vector<HBOBoard*>& boards = kept[latestKey(board)];
        if (boards.empty()) {
            boards.push_back(board);
            continue;
        }
        const std::string& first = boards.front()->getBoardRevision();
        if (HBOBoardUtils::version_compare(first, board->getBoardRevision()) < 0) {
            boards.clear();
            boards.push_back(board);
        } else if (HBOBoardUtils::version_compare(first, board->getBoardRevision()) == 0) {
            // Every board of the highest revision survives.
            boards.push_back(board);
        }
    }
    parts.clear();
    for (const auto& entry : kept)
        for (HBOBoard* board : entry.second)
            parts.push_back(board->getActivePart());
    return true;
}
