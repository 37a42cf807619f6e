// Reshaping a schema 1 board into the schema 2 model.
#include <memory>
#include <vector>

#include "HBOBoard.h"
#include "HBOBoardComponent.h"
#include "HBOBusIf.h"
#include "HBOBusIfPreference.h"
#include "HBOIpPreset.h"
#include "HBOModelPort.h"
#include "HBOParser.h"
#include "HBOPinProps.h"
#include "legacy_fixture.h"

namespace {

const char* const kBoard = R"(<?xml version="1.0"?>
<board_part vendor="korvelhw" board_name="bdt4" board_part="part0" board_revision="C" version="2.3"
            schema_version="1.1">
  <part_info part_name="zf7k100t-csg324-1" jtag_position="2"/>
  <ports>
    <port name="ddr_dq" dir="inout" left="1" right="0">
      <pins><pin index="0" loc="K1"/><pin index="1" loc="K2"/></pins>
    </port>
    <port name="led_button_o" dir="out"><pins><pin loc="L1"/></pins></port>
    <port name="gpio_sw_i" dir="in" left="5" right="4">
      <pins><pin index="4" loc="M4"/><pin index="5" loc="M5"/></pins>
    </port>
    <port name="cpu_io" dir="inout"><pins><pin loc="N1"/></pins></port>
  </ports>
  <interfaces>
    <interface name="ddr_sdram" mode="master" type="KorvelHW:interface:DDRX_rtl:1.0">
      <port_maps><port_map logical_port="DQ" physical_port="ddr_dq"/>
                 <port_map logical_port="NOPE" physical_port="missing_port"/></port_maps>
      <preset_file name="mig.prj"/>
    </interface>
    <interface name="Led_Button" mode="master" type="korvelhw:interface:gpio:1.0">
      <port_maps><port_map logical_port="TRI_O" physical_port="led_button_o"/></port_maps>
    </interface>
    <interface name="gpio_sw" mode="master" type="korvelhw:interface:gpio:1.0">
      <port_maps><port_map logical_port="TRI_I" physical_port="gpio_sw_i"/></port_maps>
      <preset_file name="sw.txt"/>
    </interface>
    <interface name="cpu_fixed" mode="master" type="korvelhw:display_cpu_hub7:fixedio_rtl:1.0">
      <port_maps><port_map logical_port="MIO" physical_port="cpu_io"/></port_maps>
      <preset_file name="cpu.tcl"/>
    </interface>
    <interface name="uart" mode="master" type="korvelhw:interface:uart:1.0"/>
  </interfaces>
</board_part>
)";

struct Migrated {
    ScratchDir dir;
    std::unique_ptr<HBOBoard> board{new HBOBoard()};
    std::vector<std::unique_ptr<HBOBusIfPreference>> prefs;

    explicit Migrated(bool withPreferences = false, const std::string& text = kBoard) {
        const std::string file = dir.write("board.xml", text);
        dir.write("mig.prj", "x");
        dir.write("sw.txt", "x");
        dir.write("cpu.tcl", "x");
        HBOParser parser;
        EXPECT_TRUE(parser.parseFile(file, board.get()));
        if (withPreferences) {
            HBOBoardComponent* part = board->getActivePart();
            // An empty minor group falls back on the name; a set one wins.
            prefer(part->getBusIfByName("gpio_sw"), "IO", "");
            prefer(part->getBusIfByName("uart"), "Serial", "uart_chip");
        }
        EXPECT_FALSE(parser.migrateV1ToV2(board.get()));
    }
    void prefer(HBOBusIf* busIf, const std::string& major, const std::string& minor) {
        HBOBusIfPreference* p = new HBOBusIfPreference();
        p->setMajorGroup(major);
        p->setMinorGroup(minor);
        prefs.emplace_back(p);
        busIf->setPreference(p);
    }
    HBOBoardComponent* component(const std::string& name) const {
        for (const auto& kv : board->getBoardComponents())
            if (kv.second->getComponentName() == name)
                return kv.second;
        return nullptr;
    }
};

}  // namespace

TEST(Migration, DeviceBecomesPart0AndSchemaMoves) {
    MessageLog log;
    Migrated m;
    HBOBoard& b = *m.board;
    EXPECT_EQ(b.getBoardSchemaVersion(), "2.0");
    EXPECT_EQ(b.getMigratedFromSchema(), "1.1");
    EXPECT_EQ(b.getJtagChains(), std::vector<std::string>{"chain1"});
    HBOBoardComponent* part = b.getActivePart();
    ASSERT_NE(part, nullptr);
    EXPECT_EQ(part->getComponentName(), "part0");
    EXPECT_EQ(part->getType(), "fpga");
    EXPECT_EQ(part->getJtagPosition("chain1"), "2");
    // One component per interface beside the device.
    for (const char* name : {"ddr_sdram", "Led_Button", "gpio_sw", "cpu_fixed", "uart"}) {
        HBOBoardComponent* c = m.component(name);
        ASSERT_NE(c, nullptr) << name;
        EXPECT_EQ(c->getType(), "chip");
        EXPECT_EQ(c->getBoard(), &b);
        EXPECT_EQ(c->getBoardFile(), b.getBoardFile());
        EXPECT_EQ(part->getBusIfByName(name)->getOfComponent(), name);
    }
}

