#include "Command.h"

namespace zrboard {

const std::vector<Command>& commandTable() {
    static const std::vector<Command> table = {
        {"params", "[--all]", "list the library's parameters with their defaults and current values",
         "  --all    include hidden parameters\n", runParams},
        {"check", "[--no-validate] [--no-strict] [--format=gcc|json|plain] [--quiet] PATH...",
         "read and check board files (a directory stands for its board.xml)",
         "  --no-validate  do not validate against the grammars (deferred messages are then not shown)\n"
         "  --no-strict    switch the later board checks off\n"
         "  --format=gcc   messages as FILE:LINE:COLUMN: severity: [id] text where the place is known,\n"
         "                 which editors read to jump to the fault (the default)\n"
         "  --format=plain messages as SEVERITY: [scope id] text\n"
         "  --format=json  one JSON document with every file's result and messages (also: --json)\n"
         "  --quiet, -q    leave out INFO messages\n"
         "Messages go to standard error, one summary line per file to standard output.\n",
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
         "list which connectors of other boards fit each connector of a board, fully or partly",
         "  NAME         a board name the catalogue answers to, or the path of a catalogued board\n"
         "  --repo DIR   a user board repository (repeatable)\n"
         "  --latest     only the newest version of each board on the other side\n"
         "  --json       print one JSON document\n",
         runCompat},
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
        {"diff", "[--json] [--repo DIR]... A B",
         "show what changed from board A to board B (paths or catalogue names)",
         "  --json       print the differences as one JSON document\n"
         "  --repo DIR   look names up in the user repository DIR too (repeatable; sets board.repoPaths)\n"
         "  A, B         a board directory or board file; anything with a '/' or ending in .xml is a path;\n"
         "               any other is a name the catalogue answers to (vendor:board:version,\n"
         "               vendor:board:component:version, a short or an old name; any case)\n"
         "\n"
         "Exit status: 0 when the boards are equal, 1 when they differ, 2 for a usage error or a board\n"
         "that cannot be read (its numbered messages go to standard error).\n",
         runDiff},
        {"site", "OUT [--repo DIR]... [--latest] [--title TEXT]",
         "write the catalogue as a static web site into the directory OUT",
         "  OUT           directory to write into (made if need be); open OUT/index.html\n"
         "  --repo DIR    a user board repository (repeatable)\n"
         "  --latest      only the newest file version of each board\n"
         "  --title TEXT  the site's title (default \"Board catalogue\")\n",
         runSite},
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
