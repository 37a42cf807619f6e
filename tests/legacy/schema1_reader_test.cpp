// The schema 1 reader: grammar of the board file and of its preset file.
#include "../parsers/parser_fixture.h"

#include <map>
#include <utility>
#include <vector>

#include "HBOBoardComponent.h"
#include "HBOBusIf.h"
#include "HBOModelPort.h"
#include "HBOPartParser.h"
#include "HBOPinProps.h"

namespace {

const char* const kBoard = R"(<?xml version="1.0" encoding="UTF-8"?>
<board_part vendor="KorvelHW" board_name="BDT1" board_part="part0" board_revision="B" version="1.2"
            schema_version="1.1" preset_file="preset.xml">
  <PART_INFO part_name="zf7k70t-fbg484-1" jtag_position="1"/>
  <board_info display_name="Test Board" url="http://example.invalid/bdt1" description="A small test board"
              image_file="bdt1.png"/>
  <ports>
    <port name="led_4bits_tri_o" dir="out" left="3" right="0"><pins><pin index="0" loc="A1" iostandard="LVCMOS33"/>
      <pin index="1" loc="A2" iostandard="LVCMOS33" drive="8" iobank.vcco="3.3" iobank.bank="34"/>
      <pin index="7" loc="A9"/><pin index="-1" loc="A0"/></pins></port>
    <port name="sys_clk" dir="in"><pins><pin loc="C1" iostandard="LVDS" diff_term="TRUE"/></pins></port>
    <port name="down_only" dir="in" left="2"/>
    <port name="rising" dir="out" left="4" right="6"><pins><pin index="5" loc="D5"/><pin index="3" loc="D3"/></pins>
    </port>
  </ports>
  <interfaces>
    <interface name="led_4bits" mode="master" type="korvelhw:interface:gpio:1.0" preset_proc_name="led_preset">
      <port_maps><port_map logical_port="TRI_O" physical_port="led_4bits_tri_o"/></port_maps>
      <parameters><parameter name="GPIO_WIDTH" value="4"/></parameters><preset_file name="led.xml"/>
    </interface>
  </interfaces>
</board_part>
)";

const char* const kPresets = R"(<?xml version="1.0"?>
<ip_presets schema="1.0">
  <ip_preset preset_proc_name="led_preset"><ip vendor="korvelhw" library="ip" name="gpio_hub" version="2.0">
      <user_parameters><parameter name="CONFIG.GPIO_WIDTH" value="4"/></user_parameters>
      <model_parameters><parameter name="C_ALL_OUTPUTS" value="1"/></model_parameters>
    </ip><note text="not an ip"/></ip_preset>
  <ip_preset preset_proc_name="any_version"><ip vendor="korvelhw" library="ip" name="uart_hub"/></ip_preset>
</ip_presets>
)";

}  // namespace

class Schema1Reader : public ParserFixture {
protected:
    // kBoard, edited by `edit` (text to find, its replacement), read from the
    // directory `sub` beside `presets` (none when null).
    bool readBoard(const std::string& sub, const std::pair<std::string, std::string>& edit = {},
                   const char* presets = kPresets) {
        std::string text = kBoard;
        if (!edit.first.empty())
            text.replace(text.find(edit.first), edit.first.size(), edit.second);
        m_file = write(sub + "/board.xml", text);
        if (presets)
            write(sub + "/preset.xml", presets);
        write(sub + "/changelog.txt", "1.2 first\n");
        write(sub + "/led.xml", "<x/>");
        clearMessages();
        return HBOPartParser().parseFile(m_file, freshBoard());
    }
    std::string m_file;
};

