// The catalogue's life: the counted instance, construction in its fixed
// order, the repository event listeners, and the clearing of its boards.
#include "HBOBoardCReposMgr.h"

#include "HBOBoard.h"
#include "HBOBoardUtils.h"
#include "HBOBusIfPreference.h"
#include "HBOPartCReposMgr.h"
#include "HUTGuiEventBroker.h"

namespace {

HBOBoardCReposMgr* g_instance = nullptr;

// Project catalogues let go of each board before it dies.
void deleteBoards(const std::map<std::string, HBOBoard*>& boards) {
    for (const auto& entry : boards) {
        HBOPartCReposMgr::clearBoard(entry.second);
        delete entry.second;
    }
}

}  // namespace

HBOBoardCReposMgr* HBOBoardCReposMgr::getGlobal() {
    if (!g_instance)
        g_instance = new HBOBoardCReposMgr();
    ++g_instance->m_ref_count;
    return g_instance;
}

void HBOBoardCReposMgr::release() {
    if (!g_instance)
        return;
    if (--g_instance->m_ref_count <= 0) {
        HBOBoardCReposMgr* dying = g_instance;
        g_instance = nullptr;
        delete dying;
    }
}

HBOBoardCReposMgr* HBOBoardCReposMgr::peekGlobal() { return g_instance; }

void HBOBoardCReposMgr::appendAllBoards(std::vector<HBOBoard*>& out) { getGlobal()->getAllBoards(out); }

HBOBoardCReposMgr::HBOBoardCReposMgr() : m_ref_count(0), m_connectors_dirty(true) {
    for (int code : {HUTGuiEvent::kUserRepositoriesChanged, HUTGuiEvent::kProjectRepositoriesChanged,
                     HUTGuiEvent::kRepositoryFilesChanged}) {
        m_event_listeners.push_back(HUTGuiEventBroker::addListener(code, [](const HUTGuiEvent::GuiEventBase& e) {
            if (e.isApplicable())
                getGlobal()->refreshBoards();
        }));
    }
    HBOBoardUtils::getUserRepoPathFromParam(m_user_repo_paths);
    readInterfacePreferences();
    populateStaticBoardPartList();
    populateBoardPartList();
    populateFamousNames();
    populateLatestBoards();
    populateFamilyBoards();
    populateLegacyBoardNames();
}

HBOBoardCReposMgr::~HBOBoardCReposMgr() {
    clearUserBoards();
    clearStaticBoards();
    for (HUTGuiEventConnectionHandle* handle : m_event_listeners) {
        if (handle->isConnected())
            handle->disconnect();
        delete handle;
    }
}

void HBOBoardCReposMgr::clearUserBoards() {
    deleteBoards(m_user_boardpart_map);
    m_boardpart_map.clear();
    m_user_boardpart_map.clear();
    clearDerivedMaps();
}

void HBOBoardCReposMgr::clearStaticBoards() {
    deleteBoards(m_static_boardpart_map);
    m_boardpart_map.clear();
    m_static_boardpart_map.clear();
    clearDerivedMaps();
    for (auto& entry : m_preference_map)
        delete entry.second;
    m_preference_map.clear();
}

void HBOBoardCReposMgr::clearDerivedMaps() {
    m_family_board_map.clear();
    m_latest_boardpart_map.clear();
    m_static_replaced_by_user.clear();
}

void HBOBoardCReposMgr::getAllBoards(std::vector<HBOBoard*>& out) {
    syncUserRepoPaths();
    out.reserve(out.size() + m_boardpart_map.size());
    for (const auto& entry : m_boardpart_map)
        out.push_back(entry.second);
}

void HBOBoardCReposMgr::getAllStaticBoardParts(std::vector<HBOBoard*>& out) {
    out.reserve(out.size() + m_static_boardpart_map.size());
    for (const auto& entry : m_static_boardpart_map)
        out.push_back(entry.second);
}

void HBOBoardCReposMgr::getStaticBoardsReplacedByUser(std::set<std::string>& out) {
    out.clear();
    out = m_static_replaced_by_user;
}
