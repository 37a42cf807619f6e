#include "Command.h"

namespace zrboard {

const std::vector<Command>& commandTable() {
    static const std::vector<Command> table = {
        {"params", "[--all]", "list the library's parameters with their defaults and current values",
         "  --all    include hidden parameters\n", runParams},
        {"check", "[--no-validate] [--no-strict] [--json] PATH...",
         "read and check board files (a directory stands for its board.xml)",
         "  --no-validate  do not validate against the grammars (deferred messages are then not shown)\n"
         "  --no-strict    switch the later board checks off\n"
         "  --json         print one JSON document with every file's result and messages\n",
         runCheck},
        {"show", "[--json] PATH", "print the board read from PATH as an outline",
         "  --json   print the whole board model as JSON\n", runShow},
        {"migrate", "SRC DST",
         "rewrite a board's pin and preset files, normalised, into DST (board.xml is written empty)",
         "  SRC   board directory to read: board.xml, part0_pins.xml and, when present, preset.xml\n"
         "  DST   directory to write the three files into; made when missing; must not be SRC\n"
         "\n"
         "This is not a copy of the board. What DST gets:\n"
         "  part0_pins.xml  the part name and one line per pin: index, name, loc and the known I/O\n"
         "                  properties; other attributes and the design constraints are left out\n"
         "  preset.xml      the preset procedures and their IPs with name and value of each user\n"
         "                  parameter; value types, hierarchical and model parameters are left out\n"
         "  board.xml       EMPTY, by design: the board file is not carried (its components are listed)\n"
         "The files are written in the tool's own fixed form, which the board readers do not read back.\n"
         "Reading stops at the first pin without index or loc, or with an index or loc seen before.\n"
         "Nothing is written when reading fails. Exit status: 0 when all was read and written, 1 otherwise.\n",
         runMigrate},
    };
    return table;
}

const Command* findCommand(const std::string& name) {
    for (const Command& cmd : commandTable())
        if (name == cmd.name)
            return &cmd;
    return nullptr;
}

}  // namespace zrboard
