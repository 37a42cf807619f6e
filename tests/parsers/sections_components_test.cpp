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
    const std::string file = write("board.xml", boardXml(basics() +
        "<components>"
        "<component name=\"Part0\" display_name=\"FPGA Zero\" type=\"fpga\" part_name=\"xcz1\" vendor=\"chipco\""
        " spec_url=\"http://example.invalid/p\" major_group=\"grp\"><description>own text</description>"
        "<additional_supported_parts><supported_part part_name=\"  xcz2 \"/><Supported_Part part_name=\"xcz3\"/>"
        "<supported_part part_name=\"  \"/></additional_supported_parts></component>"
        "<component name=\"MemA\" type=\"chip\" sub_type=\"ddr\" connected_to=\"ps\"/>"
        "<component name=\"fmc\" type=\"connector\" sub_type=\"fmc_hpc\"><additional_supported_parts>"
        "<supported_part part_name=\"xcz9\"/></additional_supported_parts></component>"
        "</components>"));
    ASSERT_TRUE(parse(file).ok);

    HBOBoardComponent* fpga = comp("part0");
    ASSERT_NE(fpga, nullptr);
    EXPECT_EQ(comp("Part0"), nullptr);
    EXPECT_EQ(fpga->getName(), "acme:tb1:part0:1.0");
    EXPECT_EQ(fpga->getDisplayName(), "FPGA Zero");
    EXPECT_EQ(fpga->getConnectedToLogicStr(), "PL");
    EXPECT_EQ(fpga->getDescription(), "own text");
    EXPECT_EQ(fpga->getLongDesc(), "A test board");
    EXPECT_EQ(fpga->getBoard(), &board());
    EXPECT_EQ(board().getActivePart(), fpga);
    EXPECT_EQ(board().getPartString(), "xcz1");
    std::vector<std::string> parts;
    fpga->getAdditionalSupportedPartNames(parts, false);
    EXPECT_EQ(parts, std::vector<std::string>({"xcz2"}));

    HBOBoardComponent* mem = comp("mema");
    ASSERT_NE(mem, nullptr);
    EXPECT_EQ(mem->getDescription(), "A test board");
    EXPECT_EQ(mem->getConnectedToLogicStr(), "ps");
    EXPECT_FALSE(comp("fmc")->hasAdditionalSupportedParts());

    // "FPGA" passes the check but is no active part.
    ASSERT_TRUE(parse(write("caps.xml", boardXml(basics() +
        "<components><component name=\"big\" type=\"FPGA\" part_name=\"xcz1\"/></components>"))).ok);
    EXPECT_EQ(board().getActivePart(), nullptr);
    EXPECT_EQ(board().getPartString(), "");
}

TEST_F(SectionsFixture, DriversPositionsAndParamTables) {
    const std::string file = write("board.xml", boardXml(basics() + components(
        "<param_table name=\"t\"><param_list name=\"l\"><param name=\"x\" value=\"1\"/></param_list></param_table>"
        "<parameters><parameter name=\"speed\" value=\"fast\" value_type=\"string\"/></parameters>"
        "<drivers><driver name=\"drv\" version=\"2\" vendor=\"dv\" pre_compiled=\"yes\" os=\"linux,,rtos,\""
        " processor_architecture=\"a64\"><description>the driver</description><driver_files>"
        "<file type=\"src\">drv.c</file><FILE type=\"hdr\">drv.h</FILE><other type=\"x\">no</other>"
        "</driver_files></driver></drivers>"
        "<positions><position component=\"mux0\" id=\"3\"><address low=\"0x10\" high=\"0x11\"/>"
        "<address low=\"0x20\" high=\"0x21\"/></position><position component=\"mux1\"/></positions>")));
    ASSERT_TRUE(parse(file).ok);
    HBOBoardComponent* fpga = comp("part0");
    ASSERT_NE(fpga, nullptr);

    ASSERT_EQ(fpga->getParameters().size(), 1u);
    EXPECT_EQ(fpga->getParameters()[0]->getValue(), "fast");

    ASSERT_EQ(fpga->getDrivers().size(), 1u);
    const HBOBoardComponentDriver* drv = fpga->getDrivers()[0];
    EXPECT_EQ(drv->getOs(), std::vector<std::string>({"linux", "rtos", ""}));
    EXPECT_TRUE(drv->getPlatform().empty());
    EXPECT_EQ(drv->getProcessorArchitecture(), std::vector<std::string>({"a64"}));
    EXPECT_EQ(drv->getDriverPath(), dir());
    EXPECT_EQ(drv->getFiles(), (std::map<std::string, std::string>{{"drv.c", "src"}, {"drv.h", "hdr"}}));

    const std::map<int, HBOBoardCompMuxPosition*>& positions = fpga->getIICPositions();
    ASSERT_EQ(positions.size(), 2u);
    ASSERT_TRUE(positions.count(3));
    EXPECT_EQ(positions.at(3)->getComponent(), "mux0");
    EXPECT_EQ(positions.at(3)->getAddresses().size(), 2u);
    ASSERT_TRUE(positions.count(0));
    EXPECT_EQ(positions.at(0)->getComponent(), "mux1");
}

