// `zrboard diff [--json] A B`: reads two boards and prints what changed from
// A to B, grouped by section, as text or as one JSON document.
#include <iostream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "BoardDiff.h"
#include "BoardPaths.h"
#include "Command.h"
#include "HBOBoard.h"
#include "HBOParser.h"
#include "Json.h"
#include "Version.h"

namespace zrboard {

namespace {

// Reads one board as `show` does; the reader's messages reach standard error
// through the message manager. Null when the board cannot be read.
std::unique_ptr<HBOBoard> readBoard(const std::string& arg) {
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
    return board;
}

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
    std::vector<std::string> boards;
    for (const std::string& a : args) {
        if (!optionsDone && a == "--")
            optionsDone = true;
        else if (!optionsDone && a == "--json")
            asJson = true;
        else if (!optionsDone && !a.empty() && a[0] == '-')
            return usageError("unknown option '" + a + "'", &self);
        else
            boards.push_back(a);
    }
    if (boards.size() != 2)
        return usageError("diff compares two boards, got " + std::to_string(boards.size()), &self);

    // Both are read before giving up, so that one run shows every unreadable board.
    std::unique_ptr<HBOBoard> a = readBoard(boards[0]);
    std::unique_ptr<HBOBoard> b = readBoard(boards[1]);
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
