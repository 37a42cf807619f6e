// The components section: identity and the active part, drivers, positions,
// modes, preferred IPs, interfaces, port maps and pins.
#include "sections_support.h"

#include "HBOBoardCompMuxPosition.h"
#include "HBOBoardComponentDriver.h"
#include "HBOBusIfPreference.h"
#include "HBOComponentMode.h"
#include "HBOModelPort.h"
#include "HBOParameter.h"
#include "HBOParsedVLNVs.h"
#include "HBOPinProps.h"
#include "HBOPortMap.h"

namespace {
const char* const kUart = "acme:interface:uart_rtl:1.0";
}

TEST_F(SectionsFixture, ComponentNamesFoldAndOnlyExactFpgaIsTheActivePart) {
    ASSERT_TRUE(read("board.xml", "<components>"
        "<component name=\"Part0\" display_name=\"FPGA Zero\" type=\"fpga\" part_name=\"xcz1\" vendor=\"chipco\""
        " spec_url=\"http://example.invalid/p\" major_group=\"grp\"><description>own text</description>"
        "<additional_supported_parts><supported_part part_name=\"  xcz2 \"/><Supported_Part part_name=\"xcz3\"/>"
        "<supported_part part_name=\"  \"/></additional_supported_parts></component>"
        "<component name=\"MemA\" type=\"chip\" sub_type=\"ddr\" connected_to=\"ps\"/>"
        "<component name=\"fmc\" type=\"connector\" sub_type=\"fmc_hpc\"><additional_supported_parts>"
        "<supported_part part_name=\"xcz9\"/></additional_supported_parts></component></components>").ok);
    HBOBoardComponent* fpga = comp("part0");
    ASSERT_NE(fpga, nullptr);
    EXPECT_EQ(comp("Part0"), nullptr);
    EXPECT_EQ((Strings{fpga->getName(), fpga->getDisplayName(), fpga->getConnectedToLogicStr(),
                       fpga->getDescription(), fpga->getLongDesc(), board().getPartString()}),
              (Strings{"acme:tb1:part0:1.0", "FPGA Zero", "PL", "own text", "A test board", "xcz1"}));
    EXPECT_EQ(fpga->getBoard(), &board());
    EXPECT_EQ(board().getActivePart(), fpga);
    Strings parts;
    fpga->getAdditionalSupportedPartNames(parts, false);
    EXPECT_EQ(parts, Strings{"xcz2"});
    ASSERT_NE(comp("mema"), nullptr);
    EXPECT_EQ(comp("mema")->getDescription(), "A test board");
    EXPECT_EQ(comp("mema")->getConnectedToLogicStr(), "ps");
    EXPECT_FALSE(comp("fmc")->hasAdditionalSupportedParts());
    // "FPGA" passes the check but is no active part.
    ASSERT_TRUE(
        read("caps.xml", "<components><component name=\"big\" type=\"FPGA\" part_name=\"xcz1\"/></components>").ok);
    EXPECT_EQ(board().getActivePart(), nullptr);
    EXPECT_EQ(board().getPartString(), "");
}

