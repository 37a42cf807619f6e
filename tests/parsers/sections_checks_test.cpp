// The board file checks: the text of every finding, which findings fail the
// board and which are only told.
#include "sections_support.h"

#include "HBOComponentMode.h"

namespace {

struct CheckCase {
    std::string body;                    // what goes inside <board> after the basics
    std::vector<std::string> texts;      // the expected @49-69 texts, in order
};

const char* const kClock = "korvelhw:interface:clock_rtl:1.0";

}  // namespace

TEST_F(SectionsFixture, ComponentCheckTexts) {
    const std::string subTypes =
        "ddr/switch/push_button/lcd/led/ethernet/sfp/sma/mux/reset/system_reset/uart/mgt_clock/system_clock/"
        "memory_flash_qspi/memory_flash_bpi/memory/dimm/pmod/som/fmc_hpc/fmc_lpc/fmc_plus/pcie/fixed_io/chip";
    const std::vector<CheckCase> cases = {
        {"<components><component type=\"chip\" sub_type=\"ddr\"/></components>",
         {"Component name cannot be empty.\n"}},
        {"<components><component name=\"c1\"/></components>",
         {"Component Type cannot be empty for 'c1'.", "Component Type should be fpga/chip/connector for 'c1'."}},
        {"<components><component name=\"c2\" type=\"board\"/></components>",
         {"Component Type should be fpga/chip/connector for 'c2'."}},
        {"<components><component name=\"c3\" type=\"connector\"/></components>",
         {"Component SubType cannot be empty for 'c3'.", "Component Sub Type should be " + subTypes + " for 'c3'."}},
        {"<components><component name=\"c4\" type=\"chip\" sub_type=\"dram\"/></components>",
         {"Component Sub Type should be " + subTypes + " for 'c4'."}},
        {"<components><component name=\"C5\" type=\"chip\" sub_type=\"led\" connected_to=\"logic\"/></components>",
         {"Component c5 attribute 'connected_to' has invalid value 'logic', valid values are 'pl', 'ps', or "
          "'ps_and_pl'"}},
        // Case does not matter to the check.
        {"<components><component name=\"f\" type=\"FPGA\"/><component name=\"e\" type=\"Chip\" sub_type=\"ETHERNET\""
         " connected_to=\"PS_AND_PL\"/><component name=\"s\" type=\"connector\" sub_type=\"Fmc_Plus\"/></components>",
         {}},
    };
    int i = 0;
    for (const CheckCase& c : cases) {
        clearMessages();
        const Parsed parsed = parse(write("b" + std::to_string(i++) + ".xml", boardXml(basics() + c.body)));
        EXPECT_EQ(parsed.ok, c.texts.empty()) << c.body;
        EXPECT_EQ(checkTexts(), c.texts) << c.body;
    }
    // A failed component is not added, and the section ends there.
    parse(write("stop.xml", boardXml(basics() + "<components><component name=\"x\" type=\"bad\"/>"
                                                 "<component name=\"y\" type=\"chip\" sub_type=\"led\"/></components>")));
    EXPECT_TRUE(board().getBoardComponents().empty());
}

TEST_F(SectionsFixture, InterfaceAndPortCheckTexts) {
    const std::vector<CheckCase> cases = {
        {components("<interfaces><interface type=\"a:b:c:d\" mode=\"slave\" of_component=\"part0\"/></interfaces>"),
         {"Component name cannot be empty."}},
        {components("<interfaces><interface name=\"i\" type=\"a:b:c:d\"/></interfaces>"),
         {"Component Mode cannot be empty for interface 'i'.", "Component OfComponent cannot be empty for interface 'i'.",
          "Component Mode should be master or slave for interface 'i'."}},
        {components("<interfaces><interface name=\"i\" type=\"a:b:c:d\" mode=\"monitor\" of_component=\"part0\"/>"
                    "</interfaces>"),
         {"Component Mode should be master or slave for interface 'i'."}},
        {components("<interfaces>" + std::string("<interface name=\"i\" type=\"a:b:c:d\" mode=\"SLAVE\" "
                    "of_component=\"part0\"><port_maps><port_map logical_port=\"L\"/></port_maps></interface>") +
                    "</interfaces>"),
         {"Port name cannot be empty.", "Port direction cannot be empty for ''.",
          "Port direction should be in/out/inout for ''."}},
        {components("<interfaces><interface name=\"i\" type=\"a:b:c:d\" mode=\"master\" of_component=\"part0\">"
                    "<port_maps><port_map logical_port=\"L\" physical_port=\"p\" dir=\"both\" left=\"2\" right=\"2\"/>"
                    "</port_maps></interface></interfaces>"),
         {"Port direction should be in/out/inout for 'p'.", "Port left and right cannot be same for 'p'."}},
        {components("<interfaces><interface name=\"i\" type=\"a:b:c:d\" mode=\"Master\" of_component=\"part0\">"
                    "<port_maps><port_map logical_port=\"L\" physical_port=\"p\" dir=\"INOUT\" left=\"0\" right=\"3\"/>"
                    "</port_maps></interface></interfaces>"),
         {}},
    };
    int i = 0;
    for (const CheckCase& c : cases) {
        clearMessages();
        const Parsed parsed = parse(write("b" + std::to_string(i++) + ".xml", boardXml(basics() + c.body)));
        EXPECT_EQ(parsed.ok, c.texts.empty()) << c.body;
        EXPECT_EQ(checkTexts(), c.texts) << c.body;
    }
}

