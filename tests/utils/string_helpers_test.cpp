// Board identifier splitters and the small string helpers.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "HBOBoardUtils.h"

using namespace HBOBoardUtils;

TEST(BoardNameSplitters, FourFieldBoardPartName) {
    const std::string part = "korvelhw:bdb6:part0:1.0";
    EXPECT_EQ(getBoardNameFromBoardPart(part), "bdb6");
    EXPECT_EQ(getBoardPartNameFromVLNV(part), "part0");
    EXPECT_EQ(getBoardKeyFromBoardPart(part), "korvelhw:bdb6:1.0");
}

TEST(BoardNameSplitters, ThreeFieldBoardName) {
    const std::string board = "korvelhw:bdb6:1.0";
    EXPECT_EQ(getBoardNameFromBoardPart(board), "bdb6");
    EXPECT_EQ(getBoardPartNameFromVLNV(board), board);
    EXPECT_EQ(getBoardKeyFromBoardPart(board), board);
}

TEST(BoardNameSplitters, OtherFieldCountsComeBackUnchanged) {
    for (const std::string s : {"", "bdb6", "korvelhw:bdb6", "a:b:c:d:e", ":::::"}) {
        EXPECT_EQ(getBoardNameFromBoardPart(s), s);
        EXPECT_EQ(getBoardPartNameFromVLNV(s), s);
        EXPECT_EQ(getBoardKeyFromBoardPart(s), s);
    }
}

TEST(BoardNameSplitters, EmptyFieldsAreKeptAndCounted) {
    EXPECT_EQ(getBoardNameFromBoardPart("v::p:1.0"), "");
    EXPECT_EQ(getBoardPartNameFromVLNV("v:b::1.0"), "");
    EXPECT_EQ(getBoardKeyFromBoardPart("v:b:p:"), "v:b:");
    EXPECT_EQ(getBoardNameFromBoardPart("::"), "");
}

TEST(Join, PutsTheSeparatorBetweenElementsOnly) {
    EXPECT_EQ(join({}, ", "), "");
    EXPECT_EQ(join({"a"}, ", "), "a");
    EXPECT_EQ(join({"a", "b", "c"}, ", "), "a, b, c");
    EXPECT_EQ(join({"", ""}, ":"), ":");
}

TEST(Indent, PrefixesEveryLineAndEndsEachWithANewline) {
    EXPECT_EQ(indent("x", 2), "  x\n");
    EXPECT_EQ(indent("", 2), "");
    EXPECT_EQ(indent("a\nb", 1), " a\n b\n");
    // A trailing newline adds no empty line; inner empty lines are kept.
    EXPECT_EQ(indent("a\n", 3), "   a\n");
    EXPECT_EQ(indent("a\n\nb\n", 2), "  a\n  \n  b\n");
    // A zero count returns the text as it is, without adding a newline.
    EXPECT_EQ(indent("a\nb", 0), "a\nb");
}

TEST(BoardFileParamList, ReplacesTheListWithTheDocumentedParameters) {
    std::vector<std::string> list{"stale entry"};
    getBoardFileParamList(list);
    ASSERT_EQ(list.size(), 23u);

    std::vector<std::string> names;
    for (const std::string& entry : list) {
        const auto colon = entry.find(':');
        ASSERT_NE(colon, std::string::npos) << entry;
        names.push_back(entry.substr(0, colon));
        EXPECT_EQ(entry.compare(colon + 1, 7, "<board>"), 0) << entry;
    }
    const std::vector<std::string> expected{
        "heat_sink_temperature", "heat_sink_type", "SLR", "connects_with", "ddr_type", "frequency", "mode",
        "size", "type", "TYPE", "block_location", "buffer_inst_name", "frequency", "gt_endpoint_interface_type",
        "gt_flow_interface_master_name", "gt_inst_name", "gt_lanes", "gt_loc", "is_gt_flow_interface_master",
        "presets_special_handling", "ref_clk_inst", "rst_polarity", "type"};
    EXPECT_EQ(names, expected);

    EXPECT_EQ(list[0], "heat_sink_temperature:<board><parameters>:as implied");
    EXPECT_EQ(list[18],
              "is_gt_flow_interface_master:<board><component><interface><parameters>:indicates if the interface "
              "is a mater in for quorra_gt_flow");
    EXPECT_EQ(list[22],
              "type:<board><component><interface><parameters>:can indicate type. For a clock interface it gives "
              "the clock type");

    // A second call gives the same list, not a doubled one.
    std::vector<std::string> again = list;
    getBoardFileParamList(again);
    EXPECT_EQ(again, list);
}
