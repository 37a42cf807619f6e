// Connections, jtag chains, IP association rules and connected boards.
#include "sections_support.h"

#include "HBOBoardBus.h"
#include "HBOBoardBusNet.h"
#include "HBOIpPreset.h"
#include "HBOPinProps.h"

namespace {

// A chip "mem" with pins 0..3 listed in board.xml, without I/O standards.
const char* const kMem =
    "<component name=\"mem\" type=\"chip\" sub_type=\"ddr\"><pins>"
    "<pin index=\"0\" name=\"M0\" loc=\"M0\"/><pin index=\"1\" name=\"M1\" loc=\"M1\"/>"
    "<pin index=\"2\" name=\"M2\" loc=\"M2\"/><pin index=\"3\" name=\"M3\" loc=\"M3\"/></pins></component>";

std::string connection(const std::string& maps, const std::string& c1 = "part0", const std::string& c2 = "mem",
                       const std::string& name = "c0") {
    return "<connection name=\"" + name + "\" component1=\"" + c1 + "\" component2=\"" + c2 + "\">" + maps +
           "</connection>";
}

std::string map(const std::string& name, int s1, int e1, int s2, int e2, const std::string& extra = "",
                const std::string& body = "") {
    return "<connection_map name=\"" + name + "\" c1_st_index=\"" + std::to_string(s1) + "\" c1_end_index=\"" +
           std::to_string(e1) + "\" c2_st_index=\"" + std::to_string(s2) + "\" c2_end_index=\"" +
           std::to_string(e2) + "\" " + extra + ">" + body + "</connection_map>";
}

std::string ioStandard(const HBOPinProps* pin) {
    const std::map<std::string, std::string> props = pin->getPortProps();
    auto it = props.find("iostandard");
    return it == props.end() ? "<none>" : it->second;
}

}  // namespace

TEST_F(SectionsFixture, ConnectionMapsMakeNetsWithDelaysAndDependencies) {
    writePins("part0_pins.xml", 4);
    const std::string maps =
        map("m", 0, 3, 0, 3, "typical_delay=\"1.5\" min_delay=\"1\" max_delay=\"2\"",
            "<nets><net index=\"2\" typical_delay=\"9\"/><net index=\"7\" typical_delay=\"8\"/></nets>"
            "<enablement_dependencies><jumpers><jumper name=\"j1\">true</jumper></jumpers></enablement_dependencies>"
            "<net index=\"0\" delay=\"4\" iostandard=\"X\"/>") +
        map("swapped", 3, 0, 3, 0);
    const std::string file = write("board.xml", boardXml(basics() +
        "<jumpers><jumper name=\"j1\" default_value=\"false\"><description>j</description></jumper></jumpers>" +
        components("", kMem, true) + "<connections>" + connection(maps) + "</connections>"));
    ASSERT_TRUE(parse(file).ok);
    const std::vector<HBOBoardBus*>& buses = board().getBuses();
    ASSERT_EQ(buses.size(), 2u);
    const HBOBoardBus* bus = buses[0];
    EXPECT_EQ((Strings{bus->getName(), bus->getConnectionName(), bus->getComp1(), bus->getComp2(),
                       bus->getEnablementDependency()}),
              (Strings{"m", "c0", "part0", "mem", "{j1 true}"}));
    EXPECT_EQ(bus->getOwner(), &board());
    EXPECT_FLOAT_EQ(bus->getDelay(), 1.5f);
    EXPECT_EQ(bus->getStopIndexComp1(), 3);
    EXPECT_EQ(bus->getIsEnabled(), "false");  // the jumper stands at false
    const std::vector<HBOBoardBusNet*>& nets = bus->getBoardBusNets();
    ASSERT_EQ(nets.size(), 4u);
    for (int i = 0; i < 4; ++i) {
        SCOPED_TRACE(i);
        EXPECT_EQ(nets[i]->getName(), "m_" + std::to_string(i));
        EXPECT_EQ(nets[i]->getC1PinIndex(), i);
        EXPECT_EQ(nets[i]->getC2PinIndex(), i);
        EXPECT_EQ(nets[i]->getOwner(), bus);
        EXPECT_EQ(nets[i]->getEnablementDependency(), "{j1 true}");
    }
    // A nets entry replaces all three delays of its net; the empty ones become 0.
    EXPECT_EQ((std::vector<float>{nets[0]->getTypicalDelay(), nets[0]->getMinDelay(), nets[0]->getMaxDelay(),
                                  nets[2]->getTypicalDelay(), nets[2]->getMinDelay(), nets[2]->getMaxDelay()}),
              (std::vector<float>{1.5f, 1.0f, 2.0f, 9.0f, 0.0f, 0.0f}));
    std::vector<HBOPinProps*> pins;
    nets[1]->getPinsVec(pins);
    ASSERT_EQ(pins.size(), 2u);
    EXPECT_EQ(pins[0]->getName(), "P1");
    EXPECT_EQ(pins[1]->getName(), "M1");
    EXPECT_TRUE(buses[1]->getBoardBusNets().empty());
}

