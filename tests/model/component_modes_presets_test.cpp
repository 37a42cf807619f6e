// Component modes, preferred IPs and IP presets: their rules, rebase copies and displays.

#include <fstream>

#include <boost/filesystem.hpp>

#include "HBOBusIfPreference.h"
#include "board_fixture.h"

using namespace board_fixture;
namespace fs = boost::filesystem;

namespace {

HBOBusIfPreference* makePref(const std::string& vlnv) {
    HBOBusIfPreference* p = new HBOBusIfPreference();
    p->setDefaultIpVlnv(vlnv);
    p->setPrefName(vlnv);
    p->setPresetProc("ddr_preset");
    p->setPresetFile("mig.prj");
    p->setOrder(0);
    return p;
}

}  // namespace

TEST(ComponentModes, InterfacesByOrderAndTheOptionalFlag) {
    HBOComponentMode m;
    EXPECT_EQ("true", m.getIsEnabled());
    m.addInterface(2, std::make_pair(std::string("b"), true));
    m.addInterface(1, "a");
    m.addInterface(4, "d", false);
    m.addInterface(3, "c", false);
    m.addInterface(3, "c2", true);  // replaces the entry of order 3
    HBOComponentMode::InterfaceMap req{{9, {"stale", false}}};
    EXPECT_TRUE(m.getRequiredInterfaces(req));
    EXPECT_EQ((HBOComponentMode::InterfaceMap{{1, {"a", false}}, {4, {"d", false}}}), req);
    HBOComponentMode::InterfaceMap all;
    m.getInterfaces(all);
    ASSERT_EQ(4u, all.size());
    EXPECT_EQ("c2", all.at(3).first);
    EXPECT_TRUE(all.at(3).second);
}

TEST(ComponentModes, RebaseCopyRenamesAndClonesPreferences) {
    HBOBoard board;
    HBOBoardComponent owner;
    owner.setBoard(&board);
    HBOComponentMode m;
    m.setName("ddr_mode");
    m.setDisplayName("DDR Mode");
    m.setDescription("memory");
    m.setEnablementDependency("{j1 true}");
    m.setPresetProcName("ddr_preset");
    m.setIsEnabled("false");
    m.addInterface(0, "ddr", false);
    m.addInterface(1, "clk", true);
    m.addPreferredIp(makePref("korvelhw:ip:memctl:*"));
    HBOComponentMode copy(m, &owner, "FMC0");
    EXPECT_EQ((Names{"FMC0_ddr_mode", "DDR Mode (FMC0)", "memory", "{j1 true}", "ddr_preset", "false", "FMC0_ddr"}),
              (Names{copy.getName(), copy.getDisplayName(), copy.getDescription(), copy.getEnablementDependency(),
                     copy.getPresetProcName(), copy.getIsEnabled(), copy.getInterfaces().at(0).first}));
    EXPECT_EQ(&owner, copy.getOwnerComponent());
    EXPECT_TRUE(copy.getInterfaces().at(1).second);
    ASSERT_EQ(1u, copy.getPreferredIps().size());
    EXPECT_NE(m.getPreferredIps()[0], copy.getPreferredIps()[0]);
    EXPECT_EQ(&board, copy.getPreferredIps()[0]->getOwner());
    EXPECT_EQ("korvelhw:ip:memctl:*", copy.getPreferredIps()[0]->getDefaultIpVlnv());
    HBOComponentMode same(m, nullptr, "");
    EXPECT_EQ((Names{"ddr_mode", "DDR Mode", "ddr"}),
              (Names{same.getName(), same.getDisplayName(), same.getInterfaces().at(0).first}));
    EXPECT_EQ(nullptr, same.getPreferredIps()[0]->getOwner());
}

TEST(ComponentModes, DisplayKeepsItsLabels) {
    HBOComponentMode m;
    m.setName("m1");
    m.setDescription("d");
    m.addInterface(0, "ddr", true);
    m.addPreferredIp(makePref("v:l:n:1"));
    m.setEnablementDependency("{j1 true}");
    EXPECT_EQ("-ComponentMode - name:m1, description:d \n"
              "--Interfaces:\n"
              "---Interface: name:ddr required:1\n"
              "--Preferree Ips:\n"
              "---Preferred Ip - vlnv:v:l:n:1 , preset_proc:ddr_preset , preset_file:mig.prj  \n"
              "--Enablement Dependencies:\n"
              "---Enablement Dependencies :{j1 true}\n",
              stderrOf([&] { m.display(1); }));
}

