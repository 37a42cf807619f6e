// The catalogue, the project session and the parameters as the scripting
// layers use them: one session per interpreter, boards by pattern, and
// parameter writes that check their names and values.
#ifndef ZR_BIND_ZRSESSION_H
#define ZR_BIND_ZRSESSION_H

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "ZrRef.h"

class HBOBoard;
class HBOBoardCDataManager;
class HBOBoardCReposMgr;
class HUTGuiEventConnectionHandle;

namespace zrbind {

// The project session of one interpreter. A catalogue refresh deletes user
// boards, so the chosen board is let go before it and chosen again by name
// after it; the re-choice waits for the next call, because the refresh may
// run inside the session's own catalogue.
class Session {
public:
    Session();
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    HBOBoardCDataManager& get();

private:
    HBOBoardCDataManager* m_manager = nullptr;
    std::string m_rebindName;
    bool m_stale = false;
    std::vector<std::unique_ptr<HUTGuiEventConnectionHandle>> m_listeners;
};

HBOBoardCReposMgr& catalogue();
// Refreshes the catalogue at once when the user's repositories changed, so
// that handles of dropped boards go now, not at some later look-up.
void syncCatalogue();

// The board an object belongs to; null for kinds that have none.
HBOBoard* boardOf(const Ref& r);

// The boards of the catalogue (only the newest of each with latest), each
// once, whose names keep accepts.
std::vector<Ref> catalogueBoards(bool latest, const std::function<bool(const std::string&)>& keep);
// The boards of the objects, each once; an error text naming the first object
// without a board, or empty.
std::string boardsOfObjects(const std::vector<Ref>& from, const std::function<bool(const std::string&)>& keep,
                            std::vector<Ref>& out);

// Sets a parameter: an error text for an unknown name or a value it can't
// take, else empty. The user's repositories take effect at once.
std::string setParam(const std::string& name, const std::string& value);
// The value, or false for an unknown name.
bool getParam(const std::string& name, std::string& value);
extern const char* const kRepoParam;

// Reads a board file that is in no repository. Reading the same file again
// (by its absolute path) replaces the board read before, whose handles then
// no longer exist. Null, with the reason in error, when the file can't be read.
HBOBoard* readBoardFile(const std::string& path, std::string& error);
// Deletes every board readBoardFile read.
void dropReadBoards();

// The table of report_property: name, type, read-only and value in columns.
std::string propertyReport(const zrc::tcltasks::tclany& object);

}  // namespace zrbind

#endif
