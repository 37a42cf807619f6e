// The schema 1 reader: grammar of the board file and of its preset file.
#include <map>
#include <memory>
#include <vector>

#include "HBOBoard.h"
#include "HBOBoardComponent.h"
#include "HBOBusIf.h"
#include "HBOIpPreset.h"
#include "HBOModelPort.h"
#include "HBOPartParser.h"
#include "HBOPinProps.h"
#include "legacy_fixture.h"

namespace {

const char* const kBoard = R"(<?xml version="1.0" encoding="UTF-8"?>
<board_part vendor="KorvelHW" board_name="BDT1" board_part="part0" board_revision="B" version="1.2"
            schema_version="1.1" preset_file="preset.xml">
  <PART_INFO part_name="zf7k70t-fbg484-1" jtag_position="1"/>
  <board_info display_name="Test Board" url="http://example.invalid/bdt1" description="A small test board"
              image_file="bdt1.png"/>
  <ports>
    <port name="led_4bits_tri_o" dir="out" left="3" right="0">
      <pins>
        <pin index="0" loc="A1" iostandard="LVCMOS33"/>
        <pin index="1" loc="A2" iostandard="LVCMOS33" drive="8" iobank.vcco="3.3" iobank.bank="34"/>
        <pin index="7" loc="A9"/>
        <pin index="-1" loc="A0"/>
      </pins>
    </port>
    <port name="sys_clk" dir="in"><pins><pin loc="C1" iostandard="LVDS" diff_term="TRUE"/></pins></port>
    <port name="down_only" dir="in" left="2"/>
    <port name="rising" dir="out" left="4" right="6">
      <pins><pin index="5" loc="D5"/><pin index="3" loc="D3"/></pins>
    </port>
  </ports>
  <interfaces>
    <interface name="led_4bits" mode="master" type="korvelhw:interface:gpio:1.0" preset_proc_name="led_preset">
      <port_maps><port_map logical_port="TRI_O" physical_port="led_4bits_tri_o"/></port_maps>
      <parameters><parameter name="GPIO_WIDTH" value="4"/></parameters>
      <preset_file name="led.xml"/>
    </interface>
  </interfaces>
</board_part>
)";

const char* const kPresets = R"(<?xml version="1.0"?>
<ip_presets schema="1.0">
  <ip_preset preset_proc_name="led_preset">
    <ip vendor="korvelhw" library="ip" name="gpio_hub" version="2.0">
      <user_parameters><parameter name="CONFIG.GPIO_WIDTH" value="4"/></user_parameters>
      <model_parameters><parameter name="C_ALL_OUTPUTS" value="1"/></model_parameters>
    </ip>
    <note text="not an ip"/>
  </ip_preset>
  <ip_preset preset_proc_name="any_version">
    <ip vendor="korvelhw" library="ip" name="uart_hub"/>
  </ip_preset>
</ip_presets>
)";

struct ReadBoard {
    std::unique_ptr<HBOBoard> board{new HBOBoard()};
    bool ok = false;
};

ReadBoard readSchema1(const std::string& path) {
    ReadBoard r;
    HBOPartParser parser;
    r.ok = parser.parseFile(path, r.board.get());
    return r;
}

}  // namespace

TEST(Schema1Reader, ReadsIdentityPartAndBoardInfo) {
    ScratchDir dir;
    const std::string file = dir.write("board.xml", kBoard);
    dir.write("preset.xml", kPresets);
    dir.write("changelog.txt", "1.2 first\n");
    MessageLog log;
    ReadBoard r = readSchema1(file);
    ASSERT_TRUE(r.ok) << ::testing::PrintToString(log.ids());
    HBOBoard& b = *r.board;
    EXPECT_EQ(b.getName(), "korvelhw:bdt1:1.2");
    EXPECT_EQ(b.getBoardFile(), file);
    EXPECT_EQ(b.getChangeLogFilename(), dir.path("changelog.txt"));
    EXPECT_EQ(b.getCompatibleBoardRevisions(), (std::map<int, std::string>{{0, "B"}}));
    EXPECT_EQ(b.getDisplayName(), "Test Board");
    EXPECT_EQ(b.getDescription(), "A small test board");
    EXPECT_EQ(b.getSpecUrl(), "http://example.invalid/bdt1");

    HBOBoardComponent* part = b.getActivePart();
    ASSERT_NE(part, nullptr);
    EXPECT_EQ(part->getBoard(), &b);
    EXPECT_EQ(part->getPartString(), "zf7k70t-fbg484-1");
    EXPECT_EQ(part->getJtagPosition(), "1");
    EXPECT_EQ(part->getBoardFile(), file);
}

