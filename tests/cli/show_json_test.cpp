// `zrboard show --json PATH`: one valid JSON document holding the model.
#include <gtest/gtest.h>

#include "show_tool_run.h"

using showtest::queryJson;
using showtest::zrboard;

namespace {

// Runs `show --json` on a bundled board and evaluates `expressions` on the
// parsed document; returns the printed values, one per expression.
std::vector<std::string> query(const std::string& board, const std::vector<std::string>& expressions) {
    const showtest::Run run = zrboard({"show", "--json", showtest::boardDir(board)});
    EXPECT_EQ(run.status, 0) << run.err;
    const showtest::Run py = queryJson(run.out, expressions);
    EXPECT_EQ(py.status, 0) << py.err << "\n" << run.out.substr(0, 400);
    return showtest::lines(py.out);
}

TEST(ShowJson, ReferenceBoardIdentityAndCounts) {
    const std::vector<std::string> v = query(
        "board_files/tarnwick/1.2",
        {"d['name']", "d['schema_version']", "repr(d['migrated_from_schema'])", "d['board_revision']",
         "[r['name'] for r in d['revisions']]", "len(d['parameters'])", "[j['name'] for j in d['jumpers'] if "
         "not j['default_value']]", "d['jtag_chains']", "d['active_part']", "len(d['images'])",
         "d['power_rails']", "d['data_properties']", "d['supports_ced']"});
    ASSERT_EQ(v.size(), 13u);
    EXPECT_EQ(v[0], "korvelhw:tarnwick:1.2");
    EXPECT_EQ(v[1], "2.2");
    EXPECT_EQ(v[2], "''");
    EXPECT_EQ(v[3], "Rev C");
    EXPECT_EQ(v[4], "['Rev A', 'Rev B', 'Rev C']");
    EXPECT_EQ(v[5], "3");
    EXPECT_EQ(v[6], "['jp9']");
    EXPECT_EQ(v[7], "['chain1']");
    EXPECT_EQ(v[8], "part0");
    EXPECT_EQ(v[9], "3");
    EXPECT_EQ(v[10], "[]");
    EXPECT_EQ(v[11], "{}");
    EXPECT_EQ(v[12], "True");
}

TEST(ShowJson, ReferenceBoardComponentDetail) {
    const std::string part0 = "[c for c in d['components'] if c['component_name'] == 'part0'][0]";
    const std::string clock = "[i for i in " + part0 + "['interfaces'] if i['name'] == 'sys_diff_clock'][0]";
    const std::vector<std::string> v = query(
        "board_files/tarnwick/1.2",
        {part0 + "['type']", part0 + "['part_name']", "len(" + part0 + "['pins'])",
         "[p['index'] for p in " + part0 + "['pins']][:4]", part0 + "['pins'][0]['site']",
         part0 + "['pins'][0]['iostandard']", part0 + "['pins'][0]['properties']", clock + "['type']",
         clock + "['parameters']", clock + "['ports'][0]['port']['pins']", clock + "['preference']['vlnv']",
         part0 + "['design_constraints'][0]"});
    ASSERT_EQ(v.size(), 12u);
    EXPECT_EQ(v[0], "fpga");
    EXPECT_EQ(v[1], "zf7k160t-ffg676-2");
    EXPECT_EQ(v[2], "97");
    EXPECT_EQ(v[3], "[0, 1, 2, 3]");
    EXPECT_EQ(v[4], "U1");
    EXPECT_EQ(v[5], "DIFF_SSTL15");
    EXPECT_EQ(v[6], "{'ibuf_low_pwr': 'FALSE'}");
    EXPECT_EQ(v[7], "korvelhw:interface:diff_clock_rtl:1.0");
    EXPECT_EQ(v[8], "{'frequency': '200000000'}");
    EXPECT_EQ(v[9], "[{'index': '0', 'pin': 'SYSCLK_P'}]");
    EXPECT_EQ(v[10], "korvelhw:ip:clock_synth:6.0");
    EXPECT_EQ(v[11], "{'kind': 'dci_cascade', 'master_bank': 34, 'slave_banks': [35]}");
}

TEST(ShowJson, ReferenceBoardModesConnectionsAndPresets) {
    const std::string ddr = "[c for c in d['components'] if c['component_name'] == 'ddr3_sdram'][0]";
    const std::string uart = "[b for b in d['connections'] if b['connection_name'] == 'part0_usb_uart'][0]";
    const std::vector<std::string> v = query(
        "board_files/tarnwick/1.2",
        {"[(i['name'], i['optional']) for i in " + ddr + "['modes'][0]['interfaces']]",
         uart + "['enablement_dependency']", "[n['c1_pin_index'] for n in " + uart + "['nets']]",
         "sorted(d['presets'])[0]", "list(d['ip_associated_rules'])",
         "d['ip_associated_rules']['CLOCK_SYNTH_INPUTS'][0]['kind']"});
    ASSERT_EQ(v.size(), 6u);
    EXPECT_EQ(v[0], "[('ddr3_sdram', False), ('sys_diff_clock', True)]");
    EXPECT_EQ(v[1], "{jp7 true}");
    EXPECT_EQ(v[2], "[21, 22]");
    EXPECT_EQ(v[3], "DDR3_SDRAM_PRESET");
    EXPECT_EQ(v[4], "['CLOCK_SYNTH_INPUTS']");
    EXPECT_EQ(v[5], "assoc_intf");
}

TEST(ShowJson, SchemaOneBoardIsShownMigrated) {
    const std::vector<std::string> v =
        query("board_parts/tamsel/1.0",
              {"d['schema_version']", "d['migrated_from_schema']", "d['jtag_chains']",
               "sorted(c['component_name'] for c in d['components'] if c['type'] == 'chip')"});
    ASSERT_EQ(v.size(), 4u);
    EXPECT_EQ(v[0], "2.0");
    EXPECT_EQ(v[1], "1.1");
    EXPECT_EQ(v[2], "['chain1']");
    EXPECT_EQ(v[3], "['btns_2bits', 'led_4bits', 'reset', 'sys_clock', 'usb_uart']");
}

TEST(ShowJson, PowerRailsAndNestedDataProperties) {
    const std::vector<std::string> v =
        query("board_files/halvet/1.0",
              {"[r['name'] for r in d['power_rails']][:2]", "d['power_rails'][0]['num_phases']",
               "d['data_properties']['OPERATING_CONDITIONS']['AMBIENT_TEMP']",
               "d['data_properties']['OPERATING_CONDITIONS']['SUPPLY_CURRENT_BUDGET']['VCCINT_VR']"});
    ASSERT_EQ(v.size(), 4u);
    EXPECT_EQ(v[0], "['VCCINT_VR', 'VCCBRAM_VR']");
    EXPECT_EQ(v[1], "4");
    EXPECT_EQ(v[2], "45");
    EXPECT_EQ(v[3], "24.0");
}

TEST(ShowJson, EveryBundledBoardGivesValidJsonAndNothingElseOnStdout) {
    for (const std::string board : {"board_files/tarnwick/1.2", "board_files/halvet/1.0", "board_files/fennock/1.0",
                                    "board_files/durnival/1.0", "board_files/durnival/1.1",
                                    "board_parts/tamsel/1.0"}) {
        const showtest::Run run = zrboard({"show", "--json", showtest::boardDir(board)});
        EXPECT_EQ(run.status, 0) << board << "\n" << run.err;
        const showtest::Run py = queryJson(run.out, {"d['file'].endswith('/board.xml')"});
        EXPECT_EQ(py.status, 0) << board << "\n" << py.err;
        EXPECT_EQ(py.out, "True\n") << board;
    }
}

TEST(ShowJson, MessagesOfTheReadStayOnStderr) {
    // With validation on the reader reports what it did; none of it may reach the document.
    const showtest::Run run = zrboard({"--param", "board.validateXML=true", "show", "--json",
                                       showtest::boardDir("board_files/tarnwick/1.2")});
    ASSERT_EQ(run.status, 0) << run.err;
    EXPECT_NE(run.err.find("[board 49-113]"), std::string::npos) << run.err;
    EXPECT_NE(run.err.find("[board 49-149]"), std::string::npos) << run.err;
    const showtest::Run py = queryJson(run.out, {"d['name']"});
    EXPECT_EQ(py.status, 0) << py.err;
    EXPECT_EQ(py.out, "korvelhw:tarnwick:1.2\n");
}

}  // namespace
