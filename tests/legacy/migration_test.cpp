// Reshaping a schema 1 board into the schema 2 model.
#include "../parsers/parser_fixture.h"

#include <memory>
#include <vector>

#include "HBOBoardComponent.h"
#include "HBOBusIf.h"
#include "HBOBusIfPreference.h"
#include "HBOModelPort.h"
#include "HBOParser.h"
#include "HBOPinProps.h"

namespace {

const char* const kBoard = R"(<?xml version="1.0"?>
<board_part vendor="korvelhw" board_name="bdt4" board_part="part0" board_revision="C" version="2.3"
            schema_version="1.1">
  <part_info part_name="zf7k100t-csg324-1" jtag_position="2"/>
  <ports>
    <port name="ddr_dq" dir="inout" left="1" right="0"><pins><pin index="0" loc="K1"/><pin index="1" loc="K2"/></pins>
    </port>
    <port name="led_button_o" dir="out"><pins><pin loc="L1"/></pins></port>
    <port name="gpio_sw_i" dir="in" left="5" right="4"><pins><pin index="4" loc="M4"/><pin index="5" loc="M5"/></pins>
    </port>
    <port name="cpu_io" dir="inout"><pins><pin loc="N1"/></pins></port>
  </ports>
  <interfaces>
    <interface name="ddr_sdram" mode="master" type="KorvelHW:interface:DDRX_rtl:1.0">
      <port_maps><port_map logical_port="DQ" physical_port="ddr_dq"/>
                 <port_map logical_port="NOPE" physical_port="missing_port"/></port_maps><preset_file name="mig.prj"/>
    </interface>
    <interface name="Led_Button" mode="master" type="korvelhw:interface:gpio:1.0">
      <port_maps><port_map logical_port="TRI_O" physical_port="led_button_o"/></port_maps></interface>
    <interface name="gpio_sw" mode="master" type="korvelhw:interface:gpio:1.0">
      <port_maps><port_map logical_port="TRI_I" physical_port="gpio_sw_i"/></port_maps><preset_file name="sw.txt"/>
    </interface>
    <interface name="cpu_fixed" mode="master" type="korvelhw:display_cpu_hub7:fixedio_rtl:1.0">
      <port_maps><port_map logical_port="MIO" physical_port="cpu_io"/></port_maps><preset_file name="cpu.tcl"/>
    </interface>
    <interface name="uart" mode="master" type="korvelhw:interface:uart:1.0"/>
  </interfaces>
</board_part>
)";

}  // namespace

class Migration : public ParserFixture {
protected:
    // Reads kBoard and migrates it; each preference given (interface, major
    // group, minor group) is set on its interface first, and owned here.
    void migrate(const std::vector<Strings>& preferences = {}) {
        write("mig.prj", "x");
        write("sw.txt", "x");
        write("cpu.tcl", "x");
        HBOParser parser;
        EXPECT_TRUE(parser.parseFile(write("board.xml", kBoard), freshBoard()));
        for (const Strings& p : preferences) {
            m_prefs.emplace_back(new HBOBusIfPreference());
            m_prefs.back()->setMajorGroup(p[1]);
            m_prefs.back()->setMinorGroup(p[2]);
            board().getActivePart()->getBusIfByName(p[0])->setPreference(m_prefs.back().get());
        }
        EXPECT_FALSE(parser.migrateV1ToV2(&board()));
    }
    HBOBoardComponent* component(const std::string& name) {
        for (const auto& kv : board().getBoardComponents())
            if (kv.second->getComponentName() == name)
                return kv.second;
        return nullptr;
    }
    std::vector<std::unique_ptr<HBOBusIfPreference>> m_prefs;
};

TEST_F(Migration, DeviceBecomesPart0AndSchemaMoves) {
    migrate();
    HBOBoard& b = board();
    EXPECT_EQ(b.getBoardSchemaVersion(), "2.0");
    EXPECT_EQ(b.getMigratedFromSchema(), "1.1");
    EXPECT_EQ(b.getJtagChains(), Strings{"chain1"});
    HBOBoardComponent* part = b.getActivePart();
    ASSERT_NE(part, nullptr);
    EXPECT_EQ(part->getComponentName(), "part0");
    EXPECT_EQ(part->getType(), "fpga");
    EXPECT_EQ(part->getJtagPosition("chain1"), "2");
    // One component per interface beside the device.
    for (const char* name : {"ddr_sdram", "Led_Button", "gpio_sw", "cpu_fixed", "uart"}) {
        SCOPED_TRACE(name);
        HBOBoardComponent* c = component(name);
        ASSERT_NE(c, nullptr);
        EXPECT_EQ(c->getType(), "chip");
        EXPECT_EQ(c->getBoard(), &b);
        EXPECT_EQ(c->getBoardFile(), b.getBoardFile());
        EXPECT_EQ(part->getBusIfByName(name)->getOfComponent(), name);
    }
}

