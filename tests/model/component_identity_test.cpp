// Names, part names, kind tests and path rules of a board component.

#include "board_fixture.h"

using namespace board_fixture;

TEST(ComponentIdentity, NamesAreComposedAndLowered) {
    HBOBoardComponent c;
    EXPECT_EQ("true", c.getIsEnabled());
    c.setName("Acme", "Brd", "Part0", "1.1A");  // the whole name is lowered, version too
    EXPECT_EQ((Names{"acme:brd:part0:1.1a", "acme", "brd", "part0", "1.1A"}),
              (Names{c.getName(), c.getVendor(), c.getBoardName(), c.getPartName(), c.getVersion()}));
    c.setVLNV("Acme", "FamX", "Brd", "Rev1.0B");
    EXPECT_EQ((Names{"acme", "famx", "brd", "rev1.0b"}),
              (Names{c.getVendor(), c.getLibrary(), c.getBoardName(), c.getBoardRevision()}));
    c.setBoardDetails("a", "b", "c", "FamX");
    std::string fam;
    EXPECT_TRUE(c.getFamily(fam));
    EXPECT_EQ("FamX", fam);
    EXPECT_EQ("FamX", c.getFamily());
    // The one-argument form stores the text as given.
    c.setName("Whole:Name");
    EXPECT_EQ("Whole:Name", c.getName());
}

TEST(ComponentIdentity, BareImageFileFollowsTheBoardFile) {
    HBOBoardComponent c;
    c.setBoardFile("/repo/acme/brd/1.0/board.xml");
    const std::pair<const char*, const char*> cases[] = {
        {"pic.jpg", "/repo/acme/brd/1.0/pic.jpg"}, {"./pic.png", "/repo/acme/brd/1.0/./pic.png"},
        {"img/pic.jpg", "img/pic.jpg"},            {"/abs/pic.jpg", "/abs/pic.jpg"},
        {"", ""}};
    for (const auto& k : cases) {
        c.setImageFile(k.first);
        EXPECT_EQ(k.second, c.getImageFile()) << k.first;
    }
}

TEST(ComponentIdentity, PartUpdateSwapsWithTheAdditionalPart) {
    HBOBoardComponent c;
    c.setPartName("xa100-1");
    c.addAdditionalSupportedPart("xa100-2");
    c.addAdditionalSupportedPart("xa200-1");
    EXPECT_TRUE(c.hasAdditionalSupportedParts());
    EXPECT_TRUE(c.isPartNameSupported("xa200-1"));
    EXPECT_FALSE(c.isPartNameSupported("XA200-1"));
    EXPECT_TRUE(c.updatePartName("xa100-1"));
    EXPECT_FALSE(c.isPartUpdated());
    EXPECT_FALSE(c.updatePartName("xa300-1"));
    EXPECT_EQ("xa100-1", c.getPartName());
    EXPECT_TRUE(c.updatePartName("xa200-1"));
    EXPECT_TRUE(c.isPartUpdated());
    EXPECT_EQ("xa200-1", c.getPartName());
    Names parts{"stale"};
    c.getAdditionalSupportedPartNames(parts, true);
    EXPECT_EQ((Names{"xa200-1", "xa100-2", "xa100-1"}), parts);
    EXPECT_TRUE(c.updatePartName("xa100-1"));
    EXPECT_EQ("xa100-1", c.getPartName());
    c.getAdditionalSupportedPartNames(parts, false);
    EXPECT_EQ((Names{"xa100-2", "xa200-1"}), parts);
}

TEST(ComponentKinds, ConnectorTestsNeedTheTypeAndExactSubType) {
    struct Case {
        const char* subType;
        bool lpc, hpc, plus, dimm, pmod, som240, som480;
    };
    const Case cases[] = {
        {"fmc_lpc", 1, 0, 0, 0, 0, 0, 0}, {"fmc_hpc", 0, 1, 0, 0, 0, 0, 0}, {"fmc_plus", 0, 0, 1, 0, 0, 0, 0},
        {"fmc_lpc_plus", 0, 0, 1, 0, 0, 0, 0}, {"dimm", 0, 0, 0, 1, 0, 0, 0}, {"pmod", 0, 0, 0, 0, 1, 0, 0},
        {"som240", 0, 0, 0, 0, 0, 1, 0}, {"som", 0, 0, 0, 0, 0, 1, 0}, {"som480", 0, 0, 0, 0, 0, 0, 1},
        {"som_240", 0, 0, 0, 0, 0, 0, 0}, {"FMC_LPC", 0, 0, 0, 0, 0, 0, 0},
    };
    for (const Case& k : cases) {
        SCOPED_TRACE(k.subType);
        HBOBoardComponent c, chip;
        c.setType("connector");
        c.setSubType(k.subType);
        EXPECT_EQ(k.lpc, c.isLPCConnector());
        EXPECT_EQ(k.hpc, c.isHPCConnector());
        EXPECT_EQ(k.plus, c.isLPCPlusConnector());
        EXPECT_EQ(k.dimm, c.isDIMMConnector());
        EXPECT_EQ(k.pmod, c.isPMODConnector());
        EXPECT_EQ(k.som240, c.isSOM240Connector());
        EXPECT_EQ(k.som480, c.isSOM480Connector());
        EXPECT_EQ(k.lpc || k.hpc || k.plus, c.isLPCCategoryConnector());
        EXPECT_EQ(k.som240 || k.som480, c.isSOMCategoryConnector());
        EXPECT_EQ(k.lpc || k.hpc || k.plus || k.dimm || k.pmod || k.som240 || k.som480, c.isConnector());
        chip.setType("Connector");
        chip.setSubType(k.subType);
        EXPECT_FALSE(chip.isConnector());
    }
}

TEST(ComponentKinds, ConnectedToLogicIgnoresCase) {
    HBOBoardComponent c;
    c.setConnectedToLogicStr("PL");
    EXPECT_TRUE(c.isConnectedToLogicOnly());
    EXPECT_FALSE(c.isConnectedToPSOnly());
    c.setConnectedToLogicStr("Ps_And_Pl");
    EXPECT_TRUE(c.isConnectedToPSAndLogic());
    EXPECT_FALSE(c.isConnectedToLogicOnly());
    c.setConnectedToLogicStr("ps");
    EXPECT_TRUE(c.isConnectedToPSOnly());
}

TEST(ComponentKinds, SomCompatibilityComesFromTheFirstParameter) {
    HBOBoardComponent c;
    EXPECT_TRUE(c.isCompatibleWithSomVLN("anything:at:all"));
    c.addParameter(new HBOParameter("other", "x", "", "", "", ""));
    c.addParameter(new HBOParameter("compatible_som_vln", "Acme:Som:K1", "", "", "", ""));
    c.addParameter(new HBOParameter("compatible_som_vln", "acme:som:k2", "", "", "", ""));
    EXPECT_TRUE(c.isCompatibleWithSomVLN("ACME:som:k1"));
    EXPECT_FALSE(c.isCompatibleWithSomVLN("acme:som:k2"));
    std::string v;
    EXPECT_TRUE(c.getParamValue("compatible_som_vln", v));
    EXPECT_EQ("Acme:Som:K1", v);
    EXPECT_FALSE(c.getParamValue("COMPATIBLE_SOM_VLN", v));
}
