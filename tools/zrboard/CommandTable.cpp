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
        {"diff", "[--json] [--repo DIR]... A B",
         "show what changed from board A to board B (paths or catalogue names)",
         "  --json       print the differences as one JSON document\n"
         "  --repo DIR   look names up in the user repository DIR too (repeatable; sets board.repoPaths)\n"
         "\n"
         "An argument that holds a slash or names an existing file or directory is read as a path; any other\n"
         "is a board name as the catalogue knows it (vendor:board:version, with the component, or short).\n"
         "\n"
         "Exit status: 0 when the boards are equal, 1 when they differ, 2 for a usage error or a board\n"
         "that cannot be read (its numbered messages go to standard error).\n",
         runDiff},
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
