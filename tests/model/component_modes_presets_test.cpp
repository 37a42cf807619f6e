// Component modes, preferred IPs and IP presets: their rules, rebase copies and displays.
#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <string>

#include <boost/filesystem.hpp>

#include "HBOBoard.h"
#include "HBOBoardComponent.h"
#include "HBOBusIfPreference.h"
#include "HBOComponentMode.h"
#include "HBOIpPreset.h"

namespace fs = boost::filesystem;

namespace {

HBOBusIfPreference* makePref(const std::string& vlnv, int order) {
    HBOBusIfPreference* p = new HBOBusIfPreference();
    p->setDefaultIpVlnv(vlnv);
    p->setPrefName(vlnv);
    p->setPresetProc("ddr_preset");
    p->setPresetFile("mig.prj");
    p->setOrder(order);
    return p;
}

// A scratch directory with a board file in it, removed again at the end.
struct ScratchBoardDir {
    ScratchBoardDir() {
        dir = fs::temp_directory_path() / fs::unique_path("zr_component_%%%%-%%%%");
        fs::create_directories(dir / "sub");
        touch("board.xml");
        touch("t.csv");
        touch("u.CSV");
        touch("sub/t.csv");
        board.setBoardFile((dir / "board.xml").string());
    }
    ~ScratchBoardDir() {
        boost::system::error_code ec;
        fs::remove_all(dir, ec);
    }
    void touch(const std::string& name) { std::ofstream((dir / name).string()) << "x\n"; }
    fs::path dir;
    HBOBoard board;
};

}  // namespace

TEST(ComponentModes, InterfacesByOrderAndTheOptionalFlag) {
    HBOComponentMode m;
    EXPECT_EQ("true", m.getIsEnabled());
    m.addInterface(2, std::make_pair(std::string("b"), true));
    m.addInterface(1, "a");
    m.addInterface(3, "c", false);
    m.addInterface(3, "c2", true);  // replaces the entry of order 3

    HBOComponentMode::InterfaceMap req{{9, {"stale", false}}};
    m.getRequiredInterfaces(req);
    ASSERT_EQ(1u, req.size());
    EXPECT_EQ("a", req.at(1).first);

    HBOComponentMode::InterfaceMap all;
    m.getInterfaces(all);
    ASSERT_EQ(3u, all.size());
    EXPECT_EQ("c2", all.at(3).first);
    EXPECT_TRUE(all.at(3).second);
}

TEST(ComponentModes, JumperRenameReplacesEveryOccurrenceIgnoringCase) {
    HBOComponentMode m;
    m.setEnablementDependency("{J1 true} {j10 false} {k2 true}");
    m.updateEnablementDependencyJumperName("j1", "D1_J1");
    EXPECT_EQ("{d1_j1 true} {d1_j10 false} {k2 true}", m.getEnablementDependency());
    m.updateEnablementDependencyJumperName("", "x");
    EXPECT_EQ("{d1_j1 true} {d1_j10 false} {k2 true}", m.getEnablementDependency());

    // The component passes the rename to each of its modes.
    HBOBoardComponent c;
    HBOComponentMode* a = new HBOComponentMode();
    a->setEnablementDependency("{K2 false}");
    HBOComponentMode* b = new HBOComponentMode();
    b->setEnablementDependency("{k3 true}");
    c.addComponentMode(a);
    c.addComponentMode(b);
    c.updateEnablementDependencyJumperName("k2", "Fmc_K2");
    EXPECT_EQ("{fmc_k2 false}", a->getEnablementDependency());
    EXPECT_EQ("{k3 true}", b->getEnablementDependency());
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
    m.addPreferredIp(makePref("korvelhw:ip:memctl:*", 0));

    HBOComponentMode copy(m, &owner, "FMC0");
    EXPECT_EQ("FMC0_ddr_mode", copy.getName());
    EXPECT_EQ("DDR Mode (FMC0)", copy.getDisplayName());
    EXPECT_EQ("memory", copy.getDescription());
    EXPECT_EQ("{j1 true}", copy.getEnablementDependency());
    EXPECT_EQ("ddr_preset", copy.getPresetProcName());
    EXPECT_EQ("false", copy.getIsEnabled());
    EXPECT_EQ(&owner, copy.getOwnerComponent());
    EXPECT_EQ("FMC0_ddr", copy.getInterfaces().at(0).first);
    EXPECT_TRUE(copy.getInterfaces().at(1).second);
    ASSERT_EQ(1u, copy.getPreferredIps().size());
    EXPECT_NE(m.getPreferredIps()[0], copy.getPreferredIps()[0]);
    EXPECT_EQ(&board, copy.getPreferredIps()[0]->getOwner());
    EXPECT_EQ("korvelhw:ip:memctl:*", copy.getPreferredIps()[0]->getDefaultIpVlnv());

    HBOComponentMode same(m, nullptr, "");
    EXPECT_EQ("ddr_mode", same.getName());
    EXPECT_EQ("DDR Mode", same.getDisplayName());
    EXPECT_EQ("ddr", same.getInterfaces().at(0).first);
    EXPECT_EQ(nullptr, same.getPreferredIps()[0]->getOwner());
}

