// The command table of zrboard. A new command is one more entry in
// CommandTable.cpp and a run function in a file of its own.
#ifndef ZRBOARD_COMMAND_H
#define ZRBOARD_COMMAND_H

#include <iosfwd>
#include <string>
#include <vector>

namespace zrboard {

enum ExitCode { kExitOk = 0, kExitFailure = 1, kExitUsage = 2 };

struct Command {
    const char* name;
    const char* synopsis;  // arguments after the name, e.g. "[--all]"
    const char* summary;   // one line for the command list
    const char* details;   // option lines for `zrboard <command> --help`; may be empty
    // Receives the arguments after the command name. Returns an ExitCode.
    int (*run)(const Command& self, const std::vector<std::string>& args);
};

const std::vector<Command>& commandTable();
const Command* findCommand(const std::string& name);

// Usage texts.
void printUsage(std::ostream& out);
void printCommandUsage(std::ostream& out, const Command& cmd);

// Reports a usage error on standard error, followed by the usage of `cmd`
// (or of the whole tool when null). Returns kExitUsage.
int usageError(const std::string& message, const Command* cmd);

// True for "-h" and "--help".
bool isHelpOption(const std::string& arg);

// Command entry points.
int runParams(const Command& self, const std::vector<std::string>& args);
int runCheck(const Command& self, const std::vector<std::string>& args);
int runShow(const Command& self, const std::vector<std::string>& args);
int runList(const Command& self, const std::vector<std::string>& args);
int runCompat(const Command& self, const std::vector<std::string>& args);
int runMigrate(const Command& self, const std::vector<std::string>& args);
int runDiff(const Command& self, const std::vector<std::string>& args);
int runSite(const Command& self, const std::vector<std::string>& args);
int runIntegrate(const Command& self, const std::vector<std::string>& args);

}  // namespace zrboard

#endif