TEST(ComponentPresets, KindIgnoresCase) {
    HBOIpPreset p;
    EXPECT_TRUE(p.isPreset());
    EXPECT_FALSE(p.isAssocIntf());
    p.setPresetorAssocIntf("PRESET");
    EXPECT_TRUE(p.isPreset());
    p.setPresetorAssocIntf("Assoc_Intf");
    EXPECT_TRUE(p.isAssocIntf());
    EXPECT_FALSE(p.isPreset());
}

TEST(ComponentPresets, CsvValuesResolveBesideTheBoardFile) {
    const fs::path dir = fs::temp_directory_path() / fs::unique_path("zr_component_%%%%-%%%%");
    fs::create_directories(dir / "sub");
    for (const char* name : {"board.xml", "t.csv", "u.CSV", "sub/t.csv"})
        std::ofstream((dir / name).string()) << "x\n";
    HBOBoard board;
    board.setBoardFile((dir / "board.xml").string());
    HBOIpPreset p;
    p.setOwner(&board);
    EXPECT_FALSE(p.setParam("", "t.csv"));
    EXPECT_TRUE(p.setParam("first", "t.csv"));

    // Only an existing file of the board's directory, with the exact suffix ".csv".
    const std::pair<const char*, std::string> cases[] = {
        {"t.csv", (dir / "t.csv").string()}, {"./t.csv", (dir / "./t.csv").string()},
        {"none.csv", "none.csv"},            {"sub/t.csv", "sub/t.csv"},
        {"u.CSV", "u.CSV"},                  {"CONFIG.value", "CONFIG.value"}};
    std::string v;
    for (const auto& k : cases) {
        p.setParam("file", k.first);
        ASSERT_TRUE(p.getParamValue("file", v));
        EXPECT_EQ(k.second, v) << k.first;
    }
    EXPECT_FALSE(p.getParamValue("FILE", v));
    HBOIpPreset orphan;
    orphan.setParam("file", "t.csv");
    orphan.getParamValue("file", v);
    EXPECT_EQ("t.csv", v);
    boost::system::error_code ec;
    fs::remove_all(dir, ec);
}

TEST(ComponentPresets, RebaseCopyRenamesProcAndAssociatedInterfaces) {
    HBOBoard board;
    HBOIpPreset p;
    p.setVendor("korvelhw");
    p.setLibrary("ip");
    p.setName("memctl");
    p.setVersion("2.1");
    p.setIpInterface("C0_DDR4");
    p.setPresetProcName("ddr4_preset");
    p.setPresetName("old");
    p.setValueType("file");
    p.setParam("ddr4_sdram", "0");
    HBOIpPreset plain(p, &board, "d1");
    EXPECT_EQ(&board, plain.getOwner());
    EXPECT_EQ("d1_ddr4_preset", plain.getPresetProcName());
    EXPECT_EQ("d1_ddr4_preset:korvelhw:ip:memctl:2.1:C0_DDR4", plain.getPresetName());
    EXPECT_EQ(1u, plain.getParamList().count("ddr4_sdram"));
    EXPECT_EQ("file", plain.getValueType());
    p.setPresetorAssocIntf("assoc_intf");
    HBOIpPreset assoc(p, &board, "d1");
    EXPECT_EQ((std::map<std::string, std::string>{{"d1_ddr4_sdram", "0"}}), assoc.getParamList());
    EXPECT_TRUE(assoc.isAssocIntf());
    HBOIpPreset same(p, nullptr, "");
    EXPECT_EQ("ddr4_preset", same.getPresetProcName());
    EXPECT_EQ("old", same.getPresetName());
    EXPECT_EQ(1u, same.getParamList().count("ddr4_sdram"));
}

TEST(ComponentPresets, DisplayIsAnIndentedBlock) {
    HBOIpPreset p;
    p.setName("memctl");
    p.setPresetName("pp:v:l:memctl:1");
    p.setPresetProcName("pp");
    p.setIpInterface("S_AXI");
    EXPECT_EQ("  Name : memctl\n  Preset Name : pp:v:l:memctl:1\n"
              "  Preset Proc Name : pp\n  IP Interface Name : S_AXI\n",
              stderrOf([&] { p.display(2); }));
}
