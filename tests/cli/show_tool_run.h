// Runs the built zrboard for the `show` tests and inspects its JSON output
// with python3's own parser.
#ifndef ZR_TESTS_SHOW_TOOL_RUN_H
#define ZR_TESTS_SHOW_TOOL_RUN_H

#include <boost/filesystem.hpp>
#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "TempDir.h"
#include "tool_run.h"

namespace showtest {

namespace fs = boost::filesystem;

using Run = ToolRun;

inline std::string quote(const std::string& s) { return shellQuote(s); }

inline std::string readFile(const fs::path& p) {
    std::ifstream in(p.string(), std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

inline void writeFile(const fs::path& p, const std::string& text) {
    std::ofstream out(p.string(), std::ios::binary);
    out << text;
}

inline Run shell(const std::string& command) { return runCommand(command); }

inline Run zrboard(const std::vector<std::string>& args) { return zrboardRun(args); }

// Loads `json` with python3 into `d` and prints one line per expression, for
// example "d['name']". Exit status 0 only when the text is valid JSON and
// every expression could be evaluated.
inline Run queryJson(const std::string& json, const std::vector<std::string>& expressions) {
    const fs::path file = fs::temp_directory_path() / fs::unique_path("zr_show_json_%%%%%%%%");
    writeFile(file, json);
    std::string cmd = "python3 -c " +
                      quote("import json,sys\n"
                            "d = json.load(open(sys.argv[1], encoding='utf-8'))\n"
                            "for e in sys.argv[2:]:\n"
                            "    print(eval(e))\n") +
                      " " + quote(file.string());
    for (const std::string& e : expressions)
        cmd += " " + quote(e);
    Run run = shell(cmd);
    fs::remove(file);
    return run;
}

using ::lines;

inline bool hasLine(const std::string& text, const std::string& line) {
    for (const std::string& l : lines(text))
        if (l == line)
            return true;
    return false;
}

inline std::string boardDir(const std::string& relative) {
    return std::string(ZR_TEST_DATA_DIR) + "/boards/" + relative;
}

using ::TempDir;

}  // namespace showtest

#endif
