// The board of a project: choosing it, the strategy operations, the warning
// about user copies, and keeping the choice across a change of repositories.
#include <gtest/gtest.h>

#include <memory>

#include "../utils/MessageRecorder.h"
#include "../utils/ParamStoreGuard.h"
#include "EnvVar.h"
#include "HBOBoard.h"
#include "HBOBoardCDataManager.h"
#include "HBOBoardCReposMgr.h"
#include "HBOModelPort.h"
#include "HBOPartCReposMgr.h"
#include "session_support.h"

using namespace session_test;

namespace {

Names idsOf(const MessageRecorder& r) {
    Names ids;
    for (const ComMsgMgrInstance& m : r.messages())
        if (!m.getId().empty())
            ids.push_back(m.getId());
    return ids;
}

HSTVector<std::string> pathList(std::initializer_list<std::string> paths) { return HSTVector<std::string>(paths); }

}  // namespace

TEST(BoardSession, SetBoardByNameChoosesOnceClearsAndRefusesUnknownBoards) {
    HBOBoardCDataManager session;
    MessageRecorder recorder;
    // No board and an empty name: nothing to do.
    EXPECT_FALSE(session.setBoard("", "", false, false));
    EXPECT_TRUE(session.setBoard("korvelhw:tarnwick:1.2", "", false, false));
    HBOBoard* chosen = session.getBoardStrategy();
    ASSERT_NE(nullptr, chosen);
    EXPECT_EQ("korvelhw:tarnwick:1.2", chosen->getName());
    EXPECT_TRUE(session.isBoardStrategySet());
    // The same board in any case is no change.
    EXPECT_FALSE(session.setBoard("KORVELHW:Tarnwick:1.2", "", false, false));

    // Unknown, soft: a critical warning, and the choice stays.
    session.getBoardPartReposMgr()->setUserRepositoryPaths({"/p/one", "/p/two"});
    EXPECT_FALSE(session.setBoard("acme:nosuch:1.0", "", true, false));
    ASSERT_EQ(1u, recorder.messages().size());
    EXPECT_EQ("49-71", recorder.messages()[0].getId());
    EXPECT_EQ(ComMsgMgr::MSG_CRITICAL_WARNING, recorder.messages()[0].getMask());
    EXPECT_EQ((Names{"acme:nosuch:1.0", "/p/one', '/p/two"}), recorder.messages()[0].getArgs());
    EXPECT_EQ("korvelhw:tarnwick:1.2", session.getBoardStrategy()->getName());
    // Unknown, hard: thrown, and the choice stays.
    EXPECT_EQ((Names{"49-71", "acme:nosuch:1.0", "/p/one', '/p/two"}),
              thrownBy([&] { session.setBoard("acme:nosuch:1.0", "", false, false); }));
    EXPECT_NE(nullptr, session.getBoardStrategy());

    EXPECT_TRUE(session.setBoard("", "", false, false));
    EXPECT_EQ(nullptr, session.getBoardStrategy());
}

TEST(BoardSession, OldNamesAreFoundThroughTheirSuccessorOnlyWhenAsked) {
    TempDir repo;
    // The successor of the old name "korvelhw:marlun7:bdd5:1.0".
    copyFennock(repo.path() / "bdd5", "0.9", {{"name=\"fennock\"", "name=\"bdd5\""}});
    HBOBoardCDataManager session;
    bool changed = false;
    session.setBoardPartRepoPaths(pathList({repo.str()}), changed);

    bool viaLegacy = false;
    EXPECT_EQ(nullptr, session.getBoard("korvelhw:marlun7:bdd5:1.0", viaLegacy, false));
    EXPECT_FALSE(viaLegacy);
    HBOBoard* successor = session.getBoard("korvelhw:marlun7:bdd5:1.0", viaLegacy, true);
    ASSERT_NE(nullptr, successor);
    EXPECT_EQ("korvelhw:bdd5:0.9", successor->getName());
    EXPECT_TRUE(viaLegacy);

    MessageRecorder recorder;
    EXPECT_TRUE(session.setBoard("korvelhw:marlun7:bdd5:1.0", "", false, true));
    EXPECT_EQ(Names{"49-70"}, idsOf(recorder));
    EXPECT_EQ(ComMsgMgr::MSG_INFO, recorder.messages()[0].getMask());
    EXPECT_EQ(successor, session.getBoardStrategy());
}

