// The catalogue as the site shows it: the boards with the messages each got
// while it was read, the board files that did not make it, and which
// daughter-board connectors fit which connectors of the reference boards.
#ifndef ZRBOARD_SITECATALOG_H
#define ZRBOARD_SITECATALOG_H

#include <map>
#include <string>
#include <vector>

#include "ComMsgMgr.h"

class HBOBoard;
class HBOBoardComponent;
class HBOBoardCReposMgr;

namespace zrboard {
namespace site {

struct ConnectorFit {
    const HBOBoardComponent* own = nullptr;
    std::vector<const HBOBoardComponent*> full, partial;  // ordered by name
};

// A connector of a reference board that a daughter board's connector fits.
struct HostFit {
    const HBOBoardComponent* host = nullptr;      // connector of the reference board
    const HBOBoardComponent* daughter = nullptr;  // connector of the daughter board
    bool full = false;
};

class SiteCatalog {
public:
    // Reads the installed boards and the repositories `repos`; with `latest`
    // only the newest file version of each board is kept.
    SiteCatalog(const std::vector<std::string>& repos, bool latest);
    ~SiteCatalog();
    SiteCatalog(const SiteCatalog&) = delete;
    SiteCatalog& operator=(const SiteCatalog&) = delete;

    // In catalogue order.
    const std::vector<HBOBoard*>& boards() const { return m_boards; }
    // The messages the board got while the catalogue read it.
    const std::vector<ComMsgMgrInstance>& messagesOf(const HBOBoard& board) const;
    // Board files read but not in the catalogue, with their messages.
    const std::map<std::string, std::vector<ComMsgMgrInstance>>& unfiled() const { return m_unfiled; }
    // Messages about repositories as a whole (a missing directory, say).
    const std::vector<ComMsgMgrInstance>& notices() const { return m_notices; }

    // One entry per connector of a reference board; empty for other boards.
    std::vector<ConnectorFit> fitsOf(const HBOBoard& board) const;
    // The reference-board connectors that the connectors of `board` fit.
    const std::vector<HostFit>& hostsOf(const HBOBoard& board) const;

private:
    HBOBoardCReposMgr* m_mgr = nullptr;
    std::vector<HBOBoard*> m_boards;
    std::map<std::string, std::vector<ComMsgMgrInstance>> m_byFile;
    std::map<std::string, std::vector<ComMsgMgrInstance>> m_unfiled;
    std::vector<ComMsgMgrInstance> m_notices;
    std::map<const HBOBoard*, std::vector<HostFit>> m_hosts;
};

}  // namespace site
}  // namespace zrboard

#endif
