// The process-wide pointer to the project catalogue made last, and the one
// operation that the global catalogue calls through it.
#include "HBOPartCReposMgr.h"

#include "HBOPartCReposMgrInstance.h"

namespace HBOPartCReposMgrInstance {
HBOPartCReposMgr* current = nullptr;
}

void HBOPartCReposMgr::clearBoard(HBOBoard* board) {
    HBOPartCReposMgr* mgr = HBOPartCReposMgrInstance::current;
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
