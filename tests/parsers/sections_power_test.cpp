// Power rails with their consistency rules, data properties and the stub data.
#include "sections_support.h"

#include <boost/any.hpp>

#include "HBOBoardDataProps.h"
#include "HBOPowerRail.h"

namespace {

std::string rails(const std::string& body) {
    return "<power_rails>" + body + "</power_rails>";
}

typedef std::vector<std::vector<std::string>> Args;

}  // namespace

TEST_F(SectionsFixture, PowerRailsAreReadWithFoldedNames) {
    const std::string file = write("board.xml", boardXml(basics() + rails(
        "<power_rail name=\"vcc_io\" is_direct=\"TRUE\"><supply name=\"vccint_io\"/><supply name=\"VccBram\"/>"
        "</power_rail>"
        "<other name=\"ignored\"/>"
        "<Power_Rail name=\"top\"><rail name=\"VCC_IO\"/><SUPPLY name=\"vccint\"/><note/></Power_Rail>")));
    ASSERT_TRUE(parse(file).ok);
    const std::vector<HBOPowerRail>& read = board().getPowerRails();
    ASSERT_EQ(read.size(), 2u);
    EXPECT_EQ(read[0].getName(), "VCC_IO");
    EXPECT_TRUE(read[0].isDirect());
    EXPECT_EQ(read[0].getSupplyNames(), std::vector<std::string>({"VCCINT_IO", "VCCBRAM"}));
    EXPECT_EQ(read[1].getName(), "TOP");
    EXPECT_FALSE(read[1].isDirect());
    // Supplies first, whatever the order in the file.
    EXPECT_EQ(read[1].getMemberNames(), std::vector<std::string>({"VCCINT", "VCC_IO"}));
    EXPECT_EQ(read[1].getRailNames(), std::vector<std::string>({"VCC_IO"}));
    EXPECT_TRUE(argsOf("49-123").empty());
}

TEST_F(SectionsFixture, PowerRailNamingRules) {
    const std::string file = write("board.xml", boardXml(basics() + rails(
        // A rail naming itself, and a rail used before its definition.
        "<power_rail name=\"a\"><rail name=\"A\"/><rail name=\"later\"/></power_rail>"
        // The same member twice, and a supply that is a defined rail.
        "<power_rail name=\"b\"><supply name=\"s1\"/><supply name=\"S1\"/><supply name=\"a\"/></power_rail>"
        // A supply that another rail uses, and a rail that another rail uses.
        "<power_rail name=\"c\"><supply name=\"s1\"/><rail name=\"a\"/></power_rail>"
        // Defined twice, and defined after it was used.
        "<power_rail name=\"B\"/>"
        "<power_rail name=\"later\"/>")));
    EXPECT_FALSE(parse(file).ok);
    EXPECT_EQ(argsOf("49-121"), Args({{"A"}}));
    EXPECT_EQ(argsOf("49-123"), Args({{"A", "A"}, {"LATER", "A"}}));
    EXPECT_EQ(argsOf("49-118"), Args({{"S1", "B"}}));
    EXPECT_EQ(argsOf("49-125"), Args({{"A", "B"}}));
    EXPECT_EQ(argsOf("49-124"), Args({{"S1", "B"}, {"S1", "C"}}));
    EXPECT_EQ(argsOf("49-120"), Args({{"A", "C"}}));
    EXPECT_EQ(argsOf("49-119"), Args({{"B"}}));
    EXPECT_EQ(argsOf("49-122"), Args({{"LATER"}}));
    for (const ComMsgMgrInstance& m : messages()) {
        if (m.getId() >= "49-118" && m.getId() <= "49-125" && m.getId().size() == 6) {
            EXPECT_EQ(m.getMask(), ComMsgMgr::MSG_ERROR) << m.getId();
        }
    }
    // Every rail is still kept, faults and all.
    EXPECT_EQ(board().getPowerRails().size(), 5u);
}