TEST_F(Schema1Reader, ReadsIdentityPartAndBoardInfo) {
    ASSERT_TRUE(readBoard("b")) << ::testing::PrintToString(ids());
    HBOBoard& b = board();
    EXPECT_EQ((Strings{b.getName(), b.getBoardFile(), b.getChangeLogFilename(), b.getDisplayName(),
                       b.getDescription(), b.getSpecUrl()}),
              (Strings{"korvelhw:bdt1:1.2", m_file, dir() + "/b/changelog.txt", "Test Board", "A small test board",
                       "http://example.invalid/bdt1"}));
    EXPECT_EQ(b.getCompatibleBoardRevisions(), (std::map<int, std::string>{{0, "B"}}));
    HBOBoardComponent* part = b.getActivePart();
    ASSERT_NE(part, nullptr);
    EXPECT_EQ(part->getBoard(), &b);
    EXPECT_EQ((Strings{part->getPartString(), part->getJtagPosition(), part->getBoardFile()}),
              (Strings{"zf7k70t-fbg484-1", "1", m_file}));
}

TEST_F(Schema1Reader, PortsVectorsScalarsAndPinPlacement) {
    ASSERT_TRUE(readBoard("b"));
    HBOBoardComponent* part = board().getActivePart();
    auto pinsOf = [&](const std::string& port) {
        std::vector<HBOPinProps*> pins;
        HBOModelPort* p = part->getModelPortByName(port);
        EXPECT_TRUE(p && p->getPortPropsSeq(pins)) << port;
        return pins;
    };
    HBOModelPort* led = nullptr;
    ASSERT_TRUE(part->getModelPortByName(led, "LED_4BITS_TRI_O"));
    EXPECT_TRUE(led->isPortOfTypeVec());
    std::vector<HBOPinProps*> pins = pinsOf("led_4bits_tri_o");
    ASSERT_EQ(pins.size(), 4u);
    // Index 7 lies past the range and -1 before it: both skipped without a word.
    EXPECT_EQ((Strings{pins[0]->getName(), pins[0]->getPinLoc(), pins[1]->getPinDrive(),
                       pins[1]->getIOBankPropertyValue("vcco"), pins[1]->getIOBankPropertyValue("bank"),
                       pins[3]->getPinLoc()}),
              (Strings{"led_4bits_tri_o[0]", "A1", "8", "3.3", "34", ""}));
    EXPECT_EQ(count("49-4"), 0);
    ASSERT_NE(part->getModelPortByName("sys_clk"), nullptr);
    EXPECT_FALSE(part->getModelPortByName("sys_clk")->isPortOfTypeVec());
    pins = pinsOf("sys_clk");
    ASSERT_EQ(pins.size(), 1u);
    EXPECT_EQ((Strings{pins[0]->getName(), pins[0]->getPinDiffTerm()}), (Strings{"sys_clk", "TRUE"}));
    // Only "left": a vector down to 0, and no pins keeps the made records.
    HBOModelPort* down = part->getModelPortByName("down_only");
    ASSERT_NE(down, nullptr);
    int left = -1, right = -1, width = 0;
    down->getPortVecLeft(left);
    down->getPortVecRight(right);
    down->getPortWidth(width);
    EXPECT_EQ((std::vector<int>{left, right, width}), (std::vector<int>{2, 0, 3}));
    EXPECT_EQ(pinsOf("down_only").size(), 3u);
    // A rising range places index minus the left bound; 3 lies below it.
    pins = pinsOf("rising");
    ASSERT_EQ(pins.size(), 3u);
    EXPECT_EQ((Strings{pins[0]->getPinLoc(), pins[1]->getPinLoc()}), (Strings{"", "D5"}));
}

