// The board file checks: the text of every finding, which findings fail the
// board and which are only told.
#include "sections_support.h"

#include "HBOComponentMode.h"

namespace {

const char* const kClock = "korvelhw:interface:clock_rtl:1.0";
const char* const kMem = "<component name=\"mem\" type=\"chip\" sub_type=\"ddr\"/>";

std::string ports(const std::string& attrs) {
    return "<port_maps><port_map logical_port=\"L\" " + attrs + "/></port_maps>";
}

}  // namespace

class ChecksFixture : public SectionsFixture {
protected:
    struct CheckCase {
        std::string body;  // inside <board>, after the basics
        Strings texts;     // the @49-69 texts, in order; none means the board reads
    };
    void expectChecks(const std::vector<CheckCase>& cases) {
        for (const CheckCase& c : cases) {
            SCOPED_TRACE(c.body);
            clearMessages();
            EXPECT_EQ(read("b.xml", c.body).ok, c.texts.empty());
            EXPECT_EQ(checkTexts(), c.texts);
        }
    }
    static std::string comps(const std::string& inside) { return "<components>" + inside + "</components>"; }
    static std::string intfs(const std::string& inside) {
        return components("<interfaces>" + inside + "</interfaces>");
    }
};

TEST_F(ChecksFixture, ComponentCheckTexts) {
    const std::string subTypes =
        "ddr/switch/push_button/lcd/led/ethernet/sfp/sma/mux/reset/system_reset/uart/mgt_clock/system_clock/"
        "memory_flash_qspi/memory_flash_bpi/memory/dimm/pmod/som/fmc_hpc/fmc_lpc/fmc_plus/pcie/fixed_io/chip";
    expectChecks({
        {comps("<component type=\"chip\" sub_type=\"ddr\"/>"), {"Component name cannot be empty.\n"}},
        {comps("<component name=\"c1\"/>"),
         {"Component Type cannot be empty for 'c1'.", "Component Type should be fpga/chip/connector for 'c1'."}},
        {comps("<component name=\"c2\" type=\"board\"/>"), {"Component Type should be fpga/chip/connector for 'c2'."}},
        {comps("<component name=\"c3\" type=\"connector\"/>"),
         {"Component SubType cannot be empty for 'c3'.", "Component Sub Type should be " + subTypes + " for 'c3'."}},
        {comps("<component name=\"c4\" type=\"chip\" sub_type=\"dram\"/>"),
         {"Component Sub Type should be " + subTypes + " for 'c4'."}},
        {comps("<component name=\"C5\" type=\"chip\" sub_type=\"led\" connected_to=\"logic\"/>"),
         {"Component c5 attribute 'connected_to' has invalid value 'logic', valid values are 'pl', 'ps', or "
          "'ps_and_pl'"}},
        // Case does not matter to the check.
        {comps("<component name=\"f\" type=\"FPGA\"/><component name=\"e\" type=\"Chip\" sub_type=\"ETHERNET\""
               " connected_to=\"PS_AND_PL\"/><component name=\"s\" type=\"connector\" sub_type=\"Fmc_Plus\"/>"),
         {}},
    });
    // A failed component is not added, and the section ends there.
    read("stop.xml",
         comps("<component name=\"x\" type=\"bad\"/><component name=\"y\" type=\"chip\" sub_type=\"led\"/>"));
    EXPECT_TRUE(board().getBoardComponents().empty());
}

TEST_F(ChecksFixture, InterfaceAndPortCheckTexts) {
    expectChecks({
        {intfs("<interface type=\"a:b:c:d\" mode=\"slave\" of_component=\"part0\"/>"),
         {"Component name cannot be empty."}},
        {intfs("<interface name=\"i\" type=\"a:b:c:d\"/>"),
         {"Component Mode cannot be empty for interface 'i'.",
          "Component OfComponent cannot be empty for interface 'i'.",
          "Component Mode should be master or slave for interface 'i'."}},
        {intfs("<interface name=\"i\" type=\"a:b:c:d\" mode=\"monitor\" of_component=\"part0\"/>"),
         {"Component Mode should be master or slave for interface 'i'."}},
        {intfs("<interface name=\"i\" type=\"a:b:c:d\" mode=\"SLAVE\" of_component=\"part0\">" + ports("") +
               "</interface>"),
         {"Port name cannot be empty.", "Port direction cannot be empty for ''.",
          "Port direction should be in/out/inout for ''."}},
        {intfs(intf("i", "a:b:c:d", ports("physical_port=\"p\" dir=\"both\" left=\"2\" right=\"2\""))),
         {"Port direction should be in/out/inout for 'p'.", "Port left and right cannot be same for 'p'."}},
        {intfs("<interface name=\"i\" type=\"a:b:c:d\" mode=\"Master\" of_component=\"part0\">" +
               ports("physical_port=\"p\" dir=\"INOUT\" left=\"0\" right=\"3\"") + "</interface>"),
         {}},
        {components("<interfaces>" + intf("a", kClock, "", "", "ghost") + intf("b", kClock, "", "", "MEM") +
                        "</interfaces>", kMem),
         {"Component ghost provided for interface a is not found in list of components on the board."}},
    });
}