TEST(ComponentModes, DisplayKeepsItsLabels) {
    HBOComponentMode m;
    m.setName("m1");
    m.setDescription("d");
    m.addInterface(0, "ddr", true);
    m.addPreferredIp(makePref("v:l:n:1", 0));
    m.setEnablementDependency("{j1 true}");
    testing::internal::CaptureStderr();
    m.display(1);
    EXPECT_EQ("-ComponentMode - name:m1, description:d \n"
              "--Interfaces:\n"
              "---Interface: name:ddr required:1\n"
              "--Preferree Ips:\n"
              "---Preferred Ip - vlnv:v:l:n:1 , preset_proc:ddr_preset , preset_file:mig.prj  \n"
              "--Enablement Dependencies:\n"
              "---Enablement Dependencies :{j1 true}\n",
              testing::internal::GetCapturedStderr());
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
    ScratchBoardDir scratch;
    HBOIpPreset p;
    p.setOwner(&scratch.board);
    std::string v;
    EXPECT_FALSE(p.setParam("", "t.csv"));

    EXPECT_TRUE(p.setParam("file", "t.csv"));
    ASSERT_TRUE(p.getParamValue("file", v));
    EXPECT_EQ((scratch.dir / "t.csv").string(), v);

    p.setParam("dot", "./t.csv");
    p.getParamValue("dot", v);
    EXPECT_EQ((scratch.dir / "./t.csv").string(), v);

    p.setParam("missing", "none.csv");
    p.getParamValue("missing", v);
    EXPECT_EQ("none.csv", v);

    p.setParam("sub", "sub/t.csv");
    p.getParamValue("sub", v);
    EXPECT_EQ("sub/t.csv", v);

    // The suffix test is case sensitive.
    p.setParam("upper", "u.CSV");
    p.getParamValue("upper", v);
    EXPECT_EQ("u.CSV", v);

    p.setParam("plain", "CONFIG.value");
    p.getParamValue("plain", v);
    EXPECT_EQ("CONFIG.value", v);
    EXPECT_FALSE(p.getParamValue("PLAIN", v));

    p.setParam("file", "other");
    p.getParamValue("file", v);
    EXPECT_EQ("other", v);

    HBOIpPreset orphan;
    orphan.setParam("file", "t.csv");
    orphan.getParamValue("file", v);
    EXPECT_EQ("t.csv", v);
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
    EXPECT_EQ(1u, assoc.getParamList().size());
    EXPECT_EQ("0", assoc.getParamList().at("d1_ddr4_sdram"));
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
    testing::internal::CaptureStderr();
    p.display(2);
    EXPECT_EQ("  Name : memctl\n"
              "  Preset Name : pp:v:l:memctl:1\n"
              "  Preset Proc Name : pp\n"
              "  IP Interface Name : S_AXI\n",
              testing::internal::GetCapturedStderr());
}
