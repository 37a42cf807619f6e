// Property values of the reference board, class by class, as the tables say
// they are read, and what a Tcl script gets back.
#include "model_objects.h"
#include "property_fixture.h"

using namespace property_fixture;
using namespace model_objects;

TEST_F(PropertyTest, BoardReadsItsIdentityListsAndParameters) {
    HBOBoard& b = reference();
    EXPECT_EQ(get(&b, "name"), "korvelhw:tarnwick:1.2");
    EXPECT_EQ(get(&b, "board_name"), "tarnwick");
    EXPECT_EQ(get(&b, "file_version"), "1.2");
    EXPECT_EQ(get(&b, "vendor_name"), "korvelhw");
    EXPECT_EQ(get(&b, "FILE_NAME"), referenceBoardFile());
    EXPECT_EQ(tclResult(&b, "Compatible_board_revisions"), "{0 Rev A} {1 Rev B} {2 Rev C}");
    EXPECT_EQ(tclResult(&b, "jtag_chains"), "chain1");
    EXPECT_EQ(tclResult(&b, "supports_ced"), "1");
    b.setSupportsCED(false);
    EXPECT_EQ(tclResult(&b, "supports_ced"), "0");
    EXPECT_EQ(get(&b, "PARAM.fmc_vadj"), "2.5");
    EXPECT_EQ(listedWith(&b, "PARAM."), (Names{"PARAM.fmc_vadj", "PARAM.heat_sink", "PARAM.pmod_ja_enable"}));
    EXPECT_EQ(listed(&b).size(), 13u + 3u);
}

TEST_F(PropertyTest, ComponentReadsItselfAndTheBoardItStandsOn) {
    HBOBoard& b = reference();
    HBOBoardComponent* fpga = component(b, "part0");
    HBOBoardComponent* ddr = component(b, "ddr3_sdram");
    EXPECT_EQ(get(fpga, "name"), "korvelhw:tarnwick:part0:1.2");
    EXPECT_EQ(get(fpga, "part_name"), "zf7k160t-ffg676-2");
    EXPECT_EQ(get(fpga, "jtag_position"), "0");
    EXPECT_EQ(get(fpga, "BOARD_REVISION"), "Rev C");
    EXPECT_EQ(get(ddr, "BOARD_NAME"), "tarnwick");
    EXPECT_EQ(get(ddr, "vendor_name"), "korvelhw");
    EXPECT_EQ(get(ddr, "component_vendor"), "korvelmem");
    EXPECT_EQ(tclResult(ddr, "additionally_supported_part_names"), "zf7k160t-ffg676-1 zf7k160t-ffg676-3");
    EXPECT_EQ(tclResult(ddr, "configuration_modes"), "ddr3_sdram");
    EXPECT_EQ(get(ddr, "type") + "/" + get(ddr, "sub_type"), "chip/ddr");
    EXPECT_EQ(tclResult(ddr, "supports_ced"), "1");
    // Hidden but readable; absent from the listing.
    EXPECT_EQ(get(ddr, "is_enabled"), "true");
    Names names = listed(ddr);
    EXPECT_EQ(std::count(names.begin(), names.end(), "is_enabled"), 0);
    // Through a missing board: empty texts, and supports_ced true.
    HBOBoardComponent loose;
    EXPECT_EQ(get(&loose, "BOARD_NAME"), "");
    EXPECT_EQ(tclResult(&loose, "supports_ced"), "1");
}

