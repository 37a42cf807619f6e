// `zrboard diff [--json] [--repo DIR]... A B`: reads two boards, from paths
// or from the catalogue by name, and prints what changed from A to B, grouped
// by section, as text or as one JSON document.
#include <iostream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "BoardDiff.h"
#include "BoardPaths.h"
#include "CatalogSession.h"
#include "Command.h"
#include "HBOBoard.h"
#include "HBOParser.h"
#include "Json.h"
#include "Version.h"

namespace zrboard {

namespace {

// A board read from a path is the command's own; one from the catalogue
// belongs to the catalogue, which is opened for the first name only.
class BoardSource {
public:
    explicit BoardSource(const std::vector<std::string>& repos) : m_repos(repos) {}

    // Null when the board cannot be had; the reason is on standard error.
    const HBOBoard* get(const std::string& arg) { return looksLikePath(arg) ? read(arg) : lookUp(arg); }

private:
    // As `show` reads; the reader's messages reach standard error through the message manager.
    const HBOBoard* read(const std::string& arg) {
        const std::string file = boardFileOf(arg);
        std::unique_ptr<HBOBoard> board(new HBOBoard());
        HBOParser parser;
        if (!parser.parseFile(file, board.get())) {
            std::cerr << kToolName << ": diff: cannot read a board from '" << file << "' (run '" << kToolName
                      << " check PATH' for the details)\n";
            return nullptr;
        }
        // Compared in the shape the rest of the system sees; boards of schema 2 stay as they are.
        parser.migrateV1ToV2(board.get());
        m_owned.push_back(std::move(board));
        return m_owned.back().get();
    }

    const HBOBoard* lookUp(const std::string& name) {
        if (!m_session) {
            m_session.reset(new CatalogSession(m_repos));
            for (const ComMsgMgrInstance& m : m_session->notices())
                std::cerr << m.getLine() << "\n";
        }
        const HBOBoard* board = m_session->find(name);
        if (!board)
            std::cerr << kToolName << ": diff: '" << name
                      << "' is neither a path nor a board name of the catalogue (run '" << kToolName
                      << " list' for the names; add a repository with --repo DIR)\n";
        return board;
    }

    const std::vector<std::string> m_repos;
    std::vector<std::unique_ptr<HBOBoard>> m_owned;
    std::unique_ptr<CatalogSession> m_session;
};

std::string boardLabel(const HBOBoard& board) { return board.getName() + " (" + board.getBoardFile() + ")"; }

void writeText(std::ostream& out, const HBOBoard& a, const HBOBoard& b, const std::vector<BoardDifference>& diffs) {
    if (diffs.empty()) {
        out << "The boards are equal: " << boardLabel(a) << " and " << boardLabel(b) << "\n";
        return;
    }
    out << "A: " << boardLabel(a) << "\n"
        << "B: " << boardLabel(b) << "\n";
    for (const DiffSection& section : diffSections()) {
        std::vector<std::string> lines;
        for (const BoardDifference& d : diffs)
            if (d.section == section.id)
                lines.push_back(differenceLine(d));
        if (lines.empty())
            continue;
        out << section.title << " (" << lines.size() << "):\n";
        for (const std::string& line : lines)
            out << "  " << line << "\n";
    }
    out << diffs.size() << (diffs.size() == 1 ? " difference" : " differences") << "\n";
}

void writeJson(std::ostream& out, const HBOBoard& a, const HBOBoard& b, const std::vector<BoardDifference>& diffs) {
    JsonWriter json(out);
    json.beginObject().field("equal", diffs.empty());
    json.key("a").beginObject().field("name", a.getName()).field("file", a.getBoardFile()).endObject();
    json.key("b").beginObject().field("name", b.getName()).field("file", b.getBoardFile()).endObject();
    json.field("count", static_cast<unsigned long>(diffs.size()));
    json.key("differences").beginArray();
    // Section by section, as in the text form.
    for (const DiffSection& section : diffSections()) {
        for (const BoardDifference& d : diffs) {
            if (d.section != section.id)
                continue;
            json.beginObject().field("section", d.section).key("path").beginArray();
            for (const BoardDifference::Step& s : d.path)
                json.beginObject().field("kind", s.kind).field("name", s.name).endObject();
            json.endArray()
                .field("change", changeName(d.change))
                .field("field", d.field)
                .field("before", d.before)
                .field("after", d.after)
                .field("text", differenceLine(d))
                .endObject();
        }
    }
    json.endArray().endObject();
}

}  // namespace

int runDiff(const Command& self, const std::vector<std::string>& args) {
    bool asJson = false;
    bool optionsDone = false;
    std::vector<std::string> boards, repos;
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& a = args[i];
        if (!optionsDone && a == "--") {
            optionsDone = true;
        } else if (!optionsDone && a == "--json") {
            asJson = true;
        } else if (!optionsDone && (a == "--repo" || a.compare(0, 7, "--repo=") == 0)) {
            std::string error;
            if (!takeRepoOption(args, i, repos, error))
                return usageError(error, &self);
        } else if (!optionsDone && !a.empty() && a[0] == '-') {
            return usageError("unknown option '" + a + "'", &self);
        } else {
            boards.push_back(a);
        }
    }
    if (boards.size() != 2)
        return usageError("diff compares two boards, got " + std::to_string(boards.size()), &self);
    // Both are looked for before giving up, so that one run names every board it cannot have.
    BoardSource source(repos);
    const HBOBoard* a = source.get(boards[0]);
    const HBOBoard* b = source.get(boards[1]);
    if (!a || !b)
        return kExitUsage;

    const std::vector<BoardDifference> diffs = diffBoards(*a, *b);
    // Built in full first, so that a failure half-way leaves standard output empty.
    std::ostringstream text;
    if (asJson)
        writeJson(text, *a, *b, diffs);
    else
        writeText(text, *a, *b, diffs);
    std::cout << text.str();
    std::cout.flush();
    if (!std::cout)
        return kExitUsage;
    return diffs.empty() ? kExitOk : kExitFailure;
}

}  // namespace zrboard
