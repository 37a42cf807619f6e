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
        {"integrate", "BASE CONNECTOR=DAUGHTER_BOARD:DAUGHTER_CONNECTOR... [--name NAME] [--repo DIR]... [--json]",
         "join daughter boards to a base board at its connectors and print the integrated board",
         "  BASE             the base board: VENDOR:BOARD:VERSION, a board part name, or VENDOR:BOARD:* for the "
         "newest\n"
         "  CONNECTOR=DAUGHTER_BOARD:DAUGHTER_CONNECTOR\n"
         "                   join the daughter board VENDOR:BOARD:VERSION at its connector to the base\n"
         "                   board's CONNECTOR (repeatable; e.g. fmc_lpc=korvelhw:fennock:1.0:fmc_conn)\n"
         "  --name NAME      board name of the result (default: built from the base and the connections)\n"
         "  --repo DIR       a project board repository, searched before the installed boards (repeatable)\n"
         "  --json           print the whole board model as JSON\n",
         runIntegrate},
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
