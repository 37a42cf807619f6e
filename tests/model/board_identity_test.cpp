// Identity, revisions, presets, the active part and base board of a board.

#include "board_fixture.h"

using namespace board_fixture;

TEST(BoardIdentity, NameIsLowerCasedButVersionKeepsItsCase) {
    HBOBoard b;
    EXPECT_TRUE(b.getSupportsCED());
    EXPECT_FALSE(b.isIntegratedBoard());
    b.setName("ACME", "Lynx_Eval", "Rev_C");
    EXPECT_EQ((Names{"acme", "lynx_eval", "Rev_C", "acme:lynx_eval:rev_c"}),
              (Names{b.getVendor(), b.getBoardName(), b.getVersion(), b.getName()}));
    std::string out;
    EXPECT_TRUE(b.getName(out));
    EXPECT_EQ(b.getName(), out);
}

TEST(BoardIdentity, HighestRevisionKeyIsTheRevisionTrimmedAndTheListKeepsBlanks) {
    HBOBoard b;
    b.setCompatibleBoardRevisions({{1, " A "}, {3, "B "}, {2, "C"}});
    EXPECT_EQ("B", b.getBoardRevision());
    Names list{"stale"};
    b.getCompatibleBoardRevisionsAsVec(list);
    EXPECT_EQ((Names{"{1  A }", "{2 C}", "{3 B }"}), list);

    // Keys order numerically, not as text.
    b.setCompatibleBoardRevisions({{10, "X"}, {9, "Y"}});
    EXPECT_EQ("X", b.getBoardRevision());
    b.getCompatibleBoardRevisionsAsVec(list);
    EXPECT_EQ((Names{"{9 Y}", "{10 X}"}), list);
    b.setCompatibleBoardRevisions({});
    EXPECT_EQ("", b.getBoardRevision());
    b.getCompatibleBoardRevisionsAsVec(list);
    EXPECT_TRUE(list.empty());
}

TEST(BoardIdentity, PresetKeysAreUpperCasedAndEmptyKeysIgnored) {
    FixtureBoard f = makeEmptyBoard();
    HBOIpPreset* p = f.makePreset("v:l:n:1.0", "");
    f->setIpPreset("ddr_Preset", {p});
    f->setIpPreset("", {p});
    f->setIpAssociatedInterface("rule_a", {p});
    f->setIpAssociatedInterface("", {p});
    ASSERT_EQ(1u, f->getIpPresets().size());
    EXPECT_EQ("DDR_PRESET", f->getIpPresets().begin()->first);
    ASSERT_EQ(1u, f->getIpAssociatedInterfaces().size());
    EXPECT_EQ("RULE_A", f->getIpAssociatedInterfaces().begin()->first);
    EXPECT_EQ(std::vector<HBOIpPreset*>{p}, f->findPresetProc("ddr_preset"));
    EXPECT_EQ(std::vector<HBOIpPreset*>{p}, f->findPresetProc("DDR_PRESET"));
    EXPECT_TRUE(f->findPresetProc("").empty());
    EXPECT_TRUE(f->findPresetProc("other").empty());
    // A second call replaces the list of the key.
    f->setIpPreset("DDR_preset", {});
    EXPECT_TRUE(f->findPresetProc("ddr_preset").empty());
}

TEST(BoardIdentity, AddComponentReplacesByComponentNameWithoutDeleting) {
    FixtureBoard f = makeEmptyBoard();
    HBOBoardComponent* first = addComponent(*f, "u1", "chip");
    HBOBoardComponent* second = new HBOBoardComponent();
    second->setComponentName("u1");
    f->addBoardComponent(second);
    EXPECT_EQ(second, f->findBoardComponent("u1"));
    // The replaced component is still alive and ours to free.
    EXPECT_EQ("u1", first->getComponentName());
    delete first;
    std::vector<HBOBoardComponent*> all{nullptr};
    f->getBoardComponentsVec(all);
    EXPECT_EQ((std::vector<HBOBoardComponent*>{nullptr, second}), all);
}

