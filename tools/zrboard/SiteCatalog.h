// The catalogue as the site shows it: the boards with the messages each got
// while it was read, the board files that did not make it, and which
// daughter-board connectors fit which connectors of the reference boards.
#ifndef ZRBOARD_SITECATALOG_H
#define ZRBOARD_SITECATALOG_H

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "CatalogSession.h"
#include "ComMsgMgr.h"
#include "ConnectorFits.h"

class HBOBoard;
class HBOBoardComponent;

namespace zrboard {
namespace site {

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
    // Board files that did not read, with their messages.
    const std::vector<FailedBoard>& failedBoards() const { return m_session->failedBoards(); }
    // Messages about repositories as a whole (a missing directory, say).
    const std::vector<ComMsgMgrInstance>& notices() const { return m_session->notices(); }
    CatalogSession& session() const { return *m_session; }

    // One entry per connector of a reference board; empty for other boards.
    std::vector<ConnectorFit> fitsOf(const HBOBoard& board) const;
    // For each connector of a daughter board, the connectors of the listed
    // reference boards that it fits; empty for other boards.
    std::vector<ConnectorFit> hostsOf(const HBOBoard& board) const;

private:
    std::unique_ptr<CatalogSession> m_session;
    bool m_latest = false;
    std::vector<HBOBoard*> m_boards;
    std::map<std::string, std::vector<ComMsgMgrInstance>> m_byFile;
};

}  // namespace site
}  // namespace zrboard

#endif
