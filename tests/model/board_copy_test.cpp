// The deep copy of a board under a new name.

#include "board_fixture.h"

using namespace board_fixture;

namespace {

FixtureBoard makeRichSource() {
    FixtureBoard f = makeEvalBoard();
    f->setChangeLogFilename("/repo/acme/lynx_eval/1.2/changelog.txt");
    f->setRepository("/repo");
    f->setSpecUrl("https://example.invalid/lynx");
    f->setDisplayName("Lynx Evaluation Board");
    f->setLongDesc("long");
    f->setMigratedFromSchema("1.1");
    f->setBoardSchemaVersion("2.2");
    f->setFileRevision("7");
    f->setCompatibleBoardRevisions({{1, "Rev A"}, {2, "Rev B"}});
    f->addJtagChain("chain1");
    f->setPresetFile("/repo/acme/lynx_eval/1.2/preset.xml");
    f->setBoardImage("/repo/acme/lynx_eval/1.2/lynx.jpg");
    f->setSupportsCED(false);
    f->setPowerRails({HBOPowerRail("VCCINT", Names{"u9"}, Names{}, true, 0)});
    f->addConnectedBoard("b1", "acme:carrier:1.0");
    f->addConnectedComponents("b1", "j1", "b2", "j2");
    f.images.emplace_back(new HBOImage("lynx.jpg", "Lynx", "top view", "high", "board"));
    f->addImage(f.images.back().get());
    return f;
}

// The texts a copy keeps as they are.
Names texts(const HBOBoard& b) {
    return {b.getChangeLogFilename(), b.getRepository(), b.getSpecUrl(), b.getDisplayName(), b.getLongDesc(),
            b.getMigratedFromSchema(), b.getBoardSchemaVersion(), b.getFileRevision(), b.getDescription(),
            b.getBoardRevision(), b.getPresetFile(), b.getBoardImage()};
}

}  // namespace

TEST(BoardCopy, KeepsIdentityButTakesTheNewBoardNameAndDropsDerivedData) {
    FixtureBoard src = makeRichSource();
    HBOBoard copy(*src, "Lynx_Copy");
    EXPECT_EQ((Names{"acme:lynx_copy:1.2", "lynx_copy", "acme", "1.2", ""}),
              (Names{copy.getName(), copy.getBoardName(), copy.getVendor(), copy.getVersion(), copy.getBoardFile()}));
    EXPECT_EQ(texts(*src), texts(copy));
    EXPECT_EQ("Rev B", copy.getBoardRevision());
    EXPECT_EQ(src->getCompatibleBoardRevisions(), copy.getCompatibleBoardRevisions());
    EXPECT_EQ(Names{"chain1"}, copy.getJtagChains());
    EXPECT_FALSE(copy.getSupportsCED());
    EXPECT_TRUE(copy.getPowerRails().empty());
    EXPECT_TRUE(copy.getBoardDataProps().getAllData().empty());
    EXPECT_TRUE(copy.getConnectedBoards().empty());
    EXPECT_TRUE(copy.getConnectedComponents().empty());
    EXPECT_EQ(1u, src->getPowerRails().size());
}

TEST(BoardCopy, ChildrenAreClonesWithTheirNames) {
    FixtureBoard src = makeRichSource();
    HBOBoard copy(*src, "x");
    ASSERT_EQ(src->getParameters().size(), copy.getParameters().size());
    EXPECT_NE(src->getParameters()[0], copy.getParameters()[0]);
    EXPECT_EQ("heat_sink", copy.getParameters()[0]->getName());
    ASSERT_EQ(2u, copy.getJumpers().size());
    EXPECT_NE(src->getJumpers()[0], copy.getJumpers()[0]);
    EXPECT_EQ("j1", copy.getJumpers()[0]->getName());
    EXPECT_EQ(&copy, copy.getJumpers()[1]->getOwner());
    EXPECT_FALSE(copy.getJumpers()[1]->getDefaultValue());
    ASSERT_EQ(1u, copy.getImages().size());
    EXPECT_NE(src->getImages()[0], copy.getImages()[0]);
    EXPECT_EQ("lynx.jpg", copy.getImages()[0]->getName());
    ASSERT_EQ(src->getBoardComponents().size(), copy.getBoardComponents().size());
    for (const auto& entry : copy.getBoardComponents()) {
        EXPECT_EQ(entry.first, entry.second->getComponentName());
        EXPECT_NE(src->findBoardComponent(entry.first), entry.second);
        EXPECT_EQ(&copy, entry.second->getBoard());
    }
    ASSERT_EQ(3u, copy.getBuses().size());
    EXPECT_EQ("fpga1_ddr", copy.getBuses()[0]->getName());
    EXPECT_EQ(&copy, copy.getBuses()[0]->getOwner());
    EXPECT_EQ(2u, copy.getBuses()[0]->getBoardBusNets().size());
    std::vector<HBOIpPreset*> presets = copy.findPresetProc("ddr_preset");
    ASSERT_EQ(1u, presets.size());
    EXPECT_NE(src->findPresetProc("ddr_preset")[0], presets[0]);
    EXPECT_EQ(&copy, presets[0]->getOwner());
    Names assoc;
    EXPECT_TRUE(copy.getIpAssocInterfaces("korvelhw:ip:gpio:2.0", "gpio", assoc));
    EXPECT_EQ((Names{"fmc_gpio", "user_leds"}), assoc);

    // The copy works on its own children.
    copy.getJumpers()[1]->setDefaultValue(true);
    copy.updateEnablement();
    EXPECT_EQ("true", copy.findBoardComponent("leds")->getIsEnabled());
    src->updateEnablement();
    EXPECT_EQ("false", src->findBoardComponent("leds")->getIsEnabled());
}

TEST(BoardCopy, ActivePartIsTheFirstFpgaWhateverTheSourceChose) {
    FixtureBoard src = makeEvalBoard();
    addComponent(*src, "fpga2", "fpga");
    src->setActivePart(src->findBoardComponent("fpga2"));
    HBOBoard copy(*src, "x");
    EXPECT_EQ(copy.findBoardComponent("fpga1"), copy.getActivePart());
    EXPECT_NE(nullptr, copy.getActivePart());
    EXPECT_EQ("zr5100-pk324-1", copy.getBoardPartName());
}

TEST(BoardCopy, IntegrationDataIsCarriedOverAndHolesAreSkipped) {
    FixtureBoard base = makeEmptyBoard("Zenith", "Carrier", "3.0");
    FixtureBoard src = makeEvalBoard();
    src->setIntegratedBoard(true);
    src->setBaseBoard(base.get());
    HBOBoard copy(*src, "x");
    EXPECT_TRUE(copy.isIntegratedBoard());
    EXPECT_EQ(base.get(), copy.getBaseBoard());
    EXPECT_EQ("carrier", copy.getBaseBoardName());
    FixtureBoard holes = makeEmptyBoard();
    holes->addBus(nullptr);
    holes->addParameter(nullptr);
    HBOBoard empty(*holes, "x");
    EXPECT_TRUE(empty.getBuses().empty());
    EXPECT_TRUE(empty.getParameters().empty());
    EXPECT_EQ(nullptr, empty.getActivePart());
}
