// The preset file named by the root's preset_file: keys, names, parameters,
// hierarchical values, and what a missing or broken file does.
#include "parser_fixture.h"

#include "HBOBoardComponent.h"
#include "HBOBusIf.h"
#include "HBOParsedVLNVs.h"

namespace {

std::string presetXml(const std::string& body) {
    return "<?xml version=\"1.0\"?>\n<ip_presets schema=\"1.0\">\n" + body + "\n</ip_presets>\n";
}

std::string param(const HBOIpPreset* p, const std::string& name) {
    std::string v;
    EXPECT_TRUE(p->getParamValue(name, v)) << name;
    return v;
}

}  // namespace

class PresetFixture : public ParserFixture {
protected:
    // Reads a board whose preset file holds `body`.
    bool readWith(const std::string& body, HBOParsedVLNVs* vlnvs = nullptr) {
        write("p/preset.xml", presetXml(body));
        return parse(write("p/board.xml", boardXml(basics(), "preset_file=\"preset.xml\"")), "", "", vlnvs).ok;
    }
    std::vector<HBOIpPreset*> presets(const std::string& key) { return board().findPresetProc(key); }
};

TEST_F(PresetFixture, IpIdentityDefaultsNamesAndKeys) {
    HBOParsedVLNVs vlnvs;
    ASSERT_TRUE(readWith("<ip_preset preset_proc_name=\"ddr_Preset\"><ip vendor=\"acme\" library=\"ip\" name=\"mem\"/>"
                         "<ip vendor=\"acme\" library=\"ip\" name=\"ctl\" version=\"2.1\" ip_interface=\"S_AXI\"/>"
                         "<not_ip vendor=\"x\"/></ip_preset>", &vlnvs));
    EXPECT_EQ(board().getPresetFile(), "preset.xml");
    std::vector<HBOIpPreset*> list = presets("DDR_PRESET");
    ASSERT_EQ(list.size(), 2u);
    EXPECT_EQ((Strings{list[0]->getVersion(), list[0]->getIpInterface(), list[0]->getPresetProcName(),
                       list[0]->getPresetName(), list[1]->getPresetName()}),
              (Strings{"*", "*", "ddr_Preset", "ddr_Preset:acme:ip:mem:*:*", "ddr_Preset:acme:ip:ctl:2.1:S_AXI"}));
    EXPECT_EQ(list[0]->getOwner(), &board());
    // Recorded before the defaults: an empty last field, not "*".
    EXPECT_EQ(vlnvs.ipNames, (std::set<std::string>{"acme:ip:mem:", "acme:ip:ctl:2.1"}));
    EXPECT_EQ(presets("ddr_preset").size(), 2u);
    // The same key in another case replaces the list; an empty key is lost.
    ASSERT_TRUE(readWith(
        "<ip_preset preset_proc_name=\"clk\"><ip vendor=\"a\" library=\"l\" name=\"first\"/></ip_preset>"
        "<IP_PRESET preset_proc_name=\"CLK\"><IP vendor=\"a\" library=\"l\" name=\"second\"/></IP_PRESET>"
        "<ip_preset preset_proc_name=\"\"><ip vendor=\"a\" library=\"l\" name=\"lost\"/></ip_preset>"));
    ASSERT_EQ(board().getIpPresets().size(), 1u);
    list = presets("clk");
    ASSERT_EQ(list.size(), 1u);
    EXPECT_EQ(list[0]->getName(), "second");
    EXPECT_EQ(list[0]->getPresetProcName(), "CLK");
}

TEST_F(PresetFixture, ParameterValueTypes) {
    ASSERT_TRUE(readWith(
        "<ip_preset preset_proc_name=\"p\"><ip vendor=\"a\" library=\"l\" name=\"n\"><user_parameters name=\"ignored\">"
        "<user_parameter name=\"CONFIG.PLAIN\" value=\"42\"/>"
        "<user_parameter name=\"CONFIG.TYPED\" value=\"7\" value_type=\"long\"/>"
        "<user_parameter name=\"CONFIG.XML_INPUT_FILE\" value=\"mig.prj\" value_type=\"FILE\"/>"
        "<user_parameter name=\"CONFIG.ABS\" value=\"/abs/x.prj\" value_type=\"file\"/></user_parameters>"
        "<model_parameters><model_parameter name=\"M1\" value=\"1\" value_type=\"hier\"/>"
        "<model_parameter name=\"M2\" value=\"f.txt\" value_type=\"File\"/></model_parameters></ip></ip_preset>"));
    std::vector<HBOIpPreset*> list = presets("p");
    ASSERT_EQ(list.size(), 1u);
    const std::string d = dir() + "/p/";
    // The board directory goes in front even of an absolute path; model
    // parameters know only the file rule.
    EXPECT_EQ((Strings{param(list[0], "CONFIG.PLAIN"), param(list[0], "CONFIG.TYPED"),
                       param(list[0], "CONFIG.XML_INPUT_FILE"), param(list[0], "CONFIG.ABS"), param(list[0], "M1"),
                       param(list[0], "M2")}),
              (Strings{"42", "7", d + "mig.prj", d + "/abs/x.prj", "1", d + "f.txt"}));
    EXPECT_EQ(list[0]->getValueType(), "file");
}

