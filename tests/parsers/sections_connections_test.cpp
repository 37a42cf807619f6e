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
    EXPECT_EQ(bus->getName(), "m");
    EXPECT_EQ(bus->getConnectionName(), "c0");
    EXPECT_EQ(bus->getComp1(), "part0");
    EXPECT_EQ(bus->getComp2(), "mem");
    EXPECT_EQ(bus->getOwner(), &board());
    EXPECT_FLOAT_EQ(bus->getDelay(), 1.5f);
    EXPECT_EQ(bus->getStopIndexComp1(), 3);
    EXPECT_EQ(bus->getEnablementDependency(), "{j1 true}");
    // The jumper stands at false, so the connection is switched off.
    EXPECT_EQ(bus->getIsEnabled(), "false");

    const std::vector<HBOBoardBusNet*>& nets = bus->getBoardBusNets();
    ASSERT_EQ(nets.size(), 4u);
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(nets[i]->getName(), "m_" + std::to_string(i));
        EXPECT_EQ(nets[i]->getC1PinIndex(), i);
        EXPECT_EQ(nets[i]->getC2PinIndex(), i);
        EXPECT_EQ(nets[i]->getOwner(), bus);
        EXPECT_EQ(nets[i]->getEnablementDependency(), "{j1 true}");
    }
    EXPECT_FLOAT_EQ(nets[0]->getTypicalDelay(), 1.5f);
    EXPECT_FLOAT_EQ(nets[0]->getMinDelay(), 1.0f);
    EXPECT_FLOAT_EQ(nets[0]->getMaxDelay(), 2.0f);
    // A nets entry replaces all three delays of its net; the empty ones become 0.
    EXPECT_FLOAT_EQ(nets[2]->getTypicalDelay(), 9.0f);
    EXPECT_FLOAT_EQ(nets[2]->getMinDelay(), 0.0f);
    EXPECT_FLOAT_EQ(nets[2]->getMaxDelay(), 0.0f);
    std::vector<HBOPinProps*> pins;
    nets[1]->getPinsVec(pins);
    ASSERT_EQ(pins.size(), 2u);
    EXPECT_EQ(pins[0]->getName(), "P1");
    EXPECT_EQ(pins[1]->getName(), "M1");

    EXPECT_TRUE(buses[1]->getBoardBusNets().empty());
}

TEST_F(SectionsFixture, FpgaSideGivesItsIoStandardToTheOtherSide) {
    // P0..P3 carry LVCMOS18, except that P3 has none.
    write("part0_pins.xml",
          "<?xml version=\"1.0\"?>\n<part_info><pins>"
          "<pin index=\"0\" name=\"P0\" loc=\"A0\" iostandard=\"LVCMOS18\"/>"
          "<pin index=\"1\" name=\"P1\" loc=\"A1\" iostandard=\"LVCMOS18\"/>"
          "<pin index=\"2\" name=\"P2\" loc=\"A2\" iostandard=\"LVCMOS18\"/>"
          "<pin index=\"3\" name=\"P3\" loc=\"A3\"/></pins></part_info>");
    const std::string mem2 =
        "<component name=\"mem2\" type=\"chip\" sub_type=\"ddr\"><pins>"
        "<pin index=\"5\" name=\"N5\" loc=\"N5\" iostandard=\"SSTL12\"/>"
        "<pin index=\"6\" name=\"N6\" loc=\"N6\"/></pins></component>";
    const std::string file = write("board.xml", boardXml(basics() + components("", std::string(kMem) + mem2, true) +
        "<connections>" + connection(map("a", 0, 3, 0, 3)) +
        // The FPGA as the second side, and a chip-to-chip pair that nobody changes.
        connection(map("b", 6, 6, 1, 1), "mem2", "part0", "c1") +
        connection(map("c", 5, 5, 3, 3), "mem2", "mem", "c2") + "</connections>"));
    ASSERT_TRUE(parse(file).ok);

    HBOBoardComponent* mem = comp("mem");
    EXPECT_EQ(ioStandard(mem->getPinByIndex(0)), "LVCMOS18");
    EXPECT_EQ(ioStandard(mem->getPinByIndex(2)), "LVCMOS18");
    // No standard on the FPGA pin: nothing is given, not even an empty entry.
    EXPECT_EQ(ioStandard(mem->getPinByIndex(3)), "<none>");
    EXPECT_EQ(ioStandard(comp("part0")->getPinByIndex(3)), "<none>");
    EXPECT_EQ(ioStandard(comp("mem2")->getPinByIndex(6)), "LVCMOS18");
    EXPECT_EQ(ioStandard(comp("mem2")->getPinByIndex(5)), "SSTL12");
}

