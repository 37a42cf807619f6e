// `zrboard compat NAME [--repo DIR]... [--latest] [--json]`: for each connector
// of a reference board, the daughter-board connectors of the catalogue that
// fit it fully and those that fit it partly; for a daughter board, the other
// way round: the reference-board connectors that each of its connectors fits.
#include <algorithm>
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

void sortByName(std::vector<const HBOBoardComponent*>& list);

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

bool isReferenceBoard(const HBOBoard& board) { return !board.isIntegratedBoard() && board.findFpgaComponent(); }

void sortByName(std::vector<const HBOBoardComponent*>& list) {
    std::sort(list.begin(), list.end(),
              [](const HBOBoardComponent* a, const HBOBoardComponent* b) { return a->getName() < b->getName(); });
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

std::string boardLabel(const HBOBoardComponent* c) {
    const HBOBoard* b = c->getBoard();
    return b ? b->getDisplayName() : std::string();
}

void writeText(std::ostream& out, const HBOBoard& board, const std::vector<ConnectorFit>& fits, bool daughter) {
    out << board.getName() << " (" << board.getDisplayName() << ")\n";
    if (fits.empty())
        out << "  no connectors\n";
    const char* full = daughter ? "fits fully on" : "fits fully";
    const char* partly = daughter ? "fits partly on" : "fits partly";
    for (const ConnectorFit& fit : fits) {
        out << "  " << fit.own->getComponentName() << " (" << fit.own->getSubType() << ")\n";
        for (const auto& group : {std::make_pair(full, &fit.full), std::make_pair(partly, &fit.partial)}) {
            out << "    " << group.first << ":" << (group.second->empty() ? " none" : "") << "\n";
            for (const HBOBoardComponent* c : *group.second)
                out << "      " << c->getName() << "  " << boardLabel(c) << "\n";
        }
    }
}

void writeJson(std::ostream& out, const HBOBoard& board, const std::vector<ConnectorFit>& fits, bool daughter) {
    JsonWriter json(out);
    json.beginObject().field("board", board.getName()).field("daughter_board", daughter);
    json.key("connectors").beginArray();
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
    session.catalogue().rebuildConnectorsCompatibilityCache();
    const bool daughter = !board->isIntegratedBoard() && !board->findFpgaComponent();
    std::vector<ConnectorFit> fits;
    if (daughter) {
        std::vector<HBOBoard*> boards;
        if (latest)
            session.catalogue().getAllLatestBoards(boards);
        else
            session.catalogue().getAllBoards(boards);
        fits = fitsOfDaughter(*board, boards);
    } else if (isReferenceBoard(*board)) {
        fits = fitsOf(*board, latest);
    } else {
        std::cerr << kToolName << ": compat: '" << board->getName()
                  << "' is an integrated board; its connectors are joined already\n";
        return kExitFailure;
    }
    std::ostringstream text;
    if (asJson)
        writeJson(text, *board, fits, daughter);
    else
        writeText(text, *board, fits, daughter);
    std::cout << text.str();
    std::cout.flush();
    return std::cout ? kExitOk : kExitFailure;
}

}  // namespace zrboard