TEST_F(SectionsFixture, DriversPositionsAndParamTables) {
    ASSERT_TRUE(read("board.xml", components(
        "<param_table name=\"t\"><param_list name=\"l\"><param name=\"x\" value=\"1\"/></param_list></param_table>"
        "<parameters><parameter name=\"speed\" value=\"fast\" value_type=\"string\"/></parameters>"
        "<drivers><driver name=\"drv\" version=\"2\" vendor=\"dv\" pre_compiled=\"yes\" os=\"linux,,rtos,\""
        " processor_architecture=\"a64\"><description>the driver</description><driver_files>"
        "<file type=\"src\">drv.c</file><FILE type=\"hdr\">drv.h</FILE><other type=\"x\">no</other>"
        "</driver_files></driver></drivers>"
        "<positions><position component=\"mux0\" id=\"3\"><address low=\"0x10\" high=\"0x11\"/>"
        "<address low=\"0x20\" high=\"0x21\"/></position><position component=\"mux1\"/></positions>")).ok);
    HBOBoardComponent* fpga = comp("part0");
    ASSERT_NE(fpga, nullptr);
    EXPECT_EQ(fpga->getParameters().size(), 1u);  // the param_table is no parameter
    ASSERT_EQ(fpga->getDrivers().size(), 1u);
    const HBOBoardComponentDriver* drv = fpga->getDrivers()[0];
    EXPECT_EQ(drv->getOs(), (Strings{"linux", "rtos", ""}));
    EXPECT_TRUE(drv->getPlatform().empty());
    EXPECT_EQ(drv->getProcessorArchitecture(), Strings{"a64"});
    EXPECT_EQ(drv->getDriverPath(), dir());
    EXPECT_EQ(drv->getFiles(), (std::map<std::string, std::string>{{"drv.c", "src"}, {"drv.h", "hdr"}}));
    const std::map<int, HBOBoardCompMuxPosition*>& positions = fpga->getIICPositions();
    ASSERT_EQ(positions.size(), 2u);
    ASSERT_TRUE(positions.count(3) && positions.count(0));
    EXPECT_EQ(positions.at(3)->getComponent(), "mux0");
    EXPECT_EQ(positions.at(3)->getAddresses().size(), 2u);
    EXPECT_EQ(positions.at(0)->getComponent(), "mux1");
}

TEST_F(SectionsFixture, ModesKeepOrdersFlagsAndEnablementTexts) {
    ASSERT_TRUE(read("board.xml", components(
        "<interfaces>" + intf("a", kUart) + intf("b", kUart) + intf("c", kUart) + "</interfaces><component_modes>"
        "<component_mode name=\"m1\" display_name=\"Mode 1\" preset_proc=\"m1_preset\"><description>d</description>"
        "<interfaces><interface name=\"a\"/><interface name=\"b\" order=\"5\" optional=\"TRUE\"/>"
        "<interface name=\"c\" optional=\"yes\"/></interfaces>"
        "<enablement_dependencies><jumpers><jumper name=\"j1\">true</jumper><jumper name=\"j2\">false</jumper>"
        "</jumpers></enablement_dependencies>"
        "<preferred_ips><preferred_ip vendor=\"v\" library=\"l\" name=\"ip\"/></preferred_ips></component_mode>"
        "<component_mode name=\"two\"><enablement_dependencies><jumpers><jumper name=\"a\">true</jumper></jumpers>"
        "<jumpers><jumper name=\"b\">false</jumper></jumpers></enablement_dependencies></component_mode>"
        "<component_mode name=\"bare\" preset_proc=\"p\"/></component_modes>")).ok);
    const std::vector<HBOComponentMode*>& modes = comp("part0")->getComponentModes();
    ASSERT_EQ(modes.size(), 3u);
    const HBOComponentMode* m1 = modes[0];
    EXPECT_EQ(m1->getOwnerComponent(), comp("part0"));
    EXPECT_EQ(m1->getInterfaces(),
              (HBOComponentMode::InterfaceMap{{0, {"a", false}}, {5, {"b", true}}, {2, {"c", false}}}));
    EXPECT_EQ(m1->getEnablementDependency(), "{j1 true} {j2 false}");
    // In a mode a missing order is no fault and the version stays as written.
    ASSERT_EQ(m1->getPreferredIps().size(), 1u);
    const HBOBusIfPreference* pref = m1->getPreferredIps()[0];
    EXPECT_EQ((Strings{pref->getPrefName(), pref->getVersion(), pref->getPresetProc()}),
              (Strings{"v:l:ip:*", "", "m1_preset"}));
    EXPECT_EQ(pref->getOwner(), &board());
    EXPECT_EQ(count("49-100"), 0);
    // Each jumpers element closes the text; the next one continues it.
    EXPECT_EQ(modes[1]->getEnablementDependency(), "{a true}} {b false}");
    EXPECT_EQ(modes[2]->getPresetProcName(), "p");
    EXPECT_TRUE(modes[2]->getInterfaces().empty());
}