TEST_F(PropertyTest, ModeInterfaceAndPreferenceRead) {
    HBOBoard& b = reference();
    HBOComponentMode* mode = component(b, "ddr3_sdram")->getComponentModes().at(0);
    EXPECT_EQ(tclResult(mode, "interfaces"), "ddr3_sdram sys_diff_clock");
    EXPECT_EQ(tclResult(mode, "preferences"), "korvelhw:ip:dramhub_g7:4.2");
    EXPECT_EQ(tclResult(mode, "presets"), "ddr3_sdram_preset:korvelhw:ip:dramhub_g7:*:*");
    EXPECT_EQ(tclResult(mode, "enablement_dependency"), "");

    HBOBusIf* leds = busIf(b, "led_8bits");
    EXPECT_EQ(get(leds, "class"), "board_component_interface");
    EXPECT_EQ(get(leds, "VLNV"), "korvelhw:interface:gpio_rtl:1.0");
    EXPECT_EQ(get(leds, "MODE") + get(leds, "busdef_name"), "mastergpio_rtl");
    // Two IPs under one procedure; the reader gives the second the interface "*".
    EXPECT_EQ(tclResult(leds, "presets"),
              "led_8bits_preset:korvelhw:ip:gpio_hub:2.0:GPIO led_8bits_preset:korvelhw:ip:gpio_lite:1.1:*");
    EXPECT_EQ(tclResult(leds, "preferences"), "korvelhw:ip:gpio_hub:2.0 korvelhw:ip:gpio_lite:1.1");
    EXPECT_EQ(get(leds, "of_component"), "led_8bits");
    // Unsorted: the tables' order, then the dynamic names.
    Names names = listed(leds);
    EXPECT_EQ(Names(names.begin(), names.begin() + 13),
              (Names{"class", "name", "VLNV", "PRESET_FILE", "MODE", "vendor", "library", "busdef_name", "version",
                     "presets", "of_component", "description", "preferences"}));

    HBOBusIfPreference* pref = leds->getPreferences().at(1);
    EXPECT_EQ(get(pref, "ip_name"), "gpio_lite");
    EXPECT_EQ(tclResult(pref, "order"), "1");
    EXPECT_EQ(getAny(pref, "order").toAttr().getType(), HATAttrTypes::ATTR_INT);
}

TEST_F(PropertyTest, PortAndPinRead) {
    HBOBoard& b = reference();
    HBOModelPort* addr = busIf(b, "ddr3_sdram")->getPortMaps().at("ddr3_addr");
    EXPECT_EQ(get(addr, "direction"), "out");
    EXPECT_EQ(get(addr, "width") + ":" + get(addr, "left") + ":" + get(addr, "right"), "14:13:0");
    EXPECT_EQ(get(addr, "interface"), "ddr3_sdram");
    EXPECT_EQ(get(addr, "logical_name"), "ADDR");
    EXPECT_EQ(get(addr, "PIN.ddr3_addr[12]"), "DDR3_ADDR12");
    EXPECT_EQ(listedWith(addr, "PIN.").size(), 14u);
    // A scalar port has no bounds: they show as 0.
    HBOModelPort scalar;
    EXPECT_EQ(get(&scalar, "left") + get(&scalar, "right") + get(&scalar, "width"), "001");

    HBOPinProps* reset = component(b, "part0")->findPin("CPU_RESET");
    EXPECT_EQ(get(reset, "loc"), "L21");
    EXPECT_EQ(get(reset, "pull_type"), "PULLDOWN");
    EXPECT_EQ(get(reset, "iostandard"), "LVCMOS33");
    EXPECT_EQ(get(reset, "pin_index"), "3");
    EXPECT_EQ(tclResult(reset, "interfaces"), "reset");
    EXPECT_EQ(get(reset, "PORT.reset"), "0");
    // Reading a port property the pin lacks leaves it without one.
    EXPECT_EQ(get(reset, "voh"), "");
    EXPECT_EQ(reset->findPortProp("voh"), nullptr);
    // No owner port: the old names read empty, and bus_width 0 as an integer.
    for (const char* name : {"bus_direction", "bus_name", "interface", "logical_name", "bus_start", "bus_stop"})
        EXPECT_EQ(get(reset, name), "") << name;
    EXPECT_EQ(tclResult(reset, "bus_width"), "0");
    EXPECT_EQ(getAny(reset, "bus_width").toAttr().getType(), HATAttrTypes::ATTR_INT);
}

TEST_F(PropertyTest, PinOfAPortReadsThePortThroughTheOldNames) {
    HBOModelPort vec, scalar;
    vec.setName("d");
    vec.setIsVector(true);
    vec.setRange(7, 4);
    vec.setDirection("in");
    vec.setOwnerBusIf("bus0", "DATA");
    scalar.setName("s");
    HBOPinProps a, c;
    a.setOwnerPort(&vec);
    c.setOwnerPort(&scalar);
    EXPECT_EQ(get(&a, "bus_name") + " " + get(&a, "bus_direction") + " " + get(&a, "interface") + " " +
                  get(&a, "logical_name") + " " + get(&a, "bus_start") + " " + get(&a, "bus_stop"),
              "d in bus0 DATA 7 4");
    EXPECT_EQ(tclResult(&a, "bus_width"), "4");
    EXPECT_EQ(get(&c, "bus_start") + "|" + get(&c, "bus_stop"), "|");
    EXPECT_EQ(get(&c, "bus_width"), "1");
}

