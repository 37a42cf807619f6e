// `zrboard check`: results, summaries, JSON, and bad input.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <sstream>
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

std::string slurpFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream out;
    out << in.rdbuf();
    return out.str();
}

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
    // Placed where the parser gave up, with the parser's words on a note line.
    EXPECT_TRUE(contains(r.err, bad + ":1:43: critical warning: [49-59] ")) << r.err;
    EXPECT_TRUE(contains(r.err, bad + ":1:43: note: Opening and ending tag mismatch")) << r.err;
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
        EXPECT_TRUE(contains(r.err, "[board 49-") || contains(r.err, ": [49-")) << path << "\n" << r.err;
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
    EXPECT_TRUE(contains(r.out, "\"file\": \"" + bad + "\",\n")) << r.out;
    EXPECT_TRUE(contains(r.out, "\"line\": 1,\n")) << r.out;
    EXPECT_TRUE(contains(r.out, "\"column\": 43,\n")) << r.out;
    EXPECT_TRUE(contains(r.out, "\"detail\": \"Opening and ending tag mismatch")) << r.out;
    // Messages travel in the document only.
    EXPECT_FALSE(contains(r.err, "49-59")) << r.err;
}

TEST(CheckCommand, UsageErrors) {
    EXPECT_EQ(zrboardRun({"check"}).status, 2);
    EXPECT_EQ(zrboardRun({"check", "--bogus", kBoards}).status, 2);
    const ToolRun badFormat = zrboardRun({"check", "--format=xml", kBoards + "/durnival/1.0"});
    EXPECT_EQ(badFormat.status, 2);
    EXPECT_TRUE(contains(badFormat.err, "unknown format 'xml'; use --format=gcc, json or plain")) << badFormat.err;
    EXPECT_TRUE(contains(badFormat.err, "Usage: zrboard")) << badFormat.err;
    EXPECT_EQ(zrboardRun({"check", kBoards + "/durnival/1.0", "--format"}).status, 2);
}

TEST(CheckCommand, FormatsForEditorsAndPeople) {
    Scratch s;
    // A component type that is not one of the three.
    const std::string from = kBoards + "/durnival/1.0/";
    std::string text = slurpFile(from + "board.xml");
    const std::size_t at = text.find("type=\"chip\" sub_type=\"led\"");
    ASSERT_NE(at, std::string::npos);
    text.replace(at, 11, "type=\"gadget\"");
    const std::string bad = s.write("board.xml", text);
    s.write("part0_pins.xml", slurpFile(from + "part0_pins.xml"));
    s.write("preset.xml", slurpFile(from + "preset.xml"));
    const std::size_t component = text.rfind("<component ", at);
    const std::size_t lineStart = text.rfind('\n', component) + 1;
    const std::string place = bad + ":" + std::to_string(std::count(text.begin(), text.begin() + component, '\n') + 1) +
                              ":" + std::to_string(component - lineStart + 1);
    const std::string fault = "Component Type should be fpga/chip/connector for 'led_4bits'.";
    const ToolRun gcc = zrboardRun({"check", bad});
    EXPECT_EQ(gcc.status, 1);
    EXPECT_TRUE(contains(gcc.err, place + ": warning: [49-69] ")) << gcc.err;
    EXPECT_TRUE(contains(gcc.err, fault)) << gcc.err;
    // Messages without a place keep the plain form; the summary stays on standard output.
    EXPECT_TRUE(contains(gcc.err, "INFO: [board 49-113]")) << gcc.err;
    EXPECT_TRUE(contains(gcc.out, bad + ": FAILED")) << gcc.out;
    EXPECT_EQ(zrboardRun({"check", "--format=gcc", bad}).err, gcc.err);

    const ToolRun plain = zrboardRun({"check", "--format", "plain", bad});
    EXPECT_TRUE(contains(plain.err, "WARNING: [board 49-69] ")) << plain.err;
    EXPECT_FALSE(contains(plain.err, place)) << plain.err;
    EXPECT_EQ(plain.out, gcc.out);

    const ToolRun quiet = zrboardRun({"check", "--quiet", bad});
    EXPECT_FALSE(contains(quiet.err, "INFO")) << quiet.err;
    EXPECT_FALSE(contains(quiet.err, "info:")) << quiet.err;
    EXPECT_TRUE(contains(quiet.err, fault)) << quiet.err;
    EXPECT_EQ(quiet.out, gcc.out);

    const ToolRun json = zrboardRun({"check", "--format=json", "-q", bad});
    EXPECT_TRUE(isValidJson(json.out)) << json.out;
    EXPECT_FALSE(contains(json.out, "49-113")) << json.out;
    EXPECT_TRUE(contains(json.out, "\"file\": \"" + bad + "\",\n")) << json.out;
    EXPECT_TRUE(json.err.empty()) << json.err;
}