TEST_F(SectionsFixture, InterfacePreferredIpsAndMissingOrder) {
    const std::string file = writeBoard("board.xml", components("<interfaces>" + intf("uart", kUart,
        "<preferred_ips><preferred_ip vendor=\"v\" library=\"l\" name=\"first\" order=\"0\" preset_file=\"pf.xml\"/>"
        "<preferred_ip vendor=\"v\" library=\"l\" name=\"second\" order=\"1\" version=\"2.0\"/>"
        "<preferred_ip vendor=\"v\" library=\"l\" name=\"third\"/></preferred_ips>", "preset_proc=\"uart_p\"") +
        "</interfaces>"));
    EXPECT_FALSE(parse(file).ok);
    EXPECT_EQ(argsOf("49-100"), (Args{{"preferred_ip order", "third", file}}));
    HBOBusIf* uart = busIf("part0", "uart");
    ASSERT_NE(uart, nullptr);
    const std::vector<HBOBusIfPreference*>& prefs = uart->getPreferences();
    ASSERT_EQ(prefs.size(), 3u);
    // In an interface the naming version is kept, and an absent order counts as 0,
    // so the last order-0 preference is the interface's choice.
    EXPECT_EQ((Strings{prefs[0]->getPresetFile(), prefs[0]->getPresetProc(), prefs[1]->getDefaultIpVlnv(),
                       prefs[2]->getVersion()}),
              (Strings{"pf.xml", "uart_p", "v:l:second:2.0", "*"}));
    EXPECT_EQ((std::vector<int>{prefs[1]->getOrder(), prefs[2]->getOrder()}), (std::vector<int>{1, 0}));
    EXPECT_EQ(uart->getPreference(), prefs[2]);
}

TEST_F(SectionsFixture, InterfaceTypesParametersAndDependencies) {
    EXPECT_FALSE(read("board.xml", components("<interfaces>" + intf("good", kUart,
        "<description>a uart</description><preset_file name=\"direct.xml\"/>"
        "<parameters><parameter name=\"frequency\" value=\"100\"/><parameter name=\"Baud\" value=\"9600\"/>"
        "</parameters><enablement_dependencies><jumpers><jumper name=\"J1\">TRUE</jumper></jumpers>"
        "<parameters><parameter name=\"p1\">no</parameter></parameters></enablement_dependencies>") +
        intf("short", "acme:interface:uart_rtl") + intf("long", "a:b:c:d:e") + "</interfaces>")).ok);
    EXPECT_EQ(argsOf("49-37"), (Args{{"short"}, {"long"}}));
    EXPECT_EQ(busIf("part0", "short")->getAbstractTypeName(), "");
    EXPECT_EQ(busIf("part0", "long")->getAbstractTypeVendorName(), "");
    HBOBusIf* good = busIf("part0", "good");
    ASSERT_NE(good, nullptr);
    EXPECT_EQ((Strings{good->getAbstractTypeVendorName(), good->getAbstractTypeLibraryName(),
                       good->getAbstractTypeName(), good->getAbstractTypeVersion(), good->getPresetFile()}),
              (Strings{"acme", "interface", "uart_rtl", "1.0", "direct.xml"}));
    EXPECT_EQ(good->getParentBoard(), &board());
    EXPECT_EQ(good->getOwnerComponent(), comp("part0"));
    // Parameters are objects and name/value pairs at once.
    EXPECT_EQ(good->getParameters().size(), 2u);
    std::string value;
    EXPECT_TRUE(good->getParamValue("baud", value) && value == "9600") << value;
    EXPECT_EQ(good->getJumpers(), (std::map<std::string, bool>{{"J1", true}}));
    EXPECT_EQ(good->getParams(), (std::map<std::string, bool>{{"p1", false}}));
}