TEST_F(SectionsFixture, PortsNamedTwiceInOneComponentAreOnlyTold) {
    auto port = [](const std::string& name) {
        return "<port_maps><port_map logical_port=\"CLK\" physical_port=\"" + name + "\" dir=\"in\"/></port_maps>";
    };
    const std::string file = write("board.xml", boardXml(basics() + components(
        "<interfaces>" + intf("first", kClock, port("sysclk")) + intf("second", kClock, port("sysclk")) +
        intf("third", kClock, port("sysclk")) + intf("fourth", kClock, port("sysclk"), "", "mem") +
        intf("fifth", kClock, port("sysclk")) + intf("sixth", kClock, port("sysclk")) + "</interfaces>",
        "<component name=\"mem\" type=\"chip\" sub_type=\"ddr\"/>")));
    ASSERT_TRUE(parse(file).ok);
    EXPECT_EQ(count("49-150"), 0);

    setParam("board.enable2020Checks", "true");
    clearMessages();
    // Told with ok true: the board still reads.
    ASSERT_TRUE(parse(file).ok);
    // A repeat keeps the first owner; "fourth" serves another component and takes
    // the entry over, so "fifth" is told nothing and becomes the owner "sixth" is compared with.
    EXPECT_EQ(argsOf("49-150"), std::vector<std::vector<std::string>>({{"sysclk", "second", file, "first"},
                                                                      {"sysclk", "third", file, "first"},
                                                                      {"sysclk", "sixth", file, "fifth"}}));
}

TEST_F(SectionsFixture, PreferredIpCheckTexts) {
    const std::string ips =
        "<preferred_ips><preferred_ip library=\"l\" name=\"a\" order=\"0\"/>"
        "<preferred_ip vendor=\"v\" name=\"b\" order=\"1\"/><preferred_ip vendor=\"v\" library=\"l\" order=\"2\"/>"
        "<preferred_ip vendor=\"v\" library=\"l\" name=\"d\" order=\"-1\"/></preferred_ips>";
    // Every preferred IP is checked, in a mode and in an interface; the first fault ends the reader.
    const std::string file = write("board.xml", boardXml(basics() + components(
        "<component_modes><component_mode name=\"m\">" + ips + "</component_mode></component_modes>")));
    EXPECT_FALSE(parse(file).ok);
    EXPECT_EQ(checkTexts(), std::vector<std::string>({"Vendor cannot be empty in preferred_ip 'a'."}));
    EXPECT_TRUE(board().getBoardComponents().empty());

    const std::vector<std::pair<std::string, std::string>> single = {
        {"vendor=\"v\" name=\"b\" order=\"0\"", "Library cannot be empty in preferred_ip 'b'."},
        {"vendor=\"v\" library=\"l\" order=\"0\"", "IP Name cannot be empty  in preferred_ip ''."},
        {"vendor=\"v\" library=\"l\" name=\"d\" order=\"-1\"", "Order cannot be less than zero  in preferred_ip 'd'."},
        {"library=\"l\" order=\"-3\"",
         "Vendor cannot be empty in preferred_ip ''.|IP Name cannot be empty  in preferred_ip ''.|"
         "Order cannot be less than zero  in preferred_ip ''."},
    };
    int i = 0;
    for (const auto& c : single) {
        clearMessages();
        const std::string f = write("i" + std::to_string(i++) + ".xml", boardXml(basics() + components(
            "<interfaces>" + intf("u", kClock, "<preferred_ips><preferred_ip " + c.first + "/></preferred_ips>") +
            "</interfaces>")));
        EXPECT_FALSE(parse(f).ok);
        std::string joined;
        for (const std::string& t : checkTexts())
            joined += (joined.empty() ? "" : "|") + t;
        EXPECT_EQ(joined, c.second) << c.first;
        EXPECT_TRUE(board().getBoardComponents().empty());
    }
}