TEST_F(Schema1Reader, InterfacesAndPresets) {
    ASSERT_TRUE(readBoard("b"));
    HBOBusIf* led = board().getActivePart()->getBusIfByName("led_4bits");
    ASSERT_NE(led, nullptr);
    std::string type, width;
    led->getAbstractTypeVLNV(type, ":");
    EXPECT_TRUE(led->getParamValue("GPIO_WIDTH", width));
    EXPECT_EQ((Strings{led->getInterfaceMode(), led->getPresetProcName(), type, width, led->getPresetFile()}),
              (Strings{"master", "led_preset", "korvelhw:interface:gpio:1.0", "4", dir() + "/b/led.xml"}));
    EXPECT_EQ(led->getPortMapSeq().size(), 1u);
    EXPECT_EQ(led->getOwnerComponent(), board().getActivePart());
    std::vector<HBOIpPreset*> presets = board().findPresetProc("led_preset");
    // The element that is not "ip" still keeps a record of its own.
    ASSERT_EQ(presets.size(), 2u);
    EXPECT_EQ(presets[0]->getPresetName(), "led_preset:korvelhw:ip:gpio_hub:2.0");
    std::string value;
    EXPECT_TRUE(presets[0]->getParamValue("CONFIG.GPIO_WIDTH", value));
    EXPECT_EQ(value, "4");
    EXPECT_TRUE(presets[0]->getParamValue("C_ALL_OUTPUTS", value));
    EXPECT_EQ(presets[1]->getPresetName(), "");
    presets = board().findPresetProc("any_version");
    ASSERT_EQ(presets.size(), 1u);
    EXPECT_EQ(presets[0]->getPresetName(), "any_version:korvelhw:ip:uart_hub:*");
}

TEST_F(Schema1Reader, PresetFilePathsAndFailures) {
    // A name with a directory part stands as it is.
    const std::string abs = write("elsewhere/presets.xml", kPresets);
    EXPECT_TRUE(readBoard("a", {"preset_file=\"preset.xml\"", "preset_file=\"" + abs + "\""}, nullptr));
    EXPECT_EQ(board().findPresetProc("led_preset").size(), 2u);
    EXPECT_EQ(count("49-62"), 0);
    // A missing preset file is reported and does not fail the board.
    EXPECT_TRUE(readBoard("b", {}, nullptr));
    EXPECT_EQ(arg("49-62", 0), dir() + "/b/preset.xml");
    // A malformed one gives 49-63 and the board still reads.
    EXPECT_TRUE(readBoard("c", {}, "<ip_presets><ip_preset>"));
    EXPECT_EQ(arg("49-63", 0), dir() + "/c/preset.xml");
    EXPECT_EQ(arg("49-63", 1).substr(0, 2), ", ");
}

TEST_F(Schema1Reader, FailuresReportTheGeneralMessage) {
    EXPECT_FALSE(HBOPartParser().parseFile("", freshBoard()));
    EXPECT_EQ(ids(), Strings{"49-36"});
    // The reader's own error stops at the reader: 49-4 with empty detail.
    EXPECT_FALSE(readBoard("novendor", {"vendor=\"KorvelHW\"", ""}));
    EXPECT_EQ(count("49-108"), 0);
    EXPECT_EQ(argsOf("49-4"), (Args{{m_file, ""}}));
    EXPECT_EQ(board().getActivePart(), nullptr);
    EXPECT_FALSE(readBoard("badtype", {"korvelhw:interface:gpio:1.0", "korvelhw:gpio:1.0"}));
    EXPECT_EQ(arg("49-37", 0), "led_4bits");
    EXPECT_EQ(count("49-4"), 1);
    // The read returned: the part is on the board, without the bad interface.
    ASSERT_NE(board().getActivePart(), nullptr);
    EXPECT_EQ(board().getActivePart()->getBusIfByName("led_4bits"), nullptr);
    const struct {
        std::string from, to, id;
        Strings args;
    } cases[] = {
        {"<parameter name", "<param name", "49-38", {"param", "led_4bits"}},
        {"<port_map ", "<portmap ", "49-39", {"portmap", "led_4bits"}},
    };
    for (const auto& c : cases) {
        EXPECT_FALSE(readBoard(c.id, {c.from, c.to}));
        EXPECT_EQ(first(c.id).getArgs(), c.args);
    }
    EXPECT_FALSE(readBoard("nopart", {"part_name=\"zf7k70t-fbg484-1\"", "part_name=\"\""}));
    EXPECT_EQ(count("49-109"), 0);
    EXPECT_EQ(count("49-4"), 1);
}