TEST_F(SectionsFixture, PresetLookupIgnoresTheCaseOfPresetProc) {
    write("preset.xml", "<?xml version=\"1.0\"?>\n<ip_presets schema=\"1.0\">"
          "<ip_preset preset_proc_name=\"Uart_Preset\"><ip vendor=\"v\" library=\"ip\" name=\"uart\">"
          "<user_parameters><user_parameter name=\"CONFIG.XML_INPUT_FILE\" value=\"uart_cfg.xml\"/>"
          "</user_parameters></ip></ip_preset>"
          "<ip_preset preset_proc_name=\"bare_preset\"><ip vendor=\"v\" library=\"ip\" name=\"x\"/></ip_preset>"
          "</ip_presets>");
    const std::string file = writeBoard("board.xml", components(
        "<interfaces>" + intf("u1", kUart, "", "preset_proc=\"UART_preset\"") +
        intf("u2", kUart, "", "preset_proc=\"uart_preset\"") + intf("u3", kUart, "", "preset_proc=\"bare_preset\"") +
        intf("u4", kUart, "", "preset_proc=\"Missing_Preset\"") + "</interfaces>"), "preset_file=\"preset.xml\"");
    // Without the later checks a missing preset is no fault.
    ASSERT_TRUE(parse(file).ok);
    EXPECT_EQ((Strings{busIf("part0", "u1")->getPresetFile(), busIf("part0", "u2")->getPresetFile(),
                       busIf("part0", "u3")->getPresetFile(), busIf("part0", "u4")->getPresetProcName()}),
              (Strings{"uart_cfg.xml", "uart_cfg.xml", "", "Missing_Preset"}));
    EXPECT_EQ(count("49-133"), 0);
    EXPECT_FALSE(reparse(file, "board.enable2020Checks").ok);
    EXPECT_EQ(argsOf("49-133"), (Args{{"u4", "missing_preset"}}));
    // Both flags are needed.
    setParam("board.validateXML", "false");
    EXPECT_TRUE(parse(file).ok);
}

TEST_F(SectionsFixture, PortMapsPinMapsAndTheirFaults) {
    writePins("part0_pins.xml", 4);
    ASSERT_TRUE(read("board.xml", components("<interfaces>" + intf("leds", kUart,
        "<port_maps><port_map logical_port=\"DATA\" physical_port=\"led\" dir=\"out\" left=\"1\" right=\"0\"><pin_maps>"
        "<pin_map port_index=\"0\" component_pin=\"P0\"/><pin_map port_index=\"1\" component_pin=\"P1\"/>"
        "</pin_maps></port_map><port_map logical_port=\"CLK\" physical_port=\"ck\" dir=\"in\"><pin_maps>"
        "<pin_map port_index=\"0\" component_pin=\"P2\"/></pin_maps></port_map></port_maps>") + "</interfaces>",
        "", true)).ok);
    HBOBoardComponent* fpga = comp("part0");
    HBOBusIf* leds = busIf("part0", "leds");
    HBOModelPort* led = fpga->getModelPortByName("led");
    ASSERT_TRUE(leds && led && fpga->getModelPortByName("ck"));
    ASSERT_EQ(leds->getPortMapSeq().size(), 2u);
    EXPECT_EQ((Strings{leds->getPortMapSeq()[0]->getLogicalPort(), leds->getPortMapSeq()[1]->getPhysicalPort(),
                       led->getPinPort("1"), fpga->findPin("P1")->getPortForInterface("leds")}),
              (Strings{"DATA", "ck", "P1", "1"}));
    EXPECT_EQ(leds->getPortMaps().at("led"), led);
    EXPECT_EQ(led->getOwner(), leds);
    EXPECT_EQ(fpga->findPin("P1")->getOwner(), fpga);
    int width = 0;
    led->getPortWidth(width);
    EXPECT_EQ(width, 2);
    EXPECT_TRUE(led->isPortOfTypeVec());
    EXPECT_FALSE(fpga->getModelPortByName("ck")->isPortOfTypeVec());
    // Wrong width, an unknown pin, a repeated index; one left bound only makes a vector.
    const std::string badFile = writeBoard("bad.xml", components("<interfaces>" + intf("leds", kUart,
        "<port_maps><port_map logical_port=\"DATA\" physical_port=\"bus\" dir=\"out\" left=\"2\" right=\"0\"><pin_maps>"
        "<pin_map port_index=\"0\" component_pin=\"P0\"/><pin_map port_index=\"0\" component_pin=\"P1\"/>"
        "</pin_maps></port_map><port_map logical_port=\"X\" physical_port=\"one\" dir=\"in\" left=\"3\"><pin_maps>"
        "<pin_map port_index=\"0\" component_pin=\"NOPE\"/></pin_maps></port_map></port_maps>") + "</interfaces>",
        "", true));
    clearMessages();
    EXPECT_FALSE(parse(badFile).ok);
    EXPECT_EQ(checkTexts(), (Strings{"Necessary component pins not provided for 'bus'.",
                                     "Necessary component pins not provided for 'one'.",
                                     "Pin Map file does not provide LOC constraints for NOPE COMP : part0."}));
    // Without the later checks a repeated index is allowed and the later pin wins.
    EXPECT_EQ(comp("part0")->getModelPortByName("bus")->getPinPort("0"), "P1");
    int left = -1, right = -1;
    EXPECT_TRUE(comp("part0")->getModelPortByName("one")->getPortVecLeft(left));
    EXPECT_TRUE(comp("part0")->getModelPortByName("one")->getPortVecRight(right));
    EXPECT_EQ((std::vector<int>{left, right}), (std::vector<int>{3, 0}));
    EXPECT_FALSE(reparse(badFile, "board.enable2020Checks").ok);
    EXPECT_EQ(checkTexts()[1],
              "In the pin_maps for the logical_port 'DATA' and physical port 'bus' the port index '0' is used for "
              "both 'P0' and for 'P1'. Port index must be unique.");
    EXPECT_EQ(comp("part0")->getModelPortByName("bus")->getPinPort("0"), "P1");
}