TEST_F(SectionsFixture, BusCheckTexts) {
    const std::string mem = "<component name=\"mem\" type=\"chip\" sub_type=\"ddr\"/>";
    const std::vector<CheckCase> cases = {
        {"<connections><connection component1=\"part0\" component2=\"mem\"><connection_map name=\"m\""
         " c1_st_index=\"0\" c1_end_index=\"1\" c2_st_index=\"0\" c2_end_index=\"1\"/></connection></connections>",
         {"Connection name cannot be empty in 'm'.\n"}},
        {"<connections><connection name=\"c\"><connection_map name=\"m\""
         " c1_st_index=\"0\" c1_end_index=\"1\" c2_st_index=\"0\" c2_end_index=\"1\"/></connection></connections>",
         {"Component1 cannot be empty in 'm'.\n", "Component2 cannot be empty in 'm'.\n"}},
        {"<connections><connection name=\"c\" component1=\"part0\" component2=\"mem\"><connection_map name=\"m\""
         " c1_st_index=\"0\" c1_end_index=\"3\" c2_st_index=\"4\" c2_end_index=\"5\"/></connection></connections>",
         {"Bus width of Component1 and Component2 does not match for c"}},
    };
    int i = 0;
    for (const CheckCase& c : cases) {
        clearMessages();
        const Parsed parsed =
            parse(write("b" + std::to_string(i++) + ".xml", boardXml(basics() + components("", mem) + c.body)));
        EXPECT_FALSE(parsed.ok);
        EXPECT_EQ(checkTexts(), c.texts);
        // A bus that fails is not kept.
        EXPECT_TRUE(board().getBuses().empty());
    }
}

TEST_F(SectionsFixture, ClockAndResetInterfacesOfTheFpga) {
    const std::string freq = "<parameters><parameter name=\"frequency\" value=\"100000000\"/></parameters>";
    const std::string body =
        "<interfaces>" + intf("clk_a", "korvelhw:interface:clock_rtl:1.0") +
        intf("clk_b", "KORVELHW:Signal:Clock_RTL:1.0") + intf("clk_c", "korvelhw:interface:diff_clock_rtl:1.0", freq) +
        intf("rst_m", "korvelhw:signal:reset_rtl:1.0") + "</interfaces>";
    const std::string file = write("board.xml", boardXml(basics() + components(body)));
    // Without validation too: a missing frequency is sent at once and does not fail the board.
    setParam("board.validateXML", "false");
    ASSERT_TRUE(parse(file).ok);
    EXPECT_EQ(argsOf("49-153"), std::vector<std::vector<std::string>>({{"clk_a", file}, {"clk_b", file}}));

    const std::string slave =
        "<interfaces><interface name=\"rst\" type=\"korvelhw:signal:reset_rtl:1.0\" mode=\"slave\""
        " of_component=\"part0\"/><interface name=\"rst_ok\" type=\"korvelhw:signal:reset_rtl:1.0\" mode=\"slave\""
        " of_component=\"part0\"><parameters><parameter name=\"rst_polarity\" value=\"1\"/></parameters></interface>"
        "</interfaces>";
    setParam("board.validateXML", "true");
    clearMessages();
    const std::string connected =
        "<connected_boards><base_boards><base_board id=\"acme:base:1.0\" alias_name=\"b\"/></base_boards>"
        "</connected_boards>";
    EXPECT_FALSE(parse(write("reset.xml", boardXml(basics() + components(slave) + connected))).ok);
    EXPECT_EQ(checkTexts(), std::vector<std::string>({"Polarity Parameter not provided for 'rst'."}));
    // The failed check ends the read before connected_boards.
    EXPECT_TRUE(board().getConnectedBoards().empty());

    // Interfaces of other components are not the active part's.
    clearMessages();
    const std::string chipOnly = "<components><component name=\"osc\" type=\"chip\" sub_type=\"system_clock\">" +
                                 std::string("<interfaces>") + intf("clk", kClock, "", "", "osc") +
                                 "</interfaces></component></components>";
    EXPECT_TRUE(parse(write("noactive.xml", boardXml(basics() + chipOnly))).ok);
    EXPECT_EQ(count("49-153"), 0);
}

