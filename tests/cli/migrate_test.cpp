// `zrboard migrate`: every bundled schema 2 board, the destination's creation
// and failures, and bad command lines.
#include <gtest/gtest.h>

#include <fstream>
#include <regex>
#include <sstream>
#include <string>

#include <boost/filesystem.hpp>

#include "tool_run.h"

namespace fs = boost::filesystem;

namespace {

const std::string kBoards = std::string(ZR_TEST_DATA_DIR) + "/boards/board_files";

struct Scratch {
    fs::path dir = fs::temp_directory_path() / fs::unique_path("zrmigrate-%%%%-%%%%");
    Scratch() { fs::create_directories(dir); }
    ~Scratch() {
        boost::system::error_code ec;
        fs::remove_all(dir, ec);
    }
    std::string path(const std::string& name) const { return (dir / name).string(); }
};

std::string readFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

std::size_t count(const std::string& text, const std::string& pattern) {
    const std::regex re(pattern);
    return static_cast<std::size_t>(std::distance(std::sregex_iterator(text.begin(), text.end(), re), std::sregex_iterator()));
}

bool contains(const std::string& hay, const std::string& needle) { return hay.find(needle) != std::string::npos; }

}  // namespace

TEST(MigrateCommand, EveryBundledSchema2Board) {
    Scratch s;
    int boards = 0;
    for (fs::recursive_directory_iterator it(kBoards), end; it != end; ++it) {
        if (it->path().filename() != "board.xml" || !contains(readFile(it->path().string()), "schema_version=\"2."))
            continue;
        ++boards;
        const std::string src = it->path().parent_path().string();
        const std::string dst = s.path("out" + std::to_string(boards) + "/made/here");
        const ToolRun r = zrboardRun({"migrate", src, dst});
        const std::string board = readFile(src + "/board.xml");
        const std::size_t components = count(board, "<component\\s");
        std::vector<std::string> out = lines(r.out);
        ASSERT_GE(out.size(), components + 2) << src << "\n" << r.out << r.err;
        for (std::size_t i = 0; i < components; ++i)
            EXPECT_EQ(out[i].compare(0, 11, "Component: "), 0) << src << ": " << out[i];
        EXPECT_EQ(out[components], src + "/board.xml parsed");

        if (!fs::exists(src + "/part0_pins.xml")) {
            // A board whose pins stand in board.xml has no pins file to carry.
            EXPECT_EQ(r.status, 1) << src;
            EXPECT_EQ(out.back(), " not parsed");
            EXPECT_TRUE(contains(r.err, "49-36")) << r.err;
            EXPECT_FALSE(fs::exists(dst)) << "nothing may be written after a failed read";
            continue;
        }
        EXPECT_EQ(r.status, 0) << src << "\n" << r.out << r.err;
        EXPECT_EQ(r.err, "");
        EXPECT_EQ(out.size(), components + 3);
        EXPECT_EQ(out.back(), src + "/preset.xml parsed");
        EXPECT_EQ(fs::file_size(dst + "/board.xml"), 0u);
        const std::string pins = readFile(dst + "/part0_pins.xml");
        EXPECT_EQ(count(pins, "\n<pin index="), count(readFile(src + "/part0_pins.xml"), "<pin\\s")) << src;
        const std::string presets = readFile(dst + "/preset.xml");
        EXPECT_EQ(count(presets, "\n  <ip_preset "), count(readFile(src + "/preset.xml"), "<ip_preset\\s")) << src;
    }
    EXPECT_GE(boards, 5);  // the bundled schema 2 boards, daughter cards included
}

TEST(MigrateCommand, UnwritableDestinationGivesTheCannotOpenLine) {
    Scratch s;
    const std::string dst = s.path("a-file");
    std::ofstream(dst) << "x";
    const ToolRun r = zrboardRun({"migrate", kBoards + "/durnival/1.0", dst});
    EXPECT_EQ(r.status, 1);
    EXPECT_TRUE(contains(r.out, "Cannot open" + dst + "/board.xmlfor output.\n")) << r.out;
    EXPECT_TRUE(contains(r.err, "cannot create '" + dst + "'")) << r.err;
    EXPECT_EQ(readFile(dst), "x");
}

TEST(MigrateCommand, BadCommandLinesSayWhatToDo) {
    Scratch s;
    const std::string src = kBoards + "/durnival/1.0";
    struct Case {
        std::vector<std::string> args;
        const char* says;
    };
    const std::vector<Case> cases = {
        {{"migrate"}, "exactly two arguments"},
        {{"migrate", src}, "exactly two arguments"},
        {{"migrate", src, s.path("x"), s.path("y")}, "exactly two arguments"},
        {{"migrate", "--force", src, s.path("x")}, "unknown option '--force'"},
        {{"migrate", src + "/board.xml", s.path("x")}, "give the board directory"},
        {{"migrate", src, src + "/"}, "is the source directory"},
    };
    for (const Case& c : cases) {
        const ToolRun r = zrboardRun(c.args);
        EXPECT_EQ(r.status, 2) << c.says;
        EXPECT_TRUE(contains(r.err, c.says)) << r.err;
        EXPECT_TRUE(contains(r.err, "Usage: zrboard [global options] migrate SRC DST")) << r.err;
        EXPECT_EQ(r.out, "");
    }
    EXPECT_FALSE(fs::exists(s.path("x")));
    EXPECT_GT(fs::file_size(src + "/board.xml"), 0u);
}

TEST(MigrateCommand, HelpSaysWhatIsCarriedAndThatBoardXmlIsWrittenEmpty) {
    const ToolRun r = zrboardRun({"migrate", "--help"});
    EXPECT_EQ(r.status, 0);
    for (const char* says : {"not a copy", "board.xml       EMPTY, by design", "part0_pins.xml  the part name",
                             "preset.xml      the preset procedures"})
        EXPECT_TRUE(contains(r.out, says)) << r.out;
}