TEST_F(SectionsFixture, BoardFilePinsHonourTheIgnoredPortProperties) {
    const std::string pins =
        "<pins><pin index=\"0\" name=\"A\" loc=\"A1\" odt=\"RTT_40\" slew=\"FAST\" pull_type=\"PULLUP\"/>"
        "<pin index=\"0\" name=\"again\" loc=\"B1\"/><pin index=\"1\" name=\"B\" loc=\"B2\"/></pins>";
    const struct {
        const char* name;
        const char* version;
        bool legacy, odt, pullType;
    } cases[] = {
        {"bda1", "1.2", false, false, true}, {"bda1", "1.5", false, false, true}, {"bda1", "1.6", false, true, true},
        {"bda2", "1.2", false, true, true},  {"bda2", "1.2", true, false, false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.name) + " " + c.version + (c.legacy ? " legacy" : ""));
        setParam("board.usePre2019Dot2Mode", c.legacy ? "true" : "false");
        ASSERT_TRUE(parse(write("b.xml", "<?xml version=\"1.0\"?>\n<board schema_version=\"2.1\" vendor=\"korvelhw\" "
            "name=\"" + std::string(c.name) + "\"><compatible_board_revisions><revision id=\"0\">A</revision>"
            "</compatible_board_revisions><file_version>" + c.version + "</file_version>" + components(pins) +
            "</board>\n")).ok);
        const HBOPinProps* pin = comp("part0")->getPinByIndex(0);
        ASSERT_NE(pin, nullptr);
        // The first pin of an index stays; a later one of the same index is dropped.
        EXPECT_EQ(pin->getName() + "@" + pin->getPinLoc(), "A@A1");
        EXPECT_EQ(pin->getOwner(), comp("part0"));
        EXPECT_EQ(comp("part0")->findPin("again"), nullptr);
        EXPECT_NE(comp("part0")->findPin("B"), nullptr);
        const std::map<std::string, std::string> props = pin->getPortProps();
        EXPECT_EQ((std::vector<size_t>{props.count("odt"), props.count("pull_type"), props.count("slew")}),
                  (std::vector<size_t>{c.odt, c.pullType, 1}));
    }
}

