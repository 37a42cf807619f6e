#include "SiteCatalog.h"

#include <algorithm>
#include <set>

#include "HBOBoard.h"
#include "HBOBoardCReposMgr.h"
#include "HBOBoardComponent.h"
#include "HBOBoardUtils.h"
#include "HPAParamMgr.h"

namespace zrboard {
namespace site {

namespace {

// The catalogue's walk names each directory and each board file on these
// channels before it reads them; that tells which board a message is about.
const char* const kParseChannel = "board.parse";
const char* const kWalkChannel = "board.findBoards";
const std::string kParseStart = "HBOParser parsing '%s'\n";

// Switches a debug channel on for a while, and back only if it was off.
class ChannelOn {
public:
    explicit ChannelOn(const char* channel) : m_channel(channel), m_wasOn(ComMsgMgr::hasScope(channel)) {
        if (!m_wasOn)
            ComMsgMgr::enableScope(channel, true);
    }
    ~ChannelOn() {
        if (!m_wasOn)
            ComMsgMgr::enableScope(m_channel, false);
    }

private:
    std::string m_channel;
    bool m_wasOn;
};

bool byName(const HBOBoardComponent* a, const HBOBoardComponent* b) { return a->getName() < b->getName(); }

}  // namespace

SiteCatalog::SiteCatalog(const std::vector<std::string>& repos, bool latest) {
    if (!repos.empty())
        HPAParamMgr::getParamMgr()->setValue("board.repoPaths", HBOBoardUtils::asTclSpaceSeparatedStr(repos));

    const bool printing = ComMsgMgr::printToStderr();
    ComMsgMgr::setPrintToStderr(false);
    {
        ChannelOn parse(kParseChannel), walk(kWalkChannel);
        std::vector<ComMsgMgrInstance>* current = nullptr;
        const int handle = ComMsgMgr::addListener([&](const ComMsgMgrInstance& m) {
            if (m.getId().empty()) {
                if (m.getChannel() == kWalkChannel)
                    current = nullptr;
                else if (m.getChannel() == kParseChannel && m.getFormat() == kParseStart && !m.getArgs().empty())
                    current = &m_byFile[m.getArgs().front()];
                return;
            }
            (current ? *current : m_notices).push_back(m);
        });
        try {
            m_mgr = HBOBoardCReposMgr::getGlobal();
            if (latest)
                m_mgr->getAllLatestBoards(m_boards);
            else
                m_mgr->getAllBoards(m_boards);
            m_mgr->rebuildConnectorsCompatibilityCache();
        } catch (...) {
            ComMsgMgr::removeListener(handle);
            ComMsgMgr::setPrintToStderr(printing);
            throw;
        }
        ComMsgMgr::removeListener(handle);
    }
    ComMsgMgr::setPrintToStderr(printing);

    m_boards.erase(std::remove(m_boards.begin(), m_boards.end(), nullptr), m_boards.end());
    std::set<std::string> filed;
    std::vector<HBOBoard*> all;
    m_mgr->getAllStaticBoardParts(all);
    m_mgr->getAllBoards(all);
    for (const HBOBoard* b : all)
        if (b)
            filed.insert(b->getBoardFile());
    for (auto& kv : m_byFile)
        if (!filed.count(kv.first))
            m_unfiled.insert(kv);

    // The caches live on the reference boards; the daughter's view is their inverse.
    for (const HBOBoard* board : m_boards) {
        for (const ConnectorFit& fit : fitsOf(*board)) {
            for (const HBOBoardComponent* c : fit.full)
                m_hosts[c->getBoard()].push_back({fit.own, c, true});
            for (const HBOBoardComponent* c : fit.partial)
                m_hosts[c->getBoard()].push_back({fit.own, c, false});
        }
    }
}

SiteCatalog::~SiteCatalog() {
    // The catalogue's own callers keep references by design; the tool lets go of all.
    while (HBOBoardCReposMgr::peekGlobal())
        HBOBoardCReposMgr::release();
}

const std::vector<ComMsgMgrInstance>& SiteCatalog::messagesOf(const HBOBoard& board) const {
    static const std::vector<ComMsgMgrInstance> none;
    auto it = m_byFile.find(board.getBoardFile());
    return it == m_byFile.end() ? none : it->second;
}

std::vector<ConnectorFit> SiteCatalog::fitsOf(const HBOBoard& board) const {
    std::vector<ConnectorFit> fits;
    if (board.isIntegratedBoard() || !board.findFpgaComponent())
        return fits;
    std::vector<HBOBoardComponent*> own;
    board.getConnectorsList(own);
    for (const HBOBoardComponent* c : own) {
        if (!c)
            continue;
        ConnectorFit fit;
        fit.own = c;
        std::vector<HBOBoardComponent*> candidates;
        board.getCompatibleConnectorsList(c, candidates);
        std::set<const HBOBoardComponent*> seen;
        for (const HBOBoardComponent* d : candidates)
            if (d && seen.insert(d).second)
                (board.isConnectorFullCompatibleWithConnector(c, d) ? fit.full : fit.partial).push_back(d);
        std::sort(fit.full.begin(), fit.full.end(), byName);
        std::sort(fit.partial.begin(), fit.partial.end(), byName);
        fits.push_back(fit);
    }
    return fits;
}

const std::vector<HostFit>& SiteCatalog::hostsOf(const HBOBoard& board) const {
    static const std::vector<HostFit> none;
    auto it = m_hosts.find(&board);
    return it == m_hosts.end() ? none : it->second;
}

}  // namespace site
}  // namespace zrboard