TEST_F(SectionsFixture, PhasedRails) {
    const std::string file = write("board.xml", boardXml(basics() + rails(
        "<power_rail name=\"p4\" num_phases=\"4\"/>"
        "<power_rail name=\"p2\" num_phases=\"2\"/>"
        "<power_rail name=\"none\" num_phases=\"3\"/>"
        "<power_rail name=\"q\"><rail name=\"p4\" phased_power_source=\"3\"/><rail name=\"p2\" phased_power_source=\"1\"/>"
        "<supply name=\"p2\"/></power_rail>"
        "<power_rail name=\"r\"><rail name=\"p4\" phased_power_source=\"2\"/>"
        "<rail name=\"ghost\" phased_power_source=\"1\"/><rail name=\"p2\" phased_power_source=\"0\"/></power_rail>")));
    EXPECT_FALSE(parse(file).ok);
    // Only one phase of p4 is left for r; ghost is no phased rail; 0 phases are out of range.
    EXPECT_EQ(argsOf("49-134"), Args({{"P4", "R"}, {"P2", "R"}}));
    EXPECT_EQ(argsOf("49-136"), Args({{"GHOST", "R"}}));
    // A member that took phases cannot stand again in the same rail.
    EXPECT_EQ(argsOf("49-135"), Args({{"P2", "Q"}}));
    EXPECT_EQ(argsOf("49-141"), Args({{"NONE", "3", "3"}}));
    // Phased members may come from a rail that other rails use too.
    EXPECT_TRUE(argsOf("49-120").empty());
    EXPECT_EQ(argsOf("49-125"), Args({{"P2", "Q"}}));
    EXPECT_EQ(argsOf("49-118"), Args({{"P2", "Q"}}));
    EXPECT_EQ(argsOf("49-123"), Args({{"GHOST", "R"}}));
    // p4: 3 + 2 taken of 4; p2: 1 + 0 taken of 2.
    EXPECT_EQ(argsOf("49-142"), Args({{"4", "P4", "Q, R"}, {"2", "P2", "Q, R"}}));

    const std::vector<HBOPowerRail>& read = board().getPowerRails();
    ASSERT_EQ(read.size(), 5u);
    EXPECT_TRUE(read[0].isPhasedRail());
    EXPECT_EQ(read[0].getNumPhases(), 4);
    EXPECT_EQ(read[3].getMemberPhases("P4"), 3);
    EXPECT_EQ(read[3].getMemberPhases("P2"), 1);

    // Phases that add up are fine.
    clearMessages();
    ASSERT_TRUE(parse(write("good.xml", boardXml(basics() + rails(
        "<power_rail name=\"p\" num_phases=\"3\"/>"
        "<power_rail name=\"x\"><rail name=\"p\" phased_power_source=\"2\"/></power_rail>"
        "<power_rail name=\"y\"><rail name=\"P\" phased_power_source=\"1\"/></power_rail>")))).ok);
}

TEST_F(SectionsFixture, RailNumbersThatAreNoNumbersEndOnlyTheirRail) {
    const std::string file = write("board.xml", boardXml(basics() + rails(
        "<power_rail name=\"bad\" num_phases=\"many\"/>"
        "<power_rail name=\"worse\"><rail name=\"x\" phased_power_source=\"99999999999\"/></power_rail>"
        "<power_rail name=\"fine\"><supply name=\"v\"/></power_rail>")));
    ASSERT_TRUE(parse(file).ok);
    EXPECT_EQ(count("49-44"), 2);
    ASSERT_EQ(board().getPowerRails().size(), 1u);
    EXPECT_EQ(board().getPowerRails()[0].getName(), "FINE");
}

TEST_F(SectionsFixture, RailListingOnTheDebugChannel) {
    enableScope("board.dataProps");
    const std::string file = write("board.xml", boardXml(basics() + rails(
        "<power_rail name=\"p\" num_phases=\"2\" is_direct=\"true\"/>"
        "<power_rail name=\"q\"><supply name=\"s\"/><rail name=\"p\" phased_power_source=\"2\"/></power_rail>")));
    ASSERT_TRUE(parse(file).ok);
    bool found = false;
    for (const ComMsgMgrInstance& m : messages()) {
        if (m.getChannel() != "board.dataProps" || m.getArgs().size() != 2 ||
            m.getFormat() != "HBOBoardParser just read the following rails for board %s:\n%s\n")
            continue;
        found = true;
        EXPECT_EQ(m.getArgs()[0], "acme:tb1:1.0");
        EXPECT_EQ(m.getArgs()[1],
                  "<power_rails>\n"
                  "  <power_rail name=\"P\" is_direct=true num_phases=2\">\n"
                  "  </power_rail>\n"
                  "  <power_rail name=\"Q\"\">\n"
                  "    <supply name=\"S\"\"/>\n"
                  "    <rail name=\"P\" phased_power_source=2\"/>\n"
                  "  </power_rail>\n"
                  "</power_rails>\n");
    }
    EXPECT_TRUE(found);
}

