// `zrboard show` on input it cannot show: a numbered message on stderr, exit
// status 1, nothing on stdout; and usage errors with status 2.
#include <gtest/gtest.h>

#include "show_tool_run.h"

namespace fs = boost::filesystem;
using showtest::zrboard;

namespace {

// Both forms must fail the same way: no half document on stdout.
void expectReadFailure(const std::string& path, const std::string& messageId) {
    for (const bool json : {false, true}) {
        std::vector<std::string> args = {"show"};
        if (json)
            args.push_back("--json");
        args.push_back(path);
        const showtest::Run run = zrboard(args);
        EXPECT_EQ(run.status, 1) << path << (json ? " --json" : "") << "\n" << run.err;
        EXPECT_EQ(run.out, "") << path;
        EXPECT_NE(run.err.find(messageId), std::string::npos) << path << "\n" << run.err;
        EXPECT_NE(run.err.find("zrboard: show: cannot read a board from"), std::string::npos) << run.err;
    }
}

TEST(ShowBadInput, MissingFileAndDirectoryWithoutBoardFile) {
    showtest::TempDir dir;
    expectReadFailure((dir.path() / "no_such_board.xml").string(), "[board 49-36]");
    expectReadFailure(dir.path().string(), "[board 49-36]");
}

TEST(ShowBadInput, FilesThatAreNoBoardFiles) {
    showtest::TempDir dir;
    const fs::path malformed = dir.path() / "malformed.xml";
    showtest::writeFile(malformed,
                        "<?xml version=\"1.0\"?>\n<board schema_version=\"2.2\" vendor=\"x\"><components>\n");
    const fs::path empty = dir.path() / "empty.xml";
    showtest::writeFile(empty, "");
    const fs::path binary = dir.path() / "binary.xml";
    static const char kBinary[] = "\x7f" "ELF\x02\x01\x01\0\0\0\xff\xfe\x00\x10";
    showtest::writeFile(binary, std::string(kBinary, sizeof kBinary - 1));
    const fs::path text = dir.path() / "notes.json";
    showtest::writeFile(text, "{\"board\": \"not xml at all\"}\n");
    // Some numbered message of the board library tells why.
    for (const fs::path& p : {malformed, empty, binary, text})
        expectReadFailure(p.string(), "[board 49-");
}

TEST(ShowBadInput, AnotherFormatOfXmlIsRefused) {
    // A pins file where a board file is expected.
    showtest::TempDir dir;
    fs::copy_file(showtest::boardDir("board_files/tarnwick/1.2/part0_pins.xml"), dir.path() / "board.xml");
    expectReadFailure(dir.path().string(), "[board 49-");
}

TEST(ShowBadInput, BrokenPinFileFailsTheWholeRead) {
    showtest::TempDir dir;
    const fs::path src = showtest::boardDir("board_files/durnival/1.0");
    for (const char* name : {"board.xml", "preset.xml", "changelog.txt"})
        fs::copy_file(src / name, dir.path() / name);
    const std::string pins = showtest::readFile(src / "part0_pins.xml");
    showtest::writeFile(dir.path() / "part0_pins.xml", pins.substr(0, pins.size() / 2));
    const showtest::Run run = zrboard({"show", dir.path().string()});
    EXPECT_EQ(run.status, 1) << run.err;
    EXPECT_EQ(run.out, "");
}

TEST(ShowBadInput, UsageErrorsExitWithTwo) {
    const std::string board = showtest::boardDir("board_files/durnival/1.0");
    for (const std::vector<std::string>& args :
         {std::vector<std::string>{"show"}, {"show", "--json"}, {"show", board, board}, {"show", "--xml", board}}) {
        const showtest::Run run = zrboard(args);
        EXPECT_EQ(run.status, 2) << run.err;
        EXPECT_EQ(run.out, "");
        EXPECT_NE(run.err.find("show [--json] PATH"), std::string::npos) << run.err;
    }
}

}  // namespace