TEST_F(PropertyTest, ConnectionsNetsJumpersAndParametersRead) {
    HBOBoard& b = reference();
    HBOBoardBus* fmc = bus(b, "part0_fmc_lpc_1");
    EXPECT_EQ(get(fmc, "component_1") + "-" + get(fmc, "component_2"), "part0-fmc_lpc");
    EXPECT_EQ(get(fmc, "delay"), "0.419999987");
    EXPECT_EQ(get(fmc, "min_delay"), "0.379999995");
    EXPECT_EQ(tclResult(fmc, "Component_1.STOP"), "48");
    EXPECT_EQ(getAny(fmc, "Component_2.START").toAttr().getType(), HATAttrTypes::ATTR_INT);
    // The stored "{jp3 true}" split at its blank, braces and all.
    HATAttrAny value = getAny(fmc, "enablement_dependency");
    const HATStringList* dep = value.get<HATStringList>();
    ASSERT_NE(dep, nullptr);
    EXPECT_EQ(dep->items(), (HSTVector<std::string>{"{jp3", "true}"}));
    HBOBoardBus* leds = bus(b, "part0_led_8bits_1");
    EXPECT_EQ(get(leds, "delay"), "");
    EXPECT_EQ(tclResult(leds, "enablement_dependency"), "");

    HBOBoardBusNet* net = fmc->getBoardBusNets().at(0);
    EXPECT_EQ(get(net, "bus"), "part0_fmc_lpc_1");
    EXPECT_EQ(get(net, "delay"), "0.400000006");
    // An empty stored value reads "true" on a net and stays empty on a connection.
    net->setIsEnabled("");
    fmc->setIsEnabled("");
    EXPECT_EQ(get(net, "is_enabled"), "true");
    EXPECT_EQ(get(fmc, "is_enabled"), "");
    HBOBoardBusNet loose;
    EXPECT_EQ(get(&loose, "bus"), "");

    HBOJumper* jp9 = jumper(b, "jp9");
    EXPECT_EQ(tclResult(jp9, "current_value"), "0");
    EXPECT_EQ(get(jp9, "description"), "Closed: level shifters of PMOD JA enabled. Open by default.");

    HBOParameter* vadj = parameter(b, "fmc_vadj");
    EXPECT_EQ(tclResult(vadj, "supported_values"), "1.2 3.3");
    EXPECT_EQ(get(vadj, "value_type") + " " + get(vadj, "read_only"), "float false");
    HBOParameter untyped;
    EXPECT_EQ(get(&untyped, "value_type"), "string");
}

TEST_F(PropertyTest, PresetsAndAssociationsShowTheirOwnDynamicNames) {
    HBOBoard& b = reference();
    HBOIpPreset* ddr = b.getIpPresets().at("DDR3_SDRAM_PRESET").at(0);
    EXPECT_EQ(get(ddr, "class"), "ip_configuration_info");
    EXPECT_EQ(get(ddr, "ip_name"), "dramhub_g7");
    EXPECT_EQ(get(ddr, "CONFIG.DATA_WIDTH"), "16");
    EXPECT_EQ(listed(ddr), (Names{"class", "name", "ip_name", "ip_vendor", "ip_library", "ip_version",
                                  "ip_interface", "CONFIG.DATA_WIDTH", "CONFIG.MEMORY_TYPE", "CONFIG.MEM_TIMING",
                                  "CONFIG.PORT_WIDTHS", "CONFIG.XML_INPUT_FILE"}));

    HBOIpPreset* assoc = b.getIpAssociatedInterfaces().begin()->second.at(0);
    EXPECT_EQ(tclResult(assoc, "BOARD_INTERFACES"), "sys_diff_clock user_clock");
    EXPECT_EQ(tclResult(assoc, "board_interfaces"), "sys_diff_clock user_clock");
    std::vector<HCPProperty::ListedProperty> all = listing(assoc);
    ASSERT_EQ(all.back().name, "BOARD_INTERFACES");
    EXPECT_EQ(all.back().spec.getAttrType(), HATAttrTypes::ATTR_STRING_LIST);
    EXPECT_EQ(all.back().value.getCharStringVal(), "sys_diff_clock user_clock");
}