TEST_F(SectionsFixture, FpgaSideGivesItsIoStandardToTheOtherSide) {
    // P3 has no I/O standard.
    write("part0_pins.xml", "<?xml version=\"1.0\"?>\n<part_info><pins>"
          "<pin index=\"0\" name=\"P0\" loc=\"A0\" iostandard=\"LVCMOS18\"/>"
          "<pin index=\"1\" name=\"P1\" loc=\"A1\" iostandard=\"LVCMOS18\"/>"
          "<pin index=\"2\" name=\"P2\" loc=\"A2\" iostandard=\"LVCMOS18\"/>"
          "<pin index=\"3\" name=\"P3\" loc=\"A3\"/></pins></part_info>");
    const std::string mem2 = "<component name=\"mem2\" type=\"chip\" sub_type=\"ddr\"><pins>"
                             "<pin index=\"5\" name=\"N5\" loc=\"N5\" iostandard=\"SSTL12\"/>"
                             "<pin index=\"6\" name=\"N6\" loc=\"N6\"/></pins></component>";
    // The FPGA as the second side too, and a chip-to-chip pair that nobody changes.
    ASSERT_TRUE(read("board.xml", components("", std::string(kMem) + mem2, true) + "<connections>" +
                     connection(map("a", 0, 3, 0, 3)) + connection(map("b", 6, 6, 1, 1), "mem2", "part0", "c1") +
                     connection(map("c", 5, 5, 3, 3), "mem2", "mem", "c2") + "</connections>").ok);
    // No standard on the FPGA pin P3: nothing is given, not even an empty entry.
    EXPECT_EQ((Strings{ioStandard(comp("mem")->getPinByIndex(0)), ioStandard(comp("mem")->getPinByIndex(2)),
                       ioStandard(comp("mem")->getPinByIndex(3)), ioStandard(comp("part0")->getPinByIndex(3)),
                       ioStandard(comp("mem2")->getPinByIndex(6)), ioStandard(comp("mem2")->getPinByIndex(5))}),
              (Strings{"LVCMOS18", "LVCMOS18", "<none>", "<none>", "LVCMOS18", "SSTL12"}));
}

TEST_F(SectionsFixture, ConnectionMapsWithoutIndicesAreReportedAndSkipped) {
    const std::string file = writeBoard("board.xml", components("", kMem) + "<connections>" + connection(
        "<connection_map name=\"half\" c1_st_index=\"0\" c1_end_index=\"1\" c2_st_index=\"0\"/>" +
        map("whole", 0, 1, 0, 1), "part0", "mem", "cx") + "</connections>");
    EXPECT_FALSE(parse(file).ok);
    EXPECT_EQ(argsOf("49-99"), (Args{{file, "cx"}}));
    ASSERT_EQ(board().getBuses().size(), 1u);
    EXPECT_EQ(board().getBuses()[0]->getName(), "whole");
}

