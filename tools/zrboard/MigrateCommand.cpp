// `zrboard migrate SRC DST`: runs the library's migration tool on one board
// directory. Its prints are the tool's own; messages go to standard error.
#include <iostream>
#include <string>
#include <vector>

#include <boost/filesystem.hpp>

#include "Command.h"
#include "HBMBoard.h"
#include "HBMBoardMigration.h"
#include "HEXAll.h"
#include "Version.h"

namespace zrboard {

namespace {

namespace fs = boost::filesystem;

bool sameDirectory(const std::string& a, const std::string& b) {
    boost::system::error_code ec;
    return fs::equivalent(a, b, ec) && !ec;
}

}  // namespace

int runMigrate(const Command& self, const std::vector<std::string>& args) {
    std::vector<std::string> paths;
    for (const std::string& a : args) {
        if (!a.empty() && a[0] == '-')
            return usageError("unknown option '" + a + "'", &self);
        paths.push_back(a);
    }
    if (paths.size() != 2)
        return usageError("migrate needs exactly two arguments, SRC and DST, got " + std::to_string(paths.size()),
                          &self);
    const std::string& src = paths[0];
    const std::string& dst = paths[1];
    boost::system::error_code ec;
    if (fs::exists(src, ec) && !fs::is_directory(src, ec))
        return usageError("SRC '" + src + "' is a file; give the board directory that holds board.xml", &self);
    // The board.xml written is empty: writing over the source would lose it.
    if (sameDirectory(src, dst))
        return usageError("DST '" + dst + "' is the source directory; give another directory to write into", &self);

    HBMBoardMigration& migration = HBMBoardMigration::getInstance();
    HBMBoard& board = HBMBoardMigration::getBoard();
    board.setSourcePath(src);
    board.setDestinationPath(dst);
    try {
        // Nothing is written after a failed read, so that DST keeps what it had.
        if (!migration.parse())
            return kExitFailure;
    } catch (const HEXAll& e) {
        e.print();
        return kExitFailure;
    }
    if (!fs::is_directory(dst, ec)) {
        fs::create_directories(dst, ec);
        if (ec)
            std::cerr << kToolName << ": migrate: cannot create '" << dst << "': " << ec.message() << "\n";
    }
    return migration.write() ? kExitOk : kExitFailure;
}

}  // namespace zrboard