TEST(BoardActivePart, FoundLazilyAsTheFirstFpgaComponent) {
    FixtureBoard f = makeEmptyBoard();
    addComponent(*f, "a_conn", "connector", "fmc_lpc");
    addComponent(*f, "b_fpga", "FPGA");  // the type compares exactly
    HBOBoardComponent* fpga = addComponent(*f, "c_fpga", "fpga");
    HBOBoardComponent* chosen = addComponent(*f, "d_fpga", "fpga");
    const HBOBoard& constBoard = *f;
    EXPECT_EQ(fpga, constBoard.getActivePart());
    EXPECT_EQ(fpga, f->getActivePart());
    EXPECT_EQ(fpga->getName(), f->getActivePartName());
    // An explicit choice stands.
    f->setActivePart(chosen);
    EXPECT_EQ(chosen, f->getActivePart());
}

TEST(BoardActivePart, BoardWithoutFpgaAnswersEmpty) {
    FixtureBoard f = makeEmptyBoard();
    addInterface(addComponent(*f, "fmc", "connector", "fmc_lpc"), "gpio", "");
    EXPECT_EQ(nullptr, f->getActivePart());
    EXPECT_EQ((Names{"", "", "", ""}),
              (Names{f->getBoardPartName(), f->getPartString(), f->getFamily(), f->getActivePartName()}));
    std::vector<HBOBusIf*> interfaces;
    EXPECT_FALSE(f->getBusIfSeq(interfaces));
    EXPECT_TRUE(interfaces.empty());
    EXPECT_EQ(nullptr, f->getBusIfByName("gpio"));
    EXPECT_FALSE(f->isPartUpdated());
    EXPECT_FALSE(f->isConstraintsDataPopulated());
    EXPECT_EQ(0, f->populateConstraintsData(""));
    EXPECT_FALSE(f->setPartString("zr9"));
    Names parts{"stale"};
    f->getAdditionalSupportedPartNames(parts, true);
    EXPECT_TRUE(parts.empty());
    EXPECT_FALSE(f->hasFPGAPart());
    EXPECT_TRUE(f->isDaughterBoard());
    EXPECT_FALSE(f->isReferenceBoard());
    f->setIntegratedBoard(true);
    EXPECT_FALSE(f->isDaughterBoard());
}

TEST(BoardActivePart, SettersAndQueriesReachTheActivePartOnly) {
    FixtureBoard f = makeEvalBoard();
    HBOBoardComponent* fpga = f->findBoardComponent("fpga1");
    HBOBoardComponent* ddr = f->findBoardComponent("ddr_chip");
    f->setBoardFile("/elsewhere/board.xml");
    f->setChangeLogFilename("/elsewhere/changelog.txt");
    f->setRepository("/elsewhere");
    f->setUserDefinedFlag(true);
    f->setJtagPosition("2");
    f->setBoardDetails("d1", "d2", "d3", "Orbis");
    EXPECT_EQ((Names{"/elsewhere/board.xml", "/elsewhere/changelog.txt", "/elsewhere"}),
              (Names{fpga->getBoardFile(), fpga->getBoardChangeLogFilename(), fpga->getRepository()}));
    EXPECT_TRUE(fpga->isUserDefined());
    EXPECT_TRUE(f->isUserDefined());
    EXPECT_EQ("2", f->getJtagPosition());
    EXPECT_EQ("Orbis", f->getFamily());
    EXPECT_EQ("lynx_lib", f->getLibrary());
    EXPECT_EQ("", ddr->getBoardFile());
    EXPECT_FALSE(ddr->isUserDefined());
    EXPECT_EQ("zr5100-pk324-1", f->getBoardPartName());
    EXPECT_TRUE(f->isPartNameSupportedByBoard("zr5200-pk484-2"));
    EXPECT_FALSE(f->isPartNameSupportedByBoard("ZR5200-PK484-2"));
    EXPECT_TRUE(f->hasAdditionalSupportedParts());
    Names parts{"stale"};
    f->getAdditionalSupportedPartNames(parts, true);
    EXPECT_EQ((Names{"zr5100-pk324-1", "zr5200-pk484-2"}), parts);
    f->getAdditionalSupportedPartNames(parts, false);
    EXPECT_EQ((Names{"zr5200-pk484-2"}), parts);
    EXPECT_EQ(fpga->getBusIfByName("ddr_mem"), f->getBusIfByName("DDR_MEM"));
    std::vector<HBOBusIf*> interfaces;
    EXPECT_TRUE(f->getBusIfSeq(interfaces));
    EXPECT_EQ(3u, interfaces.size());
}