TEST_F(SectionsFixture, UndefinedFpgaPinIndicesAreToldButDoNotFail) {
    writePins("part0_pins.xml", 2);
    const std::string file = writeBoard("board.xml", components("", kMem, true) + "<connections>" +
        connection(map("m", 1, 3, 1, 3)) + connection(map("n", 0, 5, 0, 5), "mem", "part0", "c1") + "</connections>");
    ASSERT_TRUE(parse(file).ok);
    EXPECT_TRUE(checkTexts().empty());
    ASSERT_TRUE(reparse(file, "board.enable2020Checks").ok);
    // Only indices on the component named part0 count, and the chip's missing 4, 5 do not.
    auto text = [](const std::string& c, const std::string& i) {
        return "For connection '" + c + "' the connection_map references a FPGA pin index '" + i +
               "' that is not defined in part0_pins.xml.";
    };
    EXPECT_EQ(checkTexts(), (Strings{text("c0", "2"), text("c0", "3"), text("c1", "2"), text("c1", "3"),
                                     text("c1", "4"), text("c1", "5")}));
    // Without validation the same board says nothing.
    ASSERT_TRUE(reparse(file, "board.validateXML", "false").ok);
    EXPECT_TRUE(checkTexts().empty());
}

TEST_F(SectionsFixture, JtagChainsAndConnectedBoards) {
    ASSERT_TRUE(read("board.xml", components("", kMem) +
        "<jtag_chains><jtag_chain name=\"main\"><position name=\"first\" component=\"part0\"/>"
        "<position name=\"x\" component=\"ghost\"/><position name=\"third\" component=\"mem\"/></jtag_chain>"
        "<jtag_chain name=\"aux\"><position name=\"only\" component=\"mem\"/></jtag_chain></jtag_chains>"
        "<param_table name=\"t\"><param_list name=\"l\"><param name=\"a\" component=\"mem\"/></param_list>"
        "</param_table><connected_boards><base_boards><base_board id=\"acme:base:1.0\" alias_name=\"base\"/>"
        "</base_boards><connectors><connector name=\"k\" board1=\"base\" board1_connector=\"fmc0\" board2=\"this\""
        " board2_connector=\"fmc\"/></connectors></connected_boards>").ok);
    EXPECT_EQ(board().getJtagChains(), (Strings{"main", "aux"}));
    EXPECT_EQ((Strings{comp("part0")->getJtagPosition("main"), comp("part0")->getJtagPosition(),
                       comp("mem")->getJtagPosition("main"), comp("mem")->getJtagPosition("aux"),
                       comp("mem")->getJtagPosition()}),
              (Strings{"0", "first", "2", "0", "only"}));
    EXPECT_EQ(board().getConnectedBoards(), (std::map<std::string, std::string>{{"acme:base:1.0", "base"}}));
    EXPECT_FALSE(board().getConnectedComponents().empty());
}

namespace {

std::string rules(const std::string& name, const std::string& ips) {
    return "<ip_associated_rules><ip_associated_rule name=\"" + name + "\">" + ips +
           "</ip_associated_rule></ip_associated_rules>";
}

std::string bound(const std::string& name, const std::string& order) {
    return "<associated_board_interfaces><associated_board_interface name=\"" + name + "\" order=\"" + order +
           "\"/></associated_board_interfaces>";
}

}  // namespace

