// The catalogue as the tool's commands open it: installed boards plus the
// repositories given with --repo, the scan's own messages held back, and the
// board files that failed to read found and reported with their messages.
#ifndef ZRBOARD_CATALOGSESSION_H
#define ZRBOARD_CATALOGSESSION_H

#include <iosfwd>
#include <string>
#include <vector>

#include "ComMsgMgr.h"

class HBOBoard;
class HBOBoardCReposMgr;

namespace zrboard {

struct Command;

struct FailedBoard {
    std::string path;
    std::vector<ComMsgMgrInstance> messages;
};

class CatalogSession {
public:
    // Reads the catalogue; `repos` become the user's repository list.
    explicit CatalogSession(const std::vector<std::string>& repos);
    ~CatalogSession();
    CatalogSession(const CatalogSession&) = delete;
    CatalogSession& operator=(const CatalogSession&) = delete;

    HBOBoardCReposMgr& catalogue() const { return *m_mgr; }

    // Any name the catalogue answers to: catalogue and board part names,
    // short and old names, in any case. Null when none fits.
    HBOBoard* find(const std::string& name) const;
    // The catalogue's board read from this file (a directory stands for its board.xml).
    HBOBoard* findFile(const std::string& path) const;

    // Files that look like boards but did not read; walked again on demand.
    const std::vector<FailedBoard>& failedBoards();
    // Messages of the scan about repositories themselves (missing, unreadable).
    const std::vector<ComMsgMgrInstance>& notices() const { return m_notices; }

    // Notices and failed boards on `err`, as the tool reports them.
    void reportProblems(std::ostream& err, const std::string& command);
    bool hadProblems();

private:
    void findFailedBoards();

    HBOBoardCReposMgr* m_mgr = nullptr;
    std::vector<std::string> m_roots;
    std::vector<ComMsgMgrInstance> m_notices;
    std::vector<FailedBoard> m_failed;
    bool m_failedKnown = false;
};

// The options that list and compat share, and their operands.
struct CatalogOptions {
    bool latest = false;
    bool json = false;
    std::vector<std::string> repos;
    std::vector<std::string> operands;
};
// kExitOk, or the exit status of a usage error already reported.
int parseCatalogOptions(const Command& self, const std::vector<std::string>& args, CatalogOptions& out);

// Takes the repeatable "--repo DIR" (or "--repo=DIR") at args[i]; advances i.
// Returns false and sets `error` when DIR is missing.
bool takeRepoOption(const std::vector<std::string>& args, std::size_t& i, std::vector<std::string>& repos,
                    std::string& error);

}  // namespace zrboard

#endif