TEST_F(SectionsFixture, ModesKeepOrdersFlagsAndEnablementTexts) {
    const std::string file = write("board.xml", boardXml(basics() + components(
        "<interfaces>" + intf("a", kUart) + intf("b", kUart) + intf("c", kUart) + "</interfaces>"
        "<component_modes>"
        "<component_mode name=\"m1\" display_name=\"Mode 1\" preset_proc=\"m1_preset\"><description>d</description>"
        "<interfaces><interface name=\"a\"/><interface name=\"b\" order=\"5\" optional=\"TRUE\"/>"
        "<interface name=\"c\" optional=\"yes\"/></interfaces>"
        "<enablement_dependencies><jumpers><jumper name=\"j1\">true</jumper><jumper name=\"j2\">false</jumper>"
        "</jumpers></enablement_dependencies>"
        "<preferred_ips><preferred_ip vendor=\"v\" library=\"l\" name=\"ip\"/></preferred_ips>"
        "</component_mode>"
        "<component_mode name=\"two\"><enablement_dependencies><jumpers><jumper name=\"a\">true</jumper></jumpers>"
        "<jumpers><jumper name=\"b\">false</jumper></jumpers></enablement_dependencies></component_mode>"
        "<component_mode name=\"bare\" preset_proc=\"p\"/>"
        "</component_modes>")));
    ASSERT_TRUE(parse(file).ok);
    const std::vector<HBOComponentMode*>& modes = comp("part0")->getComponentModes();
    ASSERT_EQ(modes.size(), 3u);

    const HBOComponentMode* m1 = modes[0];
    EXPECT_EQ(m1->getOwnerComponent(), comp("part0"));
    const HBOComponentMode::InterfaceMap expected = {
        {0, {"a", false}}, {5, {"b", true}}, {2, {"c", false}}};
    EXPECT_EQ(m1->getInterfaces(), expected);
    EXPECT_EQ(m1->getEnablementDependency(), "{j1 true} {j2 false}");
    // In a mode a missing order is no fault and the version stays as written.
    ASSERT_EQ(m1->getPreferredIps().size(), 1u);
    const HBOBusIfPreference* pref = m1->getPreferredIps()[0];
    EXPECT_EQ(pref->getPrefName(), "v:l:ip:*");
    EXPECT_EQ(pref->getVersion(), "");
    EXPECT_EQ(pref->getPresetProc(), "m1_preset");
    EXPECT_EQ(pref->getOwner(), &board());
    EXPECT_EQ(count("49-100"), 0);

    // Each jumpers element closes the text; the next one continues it.
    EXPECT_EQ(modes[1]->getEnablementDependency(), "{a true}} {b false}");
    EXPECT_EQ(modes[2]->getPresetProcName(), "p");
    EXPECT_TRUE(modes[2]->getInterfaces().empty());
}