TEST(BoardActivePart, PartUpdateSwapsWithAnAdditionalPartOrReportsTheUnknown) {
    FixtureBoard f = makeEvalBoard();
    MessageRecorder recorder;
    EXPECT_TRUE(f->updateBoardPart("zr5100-pk324-1"));
    EXPECT_FALSE(f->isPartUpdated());
    EXPECT_TRUE(f->updateBoardPart("zr5200-pk484-2"));
    EXPECT_TRUE(f->isPartUpdated());
    EXPECT_EQ("zr5200-pk484-2", f->getBoardPartName());
    EXPECT_TRUE(f->updateBoardPart("zr5100-pk324-1"));
    EXPECT_TRUE(recorder.withId("49-152").empty());
    const bool updated = f->isPartUpdated();
    EXPECT_FALSE(f->updateBoardPart("zz9000"));
    EXPECT_EQ("zr5100-pk324-1", f->getBoardPartName());
    EXPECT_EQ(updated, f->isPartUpdated());
    const std::vector<ComMsgMgrInstance> errors = recorder.withId("49-152");
    ASSERT_EQ(1u, errors.size());
    EXPECT_EQ(ComMsgMgr::MSG_ERROR, errors[0].getMask());
    EXPECT_EQ("board", errors[0].getScope());
    EXPECT_EQ((Names{"zz9000", "acme:lynx_lib:lynx_eval:1.2"}), errors[0].getArgs());

    // A board without an active part fails the same way.
    FixtureBoard empty = makeEmptyBoard();
    EXPECT_FALSE(empty->updateBoardPart("zr5100-pk324-1"));
    EXPECT_EQ(2u, recorder.withId("49-152").size());
}

TEST(BoardBase, NamesComeFromTheBaseOnlyWhenIntegrated) {
    FixtureBoard base = makeEmptyBoard("Zenith", "Carrier", "3.0");
    FixtureBoard f = makeEvalBoard();
    f->setBaseBoard(base.get());
    EXPECT_EQ(nullptr, f->getBaseBoard());
    EXPECT_EQ((Names{"lynx_eval", "acme:lynx_eval:1.2", "acme:lynx_eval:fpga1:1.2"}),
              (Names{f->getBaseBoardName(), f->getBaseBoardFullName(), f->getBaseBoardActivePartName()}));
    f->setIntegratedBoard(true);
    EXPECT_EQ(base.get(), f->getBaseBoard());
    // The base's identity around this board's active part.
    EXPECT_EQ((Names{"carrier", "zenith:carrier:3.0", "zenith:carrier:fpga1:3.0"}),
              (Names{f->getBaseBoardName(), f->getBaseBoardFullName(), f->getBaseBoardActivePartName()}));
}

TEST(BoardBase, ConnectedMapsLaterEntriesReplace) {
    HBOBoard b;
    b.addConnectedBoard("b1", "acme:carrier:1.0");
    b.addConnectedBoard("b1", "acme:carrier:1.1");
    b.addConnectedComponents("b1", "j1", "b2", "j7");
    b.addConnectedComponents("b1", "j1", "b3", "j8");
    EXPECT_EQ((std::map<std::string, std::string>{{"b1", "acme:carrier:1.1"}}), b.getConnectedBoards());
    EXPECT_EQ((std::map<std::string, std::string>{{"b1#j1", "b3#j8"}}), b.getConnectedComponents());
}
