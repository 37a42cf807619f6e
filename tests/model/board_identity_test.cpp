// Identity, revisions, presets and the active part of a board.
#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "ComMsgMgr.h"
#include "HBOBoardDB.h"
#include "board_fixture.h"

using namespace board_fixture;

namespace {

// Collects delivered messages while alive, and keeps them off standard error.
class MessageRecorder {
public:
    MessageRecorder() : m_print(ComMsgMgr::printToStderr()) {
        ComMsgMgr::setPrintToStderr(false);
        m_handle = ComMsgMgr::addListener([this](const ComMsgMgrInstance& m) { messages.push_back(m); });
    }
    ~MessageRecorder() {
        ComMsgMgr::removeListener(m_handle);
        ComMsgMgr::setPrintToStderr(m_print);
    }
    std::vector<ComMsgMgrInstance> withId(const std::string& id) const {
        std::vector<ComMsgMgrInstance> out;
        for (const ComMsgMgrInstance& m : messages)
            if (m.getId() == id)
                out.push_back(m);
        return out;
    }
    std::vector<ComMsgMgrInstance> messages;

private:
    bool m_print;
    int m_handle;
};

class RecordingStore : public HBOBoardDB {
public:
    void saveBoard(HBOBoard* board) override { saved.push_back(board); }
    std::vector<HBOBoard*> saved;
};

}  // namespace

TEST(BoardIdentity, NameIsLowerCasedButVersionKeepsItsCase) {
    HBOBoard b;
    b.setName("Acme", "Brd", "1.1");
    EXPECT_EQ("acme:brd:1.1", b.getName());
    b.setName("ACME", "Lynx_Eval", "Rev_C");
    EXPECT_EQ("acme", b.getVendor());
    EXPECT_EQ("lynx_eval", b.getBoardName());
    EXPECT_EQ("Rev_C", b.getVersion());
    EXPECT_EQ("acme:lynx_eval:rev_c", b.getName());
    std::string out;
    EXPECT_TRUE(b.getName(out));
    EXPECT_EQ(b.getName(), out);
    EXPECT_TRUE(b.getSupportsCED());
    EXPECT_FALSE(b.isIntegratedBoard());
}

TEST(BoardRevisions, HighestKeyIsTheRevisionTrimmedAndTheListKeepsBlanks) {
    HBOBoard b;
    b.setCompatibleBoardRevisions({{1, " A "}, {3, "B "}, {2, "C"}});
    EXPECT_EQ("B", b.getBoardRevision());

    std::vector<std::string> list{"stale"};
    b.getCompatibleBoardRevisionsAsVec(list);
    EXPECT_EQ((std::vector<std::string>{"{1  A }", "{2 C}", "{3 B }"}), list);

    // Keys order numerically, not as text.
    b.setCompatibleBoardRevisions({{10, "X"}, {9, "Y"}});
    EXPECT_EQ("X", b.getBoardRevision());
    b.getCompatibleBoardRevisionsAsVec(list);
    EXPECT_EQ((std::vector<std::string>{"{9 Y}", "{10 X}"}), list);

    b.setCompatibleBoardRevisions({});
    EXPECT_EQ("", b.getBoardRevision());
    b.getCompatibleBoardRevisionsAsVec(list);
    EXPECT_TRUE(list.empty());
}

