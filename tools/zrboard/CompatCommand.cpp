// `zrboard compat NAME [--repo DIR]... [--latest] [--json]`: for each connector
// of a reference board, the daughter-board connectors of the catalogue that
// fit it fully and those that fit it partly.
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

#include "BoardPaths.h"
#include "CatalogSession.h"
#include "Command.h"
#include "HBOBoard.h"
#include "HBOBoardCReposMgr.h"
#include "HBOBoardComponent.h"
#include "Json.h"
#include "Version.h"

namespace zrboard {

namespace {

struct ConnectorFit {
    const HBOBoardComponent* own;
    std::vector<const HBOBoardComponent*> full, partial;
};

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

std::string boardLabel(const HBOBoardComponent* c) {
    const HBOBoard* b = c->getBoard();
    return b ? b->getDisplayName() : std::string();
}

void writeText(std::ostream& out, const HBOBoard& board, const std::vector<ConnectorFit>& fits) {
    out << board.getName() << " (" << board.getDisplayName() << ")\n";
    if (fits.empty())
        out << "  no connectors\n";
    for (const ConnectorFit& fit : fits) {
        out << "  " << fit.own->getComponentName() << " (" << fit.own->getSubType() << ")\n";
        for (const auto& group : {std::make_pair("fits fully", &fit.full), std::make_pair("fits partly", &fit.partial)}) {
            out << "    " << group.first << ":" << (group.second->empty() ? " none" : "") << "\n";
            for (const HBOBoardComponent* c : *group.second)
                out << "      " << c->getName() << "  " << boardLabel(c) << "\n";
        }
    }
}

void writeJson(std::ostream& out, const HBOBoard& board, const std::vector<ConnectorFit>& fits) {
    JsonWriter json(out);
    json.beginObject().field("board", board.getName()).key("connectors").beginArray();
    for (const ConnectorFit& fit : fits) {
        json.beginObject().field("name", fit.own->getComponentName()).field("sub_type", fit.own->getSubType());
        for (const auto& group : {std::make_pair("full", &fit.full), std::make_pair("partial", &fit.partial)}) {
            json.key(group.first).beginArray();
            for (const HBOBoardComponent* c : *group.second) {
                const HBOBoard* b = c->getBoard();
                json.beginObject()
                    .field("connector", c->getName())
                    .field("board", b ? b->getName() : "")
                    .field("display_name", boardLabel(c))
                    .endObject();
            }
            json.endArray();
        }
        json.endObject();
    }
    json.endArray().endObject();
}

}  // namespace

int runCompat(const Command& self, const std::vector<std::string>& args) {
    CatalogOptions opts;
    if (int rc = parseCatalogOptions(self, args, opts))
        return rc;
    if (opts.operands.size() != 1)
        return usageError("compat takes one board NAME, got " + std::to_string(opts.operands.size()), &self);
    const bool latest = opts.latest, asJson = opts.json;
    const std::vector<std::string>& repos = opts.repos;
    const std::vector<std::string>& names = opts.operands;

    CatalogSession session(repos);
    for (const ComMsgMgrInstance& m : session.notices())
        std::cerr << m.getLine() << "\n";
    const std::string& name = names.front();
    HBOBoard* board = looksLikePath(name) ? session.findFile(name) : session.find(name);
    if (!board) {
        std::cerr << kToolName << ": compat: no board '" << name << "' in the catalogue (run '" << kToolName
                  << " list' for the names; add a repository with --repo DIR)\n";
        return kExitFailure;
    }
    if (board->isIntegratedBoard() || !board->findFpgaComponent()) {
        std::cerr << kToolName << ": compat: '" << board->getName()
                  << "' is no reference board (it has no FPGA); compat lists what fits the connectors of a "
                     "board with an FPGA\n";
        return kExitFailure;
    }
    session.catalogue().rebuildConnectorsCompatibilityCache();
    const std::vector<ConnectorFit> fits = fitsOf(*board, latest);
    std::ostringstream text;
    if (asJson)
        writeJson(text, *board, fits);
    else
        writeText(text, *board, fits);
    std::cout << text.str();
    std::cout.flush();
    return std::cout ? kExitOk : kExitFailure;
}

}  // namespace zrboard