TEST_F(SectionsFixture, ConnectionMapsWithoutIndicesAreReportedAndSkipped) {
    const std::string maps = "<connection_map name=\"half\" c1_st_index=\"0\" c1_end_index=\"1\" c2_st_index=\"0\"/>" +
                             map("whole", 0, 1, 0, 1);
    const std::string file = write("board.xml", boardXml(basics() + components("", kMem) + "<connections>" +
                                                         connection(maps, "part0", "mem", "cx") + "</connections>"));
    EXPECT_FALSE(parse(file).ok);
    EXPECT_EQ(argsOf("49-99"), std::vector<std::vector<std::string>>({{file, "cx"}}));
    ASSERT_EQ(board().getBuses().size(), 1u);
    EXPECT_EQ(board().getBuses()[0]->getName(), "whole");
}

TEST_F(SectionsFixture, UndefinedFpgaPinIndicesAreToldButDoNotFail) {
    writePins("part0_pins.xml", 2);
    const std::string file = write("board.xml", boardXml(basics() + components("", kMem, true) +
        "<connections>" + connection(map("m", 1, 3, 1, 3)) + connection(map("n", 0, 5, 0, 5), "mem", "part0", "c1") +
        "</connections>"));
    ASSERT_TRUE(parse(file).ok);
    EXPECT_TRUE(checkTexts().empty());

    setParam("board.enable2020Checks", "true");
    clearMessages();
    ASSERT_TRUE(parse(file).ok);
    // Only indices on the component named part0 count, and the chip's missing 4, 5 do not.
    EXPECT_EQ(checkTexts(), std::vector<std::string>({
        "For connection 'c0' the connection_map references a FPGA pin index '2' that is not defined in "
        "part0_pins.xml.",
        "For connection 'c0' the connection_map references a FPGA pin index '3' that is not defined in "
        "part0_pins.xml.",
        "For connection 'c1' the connection_map references a FPGA pin index '2' that is not defined in "
        "part0_pins.xml.",
        "For connection 'c1' the connection_map references a FPGA pin index '3' that is not defined in "
        "part0_pins.xml.",
        "For connection 'c1' the connection_map references a FPGA pin index '4' that is not defined in "
        "part0_pins.xml.",
        "For connection 'c1' the connection_map references a FPGA pin index '5' that is not defined in "
        "part0_pins.xml.",
    }));

    // Without validation the same board says nothing.
    setParam("board.validateXML", "false");
    clearMessages();
    ASSERT_TRUE(parse(file).ok);
    EXPECT_TRUE(checkTexts().empty());
}

