// A project keeps its board while the repositories underneath are read anew.
#include <gtest/gtest.h>

#include "HBOBoard.h"
#include "HBOBoardCDataManager.h"
#include "HBOPartCReposMgr.h"
#include "session_support.h"

using namespace session_test;

namespace {

HSTVector<std::string> pathList(std::initializer_list<std::string> paths) { return HSTVector<std::string>(paths); }

// Two repositories that both hold a daughter card and a board of their own, a third without them.
struct Repos {
    TempDir first, second, empty;
    Repos() {
        for (const TempDir* repo : {&first, &second}) {
            copyFennock(repo->path() / "f", "5.0");
            copyBoard(bundled("tarnwick/1.2"), repo->path() / "own", {{"name=\"tarnwick\"", "name=\"ownboard\""}});
        }
    }
};

}  // namespace

TEST(Rebinding, SameListIsNoChangeAndAnotherOrderIsOne) {
    Repos r;
    HBOBoardCDataManager session;
    bool changed = false;
    EXPECT_TRUE(session.setBoardPartRepoPaths(pathList({r.first.str(), r.second.str()}), changed));
    EXPECT_FALSE(changed);
    EXPECT_FALSE(session.setBoardPartRepoPaths(pathList({r.first.str(), r.second.str()}), changed));
    EXPECT_TRUE(session.setBoardPartRepoPaths(pathList({r.second.str(), r.first.str()}), changed));
    HSTVector<std::string> paths{"stale"};
    session.getBoardPartRepoPaths(paths);
    EXPECT_EQ((Names{r.second.str(), r.first.str()}), static_cast<const Names&>(paths));
    // The first repository listed wins a clash of names.
    ASSERT_NE(nullptr, session.getBoardPartReposMgr()->getInfoForBoardPart("korvelhw:fennock:5.0"));
    EXPECT_EQ(r.second.str(),
              session.getBoardPartReposMgr()->getInfoForBoardPart("korvelhw:fennock:5.0")->getRepository());
}

TEST(Rebinding, ProjectBoardIsReboundToItsFreshCopyOrLetGo) {
    Repos r;
    HBOBoardCDataManager session;
    bool changed = false;
    session.setBoardPartRepoPaths(pathList({r.first.str()}), changed);
    ASSERT_TRUE(session.setBoard("korvelhw:ownboard:1.2", "", false, false));
    ASSERT_EQ(r.first.str(), session.getBoardStrategy()->getRepository());

    changed = false;
    EXPECT_TRUE(session.setBoardPartRepoPaths(pathList({r.second.str()}), changed));
    EXPECT_TRUE(changed);
    HBOBoard* fresh = session.getBoardStrategy();
    ASSERT_NE(nullptr, fresh);
    EXPECT_EQ(fresh, session.getBoardPartReposMgr()->getInfoForBoardPart("korvelhw:ownboard:1.2"));
    EXPECT_EQ(r.second.str(), fresh->getRepository());

    // Gone from the repositories: the choice is let go rather than left dangling.
    changed = false;
    EXPECT_TRUE(session.setBoardPartRepoPaths(pathList({r.empty.str()}), changed));
    EXPECT_TRUE(changed);
    EXPECT_EQ(nullptr, session.getBoardStrategy());
}

TEST(Rebinding, InstalledBoardKeepsItsPointer) {
    Repos r;
    HBOBoardCDataManager session;
    ASSERT_TRUE(session.setBoard("korvelhw:tarnwick:1.2", "", false, false));
    HBOBoard* installed = session.getBoardStrategy();
    bool changed = false;
    EXPECT_TRUE(session.setBoardPartRepoPaths(pathList({r.first.str()}), changed));
    EXPECT_FALSE(changed);
    EXPECT_EQ(installed, session.getBoardStrategy());
}

