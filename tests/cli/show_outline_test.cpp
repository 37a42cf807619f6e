// `zrboard show PATH`: the readable outline of the bundled boards.
#include <gtest/gtest.h>

#include "show_tool_run.h"

using showtest::hasLine;
using showtest::zrboard;

namespace {

const std::string kTarnwick = showtest::boardDir("board_files/tarnwick/1.2");

TEST(ShowOutline, ReferenceBoardIdentityParametersAndJumpers) {
    const showtest::Run run = zrboard({"show", kTarnwick});
    ASSERT_EQ(run.status, 0) << run.err;
    const std::string& out = run.out;
    EXPECT_EQ(out.rfind("Board korvelhw:tarnwick:1.2\n", 0), 0u) << out.substr(0, 200);
    EXPECT_TRUE(hasLine(out, "  Vendor: korvelhw"));
    EXPECT_TRUE(hasLine(out, "  Board name: tarnwick"));
    EXPECT_TRUE(hasLine(out, "  Display name: Tarnwick K160T Reference Board"));
    EXPECT_TRUE(hasLine(out, "  Schema version: 2.2"));
    EXPECT_TRUE(hasLine(out, "  File: " + kTarnwick + "/board.xml"));
    EXPECT_TRUE(hasLine(out, "  Revisions: 0 Rev A, 1 Rev B, 2 Rev C"));
    EXPECT_TRUE(hasLine(out, "  Current revision: Rev C"));
    EXPECT_TRUE(hasLine(out, "  URL: https://korvelhw.example/boards/tarnwick"));
    EXPECT_TRUE(hasLine(out, "  Active part: part0 (zf7k160t-ffg676-2)"));
    // A schema 2 board was not migrated from anything.
    EXPECT_EQ(out.find("Migrated from schema"), std::string::npos);

    EXPECT_TRUE(hasLine(out, "Parameters (3):"));
    EXPECT_TRUE(hasLine(out, "  fmc_vadj = 2.5 (type float, range 1.2..3.3, read only false)"));
    EXPECT_TRUE(hasLine(out, "Jumpers (3):"));
    EXPECT_TRUE(hasLine(out, "  jp9 = false: Closed: level shifters of PMOD JA enabled. Open by default."));
    EXPECT_TRUE(hasLine(out, "Jtag chains (1):"));
    EXPECT_TRUE(hasLine(out, "Images (3):"));
    EXPECT_TRUE(hasLine(out, "  " + kTarnwick + "/tarnwick_board.png (board, high resolution): Tarnwick board"));
    EXPECT_TRUE(hasLine(out, "    Description: Top view of the board"));
    // The empty sections are named, not skipped.
    EXPECT_TRUE(hasLine(out, "Power rails: none"));
    EXPECT_TRUE(hasLine(out, "Data properties: none"));
}

TEST(ShowOutline, ReferenceBoardComponentsInterfacesAndPins) {
    const showtest::Run run = zrboard({"show", kTarnwick});
    ASSERT_EQ(run.status, 0) << run.err;
    const std::string& out = run.out;
    EXPECT_TRUE(hasLine(out, "  part0: fpga, part zf7k160t-ffg676-2, enabled true"));
    EXPECT_TRUE(hasLine(out, "    Additional parts: zf7k160t-ffg676-1, zf7k160t-ffg676-3"));
    EXPECT_TRUE(hasLine(out, "    Constraint DCI cascade: master bank 34, slave banks 35"));
    EXPECT_TRUE(hasLine(out, "    Constraint internal Vref: bank 34, 0.75 V"));
    EXPECT_TRUE(hasLine(out, "      sys_diff_clock: korvelhw:interface:diff_clock_rtl:1.0, mode slave, enabled true"));
    EXPECT_TRUE(hasLine(out, "        Parameters: frequency=200000000"));
    EXPECT_TRUE(
        hasLine(out, "          korvelhw:ip:clock_synth:6.0 (order 0, preset proc sys_diff_clock_preset, default)"));
    EXPECT_TRUE(hasLine(out, "          CLK_P -> sys_diff_clock_clk_p (in): 0=SYSCLK_P"));
    // Pins in index order with their site and I/O standard first.
    EXPECT_TRUE(hasLine(out, "      0 SYSCLK_P: site U1, iostandard DIFF_SSTL15, ibuf_low_pwr FALSE, "
                             "used by sys_diff_clock[0]"));
    EXPECT_TRUE(hasLine(out, "      4 GPIO_LED_0: site L22, iostandard LVCMOS33, drive 12, slew SLOW, "
                             "used by led_8bits[0]"));
    const std::size_t pin2 = out.find("      2 USER_CLK:");
    const std::size_t pin10 = out.find("      10 GPIO_LED_6:");
    ASSERT_NE(pin2, std::string::npos);
    ASSERT_NE(pin10, std::string::npos);
    EXPECT_LT(pin2, pin10);

    // A mode with an optional interface, and the default mode the reader made.
    EXPECT_TRUE(hasLine(out, "        Interfaces: 0 ddr3_sdram, 1 sys_diff_clock (optional)"));
    EXPECT_TRUE(hasLine(out, "  user_clock: chip, enabled true"));
    EXPECT_TRUE(hasLine(out, "      user_clock (user_clock), enabled true"));
    // The PMOD connections need jumper jp9, which is open: the connector is off.
    EXPECT_TRUE(hasLine(out, "  pmod_ja: connector, enabled false"));
    // Components without pins or interfaces of their own have no such sections.
    EXPECT_EQ(out.find("Pins: none"), std::string::npos);
    EXPECT_TRUE(hasLine(out, "    IIC position 1: fmc_lpc, addresses 0x50/0x57"));
}

TEST(ShowOutline, ReferenceBoardConnectionsPresetsAndRules) {
    const showtest::Run run = zrboard({"show", kTarnwick});
    ASSERT_EQ(run.status, 0) << run.err;
    const std::string& out = run.out;
    EXPECT_TRUE(hasLine(out, "  part0_usb_uart_1 (connection part0_usb_uart): part0[21..22] - usb_uart[0..1], "
                             "enabled true"));
    EXPECT_TRUE(hasLine(out, "    Depends on: {jp7 true}"));
    EXPECT_TRUE(hasLine(out, "    Delay: 0.42 (min 0.38, max 0.47)"));
    // Nets name the pins at both ends.
    EXPECT_NE(out.find("      part0_sys_diff_clock_1_0: part0 0 (SYSCLK_P) - sys_diff_clock 0"), std::string::npos);
    EXPECT_NE(out.find("\nPresets ("), std::string::npos);
    EXPECT_TRUE(hasLine(out, "  DDR3_SDRAM_PRESET:"));
    EXPECT_NE(out.find("\nIP associated rules (1):\n  CLOCK_SYNTH_INPUTS:\n"), std::string::npos);
}

TEST(ShowOutline, DirectoryAndBoardFileGiveTheSameOutline) {
    const showtest::Run byDir = zrboard({"show", kTarnwick});
    const showtest::Run byFile = zrboard({"show", kTarnwick + "/board.xml"});
    ASSERT_EQ(byDir.status, 0);
    ASSERT_EQ(byFile.status, 0);
    EXPECT_EQ(byDir.out, byFile.out);
}

TEST(ShowOutline, SchemaOneBoardShowsMigratedShape) {
    const showtest::Run run = zrboard({"show", showtest::boardDir("board_parts/tamsel/1.0")});
    ASSERT_EQ(run.status, 0) << run.err;
    const std::string& out = run.out;
    EXPECT_TRUE(hasLine(out, "Board korvelhw:tamsel:1.0"));
    EXPECT_TRUE(hasLine(out, "  Schema version: 2.0"));
    EXPECT_TRUE(hasLine(out, "  Migrated from schema: 1.1"));
    EXPECT_TRUE(hasLine(out, "Jtag chains (1):"));
    EXPECT_NE(out.find("  chain1: part0 at 1"), std::string::npos);
    EXPECT_TRUE(hasLine(out, "  part0: fpga, part zf3m12-kbg121-1, enabled true"));
    // Each interface became a chip of its own beside the device.
    for (const char* chip : {"btns_2bits", "led_4bits", "reset", "sys_clock", "usb_uart"})
        EXPECT_NE(out.find(std::string("\n  ") + chip + ": chip"), std::string::npos) << chip;
    // The device's pins were numbered from 0 and keep their sites and properties.
    EXPECT_TRUE(hasLine(out, "      2 led_4bits[0]: site A3, iostandard LVCMOS33, drive 8, slew SLOW"));
    EXPECT_TRUE(hasLine(out, "      6 reset: site A2, iostandard LVCMOS33, iobank.vcco 3.3"));
    // The interfaces stay on the device and reach its pins.
    EXPECT_TRUE(hasLine(out, "          GPIO_O -> led_4bits[3:0] (out): 0=led_4bits[0] 1=led_4bits[1] 2=led_4bits[2] "
                             "3=led_4bits[3]"));
}

TEST(ShowOutline, PowerRailsAndDataProperties) {
    const showtest::Run run = zrboard({"show", showtest::boardDir("board_files/halvet/1.0")});
    ASSERT_EQ(run.status, 0) << run.err;
    const std::string& out = run.out;
    EXPECT_TRUE(hasLine(out, "Power rails (6):"));
    EXPECT_TRUE(hasLine(out, "  VCCINT_VR (direct, 4 phases)"));
    // Members shared between rails keep their phase counts.
    EXPECT_NE(out.find("\n  BOARD_12V_AUX\n    rail VCCINT_VR, 1 phase\n    rail VCCO_18_VR\n"), std::string::npos);
    EXPECT_TRUE(hasLine(out, "Data properties (2):"));
    EXPECT_TRUE(hasLine(out, "  BOARD_COOLING = active_fan"));
    EXPECT_TRUE(hasLine(out, "  OPERATING_CONDITIONS:"));
    EXPECT_TRUE(hasLine(out, "    AMBIENT_TEMP = 45"));
    EXPECT_TRUE(hasLine(out, "    SUPPLY_CURRENT_BUDGET:"));
    EXPECT_TRUE(hasLine(out, "      VCCINT_VR = 24.0"));
}

TEST(ShowOutline, DaughterCardHasNoActivePart) {
    const showtest::Run run = zrboard({"show", showtest::boardDir("board_files/fennock/1.0")});
    ASSERT_EQ(run.status, 0) << run.err;
    EXPECT_TRUE(hasLine(run.out, "  Active part: none"));
    EXPECT_NE(run.out.find("  fmc_conn: connector"), std::string::npos);
    EXPECT_NE(run.out.find("  adc_spi: chip, part kva812-spi"), std::string::npos);
}

TEST(ShowOutline, PackedBoardFileReadsLikeThePlainOne) {
    showtest::TempDir dir;
    const showtest::fs::path src = showtest::boardDir("board_files/durnival/1.0");
    for (const char* name : {"part0_pins.xml", "preset.xml", "changelog.txt"})
        showtest::fs::copy_file(src / name, dir.path() / name);
    const showtest::Run gz = showtest::shell("gzip -c " + showtest::quote((src / "board.xml").string()) + " > " +
                                             showtest::quote((dir.path() / "board.xml").string()));
    ASSERT_EQ(gz.status, 0) << gz.err;

    const showtest::Run plain = zrboard({"show", src.string()});
    const showtest::Run packed = zrboard({"show", dir.path().string()});
    ASSERT_EQ(plain.status, 0) << plain.err;
    ASSERT_EQ(packed.status, 0) << packed.err;
    // Only the paths differ.
    std::string expected = plain.out, actual = packed.out;
    for (std::string* text : {&expected, &actual}) {
        const std::string from = text == &expected ? src.string() : dir.path().string();
        for (std::size_t at; (at = text->find(from)) != std::string::npos;)
            text->replace(at, from.size(), "DIR");
    }
    EXPECT_EQ(actual, expected);
}

}  // namespace
