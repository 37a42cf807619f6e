// `zrboard list [PATTERN] [--repo DIR]... [--latest] [--json]`: the boards of
// the catalogue, one line each, in catalogue order.
#include <fnmatch.h>

#include <algorithm>
#include <iostream>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "CatalogSession.h"
#include "Command.h"
#include "HBOBoard.h"
#include "HBOBoardCReposMgr.h"
#include "HBOBoardComponent.h"
#include "Json.h"

namespace zrboard {

namespace {

struct Row {
    std::string name, display, part, version, revision, source, file;
    bool user = false, hides = false;
};

bool matches(const std::string& pattern, const HBOBoard& board) {
    if (pattern.empty())
        return true;
    for (const std::string& text : {board.getName(), board.getBoardName()})
        if (fnmatch(pattern.c_str(), text.c_str(), FNM_CASEFOLD) == 0)
            return true;
    return false;
}

std::vector<Row> rowsOf(const std::vector<HBOBoard*>& boards, const std::set<std::string>& hidden,
                        const std::string& pattern) {
    std::vector<Row> rows;
    for (const HBOBoard* b : boards) {
        if (!b || !matches(pattern, *b))
            continue;
        Row r;
        r.name = b->getName();
        r.display = b->getDisplayName();
        const HBOBoardComponent* part = b->getActivePart();
        r.part = part ? part->getPartName() : "";
        if (r.part.empty())
            r.part = "-";
        r.version = b->getVersion();
        r.revision = b->getBoardRevision();
        r.user = b->isUserDefined();
        r.hides = r.user && hidden.count(b->getVendor() + ":" + b->getLibrary() + ":" + b->getBoardName() + ":" +
                                         b->getVersion());
        r.source = r.user ? (r.hides ? "user, hides installed" : "user") : "installed";
        r.file = b->getBoardFile();
        rows.push_back(r);
    }
    return rows;
}

void writeText(std::ostream& out, const std::vector<Row>& rows) {
    const std::vector<std::string> heads = {"NAME", "DISPLAY NAME", "PART", "VERSION", "REVISION", "SOURCE"};
    std::vector<std::size_t> width;
    for (const std::string& h : heads)
        width.push_back(h.size());
    auto cells = [](const Row& r) {
        return std::vector<std::string>{r.name, r.display, r.part, r.version, r.revision, r.source};
    };
    for (const Row& r : rows) {
        const std::vector<std::string> c = cells(r);
        for (std::size_t i = 0; i < c.size(); ++i)
            width[i] = std::max(width[i], c[i].size());
    }
    auto line = [&](const std::vector<std::string>& c) {
        std::string text;
        for (std::size_t i = 0; i < c.size(); ++i)
            text += i + 1 < c.size() ? c[i] + std::string(width[i] - c[i].size() + 2, ' ') : c[i];
        out << text << "\n";
    };
    line(heads);
    for (const Row& r : rows)
        line(cells(r));
}

void writeJson(std::ostream& out, const std::vector<Row>& rows, CatalogSession& session) {
    JsonWriter json(out);
    json.beginObject().key("boards").beginArray();
    for (const Row& r : rows) {
        json.beginObject()
            .field("name", r.name)
            .field("display_name", r.display)
            .field("part", r.part)
            .field("file_version", r.version)
            .field("revision", r.revision)
            .field("user", r.user)
            .field("hides_installed", r.hides)
            .field("file", r.file)
            .endObject();
    }
    json.endArray().key("failed").beginArray();
    for (const FailedBoard& f : session.failedBoards()) {
        json.beginObject().field("file", f.path).key("messages").beginArray();
        for (const ComMsgMgrInstance& m : f.messages)
            json.value(m.getLine());
        json.endArray().endObject();
    }
    json.endArray().endObject();
}

}  // namespace

int runList(const Command& self, const std::vector<std::string>& args) {
    CatalogOptions opts;
    if (int rc = parseCatalogOptions(self, args, opts))
        return rc;
    if (opts.operands.size() > 1)
        return usageError("list takes at most one PATTERN, got " + std::to_string(opts.operands.size()) +
                              " (quote a pattern with * or ? so that the shell leaves it alone)",
                          &self);
    const bool latest = opts.latest, asJson = opts.json;
    const std::vector<std::string>& patterns = opts.operands;
    const std::vector<std::string>& repos = opts.repos;

    CatalogSession session(repos);
    std::vector<HBOBoard*> boards;
    if (latest)
        session.catalogue().getAllLatestBoards(boards);
    else
        session.catalogue().getAllBoards(boards);
    std::set<std::string> hidden;
    session.catalogue().getStaticBoardsReplacedByUser(hidden);
    const std::vector<Row> rows = rowsOf(boards, hidden, patterns.empty() ? "" : patterns.front());

    // Problems first on standard error; the listing goes on regardless.
    session.reportProblems(std::cerr, self.name);
    std::ostringstream text;
    if (asJson)
        writeJson(text, rows, session);
    else
        writeText(text, rows);
    std::cout << text.str();
    std::cout.flush();
    if (!std::cout)
        return kExitFailure;
    return session.hadProblems() ? kExitFailure : kExitOk;
}

}  // namespace zrboard
