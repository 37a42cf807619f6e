// `zrboard diff`: exit status, the text and JSON forms, and what it does
// with arguments it cannot use.
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "diff_board_fixture.h"
#include "show_tool_run.h"

namespace {

using showtest::zrboard;

const std::string kRev10 = showtest::boardDir("board_files/durnival/1.0");
const std::string kRev11 = showtest::boardDir("board_files/durnival/1.1");

TEST(DiffCommand, EqualBoardsSayOneLineAndExitZero) {
    difftest::BoardCopy copy("board_files/durnival/1.1");
    const showtest::Run run = zrboard({"diff", kRev11, (copy.dir() / "board.xml").string()});
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.err, "");
    ASSERT_EQ(lines(run.out).size(), 1u) << run.out;
    EXPECT_EQ(run.out.find("The boards are equal: korvelhw:durnival:1.1 ("), 0u) << run.out;

    const showtest::Run json = zrboard({"diff", "--json", kRev11, copy.dir().string()});
    EXPECT_EQ(json.status, 0) << json.err;
    const showtest::Run q = showtest::queryJson(json.out, {"d['equal']", "d['count']", "len(d['differences'])"});
    EXPECT_EQ(q.out, "True\n0\n0\n") << json.out;
}

TEST(DiffCommand, TextIsGroupedBySectionAndCounted) {
    const showtest::Run run = zrboard({"diff", kRev10, kRev11});
    EXPECT_EQ(run.status, 1) << run.err;
    EXPECT_EQ(run.err, "");
    const std::vector<std::string> out = lines(run.out);
    ASSERT_GE(out.size(), 3u) << run.out;
    EXPECT_EQ(out[0], "A: korvelhw:durnival:1.0 (" + kRev10 + "/board.xml)");
    EXPECT_EQ(out[1], "B: korvelhw:durnival:1.1 (" + kRev11 + "/board.xml)");
    // Headings in section order, each with the number of lines under it.
    std::vector<std::string> headings;
    std::size_t items = 0;
    for (std::size_t i = 2; i + 1 < out.size(); ++i) {
        if (out[i].compare(0, 2, "  ") == 0)
            ++items;
        else
            headings.push_back(out[i]);
    }
    EXPECT_EQ(headings, (std::vector<std::string>{"Identity (4):", "Components (10):", "Connections (5):",
                                                  "Presets (2):", "IP associated rules (1):"}));
    EXPECT_EQ(out.back(), std::to_string(items) + " differences");
    EXPECT_TRUE(
        showtest::hasLine(run.out, "  component part0: pin BTN2: added (index 8, site A9, iostandard LVCMOS33)"))
        << run.out;
    EXPECT_TRUE(showtest::hasLine(run.out, "  connection part0_usb_uart_1: c1_range 8..9 -> 10..11")) << run.out;
}

TEST(DiffCommand, JsonCarriesEveryLineOfTheText) {
    const showtest::Run text = zrboard({"diff", kRev10, kRev11});
    const showtest::Run json = zrboard({"diff", "--json", kRev10, kRev11});
    EXPECT_EQ(json.status, 1) << json.err;
    ASSERT_TRUE(isValidJson(json.out)) << json.out;

    // Every entry has every key; "text" is the text form's line.
    const showtest::Run q = showtest::queryJson(
        json.out,
        {"d['equal']", "d['count'] == len(d['differences'])", "d['a']['name']", "d['b']['name']",
         "all(set(x) == {'section','path','change','field','before','after','text'} for x in d['differences'])",
         "all(x['change'] in ('added','removed','changed') for x in d['differences'])",
         "all((x['field'] == '') == (x['change'] != 'changed') for x in d['differences'])",
         "'\\n'.join(x['text'] for x in d['differences'])"});
    ASSERT_EQ(q.status, 0) << q.err;
    const std::vector<std::string> got = lines(q.out);
    ASSERT_GE(got.size(), 7u);
    EXPECT_EQ(std::vector<std::string>(got.begin(), got.begin() + 7),
              (std::vector<std::string>{"False", "True", "korvelhw:durnival:1.0", "korvelhw:durnival:1.1", "True",
                                        "True", "True"}));
    std::vector<std::string> textLines;
    for (const std::string& l : lines(text.out))
        if (l.compare(0, 2, "  ") == 0)
            textLines.push_back(l.substr(2));
    EXPECT_EQ(std::vector<std::string>(got.begin() + 7, got.end()), textLines);

    // One entry in full: a pin's I/O standard seen from the board down.
    difftest::BoardCopy copy("board_files/durnival/1.1");
    copy.edit("part0_pins.xml", "name=\"BTN2\" loc=\"A9\" iostandard=\"LVCMOS33\"",
              "name=\"BTN2\" loc=\"A9\" iostandard=\"LVCMOS18\"");
    const showtest::Run one = zrboard({"diff", "--json", kRev11, copy.dir().string()});
    const showtest::Run entry = showtest::queryJson(one.out, {"d['differences']"});
    EXPECT_EQ(entry.out,
              "[{'section': 'components', 'path': [{'kind': 'component', 'name': 'part0'}, {'kind': 'pin', 'name': "
              "'BTN2'}], 'change': 'changed', 'field': 'iostandard', 'before': 'LVCMOS33', 'after': 'LVCMOS18', "
              "'text': 'component part0: pin BTN2: iostandard LVCMOS33 -> LVCMOS18'}]\n")
        << one.out;
}

