// Power rails with their consistency rules, data properties and the stub data.
#include "sections_support.h"

#include <boost/any.hpp>

#include "HBOBoardDataProps.h"
#include "HBOPowerRail.h"

namespace {

std::string rails(const std::string& body) { return "<power_rails>" + body + "</power_rails>"; }

}  // namespace

TEST_F(SectionsFixture, PowerRailsAreReadWithFoldedNames) {
    ASSERT_TRUE(read("board.xml", rails(
        "<power_rail name=\"vcc_io\" is_direct=\"TRUE\"><supply name=\"vccint_io\"/><supply name=\"VccBram\"/>"
        "</power_rail><other name=\"ignored\"/>"
        "<Power_Rail name=\"top\"><rail name=\"VCC_IO\"/><SUPPLY name=\"vccint\"/><note/></Power_Rail>")).ok);
    const std::vector<HBOPowerRail>& got = board().getPowerRails();
    ASSERT_EQ(got.size(), 2u);
    EXPECT_EQ((Strings{got[0].getName(), got[1].getName()}), (Strings{"VCC_IO", "TOP"}));
    EXPECT_EQ((std::vector<bool>{got[0].isDirect(), got[1].isDirect()}), (std::vector<bool>{true, false}));
    EXPECT_EQ(got[0].getSupplyNames(), (Strings{"VCCINT_IO", "VCCBRAM"}));
    EXPECT_EQ(got[1].getMemberNames(), (Strings{"VCCINT", "VCC_IO"}));  // supplies first, whatever the file's order
    EXPECT_EQ(got[1].getRailNames(), Strings{"VCC_IO"});
    EXPECT_TRUE(argsOf("49-123").empty());
}

TEST_F(SectionsFixture, PowerRailNamingRules) {
    const std::string file = writeBoard("board.xml", rails(
        // A rail naming itself, and a rail used before its definition.
        "<power_rail name=\"a\"><rail name=\"A\"/><rail name=\"later\"/></power_rail>"
        // The same member twice, and a supply that is a defined rail.
        "<power_rail name=\"b\"><supply name=\"s1\"/><supply name=\"S1\"/><supply name=\"a\"/></power_rail>"
        // A supply that another rail uses, and a rail that another rail uses.
        "<power_rail name=\"c\"><supply name=\"s1\"/><rail name=\"a\"/></power_rail>"
        // Defined twice, and defined after it was used.
        "<power_rail name=\"B\"/>"
        "<power_rail name=\"later\"/>"));
    EXPECT_FALSE(parse(file).ok);
    EXPECT_EQ(argsOf("49-121"), (Args{{"A"}}));
    EXPECT_EQ(argsOf("49-123"), (Args{{"A", "A"}, {"LATER", "A"}}));
    EXPECT_EQ(argsOf("49-118"), (Args{{"S1", "B"}}));
    EXPECT_EQ(argsOf("49-125"), (Args{{"A", "B"}}));
    EXPECT_EQ(argsOf("49-124"), (Args{{"S1", "B"}, {"S1", "C"}}));
    EXPECT_EQ(argsOf("49-120"), (Args{{"A", "C"}}));
    EXPECT_EQ(argsOf("49-119"), (Args{{"B"}}));
    EXPECT_EQ(argsOf("49-122"), (Args{{"LATER"}}));
    for (const ComMsgMgrInstance& m : messages())
        EXPECT_TRUE(m.getId() < "49-118" || m.getId() > "49-125" || m.getId().size() != 6 ||
                    m.getMask() == ComMsgMgr::MSG_ERROR) << m.getId();
    // Every rail is still kept, faults and all.
    EXPECT_EQ(board().getPowerRails().size(), 5u);
}