TEST_F(SectionsFixture, FpgaInterfacesMustServeKnownComponents) {
    const std::string body = "<interfaces>" + intf("a", kClock, "", "", "ghost") + intf("b", kClock, "", "", "MEM") +
                             "</interfaces>";
    const std::string file = write("board.xml", boardXml(basics() + components(
        body, "<component name=\"mem\" type=\"chip\" sub_type=\"ddr\"/>")));
    EXPECT_FALSE(parse(file).ok);
    std::vector<std::string> texts = checkTexts();
    EXPECT_EQ(texts, std::vector<std::string>(
                         {"Component ghost provided for interface a is not found in list of components on the board."}));
}

TEST_F(SectionsFixture, FinalCheckRevisionsAndModeInterfaces) {
    const std::string noRevisions = "<file_version>1.0</file_version>";
    const std::string body = components(
        "<interfaces>" + intf("uart", kClock) + "</interfaces><component_modes><component_mode name=\"m\">"
        "<interfaces><interface name=\"uart\"/><interface name=\"ghost\"/></interfaces></component_mode>"
        "</component_modes>");
    const std::string file = write("board.xml", boardXml(noRevisions + body));

    // A mode naming an unknown interface is told but the board reads.
    ASSERT_TRUE(parse(file).ok);
    EXPECT_EQ(argsOf("49-148"), std::vector<std::vector<std::string>>({{"part0", "ghost", file}}));
    EXPECT_TRUE(checkTexts().empty());

    setParam("board.enable2020Checks", "true");
    clearMessages();
    EXPECT_FALSE(parse(file).ok);
    EXPECT_EQ(checkTexts(),
              std::vector<std::string>({"No compatible boards were defined in a compatible_board_revisions element."}));
    EXPECT_EQ(count("49-148"), 1);
}

TEST_F(SectionsFixture, SystemClocksWithoutModesGetDefaultModes) {
    const std::string body = "<interfaces>" + intf("sys_diff_clock", kClock, "", "", "osc") +
                             intf("aux_clock", kClock, "", "", "OSC") + intf("ref", kClock, "", "", "osc2") +
                             "</interfaces>";
    const std::string others =
        "<component name=\"osc\" type=\"chip\" sub_type=\"System_Clock\"/>"
        "<component name=\"osc2\" type=\"chip\" sub_type=\"system_clock\"><component_modes>"
        "<component_mode name=\"own\"/></component_modes></component>";
    const std::string file = write("board.xml", boardXml(basics() + components(body, others)));
    ASSERT_TRUE(parse(file).ok);

    const std::vector<HBOComponentMode*>& modes = comp("osc")->getComponentModes();
    ASSERT_EQ(modes.size(), 2u);
    EXPECT_EQ(modes[0]->getName(), "aux_clock");
    EXPECT_EQ(modes[0]->getDisplayName(), "aux_clock");
    EXPECT_EQ(modes[0]->getOwnerComponent(), comp("osc"));
    EXPECT_EQ(modes[0]->getInterfaces(), (HBOComponentMode::InterfaceMap{{0, {"aux_clock", false}}}));
    EXPECT_EQ(modes[1]->getName(), "sys_diff_clock");
    EXPECT_EQ(argsOf("49-149"), std::vector<std::vector<std::string>>({{"osc", file, "aux_clock", "aux_clock"},
                                                                      {"osc", file, "sys_diff_clock", "sys_diff_clock"}}));
    // A system clock with a mode of its own gets none.
    ASSERT_EQ(comp("osc2")->getComponentModes().size(), 1u);

    // Without reporting the modes are still made, silently.
    setParam("board.validateXML", "false");
    clearMessages();
    ASSERT_TRUE(parse(file).ok);
    EXPECT_EQ(comp("osc")->getComponentModes().size(), 2u);
    EXPECT_EQ(count("49-149"), 0);
}