TEST_F(Migration, SubTypesFromPreferenceOrName) {
    migrate();  // no preferences at all: every sub-type is "chip"
    EXPECT_EQ(component("Led_Button")->getSubType(), "chip");
    EXPECT_EQ(component("gpio_sw")->getSubType(), "chip");
    // An empty minor group falls back on the name, where led comes before
    // button in the table; a set one wins.
    migrate({{"gpio_sw", "IO", ""}, {"uart", "Serial", "uart_chip"}, {"led_button", "GPIO", ""}});
    EXPECT_EQ(component("gpio_sw")->getSubType(), "switch");
    EXPECT_EQ(component("gpio_sw")->getMajorGroup(), "IO");
    EXPECT_EQ(component("uart")->getSubType(), "uart_chip");
    EXPECT_EQ(component("uart")->getMajorGroup(), "Serial");
    EXPECT_EQ(component("Led_Button")->getSubType(), "led");
}

TEST_F(Migration, PortsJoinTheirInterfacesAndPresetsAreMade) {
    migrate();
    HBOBoard& b = board();
    EXPECT_EQ(b.getActivePart()->getBusIfByName("ddr_sdram")->getPresetProcName(), "ddr_sdram_preset");
    std::vector<HBOIpPreset*> presets = b.findPresetProc("ddr_sdram_preset");
    ASSERT_EQ(presets.size(), 1u);
    EXPECT_EQ(presets[0]->getPresetName(), "ddr_sdram_preset:korvelhw:ip:dramhub_g7:*");
    EXPECT_EQ(presets[0]->getValueType(), "file");
    std::string value;
    EXPECT_TRUE(presets[0]->getParamValue("CONFIG.XML_INPUT_FILE", value));
    EXPECT_EQ(value, dir() + "/mig.prj");
    presets = b.findPresetProc("cpu_fixed_preset");
    ASSERT_EQ(presets.size(), 1u);
    EXPECT_EQ(presets[0]->getPresetName(), "cpu_fixed_preset:korvelhw:ip:cpu_hub7:*");
    EXPECT_TRUE(presets[0]->getParamValue("CONFIG.preset", value));
    EXPECT_EQ(value, "bdt4");
    // Any other type keeps a preset with only its procedure name; no preset file, no preset.
    presets = b.findPresetProc("gpio_sw_preset");
    ASSERT_EQ(presets.size(), 1u);
    EXPECT_EQ(presets[0]->getPresetName() + "|" + presets[0]->getPresetProcName(), "|gpio_sw_preset");
    EXPECT_TRUE(b.findPresetProc("uart_preset").empty());
}

TEST_F(Migration, PinsGetRunningIndexAndPortMapsKeepOldIndex) {
    migrate();
    HBOBoardComponent* part = board().getActivePart();
    // Ports in key order: CPU_IO, DDR_DQ, GPIO_SW_I, LED_BUTTON_O.
    const Strings pins = {"cpu_io", "ddr_dq[0]", "ddr_dq[1]", "gpio_sw_i[4]", "gpio_sw_i[5]", "led_button_o"};
    for (size_t i = 0; i < pins.size(); ++i) {
        HBOPinProps* pin = part->findPin(pins[i]);
        ASSERT_NE(pin, nullptr) << pins[i];
        EXPECT_EQ(pin->getPinIndex(), static_cast<int>(i)) << pins[i];
    }
    HBOModelPort* sw = part->getModelPortByName("gpio_sw_i");
    ASSERT_NE(sw, nullptr);
    EXPECT_EQ(sw->getPinPortMap(), (std::map<std::string, std::string>{{"4", "gpio_sw_i[4]"}, {"5", "gpio_sw_i[5]"}}));
}

TEST_F(Migration, LeavesSchema2AndNullBoardsAlone) {
    HBOParser parser;
    EXPECT_FALSE(parser.migrateV1ToV2(nullptr));
    HBOBoard board;
    board.setBoardSchemaVersion("2.0");
    parser.migrateV1ToV2(&board);
    EXPECT_TRUE(board.getJtagChains().empty());
    EXPECT_EQ(board.getMigratedFromSchema(), "");
    setParam("board.enableSchemaV2", "false");
    HBOBoard old;
    old.setBoardSchemaVersion("1.0");
    parser.migrateV1ToV2(&old);
    EXPECT_EQ(old.getBoardSchemaVersion(), "1.0");
    EXPECT_TRUE(old.getJtagChains().empty());
}
