// `zrboard show [--json] PATH`: reads one board through the front door and
// prints its model, as an outline or as one JSON document.
#include <iostream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "BoardPaths.h"
#include "Command.h"
#include "HBOBoard.h"
#include "HBOParser.h"
#include "ModelJson.h"
#include "ShowOutline.h"
#include "Version.h"

namespace zrboard {

int runShow(const Command& self, const std::vector<std::string>& args) {
    bool asJson = false;
    bool optionsDone = false;
    std::vector<std::string> paths;
    for (const std::string& a : args) {
        if (!optionsDone && a == "--")
            optionsDone = true;
        else if (!optionsDone && a == "--json")
            asJson = true;
        else if (!optionsDone && !a.empty() && a[0] == '-')
            return usageError("unknown option '" + a + "'", &self);
        else
            paths.push_back(a);
    }
    if (paths.empty())
        return usageError("show needs a PATH", &self);
    if (paths.size() > 1)
        return usageError("show takes one PATH, got " + std::to_string(paths.size()), &self);

    const std::string file = boardFileOf(paths.front());
    std::unique_ptr<HBOBoard> board(new HBOBoard());
    HBOParser parser;
    // The reader's messages reach standard error through the message manager.
    if (!parser.parseFile(file, board.get())) {
        // Without validation the reader keeps its detailed messages to itself; check shows them.
        std::cerr << kToolName << ": show: cannot read a board from '" << file << "' (run '" << kToolName
                  << " check PATH' for the details)\n";
        return kExitFailure;
    }
    // A schema 1 board is shown in the shape the rest of the system sees; the
    // call leaves boards of schema 2 alone and its result says nothing.
    parser.migrateV1ToV2(board.get());

    // Built in full first, so that a failure half-way leaves standard output empty.
    std::ostringstream text;
    if (asJson)
        writeBoardJson(text, *board);
    else
        writeBoardOutline(text, *board);
    std::cout << text.str();
    std::cout.flush();
    return std::cout ? kExitOk : kExitFailure;
}

}  // namespace zrboard
