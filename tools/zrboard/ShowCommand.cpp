// `zrboard show [--json] PATH|NAME [--repo DIR]... [--project-repo DIR]...`:
// reads one board through the front door, or takes it from the catalogue by
// name (as a project would, with project repositories), and prints its model,
// as an outline or as one JSON document.
#include <iostream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "BoardPaths.h"
#include "CatalogSession.h"
#include "Command.h"
#include "HBOBoard.h"
#include "HBOBoardCDataManager.h"
#include "HBOParser.h"
#include "ModelJson.h"
#include "ShowOutline.h"
#include "Version.h"

namespace zrboard {

namespace {

int print(const HBOBoard& board, bool asJson);

// A name rather than a path: the board as the catalogue holds it.
int showByName(const std::string& name, const std::vector<std::string>& repos, bool asJson) {
    CatalogSession session(repos);
    for (const ComMsgMgrInstance& m : session.notices())
        std::cerr << m.getLine() << "\n";
    const HBOBoard* board = session.find(name);
    if (!board) {
        std::cerr << kToolName << ": show: '" << name << "' is neither a path nor a board name of the catalogue (run '"
                  << kToolName << " list' for the names; add a repository with --repo DIR)\n";
        return kExitFailure;
    }
    return print(*board, asJson);
}

// The board a project with the repositories `projectRepos` would take for NAME,
// with the project's notices (old name, user copy of an installed board).
int showInProject(const std::string& name, const std::vector<std::string>& repos,
                  const std::vector<std::string>& projectRepos, bool asJson) {
    CatalogSession catalogue(repos);
    for (const ComMsgMgrInstance& m : catalogue.notices())
        std::cerr << m.getLine() << "\n";
    HBOBoardCDataManager project;
    bool changed = false;
    project.setBoardPartRepoPaths(HSTVector<std::string>(projectRepos.begin(), projectRepos.end()), changed);
    // Soft: a board that is not there is reported as the project reports it.
    if (!project.setBoard(name, "", true, true))
        return kExitFailure;
    return print(*project.getBoardStrategy(), asJson);
}

}  // namespace

int runShow(const Command& self, const std::vector<std::string>& args) {
    bool asJson = false;
    bool optionsDone = false;
    std::vector<std::string> paths, repos, projectRepos;
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& a = args[i];
        std::string error;
        if (!optionsDone && a == "--")
            optionsDone = true;
        else if (!optionsDone && a == "--json")
            asJson = true;
        else if (!optionsDone && (a == "--repo" || a.compare(0, 7, "--repo=") == 0)) {
            if (!takeRepoOption(args, i, repos, error))
                return usageError(error, &self);
        } else if (!optionsDone && (a == "--project-repo" || a.compare(0, 15, "--project-repo=") == 0)) {
            std::string dir;
            if (a != "--project-repo")
                dir = a.substr(15);
            else if (i + 1 < args.size())
                dir = args[++i];
            if (dir.empty())
                return usageError("option --project-repo needs a directory", &self);
            boost::system::error_code ec;
            if (!boost::filesystem::is_directory(dir, ec))
                return usageError("--project-repo '" + dir + "' is not a directory", &self);
            projectRepos.push_back(boost::filesystem::absolute(dir).lexically_normal().string());
        } else if (!optionsDone && !a.empty() && a[0] == '-')
            return usageError("unknown option '" + a + "'", &self);
        else
            paths.push_back(a);
    }
    if (paths.empty())
        return usageError("show needs a PATH or a board NAME", &self);
    if (paths.size() > 1)
        return usageError("show takes one PATH or NAME, got " + std::to_string(paths.size()), &self);

    if (!projectRepos.empty()) {
        if (looksLikePath(paths.front()))
            return usageError("--project-repo looks up a board NAME, not a PATH", &self);
        return showInProject(paths.front(), repos, projectRepos, asJson);
    }
    if (!looksLikePath(paths.front()))
        return showByName(paths.front(), repos, asJson);

    const std::string file = boardFileOf(paths.front());
    std::unique_ptr<HBOBoard> board(new HBOBoard());
    HBOParser parser;
    // The reader's messages reach standard error through the message manager.
    if (!parser.parseFile(file, board.get())) {
        // Without validation the reader keeps its detailed messages to itself; check shows them.
        std::cerr << kToolName << ": show: cannot read a board from '" << file << "' (run '" << kToolName
                  << " check PATH' for the details)\n";
        return kExitFailure;
    }
    // A schema 1 board is shown in the shape the rest of the system sees; the
    // call leaves boards of schema 2 alone and its result says nothing.
    parser.migrateV1ToV2(board.get());
    return print(*board, asJson);
}

namespace {

int print(const HBOBoard& board, bool asJson) {
    // Built in full first, so that a failure half-way leaves standard output empty.
    std::ostringstream text;
    if (asJson)
        writeBoardJson(text, board);
    else
        writeBoardOutline(text, board);
    std::cout << text.str();
    std::cout.flush();
    return std::cout ? kExitOk : kExitFailure;
}

}  // namespace

}  // namespace zrboard