TEST(Schema1Reader, PortsVectorsScalarsAndPinPlacement) {
    ScratchDir dir;
    const std::string file = dir.write("board.xml", kBoard);
    dir.write("preset.xml", kPresets);
    MessageLog log;
    ReadBoard r = readSchema1(file);
    ASSERT_TRUE(r.ok);
    HBOBoardComponent* part = r.board->getActivePart();

    HBOModelPort* led = nullptr;
    ASSERT_TRUE(part->getModelPortByName(led, "LED_4BITS_TRI_O"));
    EXPECT_TRUE(led->isPortOfTypeVec());
    std::vector<HBOPinProps*> pins;
    ASSERT_TRUE(led->getPortPropsSeq(pins));
    ASSERT_EQ(pins.size(), 4u);
    EXPECT_EQ(pins[0]->getName(), "led_4bits_tri_o[0]");
    EXPECT_EQ(pins[0]->getPinLoc(), "A1");
    EXPECT_EQ(pins[1]->getPinDrive(), "8");
    EXPECT_EQ(pins[1]->getIOBankPropertyValue("vcco"), "3.3");
    EXPECT_EQ(pins[1]->getIOBankPropertyValue("bank"), "34");
    // Index 7 lies past the range and -1 before it: both skipped without a word.
    EXPECT_EQ(pins[3]->getPinLoc(), "");
    EXPECT_EQ(log.count("49-4"), 0u);

    HBOModelPort* clk = part->getModelPortByName("sys_clk");
    ASSERT_NE(clk, nullptr);
    EXPECT_FALSE(clk->isPortOfTypeVec());
    pins.clear();
    ASSERT_TRUE(clk->getPortPropsSeq(pins));
    ASSERT_EQ(pins.size(), 1u);
    EXPECT_EQ(pins[0]->getName(), "sys_clk");
    EXPECT_EQ(pins[0]->getPinDiffTerm(), "TRUE");

    // Only "left": a vector down to 0, and no pins keeps the made records.
    HBOModelPort* down = part->getModelPortByName("down_only");
    ASSERT_NE(down, nullptr);
    int left = -1, right = -1, width = 0;
    down->getPortVecLeft(left);
    down->getPortVecRight(right);
    down->getPortWidth(width);
    EXPECT_EQ(left, 2);
    EXPECT_EQ(right, 0);
    EXPECT_EQ(width, 3);
    pins.clear();
    ASSERT_TRUE(down->getPortPropsSeq(pins));
    EXPECT_EQ(pins.size(), 3u);

    // A rising range places index minus the left bound; 3 lies below it.
    HBOModelPort* rising = part->getModelPortByName("rising");
    pins.clear();
    ASSERT_TRUE(rising->getPortPropsSeq(pins));
    ASSERT_EQ(pins.size(), 3u);
    EXPECT_EQ(pins[1]->getPinLoc(), "D5");
    EXPECT_EQ(pins[0]->getPinLoc(), "");
}

TEST(Schema1Reader, InterfacesAndPresets) {
    ScratchDir dir;
    const std::string file = dir.write("board.xml", kBoard);
    dir.write("preset.xml", kPresets);
    dir.write("led.xml", "<x/>");
    MessageLog log;
    ReadBoard r = readSchema1(file);
    ASSERT_TRUE(r.ok);
    HBOBoardComponent* part = r.board->getActivePart();
    HBOBusIf* led = part->getBusIfByName("led_4bits");
    ASSERT_NE(led, nullptr);
    EXPECT_EQ(led->getInterfaceMode(), "master");
    EXPECT_EQ(led->getPresetProcName(), "led_preset");
    std::string type;
    led->getAbstractTypeVLNV(type, ":");
    EXPECT_EQ(type, "korvelhw:interface:gpio:1.0");
    std::string width;
    EXPECT_TRUE(led->getParamValue("GPIO_WIDTH", width));
    EXPECT_EQ(width, "4");
    EXPECT_EQ(led->getPresetFile(), dir.path("led.xml"));
    ASSERT_EQ(led->getPortMapSeq().size(), 1u);
    EXPECT_EQ(led->getOwnerComponent(), part);

    std::vector<HBOIpPreset*> presets = r.board->findPresetProc("led_preset");
    // The element that is not "ip" still keeps a record of its own.
    ASSERT_EQ(presets.size(), 2u);
    EXPECT_EQ(presets[0]->getPresetName(), "led_preset:korvelhw:ip:gpio_hub:2.0");
    std::string value;
    EXPECT_TRUE(presets[0]->getParamValue("CONFIG.GPIO_WIDTH", value));
    EXPECT_EQ(value, "4");
    EXPECT_TRUE(presets[0]->getParamValue("C_ALL_OUTPUTS", value));
    EXPECT_EQ(presets[1]->getPresetName(), "");

    presets = r.board->findPresetProc("any_version");
    ASSERT_EQ(presets.size(), 1u);
    EXPECT_EQ(presets[0]->getPresetName(), "any_version:korvelhw:ip:uart_hub:*");
}