TEST_F(ChecksFixture, BusCheckTexts) {
    const std::string indices = " c1_st_index=\"0\" c1_end_index=\"1\" c2_st_index=\"0\" c2_end_index=\"1\"/>";
    const std::vector<CheckCase> cases = {
        {"<connection component1=\"part0\" component2=\"mem\"><connection_map name=\"m\"" + indices,
         {"Connection name cannot be empty in 'm'.\n"}},
        {"<connection name=\"c\"><connection_map name=\"m\"" + indices,
         {"Component1 cannot be empty in 'm'.\n", "Component2 cannot be empty in 'm'.\n"}},
        {"<connection name=\"c\" component1=\"part0\" component2=\"mem\"><connection_map name=\"m\""
         " c1_st_index=\"0\" c1_end_index=\"3\" c2_st_index=\"4\" c2_end_index=\"5\"/>",
         {"Bus width of Component1 and Component2 does not match for c"}},
    };
    for (const CheckCase& c : cases) {
        expectChecks({{components("", kMem) + "<connections>" + c.body + "</connection></connections>", c.texts}});
        EXPECT_TRUE(board().getBuses().empty());  // a bus that fails is not kept
    }
}

TEST_F(ChecksFixture, PreferredIpCheckTexts) {
    // Every preferred IP is checked, in a mode and in an interface; the first fault ends the reader.
    EXPECT_FALSE(read("board.xml", components("<component_modes><component_mode name=\"m\"><preferred_ips>"
        "<preferred_ip library=\"l\" name=\"a\" order=\"0\"/><preferred_ip vendor=\"v\" name=\"b\" order=\"1\"/>"
        "<preferred_ip vendor=\"v\" library=\"l\" order=\"2\"/>"
        "<preferred_ip vendor=\"v\" library=\"l\" name=\"d\" order=\"-1\"/></preferred_ips>"
        "</component_mode></component_modes>")).ok);
    EXPECT_EQ(checkTexts(), Strings{"Vendor cannot be empty in preferred_ip 'a'."});
    EXPECT_TRUE(board().getBoardComponents().empty());
    const std::pair<std::string, Strings> single[] = {
        {"vendor=\"v\" name=\"b\" order=\"0\"", {"Library cannot be empty in preferred_ip 'b'."}},
        {"vendor=\"v\" library=\"l\" order=\"0\"", {"IP Name cannot be empty  in preferred_ip ''."}},
        {"vendor=\"v\" library=\"l\" name=\"d\" order=\"-1\"",
         {"Order cannot be less than zero  in preferred_ip 'd'."}},
        {"library=\"l\" order=\"-3\"",
         {"Vendor cannot be empty in preferred_ip ''.", "IP Name cannot be empty  in preferred_ip ''.",
          "Order cannot be less than zero  in preferred_ip ''."}},
    };
    for (const auto& c : single) {
        expectChecks({{intfs(intf("u", kClock, "<preferred_ips><preferred_ip " + c.first + "/></preferred_ips>")),
                       c.second}});
        EXPECT_TRUE(board().getBoardComponents().empty());
    }
}

TEST_F(ChecksFixture, PortsNamedTwiceInOneComponentAreOnlyTold) {
    const std::string port =
        "<port_maps><port_map logical_port=\"CLK\" physical_port=\"sysclk\" dir=\"in\"/></port_maps>";
    const std::string file = writeBoard("board.xml", components(
        "<interfaces>" + intf("first", kClock, port) + intf("second", kClock, port) + intf("third", kClock, port) +
        intf("fourth", kClock, port, "", "mem") + intf("fifth", kClock, port) + intf("sixth", kClock, port) +
        "</interfaces>", kMem));
    ASSERT_TRUE(parse(file).ok);
    EXPECT_EQ(count("49-150"), 0);
    ASSERT_TRUE(reparse(file, "board.enable2020Checks").ok);  // told, but the board still reads
    // A repeat keeps the first owner; "fourth" serves another component and takes
    // the entry over, so "fifth" is told nothing and becomes the owner "sixth" is compared with.
    EXPECT_EQ(argsOf("49-150"), (Args{{"sysclk", "second", file, "first"},
                                      {"sysclk", "third", file, "first"},
                                      {"sysclk", "sixth", file, "fifth"}}));
}