TEST(BoardSession, StrategyOperationsDifferInHowTheyTreatTheSameName) {
    TempDir repo;
    copyBoard(bundled("tarnwick/1.2"), repo.path() / "t");
    HBOBoardCDataManager session;
    HBOBoard* installed = session.getBoardPartReposMgr()->getInfoForBoardPart("korvelhw:tarnwick:1.2");
    ASSERT_NE(nullptr, installed);

    EXPECT_FALSE(session.setBoardStrategy(nullptr));
    EXPECT_FALSE(session.isBoardStrategySet());
    EXPECT_TRUE(session.setBoardStrategy(installed));
    EXPECT_FALSE(session.setBoardStrategy(nullptr));
    EXPECT_EQ(installed, session.getBoardStrategy());

    // A fresh board of the same name: the plain form keeps the old pointer, the forced one takes it.
    session.getBoardPartReposMgr()->setUserRepositoryPaths({repo.str()});
    HBOBoard* copy = session.getBoardPartReposMgr()->getInfoForBoardPart("korvelhw:tarnwick:1.2");
    ASSERT_NE(installed, copy);
    EXPECT_TRUE(session.setBoardStrategy(copy));
    EXPECT_EQ(installed, session.getBoardStrategy());
    EXPECT_FALSE(session.setBoardStrategyForced(nullptr));
    EXPECT_TRUE(session.setBoardStrategyForced(copy));
    EXPECT_EQ(copy, session.getBoardStrategy());

    // The pointer form takes anything, null included.
    EXPECT_TRUE(session.setBoard(installed, "ignored", false, false));
    EXPECT_EQ(installed, session.getBoardStrategy());
    EXPECT_TRUE(session.setBoard(static_cast<HBOBoard*>(nullptr), "", true, true));
    EXPECT_FALSE(session.isBoardStrategySet());
    EXPECT_TRUE(session.setBoardStrategy(installed));
    EXPECT_TRUE(session.unsetBoardStrategy());
    EXPECT_FALSE(session.isBoardStrategySet());
}

TEST(BoardSession, QueriesWithoutABoardAnswerFalseAndLeaveTheirOutput) {
    HBOBoardCDataManager session;
    HBOModelPort* port = reinterpret_cast<HBOModelPort*>(0x1);
    std::vector<HBOModelPort*> ports{port};
    HBOBusIf* busIf = nullptr;
    EXPECT_FALSE(session.getModelPortSeq(ports));
    EXPECT_EQ(1u, ports.size());
    EXPECT_FALSE(session.getModelPortByName(port, "x"));
    EXPECT_FALSE(session.getBusIfByName(busIf, "x"));

    ASSERT_TRUE(session.setBoard("korvelhw:tarnwick:1.2", "", false, false));
    ports.clear();
    EXPECT_TRUE(session.getModelPortSeq(ports));
    EXPECT_FALSE(ports.empty());
    EXPECT_TRUE(session.getBusIfByName(busIf, "led_8bits"));
}

TEST(BoardSession, UserCopyOfAnInstalledBoardIsWarnedAboutUnlessItComesFromTheDownloadStore) {
    TempDir home;
    const fs::path store = home.path() / "zarn" / "boards";
    copyBoard(bundled("tarnwick/1.2"), store / "t");
    ParamStoreGuard params;
    HPAParamMgr::getParamMgr()->setValue("board.repoPaths", store.string());
    std::vector<HBOBoard*> all;
    HBOBoardCReposMgr::appendAllBoards(all);

    HBOBoardCDataManager session;
    HBOBoard* copy = session.getBoardPartReposMgr()->getInfoForBoardPart("korvelhw:tarnwick:1.2");
    ASSERT_NE(nullptr, copy);
    ASSERT_TRUE(copy->isUserDefined());
    {
        MessageRecorder recorder;
        session.WarnIfNotLatestBoard(copy);
        session.WarnIfNotLatestBoard(nullptr);
        ASSERT_EQ(Names{"49-151"}, idsOf(recorder));
        const std::string vlnv =
            copy->getVendor() + ":" + copy->getLibrary() + ":" + copy->getBoardName() + ":" + copy->getVersion();
        EXPECT_EQ(Names{vlnv}, recorder.messages()[0].getArgs());
        EXPECT_EQ(ComMsgMgr::MSG_WARNING, recorder.messages()[0].getMask());
    }
    {
        // The same file seen as part of a data directory's download store.
        EnvVar dataDirs("ZR_DATA_DIRS", std::string(ZR_TEST_DATA_DIR) + ":" + home.str());
        MessageRecorder recorder;
        session.WarnIfNotLatestBoard(copy);
        EXPECT_TRUE(recorder.messages().empty());
    }
    HPAParamMgr::getParamMgr()->setValue("board.repoPaths", "");
    {
        // Without user repositories there is nothing to warn about.
        MessageRecorder recorder;
        session.WarnIfNotLatestBoard(copy);
        EXPECT_TRUE(recorder.messages().empty());
    }
    all.clear();
    HBOBoardCReposMgr::appendAllBoards(all);
}