TEST_F(PresetFixture, HierarchicalValuesNestAsTclLists) {
    ASSERT_TRUE(readWith(
        "<ip_preset preset_proc_name=\"h\"><ip vendor=\"a\" library=\"l\" name=\"n\"><user_parameters>"
        "<user_parameter name=\"TOP\" value_type=\"hier\"><user_parameter name=\"a\" value=\"1\"/>"
        "<user_parameter name=\"sub\" value_type=\"hier\"><user_parameter name=\"b\" value=\"2\"/></user_parameter>"
        "</user_parameter>"
        // The element form: only the two exact names count.
        "<user_hier_parameter name=\"H\"><user_parameter name=\"x\" value=\"9\"/><comment name=\"skip\" value=\"0\"/>"
        "<user_hier_parameter name=\"y\"><user_parameter name=\"z\" value=\"3\"/></user_hier_parameter>"
        "</user_hier_parameter>"
        "<user_hier_parameter name=\"ONE\"><user_parameter name=\"k\" value=\"v\"/></user_hier_parameter>"
        // Only the exact word "hier" recurses inside the builder.
        "<user_parameter name=\"UPPER\" value_type=\"HIER\" value=\"flat\"><user_parameter name=\"q\"/>"
        "</user_parameter></user_parameters></ip></ip_preset>"));
    std::vector<HBOIpPreset*> list = presets("h");
    ASSERT_EQ(list.size(), 1u);
    EXPECT_EQ((Strings{param(list[0], "TOP"), param(list[0], "H"), param(list[0], "ONE"), param(list[0], "UPPER")}),
              (Strings{"TOP {{a 1} {sub {b 2}}}", "H {{x 9} {y {z 3}}}", "ONE {k v}", "UPPER flat"}));
}

TEST_F(PresetFixture, MissingOrBrokenPresetFile) {
    EXPECT_TRUE(parse(write("q/board.xml", boardXml(basics(), "preset_file=\"gone.xml\""))).ok);
    EXPECT_EQ(ids(), Strings{"49-62"});
    EXPECT_EQ(arg("49-62", 0), dir() + "/q/gone.xml");
    EXPECT_TRUE(board().getIpPresets().empty());
    EXPECT_EQ(board().getPresetFile(), "gone.xml");
    clearMessages();
    write("s/preset.xml", "<ip_presets><ip_preset>");
    EXPECT_FALSE(parse(write("s/board.xml", boardXml(basics(), "preset_file=\"preset.xml\""))).ok);
    EXPECT_EQ(ids(), (Strings{"49-111", "49-63", "49-56"}));
    EXPECT_EQ(arg("49-63", 0), dir() + "/s/preset.xml");
    EXPECT_EQ(arg("49-56", 1), "");
}

TEST_F(PresetFixture, PresetPathWithDirectoryIsTakenAsItStands) {
    const std::string elsewhere = write("elsewhere/my_presets.xml",
        presetXml("<ip_preset preset_proc_name=\"e\"><ip vendor=\"a\" library=\"l\" name=\"n\"/></ip_preset>"));
    ASSERT_TRUE(parse(write("r/board.xml", boardXml(basics(), "preset_file=\"" + elsewhere + "\""))).ok);
    EXPECT_EQ(presets("E").size(), 1u);
    clearMessages();
    write("r/sub/preset.xml", presetXml(""));
    EXPECT_TRUE(parse(write("r/board2.xml", boardXml(basics(), "preset_file=\"sub/preset.xml\""))).ok);
    // Not joined to the board's directory: looked up from the working directory.
    EXPECT_EQ(arg("49-62", 0), "sub/preset.xml");
}

// An interface finds its preset whatever the case of preset_proc and takes
// the preset's input file, joined to the board's directory.
TEST_F(PresetFixture, InterfacesTakeTheInputFileOfTheirPreset) {
    write("i/preset.xml", presetXml(
        "<ip_preset preset_proc_name=\"Mig_Ddr\"><ip vendor=\"a\" library=\"l\" name=\"mig\"><user_parameters>"
        "<user_parameter name=\"CONFIG.XML_INPUT_FILE\" value=\"mig.prj\" value_type=\"file\"/>"
        "</user_parameters></ip></ip_preset>"));
    ASSERT_TRUE(parse(write("i/board.xml", boardXml(basics() +
        "<components><component name=\"part0\" type=\"fpga\" part_name=\"xc-test\"><interfaces>"
        "<interface name=\"ddr4\" mode=\"master\" of_component=\"part0\" type=\"acme:interface:ddr4_rtl:1.0\" "
        "preset_proc=\"MIG_ddr\"/></interfaces></component></components>", "preset_file=\"preset.xml\""))).ok);
    HBOBoardComponent* part0 = board().findBoardComponent("part0");
    ASSERT_TRUE(part0 && part0->getBusIfByName("ddr4"));
    EXPECT_EQ(part0->getBusIfByName("ddr4")->getPresetFile(), dir() + "/i/mig.prj");
}
