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
        {"show", "[--json] PATH|NAME [--repo DIR]... [--project-repo DIR]...",
         "print the board read from PATH, or the catalogue's board of that NAME, as an outline",
         "  --json       print the whole board model as JSON\n"
         "  --repo DIR   a user board repository for looking NAME up (repeatable)\n"
         "  --project-repo DIR  look NAME up as a project with this repository would (repeatable)\n"
         "  PATH         a board directory or board file; anything with a '/' or ending in .xml is a path\n"
         "  NAME         vendor:board:version, vendor:board:component:version, a short or an old name; any case\n",
         runShow},
        {"list", "[PATTERN] [--repo DIR]... [--latest] [--json]",
         "list the boards of the catalogue: installed boards and user repositories",
         "  PATTERN      a glob (*, ?, [...]) matched without regard to case against the\n"
         "               catalogue name or the board name; quote it for the shell\n"
         "  --repo DIR   a user board repository (repeatable; sets board.repoPaths)\n"
         "  --latest     only the newest file version of each board\n"
         "  --json       print one JSON document (boards and failed board files)\n"
         "Boards that fail to read are reported on standard error and the listing goes on;\n"
         "the exit status is then 1, as it is for a repository that does not exist.\n",
         runList},
        {"compat", "NAME [--repo DIR]... [--latest] [--json]",
         "list the daughter-board connectors that fit each connector of a reference board (for a daughter\n"
         "board: the reference-board connectors that each of its connectors fits)",
         "  NAME         a board name the catalogue answers to, or the path of a catalogued board\n"
         "  --repo DIR   a user board repository (repeatable)\n"
         "  --latest     only the newest version of each board on the other side\n"
         "  --json       print one JSON document\n",
         runCompat},
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