TEST_F(SectionsFixture, InterfacePreferredIpsAndMissingOrder) {
    const std::string file = write("board.xml", boardXml(basics() + components(
        "<interfaces>" + intf("uart", kUart,
            "<preferred_ips>"
            "<preferred_ip vendor=\"v\" library=\"l\" name=\"first\" order=\"0\" preset_file=\"pf.xml\"/>"
            "<preferred_ip vendor=\"v\" library=\"l\" name=\"second\" order=\"1\" version=\"2.0\"/>"
            "<preferred_ip vendor=\"v\" library=\"l\" name=\"third\"/>"
            "</preferred_ips>", "preset_proc=\"uart_p\"") + "</interfaces>")));
    const Parsed parsed = parse(file);
    EXPECT_FALSE(parsed.ok);

    const std::vector<std::vector<std::string>> missing = argsOf("49-100");
    ASSERT_EQ(missing.size(), 1u);
    EXPECT_EQ(missing[0], std::vector<std::string>({"preferred_ip order", "third", file}));

    HBOBusIf* uart = busIf("part0", "uart");
    ASSERT_NE(uart, nullptr);
    const std::vector<HBOBusIfPreference*>& prefs = uart->getPreferences();
    ASSERT_EQ(prefs.size(), 3u);
    EXPECT_EQ(prefs[0]->getPresetFile(), "pf.xml");
    EXPECT_EQ(prefs[0]->getPresetProc(), "uart_p");
    EXPECT_EQ(prefs[1]->getOrder(), 1);
    EXPECT_EQ(prefs[1]->getDefaultIpVlnv(), "v:l:second:2.0");
    // In an interface the naming version is kept, and an absent order counts as 0,
    // so the last order-0 preference is the interface's choice.
    EXPECT_EQ(prefs[2]->getVersion(), "*");
    EXPECT_EQ(prefs[2]->getOrder(), 0);
    EXPECT_EQ(uart->getPreference(), prefs[2]);
}

TEST_F(SectionsFixture, InterfaceTypesParametersAndDependencies) {
    const std::string file = write("board.xml", boardXml(basics() + components(
        "<interfaces>" +
        intf("good", kUart,
             "<description>a uart</description><preset_file name=\"direct.xml\"/>"
             "<parameters><parameter name=\"frequency\" value=\"100\"/><parameter name=\"Baud\" value=\"9600\"/>"
             "</parameters><enablement_dependencies><jumpers><jumper name=\"J1\">TRUE</jumper></jumpers>"
             "<parameters><parameter name=\"p1\">no</parameter></parameters></enablement_dependencies>") +
        intf("short", "acme:interface:uart_rtl") + intf("long", "a:b:c:d:e") + "</interfaces>")));
    EXPECT_FALSE(parse(file).ok);
    std::vector<std::vector<std::string>> bad = argsOf("49-37");
    ASSERT_EQ(bad.size(), 2u);
    EXPECT_EQ(bad[0], std::vector<std::string>({"short"}));
    EXPECT_EQ(bad[1], std::vector<std::string>({"long"}));
    EXPECT_EQ(busIf("part0", "short")->getAbstractTypeName(), "");
    EXPECT_EQ(busIf("part0", "long")->getAbstractTypeVendorName(), "");

    HBOBusIf* good = busIf("part0", "good");
    ASSERT_NE(good, nullptr);
    EXPECT_EQ(good->getAbstractTypeVendorName(), "acme");
    EXPECT_EQ(good->getAbstractTypeLibraryName(), "interface");
    EXPECT_EQ(good->getAbstractTypeName(), "uart_rtl");
    EXPECT_EQ(good->getAbstractTypeVersion(), "1.0");
    EXPECT_EQ(good->getParentBoard(), &board());
    EXPECT_EQ(good->getOwnerComponent(), comp("part0"));
    EXPECT_EQ(good->getPresetFile(), "direct.xml");
    // Parameters are objects and name/value pairs at once.
    EXPECT_EQ(good->getParameters().size(), 2u);
    std::string value;
    EXPECT_TRUE(good->getParamValue("baud", value));
    EXPECT_EQ(value, "9600");
    EXPECT_EQ(good->getJumpers(), (std::map<std::string, bool>{{"J1", true}}));
    EXPECT_EQ(good->getParams(), (std::map<std::string, bool>{{"p1", false}}));
}