TEST_F(ChecksFixture, ClockAndResetInterfacesOfTheFpga) {
    const std::string freq = "<parameters><parameter name=\"frequency\" value=\"100000000\"/></parameters>";
    const std::string file = writeBoard("board.xml", intfs(
        intf("clk_a", "korvelhw:interface:clock_rtl:1.0") + intf("clk_b", "KORVELHW:Signal:Clock_RTL:1.0") +
        intf("clk_c", "korvelhw:interface:diff_clock_rtl:1.0", freq) + intf("rst_m", "korvelhw:signal:reset_rtl:1.0")));
    // Without validation too: a missing frequency is sent at once and does not fail the board.
    setParam("board.validateXML", "false");
    ASSERT_TRUE(parse(file).ok);
    EXPECT_EQ(argsOf("49-153"), (Args{{"clk_a", file}, {"clk_b", file}}));
    setParam("board.validateXML", "true");
    clearMessages();
    const std::string reset = "type=\"korvelhw:signal:reset_rtl:1.0\" mode=\"slave\" of_component=\"part0\"";
    EXPECT_FALSE(read("reset.xml", intfs("<interface name=\"rst\" " + reset + "/><interface name=\"rst_ok\" " + reset +
        "><parameters><parameter name=\"rst_polarity\" value=\"1\"/></parameters></interface>") +
        "<connected_boards><base_boards><base_board id=\"acme:base:1.0\" alias_name=\"b\"/></base_boards>"
        "</connected_boards>").ok);
    EXPECT_EQ(checkTexts(), Strings{"Polarity Parameter not provided for 'rst'."});
    EXPECT_TRUE(board().getConnectedBoards().empty());  // the failed check ended the read before connected_boards
    // Interfaces of other components are not the active part's.
    clearMessages();
    EXPECT_TRUE(read("noactive.xml", comps("<component name=\"osc\" type=\"chip\" sub_type=\"system_clock\">"
                                           "<interfaces>" + intf("clk", kClock, "", "", "osc") +
                                           "</interfaces></component>")).ok);
    EXPECT_EQ(count("49-153"), 0);
}

TEST_F(ChecksFixture, FinalCheckRevisionsAndModeInterfaces) {
    const std::string file = write("board.xml", boardXml("<file_version>1.0</file_version>" + components(
        "<interfaces>" + intf("uart", kClock) + "</interfaces><component_modes><component_mode name=\"m\">"
        "<interfaces><interface name=\"uart\"/><interface name=\"ghost\"/></interfaces></component_mode>"
        "</component_modes>")));
    // A mode naming an unknown interface is told but the board reads.
    ASSERT_TRUE(parse(file).ok);
    EXPECT_EQ(argsOf("49-148"), (Args{{"part0", "ghost", file}}));
    EXPECT_TRUE(checkTexts().empty());
    EXPECT_FALSE(reparse(file, "board.enable2020Checks").ok);
    EXPECT_EQ(checkTexts(), Strings{"No compatible boards were defined in a compatible_board_revisions element."});
    EXPECT_EQ(count("49-148"), 1);
}

TEST_F(ChecksFixture, SystemClocksWithoutModesGetDefaultModes) {
    const std::string file = writeBoard("board.xml", components(
        "<interfaces>" + intf("sys_diff_clock", kClock, "", "", "osc") + intf("aux_clock", kClock, "", "", "OSC") +
            intf("ref", kClock, "", "", "osc2") + "</interfaces>",
        "<component name=\"osc\" type=\"chip\" sub_type=\"System_Clock\"/>"
        "<component name=\"osc2\" type=\"chip\" sub_type=\"system_clock\"><component_modes>"
        "<component_mode name=\"own\"/></component_modes></component>"));
    ASSERT_TRUE(parse(file).ok);
    const std::vector<HBOComponentMode*>& modes = comp("osc")->getComponentModes();
    ASSERT_EQ(modes.size(), 2u);
    EXPECT_EQ((Strings{modes[0]->getName(), modes[0]->getDisplayName(), modes[1]->getName()}),
              (Strings{"aux_clock", "aux_clock", "sys_diff_clock"}));
    EXPECT_EQ(modes[0]->getOwnerComponent(), comp("osc"));
    EXPECT_EQ(modes[0]->getInterfaces(), (HBOComponentMode::InterfaceMap{{0, {"aux_clock", false}}}));
    EXPECT_EQ(argsOf("49-149"), (Args{{"osc", file, "aux_clock", "aux_clock"},
                                      {"osc", file, "sys_diff_clock", "sys_diff_clock"}}));
    EXPECT_EQ(comp("osc2")->getComponentModes().size(), 1u);  // a mode of its own: none added
    // Without reporting the modes are still made, silently.
    ASSERT_TRUE(reparse(file, "board.validateXML", "false").ok);
    EXPECT_EQ(comp("osc")->getComponentModes().size(), 2u);
    EXPECT_EQ(count("49-149"), 0);
}
