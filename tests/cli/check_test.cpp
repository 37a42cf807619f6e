// `zrboard check`: results, summaries, JSON, and bad input.
#include <gtest/gtest.h>

#include <string>

#include <boost/filesystem.hpp>

#include "tool_run.h"

namespace fs = boost::filesystem;

namespace {

const std::string kData = ZR_TEST_DATA_DIR;
const std::string kBoards = kData + "/boards/board_files";

struct Scratch {
    fs::path dir = fs::temp_directory_path() / fs::unique_path("zrcheck-%%%%-%%%%");
    Scratch() { fs::create_directories(dir); }
    ~Scratch() {
        boost::system::error_code ec;
        fs::remove_all(dir, ec);
    }
    std::string write(const std::string& name, const std::string& text) const {
        std::ofstream((dir / name).string(), std::ios::binary) << text;
        return (dir / name).string();
    }
};

bool contains(const std::string& hay, const std::string& needle) { return hay.find(needle) != std::string::npos; }

}  // namespace

TEST(CheckCommand, BundledBoardsReadCleanly) {
    for (const char* board : {"tarnwick/1.2", "halvet/1.0", "fennock/1.0", "durnival/1.0", "durnival/1.1"}) {
        const ToolRun r = zrboardRun({"check", kBoards + "/" + board});
        EXPECT_EQ(r.status, 0) << board << "\n" << r.out << r.err;
        EXPECT_TRUE(contains(r.out, "board.xml: ok")) << r.out;
        // Nothing worse than a note about a made default mode.
        EXPECT_FALSE(contains(r.err, "WARNING: [board")) << board << "\n" << r.err;
        EXPECT_FALSE(contains(r.err, "ERROR")) << board << "\n" << r.err;
    }
    const ToolRun old = zrboardRun({"check", kData + "/boards/board_parts/tamsel/1.0/board.xml"});
    EXPECT_EQ(old.status, 0) << old.out << old.err;
    EXPECT_TRUE(contains(old.out, "schema 1.1")) << old.out;
}

TEST(CheckCommand, OneSummaryLinePerFileAndExitStatus) {
    Scratch s;
    const std::string bad = s.write("board.xml", "<board schema_version=\"2.0\"><oops></board>");
    const ToolRun r = zrboardRun({"check", kBoards + "/durnival/1.0", bad});
    EXPECT_EQ(r.status, 1);
    EXPECT_TRUE(contains(r.out, "durnival/1.0/board.xml: ok")) << r.out;
    EXPECT_TRUE(contains(r.out, bad + ": FAILED")) << r.out;
    EXPECT_TRUE(contains(r.err, "CRITICAL WARNING: [board 49-59]")) << r.err;
}

TEST(CheckCommand, BadInputNeverCrashes) {
    Scratch s;
    const std::string cases[] = {
        (s.dir / "missing.xml").string(),                      // missing file
        s.dir.string(),                                          // directory without board.xml
        s.write("empty.xml", ""),                                // empty file
        s.write("binary.xml", std::string("\x7f" "ELF\x02\x01\x00\x00", 8)),  // binary
        s.write("notes.txt", "plain text, not a board\n"),      // another format
        s.write("other.xml", "<html><body/></html>"),           // XML of another kind
    };
    for (const std::string& path : cases) {
        const ToolRun r = zrboardRun({"check", path});
        EXPECT_EQ(r.status, 1) << path << "\n" << r.out << r.err;
        EXPECT_TRUE(contains(r.out, ": FAILED")) << path << "\n" << r.out;
        EXPECT_TRUE(contains(r.err, "[board 49-")) << path << "\n" << r.err;
    }
}

TEST(CheckCommand, JsonCarriesEveryMessage) {
    Scratch s;
    const std::string bad = s.write("board.xml", "<board schema_version=\"2.0\"><oops></board>");
    const ToolRun r = zrboardRun({"check", "--json", kBoards + "/durnival/1.1", bad});
    EXPECT_EQ(r.status, 1);
    EXPECT_TRUE(isValidJson(r.out)) << r.out;
    EXPECT_TRUE(contains(r.out, "\"result\": \"failed\"")) << r.out;
    EXPECT_TRUE(contains(r.out, "\"id\": \"49-59\"")) << r.out;
    EXPECT_TRUE(contains(r.out, "\"severity\": \"CRITICAL WARNING\"")) << r.out;
    EXPECT_TRUE(contains(r.out, "\"board\": \"korvelhw:durnival:1.1\"")) << r.out;
    // Messages travel in the document only.
    EXPECT_FALSE(contains(r.err, "49-59")) << r.err;
}

TEST(CheckCommand, UsageErrors) {
    EXPECT_EQ(zrboardRun({"check"}).status, 2);
    EXPECT_EQ(zrboardRun({"check", "--bogus", kBoards}).status, 2);
}
