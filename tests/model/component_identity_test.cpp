// Names, part names, kind tests and path rules of a board component.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "HBOBoardComponent.h"
#include "HBOParameter.h"

namespace {

HBOBoardComponent* connector(HBOBoardComponent& c, const std::string& type, const std::string& subType) {
    c.setType(type);
    c.setSubType(subType);
    return &c;
}

}  // namespace

TEST(ComponentIdentity, NamesAreComposedAndLowered) {
    HBOBoardComponent c;
    EXPECT_EQ("true", c.getIsEnabled());
    c.setName("Acme", "Brd", "Part0", "1.1A");
    EXPECT_EQ("acme:brd:part0:1.1a", c.getName());  // the whole name, version too
    EXPECT_EQ("acme", c.getVendor());
    EXPECT_EQ("brd", c.getBoardName());
    EXPECT_EQ("part0", c.getPartName());
    EXPECT_EQ("1.1A", c.getVersion());

    c.setVLNV("Acme", "FamX", "Brd", "Rev1.0B");
    EXPECT_EQ("acme", c.getVendor());
    EXPECT_EQ("famx", c.getLibrary());
    EXPECT_EQ("brd", c.getBoardName());
    EXPECT_EQ("rev1.0b", c.getBoardRevision());

    c.setBoardDetails("a", "b", "c", "FamX");
    EXPECT_EQ("FamX", c.getFamily());
    std::string fam;
    EXPECT_TRUE(c.getFamily(fam));
    EXPECT_EQ("FamX", fam);

    // The one-argument form stores the text as given.
    c.setName("Whole:Name");
    EXPECT_EQ("Whole:Name", c.getName());
}

TEST(ComponentIdentity, ImageFileFollowsTheBoardFile) {
    HBOBoardComponent c;
    c.setBoardFile("/repo/acme/brd/1.0/board.xml");
    c.setImageFile("pic.jpg");
    EXPECT_EQ("/repo/acme/brd/1.0/pic.jpg", c.getImageFile());
    c.setImageFile("./pic.png");
    EXPECT_EQ("/repo/acme/brd/1.0/./pic.png", c.getImageFile());
    c.setImageFile("img/pic.jpg");
    EXPECT_EQ("img/pic.jpg", c.getImageFile());
    c.setImageFile("/abs/pic.jpg");
    EXPECT_EQ("/abs/pic.jpg", c.getImageFile());
    c.setImageFile("");
    EXPECT_EQ("", c.getImageFile());
}

TEST(ComponentPartNames, UpdateSwapsWithTheAdditionalPart) {
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
    std::vector<std::string> parts{"stale"};
    c.getAdditionalSupportedPartNames(parts, true);
    EXPECT_EQ((std::vector<std::string>{"xa200-1", "xa100-2", "xa100-1"}), parts);

    EXPECT_TRUE(c.updatePartName("xa100-1"));
    EXPECT_EQ("xa100-1", c.getPartName());
    c.getAdditionalSupportedPartNames(parts, false);
    EXPECT_EQ((std::vector<std::string>{"xa100-2", "xa200-1"}), parts);
}

TEST(ComponentKinds, ConnectorTestsNeedTheTypeAndExactSubType) {
    struct Case {
        const char* subType;
        bool lpc, hpc, plus, dimm, pmod, som240, som480;
    };
    const Case cases[] = {
        {"fmc_lpc", true, false, false, false, false, false, false},
        {"fmc_hpc", false, true, false, false, false, false, false},
        {"fmc_plus", false, false, true, false, false, false, false},
        {"fmc_lpc_plus", false, false, true, false, false, false, false},
        {"dimm", false, false, false, true, false, false, false},
        {"pmod", false, false, false, false, true, false, false},
        {"som240", false, false, false, false, false, true, false},
        {"som", false, false, false, false, false, true, false},
        {"som480", false, false, false, false, false, false, true},
        {"som_240", false, false, false, false, false, false, false},
        {"FMC_LPC", false, false, false, false, false, false, false},
    };
    for (const Case& k : cases) {
        HBOBoardComponent c;
        connector(c, "connector", k.subType);
        SCOPED_TRACE(k.subType);
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

        HBOBoardComponent chip;
        connector(chip, "Connector", k.subType);
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

