#include "SiteCatalog.h"

#include <algorithm>

#include "HBOBoard.h"
#include "HBOBoardCReposMgr.h"
#include "HBOBoardComponent.h"

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

}  // namespace

SiteCatalog::SiteCatalog(const std::vector<std::string>& repos, bool latest) : m_latest(latest) {
    {
        ChannelOn parse(kParseChannel), walk(kWalkChannel);
        std::vector<ComMsgMgrInstance>* current = nullptr;
        const int handle = ComMsgMgr::addListener([&](const ComMsgMgrInstance& m) {
            if (m.getId().empty()) {
                if (m.getChannel() == kWalkChannel)
                    current = nullptr;
                else if (m.getChannel() == kParseChannel && m.getFormat() == kParseStart && !m.getArgs().empty())
                    current = &m_byFile[m.getArgs().front()];
            } else if (current) {
                current->push_back(m);
            }
        });
        // The session keeps standard error quiet while it reads.
        try {
            m_session.reset(new CatalogSession(repos));
        } catch (...) {
            ComMsgMgr::removeListener(handle);
            throw;
        }
        ComMsgMgr::removeListener(handle);
    }
    HBOBoardCReposMgr& mgr = m_session->catalogue();
    if (latest)
        mgr.getAllLatestBoards(m_boards);
    else
        mgr.getAllBoards(m_boards);
    m_boards.erase(std::remove(m_boards.begin(), m_boards.end(), nullptr), m_boards.end());
    mgr.rebuildConnectorsCompatibilityCache();
}

SiteCatalog::~SiteCatalog() = default;

const std::vector<ComMsgMgrInstance>& SiteCatalog::messagesOf(const HBOBoard& board) const {
    static const std::vector<ComMsgMgrInstance> none;
    auto it = m_byFile.find(board.getBoardFile());
    return it == m_byFile.end() ? none : it->second;
}

std::vector<ConnectorFit> SiteCatalog::fitsOf(const HBOBoard& board) const {
    if (!isReferenceBoard(board))
        return {};
    return zrboard::fitsOf(board, m_latest);
}

std::vector<ConnectorFit> SiteCatalog::hostsOf(const HBOBoard& board) const {
    if (board.isIntegratedBoard() || isReferenceBoard(board))
        return {};
    return fitsOfDaughter(board, m_boards);
}

}  // namespace site
}  // namespace zrboard
