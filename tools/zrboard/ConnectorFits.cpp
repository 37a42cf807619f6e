#include "ConnectorFits.h"

#include <algorithm>

#include "HBOBoard.h"
#include "HBOBoardComponent.h"

namespace zrboard {

namespace {

void sortByName(std::vector<const HBOBoardComponent*>& list) {
    std::sort(list.begin(), list.end(),
              [](const HBOBoardComponent* a, const HBOBoardComponent* b) { return a->getName() < b->getName(); });
}

}  // namespace

bool isReferenceBoard(const HBOBoard& board) { return !board.isIntegratedBoard() && board.findFpgaComponent(); }

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
        sortByName(fit.full);
        sortByName(fit.partial);
        fits.push_back(fit);
    }
    return fits;
}

// The caches of the reference boards answer for the daughter's connectors too.
std::vector<ConnectorFit> fitsOfDaughter(const HBOBoard& daughter, const std::vector<HBOBoard*>& boards) {
    std::vector<HBOBoardComponent*> connectors;
    daughter.getConnectorsList(connectors);
    std::vector<ConnectorFit> fits;
    for (const HBOBoardComponent* own : connectors) {
        ConnectorFit fit{own, {}, {}};
        for (const HBOBoard* reference : boards) {
            if (!reference || !isReferenceBoard(*reference))
                continue;
            std::vector<HBOBoardComponent*> baseConnectors;
            reference->getConnectorsList(baseConnectors);
            for (const HBOBoardComponent* base : baseConnectors) {
                if (reference->isConnectorFullCompatibleWithConnector(base, own))
                    fit.full.push_back(base);
                else if (reference->isConnectorPartialCompatibleWithConnector(base, own))
                    fit.partial.push_back(base);
            }
        }
        sortByName(fit.full);
        sortByName(fit.partial);
        fits.push_back(fit);
    }
    return fits;
}

}  // namespace zrboard