TEST_F(SectionsFixture, PhasedRails) {
    const std::string file = writeBoard("board.xml", rails(
        "<power_rail name=\"p4\" num_phases=\"4\"/><power_rail name=\"p2\" num_phases=\"2\"/>"
        "<power_rail name=\"none\" num_phases=\"3\"/>"
        "<power_rail name=\"q\"><rail name=\"p4\" phased_power_source=\"3\"/>"
        "<rail name=\"p2\" phased_power_source=\"1\"/>"
        "<supply name=\"p2\"/></power_rail><power_rail name=\"r\"><rail name=\"p4\" phased_power_source=\"2\"/>"
        "<rail name=\"ghost\" phased_power_source=\"1\"/><rail name=\"p2\" phased_power_source=\"0\"/></power_rail>"));
    EXPECT_FALSE(parse(file).ok);
    // Only one phase of p4 is left for r; ghost is no phased rail; 0 phases are out of range.
    EXPECT_EQ(argsOf("49-134"), (Args{{"P4", "R"}, {"P2", "R"}}));
    EXPECT_EQ(argsOf("49-136"), (Args{{"GHOST", "R"}}));
    // A member that took phases cannot stand again in the same rail.
    EXPECT_EQ(argsOf("49-135"), (Args{{"P2", "Q"}}));
    EXPECT_EQ(argsOf("49-141"), (Args{{"NONE", "3", "3"}}));
    // Phased members may come from a rail that other rails use too.
    EXPECT_TRUE(argsOf("49-120").empty());
    EXPECT_EQ(argsOf("49-125"), (Args{{"P2", "Q"}}));
    EXPECT_EQ(argsOf("49-118"), (Args{{"P2", "Q"}}));
    EXPECT_EQ(argsOf("49-123"), (Args{{"GHOST", "R"}}));
    // p4: 3 + 2 taken of 4; p2: 1 + 0 taken of 2.
    EXPECT_EQ(argsOf("49-142"), (Args{{"4", "P4", "Q, R"}, {"2", "P2", "Q, R"}}));
    const std::vector<HBOPowerRail>& got = board().getPowerRails();
    ASSERT_EQ(got.size(), 5u);
    EXPECT_TRUE(got[0].isPhasedRail());
    EXPECT_EQ(got[0].getNumPhases(), 4);
    EXPECT_EQ(got[3].getMemberPhases("P4"), 3);
    EXPECT_EQ(got[3].getMemberPhases("P2"), 1);
    // Phases that add up are fine.
    ASSERT_TRUE(read("good.xml", rails("<power_rail name=\"p\" num_phases=\"3\"/>"
        "<power_rail name=\"x\"><rail name=\"p\" phased_power_source=\"2\"/></power_rail>"
        "<power_rail name=\"y\"><rail name=\"P\" phased_power_source=\"1\"/></power_rail>")).ok);
}

TEST_F(SectionsFixture, RailNumbersThatAreNoNumbersEndOnlyTheirRail) {
    ASSERT_TRUE(read("board.xml", rails("<power_rail name=\"bad\" num_phases=\"many\"/>"
        "<power_rail name=\"worse\"><rail name=\"x\" phased_power_source=\"99999999999\"/></power_rail>"
        "<power_rail name=\"fine\"><supply name=\"v\"/></power_rail>")).ok);
    EXPECT_EQ(count("49-44"), 2);
    ASSERT_EQ(board().getPowerRails().size(), 1u);
    EXPECT_EQ(board().getPowerRails()[0].getName(), "FINE");
}

TEST_F(SectionsFixture, RailListingOnTheDebugChannel) {
    enableScope("board.dataProps");
    ASSERT_TRUE(read("board.xml", rails("<power_rail name=\"p\" num_phases=\"2\" is_direct=\"true\"/>"
        "<power_rail name=\"q\"><supply name=\"s\"/><rail name=\"p\" phased_power_source=\"2\"/></power_rail>")).ok);
    Args listings;
    for (const ComMsgMgrInstance& m : messages())
        if (m.getChannel() == "board.dataProps" &&
            m.getFormat() == "HBOBoardParser just read the following rails for board %s:\n%s\n")
            listings.push_back(m.getArgs());
    EXPECT_EQ(listings, (Args{{"acme:tb1:1.0",
                               "<power_rails>\n  <power_rail name=\"P\" is_direct=true num_phases=2\">\n"
                               "  </power_rail>\n"
                               "  <power_rail name=\"Q\"\">\n    <supply name=\"S\"\"/>\n"
                               "    <rail name=\"P\" phased_power_source=2\"/>\n  </power_rail>\n</power_rails>\n"}}));
}

