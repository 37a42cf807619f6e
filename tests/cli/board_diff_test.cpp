// The board comparison on its own: bundled boards against edited copies of
// themselves, each edit found once and only once.
#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "BoardDiff.h"
#include "diff_board_fixture.h"

namespace {

using difftest::BoardCopy;
using zrboard::BoardDifference;

std::vector<std::string> lineList(const std::vector<BoardDifference>& diffs) {
    std::vector<std::string> out;
    for (const BoardDifference& d : diffs)
        out.push_back(d.section + " | " + zrboard::differenceLine(d));
    return out;
}

std::vector<BoardDifference> diffDirs(const boost::filesystem::path& a, const boost::filesystem::path& b) {
    std::unique_ptr<HBOBoard> before = difftest::readBoard(a), after = difftest::readBoard(b);
    EXPECT_TRUE(before && after) << a << " " << b;
    if (!before || !after)
        return {};
    return zrboard::diffBoards(*before, *after);
}

TEST(BoardDiff, EveryBundledBoardEqualsItsCopyElsewhere) {
    // File names inside a board directory must not make two places differ.
    for (const char* board :
         {"board_files/tarnwick/1.2", "board_files/durnival/1.0", "board_files/durnival/1.1", "board_files/halvet/1.0",
          "board_files/fennock/1.0", "board_files/quillon/1.1", "board_parts/tamsel/1.0"}) {
        BoardCopy copy(board);
        EXPECT_EQ(lineList(diffDirs(showtest::boardDir(board), copy.dir())), std::vector<std::string>()) << board;
    }
}

struct EditCase {
    const char* board;
    const char* file;
    const char* from;
    const char* to;
    const char* expected;  // "section | line"
};

// One edit of a board file, one difference: nothing the reader derives from
// the edited field (enabled flags, copied I/O standards, net delays) may show
// up a second time.
const EditCase kEdits[] = {
    {"board_files/tarnwick/1.2", "board.xml", "<file_version>1.2</file_version>", "<file_version>1.3</file_version>",
     "identity | version 1.2 -> 1.3"},
    {"board_files/tarnwick/1.2", "board.xml", "<revision id=\"1\">Rev B</revision>",
     "<revision id=\"1\">Rev B2</revision>", "identity | revision 1: name \"Rev B\" -> \"Rev B2\""},
    {"board_files/tarnwick/1.2", "board.xml", "<revision id=\"2\">Rev C</revision>",
     "<revision id=\"2\">Rev C</revision><revision id=\"3\">Rev D</revision>", "identity | revision 3: added (Rev D)"},
    {"board_files/durnival/1.0", "board.xml", "<revision id=\"0\">A</revision>", "<revision id=\"0\">A1</revision>",
     "identity | revision 0: name A -> A1"},
    {"board_files/tarnwick/1.2", "board.xml", "part_name=\"zf7k160t-ffg676-2\" pin_map_file",
     "part_name=\"zf7k160t-ffg676-3\" pin_map_file", "identity | part zf7k160t-ffg676-2 -> zf7k160t-ffg676-3"},
    {"board_files/tarnwick/1.2", "board.xml", "value=\"passive\"", "value=\"active\"",
     "parameters | parameter heat_sink: value passive -> active"},
    {"board_files/tarnwick/1.2", "board.xml", "value_max=\"3.3\"", "value_max=\"3.6\"",
     "parameters | parameter fmc_vadj: value_max 3.3 -> 3.6"},
    {"board_files/tarnwick/1.2", "board.xml", "<jumper name=\"jp9\" default_value=\"false\">",
     "<jumper name=\"jp9\" default_value=\"true\">", "jumpers | jumper jp9: default_value false -> true"},
    {"board_files/tarnwick/1.2", "board.xml", "<description>Where the FMC LPC connector sits</description>",
     "<description>FMC connector</description>",
     "images | image tarnwick_fmc.png: description \"Where the FMC LPC connector sits\" -> \"FMC connector\""},
    {"board_files/tarnwick/1.2", "board.xml", "type=\"chip\" sub_type=\"ddr\"", "type=\"chip\" sub_type=\"memory\"",
     "components | component ddr3_sdram: sub_type ddr -> memory"},
    {"board_files/tarnwick/1.2", "board.xml", "part_name=\"kvm3d256m16-125\" vendor=\"korvelmem\"",
     "part_name=\"kvm3d256m16-107\" vendor=\"korvelmem\"",
     "components | component ddr3_sdram: part kvm3d256m16-125 -> kvm3d256m16-107"},
    {"board_files/tarnwick/1.2", "board.xml",
     "<description>Board identification EEPROM behind the I2C switch</description>", "",
     "components | component board_eeprom: description \"Board identification EEPROM behind the I2C switch\" -> "
     "(none)"},
    {"board_files/tarnwick/1.2", "board.xml", "</components>",
     "<component name=\"status_led\" display_name=\"Status LED\" type=\"chip\" sub_type=\"led\"/></components>",
     "components | component status_led: added (chip led)"},
    {"board_files/tarnwick/1.2", "board.xml", "<interface name=\"sys_diff_clock\" order=\"1\" optional=\"true\"/>",
     "<interface name=\"sys_diff_clock\" order=\"1\" optional=\"false\"/>",
     "components | component ddr3_sdram: mode ddr3_sdram: interface sys_diff_clock: optional true -> false"},
    {"board_files/tarnwick/1.2", "board.xml",
     "<description>Memory controller clocked from the system clock</description>",
     "<description>Memory controller</description>",
     "components | component ddr3_sdram: mode ddr3_sdram: description \"Memory controller clocked from the system "
     "clock\" -> \"Memory controller\""},
    {"board_files/tarnwick/1.2", "board.xml", "type=\"korvelhw:interface:ddrx_rtl:1.0\" mode=\"master\"",
     "type=\"korvelhw:interface:ddrx_rtl:1.1\" mode=\"master\"",
     "components | component part0: interface ddr3_sdram: type korvelhw:interface:ddrx_rtl:1.0 -> "
     "korvelhw:interface:ddrx_rtl:1.1"},
    {"board_files/tarnwick/1.2", "board.xml", "type=\"korvelhw:interface:ddrx_rtl:1.0\" mode=\"master\"",
     "type=\"korvelhw:interface:ddrx_rtl:1.0\" mode=\"slave\"",
     "components | component part0: interface ddr3_sdram: mode master -> slave"},
    {"board_files/tarnwick/1.2", "board.xml", "physical_port=\"ddr3_dq\"", "physical_port=\"ddr3_data\"",
     "components | component part0: interface ddr3_sdram: port DQ: physical_port ddr3_dq -> ddr3_data"},
    {"board_files/tarnwick/1.2", "board.xml", "<pin_map port_index=\"2\" component_pin=\"PMOD_JA_3\"/>",
     "<pin_map port_index=\"2\" component_pin=\"PMOD_JA_9\"/>",
     "components | component part0: interface pmod_ja: port GPIO_IO: pin 2 PMOD_JA_3 -> PMOD_JA_9"},
    {"board_files/tarnwick/1.2", "board.xml", "<parameter name=\"rst_polarity\" value=\"1\"/>",
     "<parameter name=\"rst_polarity\" value=\"0\"/>",
     "components | component part0: interface reset: parameter rst_polarity: value 1 -> 0"},
    {"board_files/tarnwick/1.2", "board.xml", "<jumpers>\n              <jumper name=\"jp9\">true</jumper>",
     "<jumpers>\n              <jumper name=\"jp9\">false</jumper>",
     "components | component part0: interface pmod_ja: needs jumper jp9 true -> false"},
    {"board_files/tarnwick/1.2", "board.xml",
     "<description>Eight user LEDs</description>\n          <preferred_ips>\n            <preferred_ip "
     "vendor=\"korvelhw\" "
     "library=\"ip\" name=\"gpio_hub\" version=\"2.0\" order=\"0\"/>\n            <preferred_ip vendor=\"korvelhw\" "
     "library=\"ip\" name=\"gpio_lite\" version=\"1.1\" order=\"1\"/>",
     "<description>Eight user LEDs</description>\n          <preferred_ips>\n            <preferred_ip "
     "vendor=\"korvelhw\" "
     "library=\"ip\" name=\"gpio_hub\" version=\"2.0\" order=\"0\"/>",
     "components | component part0: interface led_8bits: preferred IP korvelhw:ip:gpio_lite:1.1: removed (order 1)"},
    {"board_files/tarnwick/1.2", "part0_pins.xml", "name=\"DDR3_DQ0\" loc=\"AB1\" iostandard=\"SSTL15\"",
     "name=\"DDR3_DQ0\" loc=\"AB1\" iostandard=\"SSTL135\"",
     "components | component part0: pin DDR3_DQ0: iostandard SSTL15 -> SSTL135"},
    {"board_files/tarnwick/1.2", "part0_pins.xml", "name=\"GPIO_LED_0\" loc=\"L22\"", "name=\"GPIO_LED_0\" loc=\"ZZ9\"",
     "components | component part0: pin GPIO_LED_0: site L22 -> ZZ9"},
    {"board_files/tarnwick/1.2", "part0_pins.xml",
     "iostandard=\"LVCMOS33\" drive=\"12\" slew=\"SLOW\"/>\n    <pin index=\"5\"",
     "iostandard=\"LVCMOS33\" drive=\"8\" slew=\"SLOW\"/>\n    <pin index=\"5\"",
     "components | component part0: pin GPIO_LED_0: drive 12 -> 8"},
    // The FMC pin takes its I/O standard from the FPGA pin it is wired to.
    {"board_files/tarnwick/1.2", "part0_pins.xml", "name=\"FMC_LA00_CC_P\" loc=\"AB18\" iostandard=\"LVCMOS25\"",
     "name=\"FMC_LA00_CC_P\" loc=\"AB18\" iostandard=\"LVCMOS18\"",
     "components | component part0: pin FMC_LA00_CC_P: iostandard LVCMOS25 -> LVCMOS18"},
    {"board_files/tarnwick/1.2", "board.xml", "<pin index=\"0\" name=\"PMOD_JA_1\" loc=\"1\"/>",
     "<pin index=\"0\" name=\"PMOD_JA_1\" loc=\"1A\"/>", "components | component pmod_ja: pin PMOD_JA_1: site 1 -> 1A"},
    // A connection's delay is every net's delay unless the net has its own.
    {"board_files/tarnwick/1.2", "board.xml",
     "<connection_map name=\"part0_reset_1\" c1_st_index=\"3\" c1_end_index=\"3\" c2_st_index=\"0\" "
     "c2_end_index=\"0\"/>",
     "<connection_map name=\"part0_reset_1\" c1_st_index=\"3\" c1_end_index=\"3\" c2_st_index=\"0\" c2_end_index=\"0\" "
     "typical_delay=\"0.5\"/>",
     "connections | connection part0_reset_1: delay 0 -> 0.5"},
    {"board_files/tarnwick/1.2", "board.xml",
     "<connection_map name=\"part0_reset_1\" c1_st_index=\"3\" c1_end_index=\"3\" c2_st_index=\"0\" "
     "c2_end_index=\"0\"/>",
     "<connection_map name=\"part0_reset_1\" c1_st_index=\"3\" c1_end_index=\"3\" c2_st_index=\"0\" c2_end_index=\"0\">"
     "<nets><net index=\"0\" typical_delay=\"0.2\"/></nets></connection_map>",
     "connections | connection part0_reset_1: net part0_reset_1_0: typical_delay (none) -> 0.2"},
    {"board_files/tarnwick/1.2", "preset.xml", "value=\"ACTIVE_HIGH\"", "value=\"ACTIVE_LOW\"",
     "presets | preset RESET_PRESET: ip korvelhw:ip:reset_hub:5.0: parameter CONFIG.RESET_POLARITY ACTIVE_HIGH -> "
     "ACTIVE_LOW"},
    {"board_files/tarnwick/1.2", "board.xml", "<associated_board_interface name=\"user_clock\" order=\"1\"/>", "",
     "ip_associated_rules | rule CLOCK_SYNTH_INPUTS: ip korvelhw:ip:clock_synth:6.0 interface clk_in: "
     "board_interface user_clock 1 -> (none)"},
    {"board_files/tarnwick/1.2", "board.xml", "<address low=\"0x54\" high=\"0x54\"/>",
     "<address low=\"0x54\" high=\"0x55\"/>",
     "components | component iic_main: iic_positions \"1 fmc_lpc 0x50/0x57, 2 board_eeprom 0x54/0x54\" -> \"1 fmc_lpc "
     "0x50/0x57, 2 board_eeprom 0x54/0x55\""},
    {"board_files/halvet/1.0", "board.xml", "<driver name=\"pmbus_monitor\" version=\"1.3\"",
     "<driver name=\"pmbus_monitor\" version=\"1.4\"",
     "components | component pmbus: driver pmbus_monitor: version 1.3 -> 1.4"},
    {"board_files/halvet/1.0", "board.xml", "<supply name=\"VCCBRAM\"/>", "<supply name=\"VCCBRAM_CORE\"/>",
     "power_rails | power rail VCCBRAM_VR: members \"supply VCCBRAM\" -> \"supply VCCBRAM_CORE\""},
    {"board_files/halvet/1.0", "board.xml", "<data_property name=\"BOARD_COOLING\" value=\"active_fan\"/>",
     "<data_property name=\"BOARD_COOLING\" value=\"passive\"/>",
     "data_properties | property BOARD_COOLING: value active_fan -> passive"},
};

TEST(BoardDiff, EachEditIsFoundOnce) {
    std::map<std::string, std::unique_ptr<HBOBoard>> originals;
    for (const EditCase& c : kEdits) {
        std::unique_ptr<HBOBoard>& original = originals[c.board];
        if (!original)
            original = difftest::readBoard(showtest::boardDir(c.board));
        BoardCopy copy(c.board);
        copy.edit(c.file, c.from, c.to);
        const std::unique_ptr<HBOBoard> edited = difftest::readBoard(copy.dir());
        ASSERT_TRUE(original && edited) << c.file << ": " << c.from;
        EXPECT_EQ(lineList(zrboard::diffBoards(*original, *edited)), std::vector<std::string>{c.expected})
            << c.file << ": " << c.from;
    }
}

TEST(BoardDiff, AddedAndRemovedObjectsAreNotTakenApart) {
    // A whole component goes with its modes; a whole connection with its
    // nets; a whole preset with its IPs and parameters.
    BoardCopy copy("board_files/tarnwick/1.2");
    copy.edit("board.xml",
              "<connection name=\"part0_user_clock\" component1=\"part0\" component2=\"user_clock\">\n"
              "      <connection_map name=\"part0_user_clock_1\" c1_st_index=\"2\" c1_end_index=\"2\" "
              "c2_st_index=\"0\" c2_end_index=\"0\"/>\n    </connection>",
              "");
    const std::string preset = showtest::readFile(copy.dir() / "preset.xml");
    const std::string::size_type start = preset.find("  <ip_preset preset_proc_name=\"user_clock_preset\">");
    const std::string::size_type end = preset.find("</ip_preset>", start) + std::string("</ip_preset>\n").size();
    ASSERT_NE(start, std::string::npos);
    copy.edit("preset.xml", preset.substr(start, end - start), "");
    EXPECT_EQ(lineList(diffDirs(showtest::boardDir("board_files/tarnwick/1.2"), copy.dir())),
              (std::vector<std::string>{
                  "connections | connection part0_user_clock_1: removed (part0[2..2] - user_clock[0..0])",
                  "presets | preset USER_CLOCK_PRESET: removed (korvelhw:ip:clock_synth:6.0)"}));
}

TEST(BoardDiff, TwoRevisionsOfABundledBoard) {
    const std::vector<std::string> expected = {
        "identity | version 1.0 -> 1.1",
        "identity | schema_version 2.0 -> 2.1",
        "identity | description \"Starter board with a ZF5 M40 FPGA, four LEDs, 2 push buttons and a USB UART.\" -> "
        "\"Starter board with a ZF5 M40 FPGA, four LEDs, 4 push buttons and a USB UART.\"",
        "identity | revision 1: added (B)",
        "components | component part0: interface push_buttons_2bits: removed (korvelhw:interface:gpio_rtl:1.0)",
        "components | component part0: interface push_buttons_4bits: added (korvelhw:interface:gpio_rtl:1.0)",
        "components | component part0: pin UART_TX: index 8 -> 10",
        "components | component part0: pin UART_TX: site A9 -> A11",
        "components | component part0: pin UART_RX: index 9 -> 11",
        "components | component part0: pin UART_RX: site A10 -> A12",
        "components | component part0: pin BTN2: added (index 8, site A9, iostandard LVCMOS33)",
        "components | component part0: pin BTN3: added (index 9, site A10, iostandard LVCMOS33)",
        "components | component push_buttons_2bits: removed (chip push_button)",
        "components | component push_buttons_4bits: added (chip push_button)",
        "connections | connection part0_push_buttons_2bits_1: removed (part0[6..7] - push_buttons_2bits[0..1])",
        "connections | connection part0_usb_uart_1: c1_range 8..9 -> 10..11",
        "connections | connection part0_usb_uart_1: net part0_usb_uart_1_0: c1_pin \"8 (UART_TX)\" -> \"10 (UART_TX)\"",
        "connections | connection part0_usb_uart_1: net part0_usb_uart_1_1: c1_pin \"9 (UART_RX)\" -> \"11 (UART_RX)\"",
        "connections | connection part0_push_buttons_4bits_1: added (part0[6..9] - push_buttons_4bits[0..3])",
        "presets | preset PUSH_BUTTONS_2BITS_PRESET: removed (korvelhw:ip:gpio_hub:2.0)",
        "presets | preset PUSH_BUTTONS_4BITS_PRESET: added (korvelhw:ip:gpio_hub:2.0)",
        "ip_associated_rules | rule GPIO_INPUTS: added (korvelhw:ip:gpio_hub:2.0)",
    };
    EXPECT_EQ(lineList(diffDirs(showtest::boardDir("board_files/durnival/1.0"),
                                showtest::boardDir("board_files/durnival/1.1"))),
              expected);
}

TEST(BoardDiff, ComparingTheOtherWayRoundMirrorsEveryDifference) {
    const auto forward =
        diffDirs(showtest::boardDir("board_files/tarnwick/1.2"), showtest::boardDir("board_files/halvet/1.0"));
    const auto backward =
        diffDirs(showtest::boardDir("board_files/halvet/1.0"), showtest::boardDir("board_files/tarnwick/1.2"));
    ASSERT_FALSE(forward.empty());
    ASSERT_EQ(forward.size(), backward.size());
    auto key = [](const BoardDifference& d, bool flip) {
        std::string path;
        for (const auto& s : d.path)
            path += s.kind + " " + s.name + "/";
        BoardDifference::Change change = d.change;
        if (flip && change != BoardDifference::kChanged)
            change = change == BoardDifference::kAdded ? BoardDifference::kRemoved : BoardDifference::kAdded;
        return d.section + "|" + path + "|" + zrboard::changeName(change) + "|" + d.field + "|" +
               (flip ? d.after + "|" + d.before : d.before + "|" + d.after);
    };
    std::multiset<std::string> there, back;
    for (const auto& d : forward)
        there.insert(key(d, false));
    for (const auto& d : backward)
        back.insert(key(d, true));
    EXPECT_EQ(there, back);
}

}  // namespace
