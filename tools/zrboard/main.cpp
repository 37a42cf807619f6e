// zrboard: command-line front end of the board library. The library's
// parameters are registered when it is loaded, so the tool must keep using
// it directly (the linker drops shared libraries nothing refers to).
#include <iostream>
#include <string>
#include <utility>
#include <vector>

#include "Command.h"
#include "HPAParamMgr.h"
#include "HUTConvert.h"
#include "Version.h"

namespace {

using zrboard::kExitOk;
using zrboard::usageError;

// A bad --param is reported on its own, without the whole usage text.
int paramError(const std::string& message) {
    std::cerr << zrboard::kToolName << ": error: " << message << "\n"
              << "Run '" << zrboard::kToolName << " params --all' for the parameters.\n";
    return zrboard::kExitUsage;
}

struct GlobalOptions {
    bool help = false;
    bool version = false;
    std::vector<std::pair<std::string, std::string>> params;  // in command-line order
    std::size_t commandIndex = 0;                             // first argument after the options
};

// Parses the options in front of the command. Returns kExitOk or the exit code
// of a usage error that has been reported already.
int parseGlobalOptions(const std::vector<std::string>& args, GlobalOptions& opts) {
    std::size_t i = 0;
    for (; i < args.size(); ++i) {
        const std::string& arg = args[i];
        if (zrboard::isHelpOption(arg)) {
            opts.help = true;
        } else if (arg == "--version") {
            opts.version = true;
        } else if (arg == "--param" || arg.compare(0, 8, "--param=") == 0) {
            std::string assignment;
            if (arg == "--param") {
                if (i + 1 >= args.size())
                    return usageError("option --param needs an argument NAME=VALUE", nullptr);
                assignment = args[++i];
            } else {
                assignment = arg.substr(8);
            }
            const std::string::size_type eq = assignment.find('=');
            if (eq == std::string::npos || eq == 0)
                return usageError("option --param expects NAME=VALUE, got '" + assignment + "'", nullptr);
            opts.params.emplace_back(assignment.substr(0, eq), assignment.substr(eq + 1));
        } else if (arg == "--") {
            ++i;
            break;
        } else if (!arg.empty() && arg[0] == '-') {
            return usageError("unknown option '" + arg + "'", nullptr);
        } else {
            break;
        }
    }
    opts.commandIndex = i;
    return kExitOk;
}

int applyParams(const std::vector<std::pair<std::string, std::string>>& params) {
    HPAParamMgr* mgr = HPAParamMgr::getParamMgr();
    for (const auto& p : params) {
        const HPAParam* param = mgr->findParam(p.first);
        if (!param)
            return paramError("unknown parameter '" + p.first + "'");
        bool ignored = false;
        if (param->getKind() == HPAParam::BOOL && !HUTConvert::stringToBoolean(p.second, ignored))
            return paramError("parameter '" + p.first + "' is boolean; '" + p.second +
                              "' is not a boolean value (use true or false)");
        if (!mgr->setValue(p.first, p.second))
            return paramError("cannot set parameter '" + p.first + "' to '" + p.second + "'");
    }
    return kExitOk;
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> args(argv + 1, argv + argc);

    GlobalOptions opts;
    if (int rc = parseGlobalOptions(args, opts))
        return rc;
    // Parameters are set before anything else runs, so that a bad one is
    // reported even together with --help or --version.
    if (int rc = applyParams(opts.params))
        return rc;
    if (opts.help) {
        zrboard::printUsage(std::cout);
        return kExitOk;
    }
    if (opts.version) {
        std::cout << zrboard::kToolName << " " << zrboard::kToolVersion << "\n";
        return kExitOk;
    }
    if (opts.commandIndex >= args.size())
        return usageError("no command given", nullptr);

    const std::string& name = args[opts.commandIndex];
    const zrboard::Command* cmd = zrboard::findCommand(name);
    if (!cmd)
        return usageError("unknown command '" + name + "'", nullptr);

    const std::vector<std::string> cmdArgs(args.begin() + opts.commandIndex + 1, args.end());
    for (const std::string& a : cmdArgs) {
        if (zrboard::isHelpOption(a)) {
            zrboard::printCommandUsage(std::cout, *cmd);
            return kExitOk;
        }
    }
    try {
        return cmd->run(*cmd, cmdArgs);
    } catch (const std::exception& e) {
        std::cerr << zrboard::kToolName << ": " << name << ": " << e.what() << "\n";
        return zrboard::kExitFailure;
    }
}