TEST(Rebinding, IntegratedBoardWithoutConnectionsIsRebuiltAndRegistered) {
    Repos r;
    HBOBoardCDataManager session;
    HBOBoard* base = session.getBoardPartReposMgr()->getInfoForBoardPart("korvelhw:tarnwick:1.2");
    ASSERT_NE(nullptr, base);
    HBOBoard* integrated = session.createIntegratdBoard(static_cast<const HBOBoard*>(base),
                                                        std::vector<HBOBoardCDataManager::ConnectionPair>(), "solo");
    session.registerUserBoard(integrated);  // the project's catalogue owns it now
    ASSERT_TRUE(session.setBoard(integrated, "", false, false));

    bool changed = false;
    EXPECT_TRUE(session.setBoardPartRepoPaths(pathList({r.first.str()}), changed));
    EXPECT_TRUE(changed);
    HBOBoard* rebuilt = session.getBoardStrategy();
    ASSERT_NE(nullptr, rebuilt);
    EXPECT_TRUE(rebuilt->isIntegratedBoard());
    EXPECT_EQ(base, rebuilt->getBaseBoard());
    // Named after the base board, and filed in the project's catalogue under that name.
    EXPECT_EQ("korvelhw:tarnwick:1.2", rebuilt->getName());
    EXPECT_EQ(rebuilt, session.getBoardPartReposMgr()->getInfoForBoardPart("korvelhw:tarnwick:1.2"));
}

TEST(Rebinding, RebuiltBoardWhoseNameAProjectBoardHoldsIsLetGo) {
    Repos r;
    TempDir copies;
    copyBoard(bundled("tarnwick/1.2"), copies.path() / "t");
    HBOBoardCDataManager session;
    bool changed = false;
    session.setBoardPartRepoPaths(pathList({copies.str()}), changed);
    HBOBoard* base = session.getBoardPartReposMgr()->getInfoForBoardPart("korvelhw:tarnwick:1.2");
    ASSERT_TRUE(base->isUserDefined());
    HBOBoard* integrated = session.createIntegratdBoard(static_cast<const HBOBoard*>(base),
                                                        std::vector<HBOBoardCDataManager::ConnectionPair>(), "solo");
    session.registerUserBoard(integrated);
    ASSERT_TRUE(session.setBoard(integrated, "", false, false));

    // Rebuilt as "korvelhw:tarnwick:1.2", the name of the project's own copy, which is kept.
    EXPECT_TRUE(session.setBoardPartRepoPaths(pathList({copies.str(), r.first.str()}), changed));
    EXPECT_TRUE(changed);
    EXPECT_EQ(nullptr, session.getBoardStrategy());
    HBOBoard* copy = session.getBoardPartReposMgr()->getInfoForBoardPart("korvelhw:tarnwick:1.2");
    ASSERT_NE(nullptr, copy);
    EXPECT_FALSE(copy->isIntegratedBoard());
}

TEST(Rebinding, IntegratedBoardWithDaughtersIsLetGoBecauseItsDaughtersCannotBeFoundAgain) {
    Repos r;
    HBOBoardCDataManager session;
    bool changed = false;
    session.setBoardPartRepoPaths(pathList({r.first.str()}), changed);
    HBOBoard* integrated = session.createIntegratdBoard(
        "korvelhw:tarnwick:1.2", std::vector<HBOBoardCDataManager::ConnectionPair>{{"fmc_lpc", "korvelhw:fennock:fmc_conn:5.0"}},
        "joined");
    session.registerUserBoard(integrated);
    ASSERT_TRUE(session.setBoard(integrated, "", false, false));

    // The daughter is named back as vendor:board:version:connector and read as
    // vendor:board:connector:version, which finds nothing: the board is cleared.
    changed = false;
    EXPECT_TRUE(session.setBoardPartRepoPaths(pathList({r.second.str()}), changed));
    EXPECT_TRUE(changed);
    EXPECT_EQ(nullptr, session.getBoardStrategy());
}

TEST(Rebinding, ProjectBoardWithoutAPartToFindItByIsLetGo) {
    Repos r;
    HBOBoardCDataManager session;
    bool changed = false;
    session.setBoardPartRepoPaths(pathList({r.first.str()}), changed);
    ASSERT_TRUE(session.setBoard("korvelhw:fennock:5.0", "", false, false));
    EXPECT_TRUE(session.setBoardPartRepoPaths(pathList({r.second.str()}), changed));
    EXPECT_TRUE(changed);
    EXPECT_EQ(nullptr, session.getBoardStrategy());
}

TEST(Rebinding, WithoutABoardOnlyThePathsChange) {
    Repos r;
    HBOBoardCDataManager session;
    bool changed = false;
    EXPECT_TRUE(session.setBoardPartRepoPaths(pathList({r.first.str()}), changed));
    EXPECT_FALSE(changed);
    EXPECT_FALSE(session.isBoardStrategySet());
    EXPECT_NE(nullptr, session.getBoardPartReposMgr()->getInfoForBoardPart("korvelhw:fennock:5.0"));
}