TEST_F(SectionsFixture, JtagChainsAndConnectedBoards) {
    const std::string file = write("board.xml", boardXml(basics() + components("", kMem) +
        "<jtag_chains><jtag_chain name=\"main\"><position name=\"first\" component=\"part0\"/>"
        "<position name=\"x\" component=\"ghost\"/><position name=\"third\" component=\"mem\"/></jtag_chain>"
        "<jtag_chain name=\"aux\"><position name=\"only\" component=\"mem\"/></jtag_chain></jtag_chains>"
        "<param_table name=\"t\"><param_list name=\"l\"><param name=\"a\" component=\"mem\"/></param_list>"
        "</param_table>"
        "<connected_boards><base_boards><base_board id=\"acme:base:1.0\" alias_name=\"base\"/></base_boards>"
        "<connectors><connector name=\"k\" board1=\"base\" board1_connector=\"fmc0\" board2=\"this\""
        " board2_connector=\"fmc\"/></connectors></connected_boards>"));
    ASSERT_TRUE(parse(file).ok);
    EXPECT_EQ(board().getJtagChains(), std::vector<std::string>({"main", "aux"}));
    EXPECT_EQ(comp("part0")->getJtagPosition("main"), "0");
    EXPECT_EQ(comp("part0")->getJtagPosition(), "first");
    EXPECT_EQ(comp("mem")->getJtagPosition("main"), "2");
    EXPECT_EQ(comp("mem")->getJtagPosition("aux"), "0");
    EXPECT_EQ(comp("mem")->getJtagPosition(), "only");
    EXPECT_EQ(board().getConnectedBoards(),
              (std::map<std::string, std::string>{{"acme:base:1.0", "base"}}));
    EXPECT_FALSE(board().getConnectedComponents().empty());
}

namespace {

// The dispatch in front of the reader records the schema on the board; these
// cases do the same on a board of their own.
class AssociationRules : public SectionsFixture {
protected:
    void TearDown() override {
        release();
        SectionsFixture::TearDown();
    }

    bool parseAs(const std::string& file, const std::string& schema) {
        release();
        m_own = new HBOBoard();
        m_own->setBoardSchemaVersion(schema);
        HBOBoardParser parser;
        bool validated = true;
        return parser.parseFile(file, m_own, "", "", validated, nullptr);
    }

    HBOBoard& own() { return *m_own; }

private:
    void release() {
        delete m_own;
        m_own = nullptr;
    }

    HBOBoard* m_own = nullptr;
};

const char* const kRules =
    "<ip_associated_rules><ip_associated_rule name=\"Ddr_Rule\">"
    "<ip vendor=\"v\" library=\"ip\" name=\"mig\" ip_interface=\"C0_DDR\"><associated_board_interfaces>"
    "<associated_board_interface name=\"ddr4\" order=\"0\"/><associated_board_interface name=\"clk\" order=\"1\"/>"
    "</associated_board_interfaces></ip>"
    "<ip vendor=\"v\" library=\"ip\" name=\"other\"/>"
    "</ip_associated_rule></ip_associated_rules>";

}  // namespace

TEST_F(AssociationRules, AreReadFromSchema21AndRejectedBefore) {
    const std::string fpga = "<interfaces>" + intf("ddr4", "acme:interface:ddr4_rtl:1.0") +
                             intf("clk", "acme:interface:diff_clock_rtl:1.0") + "</interfaces>";
    const std::string file = write("board.xml", boardXml(basics() + components(fpga) + kRules));

    ASSERT_TRUE(parseAs(file, "2.1"));
    const std::vector<HBOIpPreset*> rule = own().getIpAssociatedInterfaces().at("DDR_RULE");
    ASSERT_EQ(rule.size(), 2u);
    EXPECT_TRUE(rule[0]->isAssocIntf());
    EXPECT_EQ(rule[0]->getPresetProcName(), "Ddr_Rule");
    EXPECT_EQ(rule[0]->getVersion(), "*");
    EXPECT_EQ(rule[0]->getPresetName(), "Ddr_Rule:v:ip:mig:*:C0_DDR");
    EXPECT_EQ(rule[0]->getParamList(), (std::map<std::string, std::string>{{"ddr4", "0"}, {"clk", "1"}}));
    EXPECT_EQ(rule[1]->getIpInterface(), "*");
    std::vector<std::string> bound;
    EXPECT_TRUE(own().getIpAssocInterfaces("v:ip:mig:1.0", "c0_ddr", bound));
    EXPECT_EQ(bound, std::vector<std::string>({"clk", "ddr4"}));

    // The board's schema decides; only a board without one falls back on the file's.
    for (const char* schema : {"2.0", "2.1.5", "1.9"}) {
        clearMessages();
        EXPECT_FALSE(parseAs(file, schema)) << schema;
        EXPECT_EQ(argsOf("49-77"), std::vector<std::vector<std::string>>({{schema}})) << schema;
        EXPECT_EQ(count("49-56"), 1);
        EXPECT_TRUE(own().getBuses().empty());
    }
    EXPECT_TRUE(parseAs(file, ""));
    clearMessages();
    EXPECT_FALSE(parseAs(write("old.xml", boardXml(basics() + components(fpga) + kRules, "", "2.0")), ""));
    EXPECT_EQ(argsOf("49-77"), std::vector<std::vector<std::string>>({{"2.0"}}));
}

