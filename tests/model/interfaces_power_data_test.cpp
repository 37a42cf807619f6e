// Power rails and the board's data properties: derived rail lists, phases, the
// listing form, and the tree of values with its look-ups and type checks.
#include <gtest/gtest.h>

#include <map>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "ComMsgMgr.h"
#include "ComMsgMgrInstance.h"
#include "HBOBoardDataProps.h"
#include "HBOPowerRail.h"

namespace {

using Strings = std::vector<std::string>;
using PropMap = HBOBoardDataProps::PropMap;
using StrMap = HBOBoardDataProps::StrMap;

}  // namespace

TEST(InterfacesPowerRail, RailsAreTheMembersThatAreNotSupplies) {
    HBOPowerRail rail("BOARD_TOP", {"VCCINT", "RAIL_A", "VCCAUX", "RAIL_B"}, {"VCCINT", "VCCAUX"},
                      {{"RAIL_B", 2}}, true, 0);
    EXPECT_EQ("BOARD_TOP", rail.getName());
    EXPECT_EQ((Strings{"VCCINT", "RAIL_A", "VCCAUX", "RAIL_B"}), rail.getMemberNames());
    EXPECT_EQ((Strings{"VCCINT", "VCCAUX"}), rail.getSupplyNames());
    EXPECT_EQ((Strings{"RAIL_A", "RAIL_B"}), rail.getRailNames());
    EXPECT_EQ(2, rail.getMemberPhases("RAIL_B"));
    EXPECT_EQ(0, rail.getMemberPhases("RAIL_A"));
    EXPECT_TRUE(rail.isDirect());
    EXPECT_FALSE(rail.isPhasedRail());
}

TEST(InterfacesPowerRail, SuppliesAndRailsGivenApartAreMergedSuppliesFirst) {
    HBOPowerRail rail("BOARD_TOP", Strings{"VCCINT"}, Strings{"BOARD_VCC_IO_BRAM", "OTHER"}, false, 4);
    EXPECT_EQ((Strings{"VCCINT", "BOARD_VCC_IO_BRAM", "OTHER"}), rail.getMemberNames());
    EXPECT_EQ((Strings{"BOARD_VCC_IO_BRAM", "OTHER"}), rail.getRailNames());
    EXPECT_FALSE(rail.isDirect());
    EXPECT_TRUE(rail.isPhasedRail());
    EXPECT_EQ(4, rail.getNumPhases());

    HBOPowerRail none;
    EXPECT_FALSE(none.isPhasedRail());
    EXPECT_TRUE(none.getRailNames().empty());
}

TEST(InterfacesPowerRail, StreamsAsOneElementOfTheListing) {
    HBOPowerRail phased("CORE", Strings{"VCCINT"}, Strings{"SUB"}, true, 3, {{"SUB", 2}});
    std::ostringstream os;
    os << phased;
    EXPECT_EQ("  <power_rail name=\"CORE\" is_direct=true num_phases=3\">\n"
              "    <supply name=\"VCCINT\"\"/>\n"
              "    <rail name=\"SUB\" phased_power_source=2\"/>\n"
              "  </power_rail>\n",
              os.str());

    std::ostringstream plain;
    plain << HBOPowerRail("IO", Strings{}, Strings{}, false);
    EXPECT_EQ("  <power_rail name=\"IO\"\">\n  </power_rail>\n", plain.str());
}

TEST(InterfacesDataProps, StringsAndGroupsByUpperCaseKey) {
    HBOBoardDataProps props;
    EXPECT_TRUE(props.empty());
    props.setStrDataProp("vendor_note", "rev b");
    PropMap group;
    group["MAX_TEMP"] = std::string("85");
    group["MIN_TEMP"] = std::string("-40");
    props.setMapDataProp("thermal", group);

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
    PropMap volt;
    volt["MIN"] = std::string("0.8");
    volt["MAX"] = std::string("0.9");
    PropMap conditions;
    conditions["GRADE"] = std::string("industrial");
    conditions["VCCINT"] = volt;
    PropMap data;
    data[HBOBoardDataProps::OP_COND_KEY] = conditions;
    HBOBoardDataProps props(data);

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
    PropMap group;
    group["GOOD"] = std::string("1");
    group["BAD"] = 42;
    group["NESTED"] = PropMap{{"X", std::string("y")}};
    HBOBoardDataProps props;
    props.setMapDataProp("G", group);

    ComMsgMgr::enableScope("board.dataProps", true);
    std::vector<std::vector<std::string>> reported;
    int handle = ComMsgMgr::addListener([&](const ComMsgMgrInstance& m) { reported.push_back(m.getArgs()); });
    auto strings = props.getMapDataProp("G");
    ComMsgMgr::removeListener(handle);
    ComMsgMgr::enableScope("board.dataProps", false);

    ASSERT_TRUE(strings);
    EXPECT_EQ((StrMap{{"GOOD", "1"}}), *strings);
    ASSERT_EQ(2u, reported.size());
    // Keys walked in order: BAD, then NESTED; the arguments are the type and the key.
    EXPECT_EQ("int", reported[0].at(0));
    EXPECT_EQ("BAD", reported[0].at(1));
    EXPECT_EQ("NESTED", reported[1].at(1));
}
