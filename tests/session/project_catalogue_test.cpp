// The catalogue of one project: its repository list, its boards over the
// installed ones, look-ups by board part name, and the made-last pointer.
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

#include "../utils/MessageRecorder.h"
#include "../utils/ParamStoreGuard.h"
#include "HBOBoard.h"
#include "HBOBoardComponent.h"
#include "HBOBoardCReposMgr.h"
#include "HBOPartCReposMgr.h"
#include "session_support.h"

using namespace session_test;

namespace {

HBOBoard* find(HBOPartCReposMgr& mgr, const std::string& name) { return mgr.getInfoForBoardPart(name); }

}  // namespace

TEST(ProjectCatalogue, RepositoryListKeepsOrderDropsEmptiesAndFallsBackOnTheInstallation) {
    TempDir repo;
    copyFennock(repo.path() / "fennock_p" / "7.0", "7.0");
    HBOPartCReposMgr mgr(false);
    EXPECT_EQ(nullptr, find(mgr, "korvelhw:fennock:7.0"));

    EXPECT_TRUE(mgr.setUserRepositoryPaths({"", repo.str(), "", "/no/such/dir"}));
    std::vector<std::string> paths;
    mgr.getUserRepositoryPaths(paths);
    EXPECT_EQ((Names{repo.str(), "/no/such/dir"}), paths);
    HBOBoard* own = find(mgr, "korvelhw:fennock:7.0");
    ASSERT_NE(nullptr, own);
    EXPECT_TRUE(own->isUserDefined());
    EXPECT_EQ(repo.str(), own->getRepository());
    // Installed boards stand beside the project's.
    EXPECT_NE(nullptr, find(mgr, "korvelhw:tarnwick:1.2"));

    // An empty list still rebuilds: only the installation is left.
    EXPECT_TRUE(mgr.setUserRepositoryPaths({}));
    EXPECT_EQ(nullptr, find(mgr, "korvelhw:fennock:7.0"));
    EXPECT_NE(nullptr, find(mgr, "korvelhw:tarnwick:1.2"));
}

TEST(ProjectCatalogue, MissingRepositoryIsPassedOverSilentlyAndALoopOfLinksEnds) {
    HBOPartCReposMgr mgr(false);
    {
        MessageRecorder recorder;
        mgr.setUserRepositoryPaths({"/no/such/repository"});
        EXPECT_TRUE(recorder.messages().empty());
    }
    TempDir repo;
    copyFennock(repo.path() / "f", "6.0");
    fs::create_directory_symlink(repo.path(), repo.path() / "f" / "again");
    mgr.setUserRepositoryPaths({repo.str()});
    EXPECT_NE(nullptr, find(mgr, "korvelhw:fennock:6.0"));
}

TEST(ProjectCatalogue, RepositoriesFromTheParameterAreTrimmedAbsoluteAndCanonical) {
    TempDir repo;
    copyFennock(repo.path() / "sub" / "f", "7.1");
    fs::create_directories(repo.path() / "other");
    ParamStoreGuard params;
    const std::string dotted = repo.str() + "/other/../sub";
    HPAParamMgr::getParamMgr()->setValue("board.repoPaths", "{  " + dotted + "  } {   }");
    HBOPartCReposMgr mgr(true);
    std::vector<std::string> paths;
    mgr.getUserRepositoryPaths(paths);
    EXPECT_EQ(Names{repo.str() + "/sub"}, paths);
    EXPECT_NE(nullptr, find(mgr, "korvelhw:fennock:7.1"));
}

