// Runs the built zrboard tool with arguments and keeps its exit status,
// standard output and standard error.
#ifndef ZRBOARD_TOOL_RUN_H
#define ZRBOARD_TOOL_RUN_H

#include <sys/wait.h>

#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include <boost/filesystem.hpp>

struct ToolRun {
    int status = -1;
    std::string out;
    std::string err;
};

inline std::string shellQuote(const std::string& s) {
    std::string q = "'";
    for (char c : s)
        q += (c == '\'') ? std::string("'\\''") : std::string(1, c);
    return q + "'";
}

// Runs a shell command; standard error goes to a file of its own.
inline ToolRun runCommand(const std::string& command) {
    namespace fs = boost::filesystem;
    const fs::path errFile = fs::temp_directory_path() / fs::unique_path("zrboard_err_%%%%%%%%");
    const std::string cmd = command + " 2>" + shellQuote(errFile.string());
    ToolRun run;
    FILE* pipe = popen(cmd.c_str(), "r");
    if (!pipe)
        return run;
    char buf[4096];
    std::size_t n;
    while ((n = fread(buf, 1, sizeof buf, pipe)) > 0)
        run.out.append(buf, n);
    const int rc = pclose(pipe);
    run.status = WIFEXITED(rc) ? WEXITSTATUS(rc) : -1;
    std::ifstream in(errFile.string());
    std::ostringstream err;
    err << in.rdbuf();
    run.err = err.str();
    boost::system::error_code ec;
    fs::remove(errFile, ec);
    return run;
}

inline ToolRun zrboardRun(const std::vector<std::string>& args) {
    std::string cmd = shellQuote(ZR_ZRBOARD_BIN);
    for (const std::string& a : args)
        cmd += " " + shellQuote(a);
    return runCommand(cmd);
}

// The lines of a tool's output, without their line ends.
inline std::vector<std::string> lines(const std::string& text) {
    std::vector<std::string> result;
    std::istringstream in(text);
    std::string line;
    while (std::getline(in, line))
        result.push_back(line);
    return result;
}

// True when python3 accepts `text` as one JSON document.
inline bool isValidJson(const std::string& text) {
    namespace fs = boost::filesystem;
    const fs::path file = fs::temp_directory_path() / fs::unique_path("zrboard_json_%%%%%%%%");
    std::ofstream(file.string()) << text;
    const ToolRun r = runCommand("python3 -c 'import json,sys; json.load(open(sys.argv[1]))' " + shellQuote(file.string()));
    boost::system::error_code ec;
    fs::remove(file, ec);
    return r.status == 0;
}

#endif