TEST_F(SectionsFixture, PresetLookupIgnoresTheCaseOfPresetProc) {
    write("preset.xml",
          "<?xml version=\"1.0\"?>\n<ip_presets schema=\"1.0\">"
          "<ip_preset preset_proc_name=\"Uart_Preset\"><ip vendor=\"v\" library=\"ip\" name=\"uart\">"
          "<user_parameters><user_parameter name=\"CONFIG.XML_INPUT_FILE\" value=\"uart_cfg.xml\"/>"
          "</user_parameters></ip></ip_preset>"
          "<ip_preset preset_proc_name=\"bare_preset\"><ip vendor=\"v\" library=\"ip\" name=\"x\"/></ip_preset>"
          "</ip_presets>");
    const std::string body = "<interfaces>" + intf("u1", kUart, "", "preset_proc=\"UART_preset\"") +
                             intf("u2", kUart, "", "preset_proc=\"uart_preset\"") +
                             intf("u3", kUart, "", "preset_proc=\"bare_preset\"") +
                             intf("u4", kUart, "", "preset_proc=\"Missing_Preset\"") + "</interfaces>";
    const std::string file =
        write("board.xml", boardXml(basics() + components(body), "preset_file=\"preset.xml\""));

    // Without the later checks a missing preset is no fault.
    ASSERT_TRUE(parse(file).ok);
    EXPECT_EQ(busIf("part0", "u1")->getPresetFile(), "uart_cfg.xml");
    EXPECT_EQ(busIf("part0", "u2")->getPresetFile(), "uart_cfg.xml");
    EXPECT_EQ(busIf("part0", "u3")->getPresetFile(), "");
    EXPECT_EQ(busIf("part0", "u4")->getPresetProcName(), "Missing_Preset");
    EXPECT_EQ(count("49-133"), 0);

    setParam("board.enable2020Checks", "true");
    clearMessages();
    EXPECT_FALSE(parse(file).ok);
    EXPECT_EQ(argsOf("49-133"), std::vector<std::vector<std::string>>({{"u4", "missing_preset"}}));

    // Both flags are needed.
    setParam("board.validateXML", "false");
    clearMessages();
    EXPECT_TRUE(parse(file).ok);
}

TEST_F(SectionsFixture, PortMapsPinMapsAndTheirFaults) {
    writePins("part0_pins.xml", 4);
    const std::string ports =
        "<port_maps>"
        "<port_map logical_port=\"DATA\" physical_port=\"led\" dir=\"out\" left=\"1\" right=\"0\"><pin_maps>"
        "<pin_map port_index=\"0\" component_pin=\"P0\"/><pin_map port_index=\"1\" component_pin=\"P1\"/>"
        "</pin_maps></port_map>"
        "<port_map logical_port=\"CLK\" physical_port=\"ck\" dir=\"in\"><pin_maps>"
        "<pin_map port_index=\"0\" component_pin=\"P2\"/></pin_maps></port_map>"
        "</port_maps>";
    const std::string file = write("board.xml", boardXml(basics() + components(
        "<interfaces>" + intf("leds", kUart, ports) + "</interfaces>", "", true)));
    ASSERT_TRUE(parse(file).ok);

    HBOBoardComponent* fpga = comp("part0");
    HBOBusIf* leds = busIf("part0", "leds");
    ASSERT_NE(leds, nullptr);
    ASSERT_EQ(leds->getPortMapSeq().size(), 2u);
    EXPECT_EQ(leds->getPortMapSeq()[0]->getLogicalPort(), "DATA");
    EXPECT_EQ(leds->getPortMapSeq()[1]->getPhysicalPort(), "ck");
    HBOModelPort* led = fpga->getModelPortByName("led");
    ASSERT_NE(led, nullptr);
    EXPECT_EQ(leds->getPortMaps().at("led"), led);
    EXPECT_EQ(led->getOwner(), leds);
    EXPECT_TRUE(led->isPortOfTypeVec());
    int width = 0;
    led->getPortWidth(width);
    EXPECT_EQ(width, 2);
    EXPECT_EQ(led->getPinPort("1"), "P1");
    EXPECT_FALSE(fpga->getModelPortByName("ck")->isPortOfTypeVec());
    EXPECT_EQ(fpga->findPin("P1")->getPortForInterface("leds"), "1");
    EXPECT_EQ(fpga->findPin("P1")->getOwner(), fpga);

    // Wrong width, an unknown pin, a repeated index; one left bound only makes a vector.
    const std::string badPorts =
        "<port_maps>"
        "<port_map logical_port=\"DATA\" physical_port=\"bus\" dir=\"out\" left=\"2\" right=\"0\"><pin_maps>"
        "<pin_map port_index=\"0\" component_pin=\"P0\"/><pin_map port_index=\"0\" component_pin=\"P1\"/>"
        "</pin_maps></port_map>"
        "<port_map logical_port=\"X\" physical_port=\"one\" dir=\"in\" left=\"3\"><pin_maps>"
        "<pin_map port_index=\"0\" component_pin=\"NOPE\"/></pin_maps></port_map>"
        "</port_maps>";
    const std::string badFile = write("bad.xml", boardXml(basics() + components(
        "<interfaces>" + intf("leds", kUart, badPorts) + "</interfaces>", "", true)));
    clearMessages();
    EXPECT_FALSE(parse(badFile).ok);
    EXPECT_EQ(checkTexts(), std::vector<std::string>({
        "Necessary component pins not provided for 'bus'.",
        "Necessary component pins not provided for 'one'.",
        "Pin Map file does not provide LOC constraints for NOPE COMP : part0.",
    }));
    // Without the later checks a repeated index is allowed and the later pin wins.
    EXPECT_EQ(comp("part0")->getModelPortByName("bus")->getPinPort("0"), "P1");
    int left = -1;
    int right = -1;
    EXPECT_TRUE(comp("part0")->getModelPortByName("one")->getPortVecLeft(left));
    EXPECT_TRUE(comp("part0")->getModelPortByName("one")->getPortVecRight(right));
    EXPECT_EQ(left, 3);
    EXPECT_EQ(right, 0);

    setParam("board.enable2020Checks", "true");
    clearMessages();
    EXPECT_FALSE(parse(badFile).ok);
    EXPECT_EQ(checkTexts()[1],
              "In the pin_maps for the logical_port 'DATA' and physical port 'bus' the port index '0' is used for "
              "both 'P0' and for 'P1'. Port index must be unique.");
    EXPECT_EQ(comp("part0")->getModelPortByName("bus")->getPinPort("0"), "P1");
}

