// The differences between two boards, as a board vendor reviewing a new
// revision reads them: a flat list in a fixed order, kept apart from any
// printing so that the text and the JSON form say the same.
#ifndef ZRBOARD_BOARDDIFF_H
#define ZRBOARD_BOARDDIFF_H

#include <string>
#include <vector>

class HBOBoard;

namespace zrboard {

struct BoardDifference {
    enum Change { kAdded, kRemoved, kChanged };

    // One object on the way down from the board, e.g. {"component", "part0"}.
    struct Step {
        std::string kind;
        std::string name;
    };

    std::string section;     // one of diffSections(), by id
    std::vector<Step> path;  // empty for a field of the board itself
    Change change = kChanged;
    std::string field;   // the field that changed; empty when the object was added or removed
    std::string before;  // old value; for a removed object a summary of it
    std::string after;   // new value; for an added object a summary of it
};

struct DiffSection {
    const char* id;     // JSON name
    const char* title;  // heading of the text form
};

// The sections in the order in which differences are listed.
const std::vector<DiffSection>& diffSections();

// Objects are matched by name (components by component name, pins by pin
// name, ports by logical port, preferred IPs and presets by VLNV); paths
// inside a board directory are compared relative to it, so that the same
// board in two places is equal. What the reader derives from other fields
// (enabled flags, full component names, pin users, the current revision,
// which is the last compatible one) is not compared again.
std::vector<BoardDifference> diffBoards(const HBOBoard& before, const HBOBoard& after);

const char* changeName(BoardDifference::Change change);

// One line of the text form without indentation, e.g.
// "component part0: pin DDR3_DQ0: iostandard SSTL15 -> SSTL135".
std::string differenceLine(const BoardDifference& d);

}  // namespace zrboard

#endif