TEST(Schema1Reader, PresetFilePathsAndFailures) {
    ScratchDir dir;
    // A name with a directory part stands as it is.
    std::string board = kBoard;
    const std::string abs = dir.write("elsewhere/presets.xml", kPresets);
    board.replace(board.find("preset_file=\"preset.xml\""), 24, "preset_file=\"" + abs + "\"");
    std::string file = dir.write("a/board.xml", board);
    {
        MessageLog log;
        ReadBoard r = readSchema1(file);
        EXPECT_TRUE(r.ok);
        EXPECT_EQ(r.board->findPresetProc("led_preset").size(), 2u);
        EXPECT_EQ(log.count("49-62"), 0u);
    }
    // A missing preset file is reported and does not fail the board.
    file = dir.write("b/board.xml", kBoard);
    {
        MessageLog log;
        ReadBoard r = readSchema1(file);
        EXPECT_TRUE(r.ok);
        ASSERT_NE(log.find("49-62"), nullptr);
        EXPECT_EQ(log.find("49-62")->getArgs()[0], dir.path("b/preset.xml"));
    }
    // A malformed one gives 49-63 and the board still reads.
    dir.write("c/preset.xml", "<ip_presets><ip_preset>");
    file = dir.write("c/board.xml", kBoard);
    {
        MessageLog log;
        ReadBoard r = readSchema1(file);
        EXPECT_TRUE(r.ok);
        ASSERT_NE(log.find("49-63"), nullptr);
        EXPECT_EQ(log.find("49-63")->getArgs()[0], dir.path("c/preset.xml"));
        EXPECT_EQ(log.find("49-63")->getArgs()[1].substr(0, 2), ", ");
    }
}

TEST(Schema1Reader, FailuresReportTheGeneralMessage) {
    ScratchDir dir;
    {
        MessageLog log;
        ReadBoard r = readSchema1("");
        EXPECT_FALSE(r.ok);
        EXPECT_EQ(log.ids(), std::vector<std::string>{"49-36"});
    }
    {
        // The reader's own error stops at the reader: 49-4 with empty detail.
        std::string board = kBoard;
        board.replace(board.find("vendor=\"KorvelHW\""), 17, "");
        const std::string file = dir.write("novendor/board.xml", board);
        dir.write("novendor/preset.xml", kPresets);
        MessageLog log;
        ReadBoard r = readSchema1(file);
        EXPECT_FALSE(r.ok);
        EXPECT_EQ(log.count("49-108"), 0u);
        ASSERT_NE(log.find("49-4"), nullptr);
        EXPECT_EQ(log.find("49-4")->getArgs(), (std::vector<std::string>{file, ""}));
        EXPECT_EQ(r.board->getActivePart(), nullptr);
    }
    {
        std::string board = kBoard;
        board.replace(board.find("korvelhw:interface:gpio:1.0"), 27, "korvelhw:gpio:1.0");
        const std::string file = dir.write("badtype/board.xml", board);
        dir.write("badtype/preset.xml", kPresets);
        MessageLog log;
        ReadBoard r = readSchema1(file);
        EXPECT_FALSE(r.ok);
        ASSERT_NE(log.find("49-37"), nullptr);
        EXPECT_EQ(log.find("49-37")->getArgs()[0], "led_4bits");
        EXPECT_EQ(log.count("49-4"), 1u);
        // The read returned: the part is on the board, without the bad interface.
        ASSERT_NE(r.board->getActivePart(), nullptr);
        EXPECT_EQ(r.board->getActivePart()->getBusIfByName("led_4bits"), nullptr);
    }
    {
        std::string board = kBoard;
        board.replace(board.find("<parameter name"), 10, "<param");
        const std::string file = dir.write("badparam/board.xml", board);
        dir.write("badparam/preset.xml", kPresets);
        MessageLog log;
        EXPECT_FALSE(readSchema1(file).ok);
        ASSERT_NE(log.find("49-38"), nullptr);
        EXPECT_EQ(log.find("49-38")->getArgs(), (std::vector<std::string>{"param", "led_4bits"}));
    }
    {
        std::string board = kBoard;
        board.replace(board.find("<port_map "), 9, "<portmap");
        const std::string file = dir.write("badmap/board.xml", board);
        dir.write("badmap/preset.xml", kPresets);
        MessageLog log;
        EXPECT_FALSE(readSchema1(file).ok);
        ASSERT_NE(log.find("49-39"), nullptr);
        EXPECT_EQ(log.find("49-39")->getArgs(), (std::vector<std::string>{"portmap", "led_4bits"}));
    }
    {
        std::string board = kBoard;
        board.replace(board.find("part_name=\"zf7k70t-fbg484-1\""), 28, "part_name=\"\"");
        const std::string file = dir.write("nopart/board.xml", board);
        dir.write("nopart/preset.xml", kPresets);
        MessageLog log;
        EXPECT_FALSE(readSchema1(file).ok);
        EXPECT_EQ(log.count("49-109"), 0u);
        EXPECT_EQ(log.count("49-4"), 1u);
    }
}