TEST_F(SectionsFixture, DuplicateInterfacesAndFlowMasters) {
    const std::string gt = "acme:interface:gt_rtl:1.0";
    auto param = [](const std::string& n, const std::string& v) {
        return "<parameters><parameter name=\"" + n + "\" value=\"" + v + "\"/></parameters>";
    };
    const std::string file = writeBoard("board.xml", components("<interfaces>" +
        intf("gt0", gt, param("is_gt_flow_interface_master", "TRUE")) +
        intf("gt1", gt, param("gt_flow_interface_master_name", "gt0")) +
        intf("gt2", gt, param("gt_flow_interface_master_name", "gt3")) +
        intf("gt3", gt, param("is_gt_flow_interface_master", "true")) + intf("dup", kUart) +
        intf("dup", kUart, "<description>second</description>") + "</interfaces>"));
    EXPECT_FALSE(parse(file).ok);
    EXPECT_EQ(argsOf("49-145"), Args{{"gt3"}});
    EXPECT_EQ(count("49-146"), 0);
    EXPECT_EQ(busIf("part0", "dup")->getDescription(), "second");
    EXPECT_FALSE(reparse(file, "board.enable2020Checks").ok);
    EXPECT_EQ(argsOf("49-146"), Args{{"dup"}});
}

TEST_F(SectionsFixture, ParsedVlnvsCollectPreferredIpsAndLogicalPorts) {
    const std::string file = writeBoard("board.xml", components("<interfaces>" + intf("uart", kUart,
        "<port_maps><port_map logical_port=\"TXD\" physical_port=\"tx\" dir=\"out\"/>"
        "<port_map logical_port=\"RXD\" physical_port=\"rx\" dir=\"in\"/></port_maps>"
        "<preferred_ips><preferred_ip vendor=\"v\" library=\"l\" name=\"uartlite\" order=\"0\"/></preferred_ips>") +
        "</interfaces><component_modes><component_mode name=\"m\"><preferred_ips>"
        "<preferred_ip vendor=\"v\" library=\"l\" name=\"modeip\" version=\"3.1\"/></preferred_ips>"
        "</component_mode></component_modes>"));
    HBOParsedVLNVs vlnvs;
    ASSERT_TRUE(parse(file, "", "", &vlnvs).ok);
    EXPECT_EQ(vlnvs.ipNames, (std::set<std::string>{"v:l:uartlite:*", "v:l:modeip:3.1"}));
    EXPECT_EQ(vlnvs.logicalPorts, (std::map<std::string, std::set<std::string>>{{kUart, {"TXD", "RXD"}}}));
}

TEST_F(SectionsFixture, StrictIntegersOnlyWithTheLaterChecks) {
    ASSERT_TRUE(read("board.xml", components("<positions><position component=\"m\" id=\"x7\"/></positions>")).ok);
    EXPECT_EQ(comp("part0")->getIICPositions().count(0), 1u);
    // Every integer of the section is strict once the later checks are on; a
    // failure ends the read wherever it happens, with nothing half-made left behind.
    setParam("board.enable2020Checks", "true");
    const std::pair<std::string, std::string> cases[] = {
        {"<positions><position component=\"m\" id=\"x7\"/></positions>", "position id value \"x7\""},
        {"<interfaces>" + intf("u", kUart, "<preferred_ips><preferred_ip vendor=\"v\" library=\"l\" name=\"n\""
                                           " order=\"-1\"/></preferred_ips>") + "</interfaces>",
         "preferred_ip order value \"-1\""},
        {"<component_modes><component_mode name=\"m\"><interfaces><interface name=\"u\" order=\"two\"/>"
         "</interfaces></component_mode></component_modes>", "interface order value \"two\""},
        {"<interfaces>" + intf("u", kUart, "<port_maps><port_map logical_port=\"L\" physical_port=\"p\" dir=\"in\""
                                           " left=\"1\" right=\"0b\"/></port_maps>") + "</interfaces>",
         "port map right value \"0b\""},
        {"<pins><pin index=\"4x\" name=\"a\" loc=\"b\"/></pins>", "pin index value \"4x\""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.second);
        clearMessages();
        EXPECT_FALSE(read("s.xml", components(c.first)).ok);
        EXPECT_EQ(checkTexts(), Strings{c.second + " is not valid, must be a non-negative integer."});
        EXPECT_EQ(count("49-56"), 1);
        EXPECT_TRUE(board().getBoardComponents().empty());
        EXPECT_EQ(board().getActivePart(), nullptr);
    }
}
