// `zrboard integrate BASE CONNECTOR=DAUGHTER:DAUGHTER_CONNECTOR...`: joins
// daughter boards to a base board at its connectors through a project
// session, and prints the integrated board as `show` prints a board.
#include <iostream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include <boost/algorithm/string/split.hpp>
#include <boost/filesystem.hpp>

#include "Command.h"
#include "HBOBoard.h"
#include "HBOBoardCDataManager.h"
#include "HBOBoardUtils.h"
#include "HEXAll.h"
#include "ModelJson.h"
#include "ShowOutline.h"

namespace zrboard {

namespace {

struct IntegrateOptions {
    std::string base;
    std::vector<HBOBoardCDataManager::ConnectionPair> connections;
    std::string name;
    bool named = false;
    HSTVector<std::string> repos;
    bool json = false;
};

// "fmc=korvelhw:card:1.0:j1" becomes the pair ("fmc", "korvelhw:card:j1:1.0"),
// the daughter named by board part name as the session expects it.
bool parseConnection(const std::string& arg, HBOBoardCDataManager::ConnectionPair& out, std::string& problem) {
    const std::string::size_type eq = arg.find('=');
    const std::string::size_type colon = arg.rfind(':');
    if (eq == std::string::npos || eq == 0 || colon == std::string::npos || colon < eq ||
        colon + 1 == arg.size()) {
        problem = "connection '" + arg + "' is not CONNECTOR=DAUGHTER_BOARD:DAUGHTER_CONNECTOR";
        return false;
    }
    const std::string daughter = arg.substr(eq + 1, colon - eq - 1);
    std::vector<std::string> fields;
    boost::algorithm::split(fields, daughter, [](char c) { return c == ':'; });
    if (fields.size() != 3 || fields[0].empty() || fields[1].empty() || fields[2].empty()) {
        problem = "daughter board '" + daughter + "' in '" + arg +
                  "' is not VENDOR:BOARD:VERSION (the version may be * for the newest)";
        return false;
    }
    out.first = arg.substr(0, eq);
    out.second = fields[0] + ":" + fields[1] + ":" + arg.substr(colon + 1) + ":" + fields[2];
    return true;
}

// Returns kExitOk or the exit code of a usage error already reported.
int parseArguments(const Command& self, const std::vector<std::string>& args, IntegrateOptions& opts) {
    bool optionsDone = false;
    std::vector<std::string> positional;
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& a = args[i];
        auto valueOf = [&](const std::string& option, std::string& value) {
            if (a.size() > option.size() && a.compare(0, option.size() + 1, option + "=") == 0) {
                value = a.substr(option.size() + 1);
                return true;
            }
            if (i + 1 >= args.size())
                return false;
            value = args[++i];
            return true;
        };
        if (optionsDone || a.empty() || a[0] != '-') {
            positional.push_back(a);
        } else if (a == "--") {
            optionsDone = true;
        } else if (a == "--json") {
            opts.json = true;
        } else if (a == "--name" || a.compare(0, 7, "--name=") == 0) {
            if (!valueOf("--name", opts.name))
                return usageError("option --name needs a board name", &self);
            if (opts.name.empty() || opts.name.find_first_of(": \t") != std::string::npos)
                return usageError("--name '" + opts.name + "' is not a board name (no blanks, no ':')", &self);
            opts.named = true;
        } else if (a == "--repo" || a.compare(0, 7, "--repo=") == 0) {
            std::string dir;
            if (!valueOf("--repo", dir))
                return usageError("option --repo needs a directory", &self);
            boost::system::error_code ec;
            if (!boost::filesystem::is_directory(dir, ec))
                return usageError("--repo '" + dir + "' is not a directory", &self);
            opts.repos.push_back(boost::filesystem::absolute(dir).lexically_normal().string());
        } else {
            return usageError("unknown option '" + a + "'", &self);
        }
    }
    if (positional.empty())
        return usageError("integrate needs a BASE board and at least one connection", &self);
    opts.base = positional.front();
    if (positional.size() < 2)
        return usageError("integrate needs at least one CONNECTOR=DAUGHTER_BOARD:DAUGHTER_CONNECTOR", &self);
    for (std::size_t i = 1; i < positional.size(); ++i) {
        HBOBoardCDataManager::ConnectionPair pair;
        std::string problem;
        if (!parseConnection(positional[i], pair, problem))
            return usageError(problem, &self);
        opts.connections.push_back(pair);
    }
    return kExitOk;
}

}  // namespace

int runIntegrate(const Command& self, const std::vector<std::string>& args) {
    IntegrateOptions opts;
    if (int rc = parseArguments(self, args, opts))
        return rc;

    HBOBoardCDataManager session;
    bool boardChanged = false;
    if (!opts.repos.empty())
        session.setBoardPartRepoPaths(opts.repos, boardChanged);

    std::unique_ptr<HBOBoard> board;
    try {
        std::string name = opts.name;
        if (!opts.named) {
            bool viaLegacy = false;
            const HBOBoard* base = session.getBoard(opts.base, viaLegacy, true);
            name = session.createUniqBoardNameForIntegratedBoard(base ? base->getBoardName() : opts.base,
                                                                 opts.connections);
        }
        board.reset(session.createIntegratdBoard(opts.base, opts.connections, name));
    } catch (const HEXAll& e) {
        // The refusal carries its numbered message; the message manager prints it.
        e.print();
        return kExitFailure;
    }

    std::ostringstream text;
    if (opts.json)
        writeBoardJson(text, *board);
    else
        writeBoardOutline(text, *board);
    std::cout << text.str();
    std::cout.flush();
    return std::cout ? kExitOk : kExitFailure;
}

}  // namespace zrboard