TEST_F(SectionsFixture, BoardFilePinsHonourTheIgnoredPortProperties) {
    const std::string pins =
        "<pins><pin index=\"0\" name=\"A\" loc=\"A1\" odt=\"RTT_40\" slew=\"FAST\" pull_type=\"PULLUP\"/>"
        "<pin index=\"0\" name=\"again\" loc=\"B1\"/><pin index=\"1\" name=\"B\" loc=\"B2\"/></pins>";
    auto boardFor = [&](const std::string& name, const std::string& version) {
        return "<?xml version=\"1.0\"?>\n<board schema_version=\"2.1\" vendor=\"korvelhw\" name=\"" + name +
               "\"><compatible_board_revisions><revision id=\"0\">A</revision></compatible_board_revisions>"
               "<file_version>" + version + "</file_version>" + components(pins) + "</board>\n";
    };
    struct Case {
        const char* name;
        const char* version;
        bool legacy;
        bool odt;
        bool pullType;
    };
    const Case cases[] = {
        {"bda1", "1.2", false, false, true}, {"bda1", "1.5", false, false, true}, {"bda1", "1.6", false, true, true},
        {"bda2", "1.2", false, true, true},  {"bda2", "1.2", true, false, false},
    };
    int i = 0;
    for (const Case& c : cases) {
        setParam("board.usePre2019Dot2Mode", c.legacy ? "true" : "false");
        const std::string file = write("b" + std::to_string(i++) + ".xml", boardFor(c.name, c.version));
        ASSERT_TRUE(parse(file).ok) << c.name << " " << c.version;
        const HBOPinProps* pin = comp("part0")->getPinByIndex(0);
        ASSERT_NE(pin, nullptr);
        // The first pin of an index stays; a later one of the same index is dropped.
        EXPECT_EQ(pin->getName(), "A");
        EXPECT_EQ(pin->getPinLoc(), "A1");
        EXPECT_EQ(pin->getOwner(), comp("part0"));
        const std::map<std::string, std::string> props = pin->getPortProps();
        EXPECT_EQ(props.count("odt") == 1, c.odt) << c.name << " " << c.version << " legacy " << c.legacy;
        EXPECT_EQ(props.count("pull_type") == 1, c.pullType) << c.name << " " << c.version;
        EXPECT_EQ(props.count("slew"), 1u);
        EXPECT_EQ(comp("part0")->findPin("again"), nullptr);
        EXPECT_NE(comp("part0")->findPin("B"), nullptr);
    }
}