TEST_F(SectionsFixture, DataPropertiesNestInUpperCase) {
    ASSERT_TRUE(read("board.xml", "<data_properties><data_property name=\"vendor_note\" value=\"first\"/>"
        "<data_property_group name=\"Operating_Conditions\"><data_property name=\"thetaja\" value=\"1.5\"/>"
        "<data_property_group name=\"voltage\"><data_property name=\"vcc\" value=\"0.85\"/></data_property_group>"
        "</data_property_group><data_property name=\"Vendor_Note\" value=\"second\"/><other name=\"x\" value=\"y\"/>"
        "</data_properties>").ok);
    const HBOBoardDataProps& props = board().getBoardDataProps();
    EXPECT_EQ(props.getAllData().size(), 2u);
    EXPECT_EQ(props.getStrDataProp("VENDOR_NOTE").value_or("-"), "second");
    EXPECT_TRUE(props.hasOperatingConditions());
    EXPECT_EQ(props.getStrOperatingCondition("THETAJA"), "1.5");
    EXPECT_EQ(props.getMapOperatingCondition("VOLTAGE"), (HBOBoardDataProps::StrMap{{"VCC", "0.85"}}));
}

TEST_F(SectionsFixture, StubDataReplacesTheFileButKeepsItsFaults) {
    setParam("board.dataProps.stubData", "true");
    EXPECT_FALSE(read("board.xml", rails("<power_rail name=\"mine\"><rail name=\"mine\"/></power_rail>") +
                      "<data_properties><data_property name=\"own\" value=\"1\"/></data_properties>").ok);
    EXPECT_EQ(argsOf("49-121"), (Args{{"MINE"}}));
    const std::vector<HBOPowerRail>& got = board().getPowerRails();
    ASSERT_EQ(got.size(), 5u);
    EXPECT_EQ((Strings{got[0].getName(), got[4].getName()}), (Strings{"BOARD_VCC_IO_BRAM", "BOARD_PARENT_RAIL"}));
    EXPECT_EQ(got[0].getSupplyNames(), (Strings{"VCCINT_IO", "VCCBRAM"}));
    EXPECT_TRUE(got[0].isDirect());
    EXPECT_EQ(got[1].getMemberNames(), (Strings{"VCCINT", "BOARD_VCC_IO_BRAM"}));
    EXPECT_FALSE(got[2].isDirect());
    EXPECT_EQ(got[4].getRailNames(), Strings{"BOARD_CHILD_RAIL"});
    for (const HBOPowerRail& r : got)
        EXPECT_EQ(r.getNumPhases(), 0);
    const HBOBoardDataProps& props = board().getBoardDataProps();
    EXPECT_FALSE(props.getStrDataProp("OWN").is_initialized());
    EXPECT_EQ((Strings{props.getStrOperatingCondition("THETAJA"), props.getStrOperatingCondition("AMBIENT_TEMP"),
                       props.getStrOperatingCondition("DESIGN_POWER_BUDGET")}),
              (Strings{"0.75", "55", "60"}));
    EXPECT_EQ(props.getMapOperatingCondition("VOLTAGE"),
              (HBOBoardDataProps::StrMap{
                  {"BOARD_VCC_IO_BRAM", ".85"}, {"BOARD_12V_PEX", "12.0"}, {"BOARD_PARENT_RAIL", "1.8"}}));
    const HBOBoardDataProps::StrMap current = props.getMapOperatingCondition("SUPPLY_CURRENT_BUDGET");
    ASSERT_EQ(current.size(), 12u);
    EXPECT_EQ((Strings{current.at("BOARD_PARENT_RAIL"), current.at("VCCADC"), current.at("MGTYAVTT")}),
              (Strings{"0.014", "0.02", "3.6"}));
}