// The schema is set on the board first, as the front door does.
TEST_F(SectionsFixture, AssociationRulesAreReadFromSchema21AndRejectedBefore) {
    const std::string body = components("<interfaces>" + intf("ddr4", "acme:interface:ddr4_rtl:1.0") +
                                        intf("clk", "acme:interface:diff_clock_rtl:1.0") + "</interfaces>") +
        rules("Ddr_Rule", "<ip vendor=\"v\" library=\"ip\" name=\"mig\" ip_interface=\"C0_DDR\">"
                          "<associated_board_interfaces><associated_board_interface name=\"ddr4\" order=\"0\"/>"
                          "<associated_board_interface name=\"clk\" order=\"1\"/></associated_board_interfaces></ip>"
                          "<ip vendor=\"v\" library=\"ip\" name=\"other\"/>");
    const std::string file = writeBoard("board.xml", body);
    ASSERT_TRUE(parse(file, "", "", nullptr, "2.1").ok);
    const std::vector<HBOIpPreset*> rule = board().getIpAssociatedInterfaces().at("DDR_RULE");
    ASSERT_EQ(rule.size(), 2u);
    EXPECT_TRUE(rule[0]->isAssocIntf());
    EXPECT_EQ((Strings{rule[0]->getPresetProcName(), rule[0]->getVersion(), rule[0]->getPresetName(),
                       rule[1]->getIpInterface()}),
              (Strings{"Ddr_Rule", "*", "Ddr_Rule:v:ip:mig:*:C0_DDR", "*"}));
    EXPECT_EQ(rule[0]->getParamList(), (std::map<std::string, std::string>{{"ddr4", "0"}, {"clk", "1"}}));
    Strings interfaces;
    EXPECT_TRUE(board().getIpAssocInterfaces("v:ip:mig:1.0", "c0_ddr", interfaces));
    EXPECT_EQ(interfaces, (Strings{"clk", "ddr4"}));
    // The board's schema decides; only a board without one falls back on the file's.
    for (const char* schema : {"2.0", "2.1.5", "1.9"}) {
        SCOPED_TRACE(schema);
        clearMessages();
        EXPECT_FALSE(parse(file, "", "", nullptr, schema).ok);
        EXPECT_EQ(argsOf("49-77"), Args{{schema}});
        EXPECT_EQ(count("49-56"), 1);
    }
    EXPECT_TRUE(parse(file).ok);
    clearMessages();
    EXPECT_FALSE(parse(write("old.xml", boardXml(basics() + body, "", "2.0"))).ok);
    EXPECT_EQ(argsOf("49-77"), Args{{"2.0"}});
}

TEST_F(SectionsFixture, AssociationRulePresetCheckTextsAndUnknownInterfaces) {
    const std::string fpga = components("<interfaces>" + intf("ddr4", "acme:interface:ddr4_rtl:1.0") + "</interfaces>");
    EXPECT_FALSE(parse(writeBoard("board.xml", fpga + rules("r",
        "<ip library=\"ip\" name=\"a\"/><ip vendor=\"v\" name=\"b\"/><ip vendor=\"v\" library=\"ip\"/>"
        "<ip vendor=\"v\" library=\"ip\" name=\"neg\">" + bound("DDR4", "-1") + "</ip>"
        "<ip vendor=\"v\" library=\"ip\" name=\"good\">" + bound("ddr4", "2") + "</ip>")), "", "", nullptr, "2.1").ok);
    EXPECT_EQ(checkTexts(), (Strings{"Vendor cannot be empty in ip 'a'.", "Library cannot be empty in ip 'b'.",
                                     "IP Name cannot be empty.",
                                     "In ip 'neg' order cannot be less than zero for interface 'DDR4'."}));
    // Presets that fail their check are left out of the rule.
    const std::vector<HBOIpPreset*> kept = board().getIpAssociatedInterfaces().at("R");
    ASSERT_EQ(kept.size(), 1u);
    EXPECT_EQ(kept[0]->getName(), "good");
    // An interface that is nowhere on the board ends the read.
    clearMessages();
    const std::string x = "<ip vendor=\"v\" library=\"ip\" name=\"x\">";
    EXPECT_FALSE(parse(writeBoard("unknown.xml", fpga + rules("r", x + bound("nope", "0") + "</ip>")), "", "",
                       nullptr, "2.1").ok);
    EXPECT_EQ(checkTexts(), Strings{"Provided Bus interface does not exist on the board 'nope'."});
    EXPECT_EQ(count("49-56"), 1);
    EXPECT_TRUE(board().getIpAssociatedInterfaces().empty());
    // Without an FPGA the connectors' interfaces are searched.
    ASSERT_TRUE(parse(writeBoard("daughter.xml",
        "<components><component name=\"fmc\" type=\"connector\" sub_type=\"fmc_hpc\"><interfaces>" +
        intf("fmc_if", "acme:interface:gpio_rtl:1.0", "", "", "fmc") + "</interfaces></component></components>" +
        rules("r", x + bound("FMC_IF", "0") + "</ip>")), "", "", nullptr, "2.1").ok);
    EXPECT_EQ(board().getIpAssociatedInterfaces().at("R").size(), 1u);
}