// The text form's lines after the two naming the boards.
std::vector<std::string> differenceLines(const std::string& out) {
    const std::vector<std::string> all = lines(out);
    return all.size() > 2 ? std::vector<std::string>(all.begin() + 2, all.end()) : all;
}

TEST(DiffCommand, NamesAreLookedUpInTheCatalogue) {
    const showtest::Run byName = zrboard({"diff", "korvelhw:durnival:1.0", "KORVELHW:Durnival:1.1"});
    const showtest::Run byPath = zrboard({"diff", kRev10, kRev11});
    EXPECT_EQ(byName.status, 1) << byName.err;
    EXPECT_EQ(differenceLines(byName.out), differenceLines(byPath.out));

    const showtest::Run unknown = zrboard({"diff", "korvelhw:nosuch:1.0", kRev10});
    EXPECT_EQ(unknown.status, 2);
    EXPECT_EQ(unknown.out, "");
    EXPECT_NE(unknown.err.find("'korvelhw:nosuch:1.0' is neither a path nor a board name of the catalogue"),
              std::string::npos)
        << unknown.err;
}

TEST(DiffCommand, AUserRepositoryBoardHidesTheInstalledOne) {
    difftest::BoardCopy copy("board_files/halvet/1.0");
    copy.edit("board.xml", "<data_property name=\"BOARD_COOLING\" value=\"active_fan\"/>",
              "<data_property name=\"BOARD_COOLING\" value=\"passive\"/>");
    const std::string repo = copy.dir().parent_path().parent_path().string();
    const std::string installed = showtest::boardDir("board_files/halvet/1.0");
    for (const std::vector<std::string>& args :
         {std::vector<std::string>{"diff", "--repo", repo, installed, "korvelhw:halvet:1.0"},
          {"diff", "--repo=" + repo, installed, "korvelhw:halvet:1.0"}}) {
        const showtest::Run run = zrboard(args);
        EXPECT_EQ(run.status, 1) << run.err;
        EXPECT_EQ(differenceLines(run.out),
                  (std::vector<std::string>{
                      "Data properties (1):", "  property BOARD_COOLING: value active_fan -> passive", "1 difference"}))
            << run.out;
    }
}

TEST(DiffCommand, UsageErrorsExitWithTwo) {
    for (const std::vector<std::string>& args : {std::vector<std::string>{"diff"},
                                                 {"diff", kRev10},
                                                 {"diff", "--json", kRev10},
                                                 {"diff", kRev10, kRev11, kRev10},
                                                 {"diff", "--text", kRev10, kRev11},
                                                 {"diff", kRev10, kRev11, "--repo"},
                                                 {"diff", "--repo=", kRev10, kRev11}}) {
        const showtest::Run run = zrboard(args);
        EXPECT_EQ(run.status, 2) << args.size() << run.err;
        EXPECT_EQ(run.out, "");
        EXPECT_NE(run.err.find("zrboard: error: "), std::string::npos) << run.err;
        EXPECT_NE(run.err.find("diff [--json] [--repo DIR]... A B"), std::string::npos) << run.err;
    }
    const showtest::Run help = zrboard({"diff", "--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_NE(help.out.find("Exit status: 0 when the boards are equal, 1 when they differ, 2"), std::string::npos)
        << help.out;
}

TEST(DiffCommand, UnreadableBoardsAreNamedWithTheirMessages) {
    showtest::TempDir dir;
    const std::string missing = (dir.path() / "nowhere").string();
    const boost::filesystem::path broken = dir.path() / "broken.xml";
    showtest::writeFile(broken, "<?xml version=\"1.0\"?>\n<board schema_version=\"2.2\" vendor=\"x\"><components>\n");
    for (const bool json : {false, true}) {
        std::vector<std::string> args = {"diff"};
        if (json)
            args.push_back("--json");
        args.push_back(missing);
        args.push_back(broken.string());
        const showtest::Run run = zrboard(args);
        EXPECT_EQ(run.status, 2) << run.err;
        EXPECT_EQ(run.out, "");
        // Both are reported, each with a numbered message of the reader.
        EXPECT_NE(run.err.find("[board 49-36]"), std::string::npos) << run.err;
        EXPECT_NE(run.err.find("zrboard: diff: cannot read a board from '" + missing + "'"), std::string::npos)
            << run.err;
        EXPECT_NE(run.err.find("zrboard: diff: cannot read a board from '" + broken.string() + "'"), std::string::npos)
            << run.err;
    }
    // One good board does not make the other readable.
    const showtest::Run half = zrboard({"diff", kRev10, missing});
    EXPECT_EQ(half.status, 2);
    EXPECT_EQ(half.out, "");
}

}  // namespace