TEST(ProjectCatalogue, LookUpByBoardPartNameAndNewestVersion) {
    TempDir repo;
    copyFennock(repo.path() / "a", "1.9");
    copyFennock(repo.path() / "b", "2.0");
    HBOPartCReposMgr mgr(false);
    mgr.setUserRepositoryPaths({repo.str()});

    HBOBoard* older = find(mgr, "korvelhw:fennock:1.9");
    ASSERT_NE(nullptr, older);
    // Four fields lose the component; case does not matter.
    EXPECT_EQ(older, find(mgr, "KORVELHW:Fennock:fmc_conn:1.9"));
    // "*" asks for the newest by the catalogue's version order.
    HBOBoard* newest = find(mgr, "korvelhw:fennock:*");
    ASSERT_NE(nullptr, newest);
    EXPECT_EQ(find(mgr, "korvelhw:fennock:2.0"), newest);
    std::string version;
    EXPECT_TRUE(mgr.getLatestVersionForBoard("korvelhw:fennock:*", version));
    EXPECT_EQ("2.0", version);
    EXPECT_EQ(newest, find(mgr, "korvelhw:fennock:part0:*"));
    EXPECT_EQ(nullptr, find(mgr, "korvelhw:nosuch:*"));
    // Only "*" goes through the newest boards.
    EXPECT_EQ(nullptr, find(mgr, "korvelhw:fennock:9.9"));
    EXPECT_FALSE(mgr.getLatestVersionForBoard("korvelhw:fennock:1.9", version));
    EXPECT_EQ("", version);
    EXPECT_FALSE(mgr.getLatestVersionForBoard("korvelhw:fennock:x:*", version));

    HSTVector<HBOBoard*> latest;
    mgr.getAllLatestBoardParts(latest);
    EXPECT_EQ(1, std::count(latest.begin(), latest.end(), newest));
    EXPECT_EQ(0, std::count(latest.begin(), latest.end(), older));
}

TEST(ProjectCatalogue, ProjectBoardHidesInstalledBoardOfTheSameNameAndStaysInTheOldShape) {
    TempDir repo;
    copyBoard(bundled("tarnwick/1.2"), repo.path() / "t");
    copyBoard(std::string(ZR_TEST_DATA_DIR) + "/boards/board_parts/tamsel/1.0", repo.path() / "s");
    HBOPartCReposMgr mgr(false);
    HBOBoard* installed = find(mgr, "korvelhw:tarnwick:1.2");
    HBOBoard* installedOld = find(mgr, "korvelhw:tamsel:1.0");
    ASSERT_NE(nullptr, installedOld);
    mgr.setUserRepositoryPaths({repo.str()});
    HBOBoard* own = find(mgr, "korvelhw:tarnwick:1.2");
    ASSERT_NE(nullptr, own);
    EXPECT_NE(installed, own);
    EXPECT_TRUE(own->isUserDefined());
    HBOBoard* ownOld = find(mgr, "korvelhw:tamsel:1.0");
    ASSERT_NE(nullptr, ownOld);
    EXPECT_NE(installedOld, ownOld);
    // The installed copy was reshaped into the new model; the project's is left as read.
    EXPECT_NE("", installedOld->getMigratedFromSchema());
    EXPECT_EQ("", ownOld->getMigratedFromSchema());
}

TEST(ProjectCatalogue, RegisteringKeepsTheFirstBoardAndUnregisteringUnknownNamesIsNoFailure) {
    HBOPartCReposMgr mgr(false);
    HBOBoard* first = new HBOBoard();
    first->setName("acme", "made", "1.0");
    std::unique_ptr<HBOBoard> second(new HBOBoard());
    second->setName("acme", "made", "1.0");
    EXPECT_TRUE(mgr.registerUserBoard(first));
    EXPECT_TRUE(mgr.registerUserBoard(second.get()));
    EXPECT_EQ(first, find(mgr, "acme:made:1.0"));
    EXPECT_TRUE(mgr.unregisterUserBoard("acme:no:1.0"));
    EXPECT_EQ(first, find(mgr, "acme:made:1.0"));
    EXPECT_TRUE(mgr.unregisterUserBoard("acme:made:1.0"));  // deletes `first`
    EXPECT_EQ(nullptr, find(mgr, "acme:made:1.0"));
}

