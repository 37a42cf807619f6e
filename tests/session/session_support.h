// Board repositories made for one test from the bundled example boards, and
// small helpers to read what a refusal threw.
#ifndef ZR_TEST_SESSION_SUPPORT_H
#define ZR_TEST_SESSION_SUPPORT_H

#include <fstream>
#include <functional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include <boost/algorithm/string/replace.hpp>
#include <boost/filesystem.hpp>

#include "TempDir.h"
#include "HEXAll.h"

namespace session_test {

namespace fs = boost::filesystem;

typedef std::vector<std::string> Names;
typedef std::vector<std::pair<std::string, std::string>> Edits;

using ::TempDir;

inline std::string bundled(const std::string& relative) {
    return std::string(ZR_TEST_DATA_DIR) + "/boards/board_files/" + relative;
}

inline void writeFile(const fs::path& file, const std::string& text) {
    fs::create_directories(file.parent_path());
    std::ofstream(file.string()) << text;
}

// Copies the board directory `from` to `to`; `edits` are text replacements in
// its board.xml (the first occurrence of each). The grammar reference is made
// absolute so that the copy reads from anywhere.
inline void copyBoard(const std::string& from, const fs::path& to, const Edits& edits = {}) {
    fs::create_directories(to);
    for (fs::directory_iterator it(from), end; it != end; ++it)
        if (fs::is_regular_file(it->status()))
            fs::copy_file(it->path(), to / it->path().filename(), fs::copy_option::overwrite_if_exists);
    std::ifstream in((fs::path(from) / "board.xml").string());
    std::stringstream text;
    text << in.rdbuf();
    std::string xml = text.str();
    boost::algorithm::replace_first(xml, "../../../board_schemas/",
                                    std::string(ZR_TEST_DATA_DIR) + "/boards/board_schemas/");
    for (const auto& e : edits)
        boost::algorithm::replace_first(xml, e.first, e.second);
    writeFile(to / "board.xml", xml);
}

// The daughter card under another version, name or flags.
inline void copyFennock(const fs::path& to, const std::string& version, const Edits& more = {}) {
    Edits edits{{"<file_version>1.0</file_version>", "<file_version>" + version + "</file_version>"}};
    edits.insert(edits.end(), more.begin(), more.end());
    copyBoard(bundled("fennock/1.0"), to, edits);
}

inline const Edits& markIntegrated() {
    static const Edits e{{"<board schema_version=\"2.2\"", "<board is_integrated=\"true\" schema_version=\"2.2\""}};
    return e;
}

// Into `repo`: "korvelhw:joinedbase:1.2" and "korvelhw:joinedcard:1.0", copies
// of the reference board and of the daughter card that say they are integrated.
inline void copyIntegratedBoards(const fs::path& repo) {
    Edits base = markIntegrated();
    base.emplace_back("name=\"tarnwick\"", "name=\"joinedbase\"");
    copyBoard(bundled("tarnwick/1.2"), repo / "joinedbase", base);
    Edits card = markIntegrated();
    card.emplace_back("name=\"fennock\"", "name=\"joinedcard\"");
    copyFennock(repo / "joinedcard", "1.0", card);
}

// The id and arguments of the HEXError that `f` throws; empty when it throws none.
inline Names thrownBy(const std::function<void()>& f) {
    try {
        f();
    } catch (const HEXError& e) {
        Names out{e.getMsg().getId()};
        out.insert(out.end(), e.getMsg().getArgs().begin(), e.getMsg().getArgs().end());
        return out;
    }
    return {};
}

}  // namespace session_test

#endif