TEST(Migration, SubTypesFromPreferenceOrName) {
    {
        Migrated m;  // no preferences at all: every sub-type is "chip"
        EXPECT_EQ(m.component("Led_Button")->getSubType(), "chip");
        EXPECT_EQ(m.component("gpio_sw")->getSubType(), "chip");
    }
    {
        MessageLog log;
        Migrated m(true);
        EXPECT_EQ(m.component("gpio_sw")->getSubType(), "switch");
        EXPECT_EQ(m.component("gpio_sw")->getMajorGroup(), "IO");
        EXPECT_EQ(m.component("uart")->getSubType(), "uart_chip");
        EXPECT_EQ(m.component("uart")->getMajorGroup(), "Serial");
    }
}

TEST(Migration, LedBeforeButtonInTheNameTable) {
    ScratchDir dir;
    const std::string file = dir.write("board.xml", kBoard);
    MessageLog log;
    HBOBoard board;
    HBOParser parser;
    ASSERT_TRUE(parser.parseFile(file, &board));
    HBOBusIfPreference pref;
    pref.setMajorGroup("GPIO");
    board.getActivePart()->getBusIfByName("led_button")->setPreference(&pref);
    parser.migrateV1ToV2(&board);
    HBOBoardComponent* c = board.getBoardComponents().count("Led_Button") ? board.getBoardComponents().at("Led_Button")
                                                                          : nullptr;
    ASSERT_NE(c, nullptr);
    EXPECT_EQ(c->getSubType(), "led");
    // The preference is only held by the interface.
    board.getActivePart()->getBusIfByName("led_button")->setPreference(nullptr);
}

TEST(Migration, PortsJoinTheirInterfacesAndPresetsAreMade) {
    MessageLog log;
    Migrated m;
    HBOBoard& b = *m.board;
    HBOBoardComponent* part = b.getActivePart();

    HBOBusIf* ddr = part->getBusIfByName("ddr_sdram");
    EXPECT_EQ(ddr->getPresetProcName(), "ddr_sdram_preset");
    std::vector<HBOIpPreset*> presets = b.findPresetProc("ddr_sdram_preset");
    ASSERT_EQ(presets.size(), 1u);
    EXPECT_EQ(presets[0]->getPresetName(), "ddr_sdram_preset:korvelhw:ip:dramhub_g7:*");
    EXPECT_EQ(presets[0]->getValueType(), "file");
    std::string value;
    EXPECT_TRUE(presets[0]->getParamValue("CONFIG.XML_INPUT_FILE", value));
    EXPECT_EQ(value, m.dir.path("mig.prj"));

    presets = b.findPresetProc("cpu_fixed_preset");
    ASSERT_EQ(presets.size(), 1u);
    EXPECT_EQ(presets[0]->getPresetName(), "cpu_fixed_preset:korvelhw:ip:cpu_hub7:*");
    EXPECT_TRUE(presets[0]->getParamValue("CONFIG.preset", value));
    EXPECT_EQ(value, "bdt4");

    // Any other type keeps a preset with only its procedure name.
    presets = b.findPresetProc("gpio_sw_preset");
    ASSERT_EQ(presets.size(), 1u);
    EXPECT_EQ(presets[0]->getPresetName(), "");
    EXPECT_EQ(presets[0]->getPresetProcName(), "gpio_sw_preset");
    // No preset file, no preset.
    EXPECT_TRUE(b.findPresetProc("uart_preset").empty());
}

TEST(Migration, PinsGetRunningIndexAndPortMapsKeepOldIndex) {
    MessageLog log;
    Migrated m;
    HBOBoardComponent* part = m.board->getActivePart();
    // Ports in key order: CPU_IO, DDR_DQ, GPIO_SW_I, LED_BUTTON_O.
    const struct {
        const char* pin;
        int index;
    } expected[] = {{"cpu_io", 0}, {"ddr_dq[0]", 1}, {"ddr_dq[1]", 2}, {"gpio_sw_i[4]", 3},
                    {"gpio_sw_i[5]", 4}, {"led_button_o", 5}};
    for (const auto& e : expected) {
        HBOPinProps* pin = part->findPin(e.pin);
        ASSERT_NE(pin, nullptr) << e.pin;
        EXPECT_EQ(pin->getPinIndex(), e.index) << e.pin;
    }
    HBOModelPort* sw = part->getModelPortByName("gpio_sw_i");
    ASSERT_NE(sw, nullptr);
    EXPECT_EQ(sw->getPinPortMap(), (std::map<std::string, std::string>{{"4", "gpio_sw_i[4]"}, {"5", "gpio_sw_i[5]"}}));
}

TEST(Migration, LeavesSchema2AndNullBoardsAlone) {
    HBOParser parser;
    EXPECT_FALSE(parser.migrateV1ToV2(nullptr));
    HBOBoard board;
    board.setBoardSchemaVersion("2.0");
    parser.migrateV1ToV2(&board);
    EXPECT_TRUE(board.getJtagChains().empty());
    EXPECT_EQ(board.getMigratedFromSchema(), "");
    {
        ParamOverride off("board.enableSchemaV2", "false");
        HBOBoard old;
        old.setBoardSchemaVersion("1.0");
        parser.migrateV1ToV2(&old);
        EXPECT_EQ(old.getBoardSchemaVersion(), "1.0");
        EXPECT_TRUE(old.getJtagChains().empty());
    }
}
