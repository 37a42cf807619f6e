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

// Board names never hold a "/", so such an argument, an existing file or
// directory, or an XML file name is taken as a path.
inline bool looksLikePath(const std::string& arg) {
    boost::system::error_code ec;
    return arg.find('/') != std::string::npos ||
           (arg.size() >= 4 && arg.compare(arg.size() - 4, 4, ".xml") == 0) || boost::filesystem::exists(arg, ec);
}

}  // namespace zrboard

#endif
