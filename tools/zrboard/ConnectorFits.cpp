#include "ConnectorFits.h"

#include <algorithm>

#include "HBOBoard.h"
#include "HBOBoardComponent.h"

namespace zrboard {

std::vector<ConnectorFit> fitsOf(const HBOBoard& board, bool latest) {
    std::vector<HBOBoardComponent*> connectors;
    board.getConnectorsList(connectors);
    std::vector<ConnectorFit> fits;
    for (const HBOBoardComponent* own : connectors) {
        std::vector<HBOBoardComponent*> candidates;
        if (latest)
            board.getLatestCompatibleConnectorsList(own, candidates);
        else
            board.getCompatibleConnectorsList(own, candidates);
        ConnectorFit fit{own, {}, {}};
        for (const HBOBoardComponent* c : candidates)
            (board.isConnectorFullCompatibleWithConnector(own, c) ? fit.full : fit.partial).push_back(c);
        // The caches hold no meaningful order; names make the output stable.
        for (auto* list : {&fit.full, &fit.partial})
            std::sort(list->begin(), list->end(), [](const HBOBoardComponent* a, const HBOBoardComponent* b) {
                return a->getName() < b->getName();
            });
        fits.push_back(fit);
    }
    return fits;
}

}  // namespace zrboard
