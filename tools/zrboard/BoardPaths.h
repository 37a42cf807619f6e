// Turns the tool's path arguments into board files: a directory stands for
// the board.xml inside it.
#ifndef ZRBOARD_BOARDPATHS_H
#define ZRBOARD_BOARDPATHS_H

#include <string>

#include <boost/filesystem.hpp>

namespace zrboard {

inline std::string boardFileOf(const std::string& arg) {
    boost::system::error_code ec;
    if (boost::filesystem::is_directory(arg, ec))
        return (boost::filesystem::path(arg) / "board.xml").string();
    return arg;
}

}  // namespace zrboard

#endif