TEST(ProjectCatalogue, ClearBoardReachesOnlyTheManagerMadeLast) {
    TempDir repo;
    copyFennock(repo.path() / "f", "3.0");
    HBOPartCReposMgr older(false);
    older.setUserRepositoryPaths({repo.str()});
    HBOBoard* inOlder = find(older, "korvelhw:fennock:3.0");
    ASSERT_NE(nullptr, inOlder);
    {
        HBOPartCReposMgr younger(false);
        younger.setUserRepositoryPaths({repo.str()});
        HBOBoard* inYounger = find(younger, "korvelhw:fennock:3.0");
        HBOPartCReposMgr::clearBoard(inOlder);
        EXPECT_EQ(inOlder, find(older, "korvelhw:fennock:3.0"));
        HBOPartCReposMgr::clearBoard(nullptr);
        HBOPartCReposMgr::clearBoard(inYounger);
        EXPECT_EQ(nullptr, find(younger, "korvelhw:fennock:3.0"));
        // Taken out of the maps, it is no longer the manager's to delete.
        delete inYounger;
    }
    // With the younger one gone nobody is reached.
    HBOPartCReposMgr::clearBoard(inOlder);
    EXPECT_EQ(inOlder, find(older, "korvelhw:fennock:3.0"));
}

TEST(ProjectCatalogue, InstalledCopiesAreKnownByTheirExactName) {
    TempDir userRepo;
    copyBoard(bundled("tarnwick/1.2"), userRepo.path() / "t");
    ParamStoreGuard params;
    HPAParamMgr::getParamMgr()->setValue("board.repoPaths", userRepo.str());
    // The installation's catalogue reads the user's repository at its next look-up.
    std::vector<HBOBoard*> all;
    HBOBoardCReposMgr::appendAllBoards(all);
    HBOPartCReposMgr mgr(false);
    HBOBoard* board = find(mgr, "korvelhw:tarnwick:1.2");
    ASSERT_NE(nullptr, board);
    const std::string vlnv =
        board->getVendor() + ":" + board->getLibrary() + ":" + board->getBoardName() + ":" + board->getVersion();
    EXPECT_TRUE(mgr.hasCorrBoardInInstall(vlnv));
    std::string upper = vlnv;
    for (char& c : upper)
        c = static_cast<char>(toupper(c));
    EXPECT_FALSE(mgr.hasCorrBoardInInstall(upper));
    EXPECT_FALSE(mgr.hasCorrBoardInInstall("korvelhw:tarnwick:1.2"));
    HPAParamMgr::getParamMgr()->setValue("board.repoPaths", "");
    all.clear();
    HBOBoardCReposMgr::appendAllBoards(all);
}

TEST(ProjectCatalogue, ConnectorCachesFollowTheProjectsDaughterBoardsAndForgetThemWithIt) {
    TempDir repo;
    copyFennock(repo.path() / "f", "8.0");
    HBOBoard* reference = nullptr;
    const HBOBoardComponent* ownCard = nullptr;
    auto fitsReference = [&] {
        std::vector<HBOBoardComponent*> fits;
        reference->getCompatibleConnectorsList(reference->findBoardComponent("fmc_lpc"), fits);
        return std::find(fits.begin(), fits.end(), ownCard) != fits.end();
    };
    {
        HBOPartCReposMgr mgr(false);
        mgr.setUserRepositoryPaths({repo.str()});
        reference = find(mgr, "korvelhw:tarnwick:1.2");
        ASSERT_NE(nullptr, reference);
        ASSERT_FALSE(reference->isUserDefined());
        ownCard = find(mgr, "korvelhw:fennock:8.0")->findBoardComponent("fmc_conn");
        ASSERT_NE(nullptr, ownCard);
        EXPECT_TRUE(fitsReference());
    }
    // The installed board outlives the project; its cache no longer names the deleted card.
    EXPECT_FALSE(fitsReference());
}