TEST_F(AssociationRules, PresetCheckTextsAndUnknownInterfaces) {
    const std::string fpga = "<interfaces>" + intf("ddr4", "acme:interface:ddr4_rtl:1.0") + "</interfaces>";
    auto bound = [](const std::string& name, const std::string& order) {
        return "<associated_board_interfaces><associated_board_interface name=\"" + name + "\" order=\"" + order +
               "\"/></associated_board_interfaces>";
    };
    const std::string rules =
        "<ip_associated_rules><ip_associated_rule name=\"r\">"
        "<ip library=\"ip\" name=\"a\"/><ip vendor=\"v\" name=\"b\"/><ip vendor=\"v\" library=\"ip\"/>"
        "<ip vendor=\"v\" library=\"ip\" name=\"neg\">" + bound("DDR4", "-1") + "</ip>"
        "<ip vendor=\"v\" library=\"ip\" name=\"good\">" + bound("ddr4", "2") + "</ip>"
        "</ip_associated_rule></ip_associated_rules>";
    const std::string file = write("board.xml", boardXml(basics() + components(fpga) + rules));
    EXPECT_FALSE(parseAs(file, "2.1"));
    EXPECT_EQ(checkTexts(), std::vector<std::string>({
        "Vendor cannot be empty in ip 'a'.",
        "Library cannot be empty in ip 'b'.",
        "IP Name cannot be empty.",
        "In ip 'neg' order cannot be less than zero for interface 'DDR4'.",
    }));
    // Presets that fail their check are left out of the rule.
    const std::vector<HBOIpPreset*> kept = own().getIpAssociatedInterfaces().at("R");
    ASSERT_EQ(kept.size(), 1u);
    EXPECT_EQ(kept[0]->getName(), "good");

    // An interface that is nowhere on the board ends the read.
    clearMessages();
    const std::string unknown = "<ip_associated_rules><ip_associated_rule name=\"r\"><ip vendor=\"v\" library=\"ip\""
                                " name=\"x\">" + bound("nope", "0") + "</ip></ip_associated_rule></ip_associated_rules>";
    EXPECT_FALSE(parseAs(write("unknown.xml", boardXml(basics() + components(fpga) + unknown)), "2.1"));
    EXPECT_EQ(checkTexts(),
              std::vector<std::string>({"Provided Bus interface does not exist on the board 'nope'."}));
    EXPECT_EQ(count("49-56"), 1);
    EXPECT_TRUE(own().getIpAssociatedInterfaces().empty());

    // Without an FPGA the connectors' interfaces are searched.
    clearMessages();
    const std::string daughter =
        "<components><component name=\"fmc\" type=\"connector\" sub_type=\"fmc_hpc\"><interfaces>" +
        intf("fmc_if", "acme:interface:gpio_rtl:1.0", "", "", "fmc") + "</interfaces></component></components>";
    const std::string viaConnector = "<ip_associated_rules><ip_associated_rule name=\"r\"><ip vendor=\"v\""
                                     " library=\"ip\" name=\"x\">" + bound("FMC_IF", "0") +
                                     "</ip></ip_associated_rule></ip_associated_rules>";
    ASSERT_TRUE(parseAs(write("daughter.xml", boardXml(basics() + daughter + viaConnector)), "2.1"));
    EXPECT_EQ(own().getIpAssociatedInterfaces().at("R").size(), 1u);
}
