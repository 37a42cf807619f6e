#include <algorithm>
#include <iostream>
#include <string>

#include "Command.h"
#include "Version.h"

namespace zrboard {

namespace {

std::string commandLabel(const Command& cmd) {
    std::string label = cmd.name;
    if (cmd.synopsis && *cmd.synopsis)
        label += std::string(" ") + cmd.synopsis;
    return label;
}

void printRows(std::ostream& out, const std::vector<std::pair<std::string, std::string>>& rows) {
    std::size_t width = 0;
    for (const auto& row : rows)
        width = std::max(width, row.first.size());
    for (const auto& row : rows)
        out << "  " << row.first << std::string(width - row.first.size() + 3, ' ') << row.second << "\n";
}

}  // namespace

bool isHelpOption(const std::string& arg) { return arg == "-h" || arg == "--help"; }

void printUsage(std::ostream& out) {
    out << "Usage: " << kToolName << " [global options] <command> [arguments]\n"
        << "\n"
        << "Reads, checks and lists programmable-logic board descriptions.\n"
        << "\n"
        << "Commands:\n";
    // Names only: synopses can be long, and each command's help shows its own.
    std::vector<std::pair<std::string, std::string>> commands;
    for (const Command& cmd : commandTable())
        commands.emplace_back(cmd.name, cmd.summary);
    printRows(out, commands);

    out << "\nGlobal options:\n";
    printRows(out, {{"-h, --help", "show this help and exit"},
                    {"--version", "show the tool's name and version and exit"},
                    {"--param NAME=VALUE", "set a library parameter before the command runs (repeatable)"}});

    out << "\nEnvironment variables:\n";
    printRows(out, {{"ZR_DATA_DIRS", "data directories, colon separated, in search order"},
                    {"ZR_APP_ROOT", "installation root"},
                    {"ZR_DEBUG", "debug channels to switch on, comma separated (e.g. board.parse,board.dataProps)"}});

    out << "\nRun '" << kToolName << " <command> --help' for the arguments of a command.\n";
}

void printCommandUsage(std::ostream& out, const Command& cmd) {
    out << "Usage: " << kToolName << " [global options] " << commandLabel(cmd) << "\n"
        << "\n"
        << cmd.summary << "\n";
    if (cmd.details && *cmd.details)
        out << "\nOptions:\n" << cmd.details;
}

int usageError(const std::string& message, const Command* cmd) {
    std::cerr << kToolName << ": error: " << message << "\n\n";
    if (cmd)
        printCommandUsage(std::cerr, *cmd);
    else
        printUsage(std::cerr);
    return kExitUsage;
}

}  // namespace zrboard
