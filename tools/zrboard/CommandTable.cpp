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
        {"site", "OUT [--repo DIR]... [--latest] [--title TEXT]",
         "write the catalogue as a static web site into the directory OUT",
         "  OUT           directory to write into (made if need be); open OUT/index.html\n"
         "  --repo DIR    a user board repository (repeatable)\n"
         "  --latest      only the newest file version of each board\n"
         "  --title TEXT  the site's title (default \"Board catalogue\")\n",
         runSite},
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