TEST_F(SectionsFixture, DataPropertiesNestInUpperCase) {
    const std::string file = write("board.xml", boardXml(basics() +
        "<data_properties><data_property name=\"vendor_note\" value=\"first\"/>"
        "<data_property_group name=\"Operating_Conditions\"><data_property name=\"thetaja\" value=\"1.5\"/>"
        "<data_property_group name=\"voltage\"><data_property name=\"vcc\" value=\"0.85\"/></data_property_group>"
        "</data_property_group><data_property name=\"Vendor_Note\" value=\"second\"/><other name=\"x\" value=\"y\"/>"
        "</data_properties>"));
    ASSERT_TRUE(parse(file).ok);
    const HBOBoardDataProps& props = board().getBoardDataProps();
    EXPECT_EQ(props.getAllData().size(), 2u);
    EXPECT_EQ(props.getStrDataProp("VENDOR_NOTE").value_or("-"), "second");
    EXPECT_TRUE(props.hasOperatingConditions());
    EXPECT_EQ(props.getStrOperatingCondition("THETAJA"), "1.5");
    EXPECT_EQ(props.getMapOperatingCondition("VOLTAGE"), (HBOBoardDataProps::StrMap{{"VCC", "0.85"}}));
}

TEST_F(SectionsFixture, StubDataReplacesTheFileButKeepsItsFaults) {
    setParam("board.dataProps.stubData", "true");
    const std::string file = write("board.xml", boardXml(basics() +
        rails("<power_rail name=\"mine\"><rail name=\"mine\"/></power_rail>") +
        "<data_properties><data_property name=\"own\" value=\"1\"/></data_properties>"));
    EXPECT_FALSE(parse(file).ok);
    EXPECT_EQ(argsOf("49-121"), Args({{"MINE"}}));

    const std::vector<HBOPowerRail>& read = board().getPowerRails();
    ASSERT_EQ(read.size(), 5u);
    EXPECT_EQ(read[0].getName(), "BOARD_VCC_IO_BRAM");
    EXPECT_EQ(read[0].getSupplyNames(), std::vector<std::string>({"VCCINT_IO", "VCCBRAM"}));
    EXPECT_TRUE(read[0].isDirect());
    EXPECT_EQ(read[1].getMemberNames(), std::vector<std::string>({"VCCINT", "BOARD_VCC_IO_BRAM"}));
    EXPECT_FALSE(read[2].isDirect());
    EXPECT_EQ(read[4].getName(), "BOARD_PARENT_RAIL");
    EXPECT_EQ(read[4].getRailNames(), std::vector<std::string>({"BOARD_CHILD_RAIL"}));
    for (const HBOPowerRail& r : read)
        EXPECT_EQ(r.getNumPhases(), 0);

    const HBOBoardDataProps& props = board().getBoardDataProps();
    EXPECT_FALSE(props.getStrDataProp("OWN").is_initialized());
    EXPECT_EQ(props.getStrOperatingCondition("THETAJA"), "0.75");
    EXPECT_EQ(props.getStrOperatingCondition("AMBIENT_TEMP"), "55");
    EXPECT_EQ(props.getStrOperatingCondition("DESIGN_POWER_BUDGET"), "60");
    const HBOBoardDataProps::StrMap voltage = props.getMapOperatingCondition("VOLTAGE");
    EXPECT_EQ(voltage, (HBOBoardDataProps::StrMap{
                           {"BOARD_VCC_IO_BRAM", ".85"}, {"BOARD_12V_PEX", "12.0"}, {"BOARD_PARENT_RAIL", "1.8"}}));
    const HBOBoardDataProps::StrMap current = props.getMapOperatingCondition("SUPPLY_CURRENT_BUDGET");
    EXPECT_EQ(current.size(), 12u);
    EXPECT_EQ(current.at("BOARD_PARENT_RAIL"), "0.014");
    EXPECT_EQ(current.at("VCCADC"), "0.02");
    EXPECT_EQ(current.at("MGTYAVTT"), "3.6");
}