TEST(BoardPresets, KeysAreUpperCasedAndEmptyKeysIgnored) {
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

TEST(BoardComponents, AddReplacesByComponentNameWithoutDeleting) {
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
    HBOBoardComponent* notQuite = addComponent(*f, "b_fpga", "FPGA");
    HBOBoardComponent* fpga = addComponent(*f, "c_fpga", "fpga");
    addComponent(*f, "d_fpga", "fpga");
    (void)notQuite;

    const HBOBoard& constBoard = *f;
    EXPECT_EQ(fpga, constBoard.getActivePart());
    EXPECT_EQ(fpga, f->getActivePart());
    EXPECT_EQ(fpga->getName(), f->getActivePartName());

    // An explicit choice stands, even when it is not an FPGA.
    HBOBoardComponent* chosen = f->findBoardComponent("d_fpga");
    f->setActivePart(chosen);
    EXPECT_EQ(chosen, f->getActivePart());
}

TEST(BoardActivePart, BoardWithoutFpgaAnswersEmpty) {
    FixtureBoard f = makeEmptyBoard();
    addComponent(*f, "fmc", "connector", "fmc_lpc");
    addInterface(f->findBoardComponent("fmc"), "gpio", "");

    EXPECT_EQ(nullptr, f->getActivePart());
    EXPECT_EQ("", f->getBoardPartName());
    EXPECT_EQ("", f->getPartString());
    EXPECT_EQ("", f->getFamily());
    EXPECT_EQ("", f->getActivePartName());
    std::vector<HBOBusIf*> interfaces;
    EXPECT_FALSE(f->getBusIfSeq(interfaces));
    EXPECT_TRUE(interfaces.empty());
    EXPECT_EQ(nullptr, f->getBusIfByName("gpio"));
    EXPECT_FALSE(f->isPartUpdated());
    EXPECT_FALSE(f->isConstraintsDataPopulated());
    EXPECT_EQ(0, f->populateConstraintsData(""));
    EXPECT_FALSE(f->setPartString("zr9"));

    std::vector<std::string> parts{"stale"};
    f->getAdditionalSupportedPartNames(parts, true);
    EXPECT_TRUE(parts.empty());

    EXPECT_FALSE(f->hasFPGAPart());
    EXPECT_TRUE(f->isDaughterBoard());
    EXPECT_FALSE(f->isReferenceBoard());
    f->setIntegratedBoard(true);
    EXPECT_FALSE(f->isDaughterBoard());
}

TEST(BoardForwarding, SettersReachTheActivePart) {
    FixtureBoard f = makeEvalBoard();
    HBOBoardComponent* fpga = f->findBoardComponent("fpga1");
    HBOBoardComponent* ddr = f->findBoardComponent("ddr_chip");

    f->setBoardFile("/elsewhere/board.xml");
    f->setChangeLogFilename("/elsewhere/changelog.txt");
    f->setRepository("/elsewhere");
    f->setUserDefinedFlag(true);
    f->setJtagPosition("2");
    f->setBoardDetails("d1", "d2", "d3", "Orbis");

    EXPECT_EQ("/elsewhere/board.xml", f->getBoardFile());
    EXPECT_EQ("/elsewhere/board.xml", fpga->getBoardFile());
    EXPECT_EQ("/elsewhere/changelog.txt", fpga->getBoardChangeLogFilename());
    EXPECT_EQ("/elsewhere", fpga->getRepository());
    EXPECT_TRUE(fpga->isUserDefined());
    EXPECT_TRUE(f->isUserDefined());
    EXPECT_EQ("2", f->getJtagPosition());
    EXPECT_EQ("Orbis", f->getFamily());
    std::string family;
    EXPECT_TRUE(f->getFamily(family));
    EXPECT_EQ("Orbis", family);
    EXPECT_EQ("lynx_lib", f->getLibrary());
    // Only the active part hears of it.
    EXPECT_EQ("", ddr->getBoardFile());
    EXPECT_FALSE(ddr->isUserDefined());

    EXPECT_EQ("zr5100-pk324-1", f->getBoardPartName());
    EXPECT_TRUE(f->isPartNameSupportedByBoard("zr5200-pk484-2"));
    EXPECT_FALSE(f->isPartNameSupportedByBoard("ZR5200-PK484-2"));
    EXPECT_TRUE(f->hasAdditionalSupportedParts());

    std::vector<std::string> parts{"stale"};
    f->getAdditionalSupportedPartNames(parts, true);
    EXPECT_EQ((std::vector<std::string>{"zr5100-pk324-1", "zr5200-pk484-2"}), parts);
    f->getAdditionalSupportedPartNames(parts, false);
    EXPECT_EQ((std::vector<std::string>{"zr5200-pk484-2"}), parts);

    EXPECT_EQ(fpga->getBusIfByName("ddr_mem"), f->getBusIfByName("DDR_MEM"));
    std::vector<HBOBusIf*> interfaces;
    EXPECT_TRUE(f->getBusIfSeq(interfaces));
    EXPECT_EQ(3u, interfaces.size());
}

TEST(BoardPartUpdate, SwapsWithAnAdditionalPartAndBack) {
    FixtureBoard f = makeEvalBoard();
    MessageRecorder recorder;

    EXPECT_TRUE(f->updateBoardPart("zr5100-pk324-1"));
    EXPECT_FALSE(f->isPartUpdated());

    EXPECT_TRUE(f->updateBoardPart("zr5200-pk484-2"));
    EXPECT_TRUE(f->isPartUpdated());
    EXPECT_EQ("zr5200-pk484-2", f->getBoardPartName());
    std::vector<std::string> parts;
    f->getAdditionalSupportedPartNames(parts, false);
    EXPECT_EQ((std::vector<std::string>{"zr5100-pk324-1"}), parts);

    EXPECT_TRUE(f->updateBoardPart("zr5100-pk324-1"));
    EXPECT_EQ("zr5100-pk324-1", f->getBoardPartName());
    EXPECT_TRUE(recorder.withId("49-152").empty());
}

TEST(BoardPartUpdate, UnknownPartIsReportedAndChangesNothing) {
    FixtureBoard f = makeEvalBoard();
    MessageRecorder recorder;

    EXPECT_FALSE(f->updateBoardPart("zz9000"));
    EXPECT_EQ("zr5100-pk324-1", f->getBoardPartName());
    EXPECT_FALSE(f->isPartUpdated());

    const std::vector<ComMsgMgrInstance> errors = recorder.withId("49-152");
    ASSERT_EQ(1u, errors.size());
    EXPECT_EQ(ComMsgMgr::MSG_ERROR, errors[0].getMask());
    EXPECT_EQ("board", errors[0].getScope());
    EXPECT_EQ((std::vector<std::string>{"zz9000", "acme:lynx_lib:lynx_eval:1.2"}), errors[0].getArgs());
}

TEST(BoardPartUpdate, BoardWithoutActivePartFailsQuietly) {
    FixtureBoard f = makeEmptyBoard();
    MessageRecorder recorder;
    EXPECT_FALSE(f->updateBoardPart("zr5100-pk324-1"));
    EXPECT_EQ(1u, recorder.withId("49-152").size());
}

TEST(BoardStore, SavesOnlyWhenAttached) {
    FixtureBoard f = makeEvalBoard();
    f->saveBoard();  // nothing attached: nothing happens

    RecordingStore store;
    f->attach(&store);
    f->saveBoard();
    ASSERT_EQ(1u, store.saved.size());
    EXPECT_EQ(f.get(), store.saved[0]);

    // A jumper saves through its board.
    f->getJumpers()[0]->setValue(false, true);
    EXPECT_EQ(2u, store.saved.size());
    f->getJumpers()[0]->setValue(true, false);
    EXPECT_EQ(2u, store.saved.size());
}

TEST(BoardBase, NamesComeFromTheBaseOnlyWhenIntegrated) {
    FixtureBoard base = makeEmptyBoard("Zenith", "Carrier", "3.0");
    FixtureBoard f = makeEvalBoard();
    f->setBaseBoard(base.get());

    EXPECT_EQ(nullptr, f->getBaseBoard());
    EXPECT_EQ("lynx_eval", f->getBaseBoardName());
    EXPECT_EQ("acme:lynx_eval:1.2", f->getBaseBoardFullName());
    EXPECT_EQ("acme:lynx_eval:fpga1:1.2", f->getBaseBoardActivePartName());

    f->setIntegratedBoard(true);
    EXPECT_EQ(base.get(), f->getBaseBoard());
    EXPECT_EQ("carrier", f->getBaseBoardName());
    EXPECT_EQ("zenith:carrier:3.0", f->getBaseBoardFullName());
    // The base's identity around this board's active part.
    EXPECT_EQ("zenith:carrier:fpga1:3.0", f->getBaseBoardActivePartName());
}

TEST(BoardConnectedMaps, LaterEntriesReplace) {
    HBOBoard b;
    b.addConnectedBoard("b1", "acme:carrier:1.0");
    b.addConnectedBoard("b1", "acme:carrier:1.1");
    b.addConnectedComponents("b1", "j1", "b2", "j7");
    b.addConnectedComponents("b1", "j1", "b3", "j8");
    EXPECT_EQ((std::map<std::string, std::string>{{"b1", "acme:carrier:1.1"}}), b.getConnectedBoards());
    EXPECT_EQ((std::map<std::string, std::string>{{"b1#j1", "b3#j8"}}), b.getConnectedComponents());
}