TEST_F(SectionsFixture, DuplicateInterfacesAndFlowMasters) {
    const std::string gtType = "acme:interface:gt_rtl:1.0";
    auto param = [](const std::string& n, const std::string& v) {
        return "<parameters><parameter name=\"" + n + "\" value=\"" + v + "\"/></parameters>";
    };
    const std::string body = "<interfaces>" + intf("gt0", gtType, param("is_gt_flow_interface_master", "TRUE")) +
                             intf("gt1", gtType, param("gt_flow_interface_master_name", "gt0")) +
                             intf("gt2", gtType, param("gt_flow_interface_master_name", "gt3")) +
                             intf("gt3", gtType, param("is_gt_flow_interface_master", "true")) +
                             intf("dup", kUart) + intf("dup", kUart, "<description>second</description>") +
                             "</interfaces>";
    const std::string file = write("board.xml", boardXml(basics() + components(body)));

    EXPECT_FALSE(parse(file).ok);
    EXPECT_EQ(argsOf("49-145"), std::vector<std::vector<std::string>>({{"gt3"}}));
    EXPECT_EQ(count("49-146"), 0);
    EXPECT_EQ(busIf("part0", "dup")->getDescription(), "second");

    setParam("board.enable2020Checks", "true");
    clearMessages();
    EXPECT_FALSE(parse(file).ok);
    EXPECT_EQ(argsOf("49-146"), std::vector<std::vector<std::string>>({{"dup"}}));
}

TEST_F(SectionsFixture, ParsedVlnvsCollectPreferredIpsAndLogicalPorts) {
    const std::string ports =
        "<port_maps><port_map logical_port=\"TXD\" physical_port=\"tx\" dir=\"out\"/>"
        "<port_map logical_port=\"RXD\" physical_port=\"rx\" dir=\"in\"/></port_maps>";
    const std::string file = write("board.xml", boardXml(basics() + components(
        "<interfaces>" + intf("uart", kUart, ports +
            "<preferred_ips><preferred_ip vendor=\"v\" library=\"l\" name=\"uartlite\" order=\"0\"/>"
            "</preferred_ips>") + "</interfaces>"
        "<component_modes><component_mode name=\"m\"><preferred_ips>"
        "<preferred_ip vendor=\"v\" library=\"l\" name=\"modeip\" version=\"3.1\"/></preferred_ips>"
        "</component_mode></component_modes>")));
    HBOParsedVLNVs vlnvs;
    ASSERT_TRUE(parse(file, "", "", &vlnvs).ok);
    EXPECT_EQ(vlnvs.ipNames, (std::set<std::string>{"v:l:uartlite:*", "v:l:modeip:3.1"}));
    ASSERT_EQ(vlnvs.logicalPorts.count(kUart), 1u);
    EXPECT_EQ(vlnvs.logicalPorts.at(kUart), (std::set<std::string>{"TXD", "RXD"}));
}

TEST_F(SectionsFixture, StrictIntegersOnlyWithTheLaterChecks) {
    const std::string file = write("board.xml", boardXml(basics() + components(
        "<positions><position component=\"m\" id=\"x7\"/></positions>")));
    ASSERT_TRUE(parse(file).ok);
    EXPECT_EQ(comp("part0")->getIICPositions().count(0), 1u);

    // Every integer of the section is strict once the later checks are on; a
    // failure ends the read wherever it happens, with nothing half-made left behind.
    setParam("board.enable2020Checks", "true");
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"<positions><position component=\"m\" id=\"x7\"/></positions>", "position id value \"x7\""},
        {"<interfaces>" + intf("u", kUart, "<preferred_ips><preferred_ip vendor=\"v\" library=\"l\" name=\"n\""
                                           " order=\"-1\"/></preferred_ips>") + "</interfaces>",
         "preferred_ip order value \"-1\""},
        {"<component_modes><component_mode name=\"m\"><interfaces><interface name=\"u\" order=\"two\"/>"
         "</interfaces></component_mode></component_modes>",
         "interface order value \"two\""},
        {"<interfaces>" + intf("u", kUart, "<port_maps><port_map logical_port=\"L\" physical_port=\"p\" dir=\"in\""
                                           " left=\"1\" right=\"0b\"/></port_maps>") + "</interfaces>",
         "port map right value \"0b\""},
        {"<pins><pin index=\"4x\" name=\"a\" loc=\"b\"/></pins>", "pin index value \"4x\""},
    };
    int i = 0;
    for (const auto& c : cases) {
        clearMessages();
        EXPECT_FALSE(parse(write("s" + std::to_string(i++) + ".xml", boardXml(basics() + components(c.first)))).ok);
        EXPECT_EQ(checkTexts(), std::vector<std::string>({c.second + " is not valid, must be a non-negative integer."}));
        EXPECT_EQ(count("49-56"), 1);
        EXPECT_TRUE(board().getBoardComponents().empty());
        EXPECT_EQ(board().getActivePart(), nullptr);
    }
}
