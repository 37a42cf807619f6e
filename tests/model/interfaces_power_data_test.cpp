// Power rails and the board's data properties: derived rail lists, phases, the
// listing form, and the tree of values with its look-ups and type checks.

#include <sstream>

#include "HBOBoardDataProps.h"
#include "HBOPowerRail.h"
#include "board_fixture.h"

using namespace board_fixture;

using PropMap = HBOBoardDataProps::PropMap;
using StrMap = HBOBoardDataProps::StrMap;

TEST(InterfacesPowerRail, RailsAreTheMembersThatAreNotSupplies) {
    HBOPowerRail rail("BOARD_TOP", {"VCCINT", "RAIL_A", "VCCAUX", "RAIL_B"}, {"VCCINT", "VCCAUX"},
                      {{"RAIL_B", 2}}, true, 0);
    EXPECT_EQ((Names{"VCCINT", "RAIL_A", "VCCAUX", "RAIL_B"}), rail.getMemberNames());
    EXPECT_EQ((Names{"RAIL_A", "RAIL_B"}), rail.getRailNames());
    EXPECT_EQ(2, rail.getMemberPhases("RAIL_B"));
    EXPECT_EQ(0, rail.getMemberPhases("RAIL_A"));
    EXPECT_FALSE(rail.isPhasedRail());

    // Supplies and rails given apart are merged, supplies first.
    HBOPowerRail apart("BOARD_TOP", Names{"VCCINT"}, Names{"BOARD_VCC_IO_BRAM", "OTHER"}, false, 4);
    EXPECT_EQ((Names{"VCCINT", "BOARD_VCC_IO_BRAM", "OTHER"}), apart.getMemberNames());
    EXPECT_EQ((Names{"BOARD_VCC_IO_BRAM", "OTHER"}), apart.getRailNames());
    EXPECT_TRUE(apart.isPhasedRail());
    HBOPowerRail none;
    EXPECT_FALSE(none.isPhasedRail());
    EXPECT_TRUE(none.getRailNames().empty());
}

TEST(InterfacesPowerRail, StreamsAsOneElementOfTheListing) {
    std::ostringstream phased, plain;
    phased << HBOPowerRail("CORE", Names{"VCCINT"}, Names{"SUB"}, true, 3, {{"SUB", 2}});
    EXPECT_EQ("  <power_rail name=\"CORE\" is_direct=true num_phases=3\">\n"
              "    <supply name=\"VCCINT\"\"/>\n"
              "    <rail name=\"SUB\" phased_power_source=2\"/>\n"
              "  </power_rail>\n",
              phased.str());
    plain << HBOPowerRail("IO", Names{}, Names{}, false);
    EXPECT_EQ("  <power_rail name=\"IO\"\">\n  </power_rail>\n", plain.str());
}

TEST(InterfacesDataProps, StringsAndGroupsByUpperCaseKey) {
    HBOBoardDataProps props;
    EXPECT_TRUE(props.empty());
    props.setStrDataProp("vendor_note", "rev b");
    props.setMapDataProp("thermal", PropMap{{"MAX_TEMP", std::string("85")}, {"MIN_TEMP", std::string("-40")}});
    ASSERT_EQ(2u, props.getAllData().size());
    EXPECT_EQ("THERMAL", props.getAllData().begin()->first);  // keys in order, upper case
    EXPECT_EQ("VENDOR_NOTE", std::next(props.getAllData().begin())->first);
    EXPECT_EQ(std::string("rev b"), props.getStrDataProp("VENDOR_NOTE").value_or("none"));
    EXPECT_EQ(std::string("rev b"), props.getStrDataProp("vendor_note").value_or("none"));
    EXPECT_FALSE(props.getStrDataProp("thermal"));  // a group is no string
    EXPECT_FALSE(props.getStrDataProp("missing"));
    auto thermal = props.getMapDataProp("THERMAL");
    ASSERT_TRUE(thermal);
    EXPECT_EQ((StrMap{{"MAX_TEMP", "85"}, {"MIN_TEMP", "-40"}}), *thermal);
    EXPECT_FALSE(props.getMapDataProp("VENDOR_NOTE"));
    EXPECT_FALSE(props.getMapDataProp("missing"));
}

TEST(InterfacesDataProps, OperatingConditions) {
    PropMap volt{{"MIN", std::string("0.8")}, {"MAX", std::string("0.9")}};
    PropMap conditions{{"GRADE", std::string("industrial")}, {"VCCINT", volt}};
    HBOBoardDataProps props(PropMap{{HBOBoardDataProps::OP_COND_KEY, conditions}});
    EXPECT_EQ("OPERATING_CONDITIONS", HBOBoardDataProps::OP_COND_KEY);
    EXPECT_TRUE(props.hasOperatingConditions());
    EXPECT_EQ("industrial", props.getStrOperatingCondition("grade"));
    EXPECT_EQ("", props.getStrOperatingCondition("VCCINT"));  // a group, not a string
    EXPECT_EQ("", props.getStrOperatingCondition("NONE"));
    EXPECT_EQ((StrMap{{"MAX", "0.9"}, {"MIN", "0.8"}}), props.getMapOperatingCondition("VCCINT"));
    EXPECT_TRUE(props.getMapOperatingCondition("GRADE").empty());
    PropMap all;
    props.getOperatingConditions(all);
    EXPECT_EQ(2u, all.size());
    HBOBoardDataProps without;
    without.setStrDataProp("x", "1");
    EXPECT_FALSE(without.hasOperatingConditions());
    PropMap untouched{{"KEEP", std::string("me")}};
    without.getOperatingConditions(untouched);
    EXPECT_EQ(1u, untouched.count("KEEP"));
    EXPECT_EQ("", without.getStrOperatingCondition("GRADE"));
    EXPECT_TRUE(without.getMapOperatingCondition("VCCINT").empty());
}

TEST(InterfacesDataProps, ValueOfAnyOtherTypeIsReportedAndSkipped) {
    HBOBoardDataProps props;
    props.setMapDataProp("G", PropMap{{"GOOD", std::string("1")}, {"BAD", 42},
                                      {"NESTED", PropMap{{"X", std::string("y")}}}});
    MessageRecorder recorder("board.dataProps");
    auto strings = props.getMapDataProp("G");
    ASSERT_TRUE(strings);
    EXPECT_EQ((StrMap{{"GOOD", "1"}}), *strings);
    // Keys walked in order: BAD, then NESTED; the arguments are the type and the key.
    ASSERT_EQ(2u, recorder.messages.size());
    EXPECT_EQ("int", recorder.messages[0].getArgs().at(0));
    EXPECT_EQ("BAD", recorder.messages[0].getArgs().at(1));
    EXPECT_EQ("NESTED", recorder.messages[1].getArgs().at(1));
}
