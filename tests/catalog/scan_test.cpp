// How the catalogue finds boards: order of the installation's directories,
// the walk, user and project repositories, refreshes and their events.
#include <memory>
#include <stdexcept>

#include "HBOBoardCatalogModifyPostEvent.h"
#include "HBOBoardCatalogModifyPreEvent.h"
#include "HUTGuiEventBroker.h"
#include "catalog_fixture.h"

namespace {

BoardSpec spec(const std::string& name, const std::string& display, const std::string& version = "1.0") {
    BoardSpec s;
    s.name = name;
    s.display = display;
    s.version = version;
    return s;
}

// Records the catalogue's events as "pre"/"post" with the sender checked.
struct EventLog {
    std::vector<std::string> events;
    std::unique_ptr<HUTGuiEventConnectionHandle> pre, post;
    EventLog() {
        auto record = [this](const char* what) {
            return [this, what](const HUTGuiEvent::GuiEventBase& e) {
                auto& native = dynamic_cast<const HUTGuiEvent::NativeEvent&>(e);
                const bool fromGlobal =
                    boost::any_cast<HBOBoardCReposMgr*>(native.getData()) == HBOBoardCReposMgr::peekGlobal();
                events.push_back(std::string(what) + (fromGlobal ? "" : " (foreign sender)"));
            };
        };
        pre.reset(HUTGuiEventBroker::addListener(HUTGuiEvent::kCatalogModifyPre, record("pre")));
        post.reset(HUTGuiEventBroker::addListener(HUTGuiEvent::kCatalogModifyPost, record("post")));
    }
    ~EventLog() {
        pre->disconnect();
        post->disconnect();
    }
};

}  // namespace

using CatalogScan = CatalogFixture;

// Every board_parts directory of every data directory comes before any
// board_files one, and the first filing of a name wins.
TEST_F(CatalogScan, InstallationOrderAndFirstNameWins) {
    installed("d1", "boards/board_files", "x", spec("b1", "d1 files"));
    installed("d1", "boards/board_files", "y", spec("b2", "d1 files"));
    installed("d2", "boards/board_parts", "x", spec("b1", "d2 parts"));
    installed("d2", "boards/board_files", "y", spec("B2", "d2 files"));
    installed("d2", "zarn/boards", "z", spec("b3", "d2 zarn"));
    useDataDirs({"d1", "d2"});

    EXPECT_EQ(all(), (Names{"acme:b1:1.0=d2 parts", "acme:b2:1.0=d1 files", "acme:b3:1.0=d2 zarn"}));
    std::vector<HBOBoard*> statics;
    catalogue()->getAllStaticBoardParts(statics);
    ASSERT_EQ(statics.size(), 3u);
    EXPECT_FALSE(statics[0]->isUserDefined());
    EXPECT_EQ(statics[0]->getRepository(), boost::filesystem::canonical(path("d2/boards/board_parts")).string());
    // Names that differ by case are one board; the later is dropped silently.
    EXPECT_EQ(count("49-91") + count("49-44"), 0);
}

// The search paths, in the order they are walked.
TEST_F(CatalogScan, SearchPathsComeInPassesAndNeedSchema2ForBoardFiles) {
    for (const char* dir : {"d1/boards/board_parts", "d1/boards/board_files", "d1/zarn/boards",
                            "d2/boards/board_parts", "d2/boards/board_files"})
        boost::filesystem::create_directories(path(dir));
    useDataDirs({"d1", "d2", "missing"});
    ComMsgMgr::enableScope("board.findBoards");
    auto searched = [this]() {
        Names paths;
        for (const ComMsgMgrInstance& m : m_messages.messages())
            if (m.getFormat().find("initiating search") != std::string::npos)
                paths.push_back(m.getArgs().at(0).substr(m_root.size() + 1));
        return paths;
    };
    catalogue();
    EXPECT_EQ(searched(), (Names{"d1/boards/board_parts", "d2/boards/board_parts", "d1/boards/board_files",
                                 "d1/zarn/boards", "d2/boards/board_files"}));
    dropCatalogue();
    param("board.enableSchemaV2", "false");
    catalogue();
    ComMsgMgr::enableScope("board.findBoards", false);
    EXPECT_EQ(searched(), (Names{"d1/boards/board_parts", "d2/boards/board_parts", "d1/boards/board_files",
                                 "d1/zarn/boards", "d2/boards/board_files", "d1/boards/board_parts",
                                 "d2/boards/board_parts"}));
    // Data directories that lack a repository are passed over without a word.
    EXPECT_EQ(count("49-91"), 0);
}

// Boards below a directory that has one are found; the file name counts in
// any case, but only the exact name.
TEST_F(CatalogScan, WalkFindsNestedAndCapitalisedBoardFiles) {
    board("repo/top", spec("top", "top"));
    board("repo/top/nested/deeper", spec("nested", "nested"));
    BoardSpec upper = spec("upper", "upper");
    upper.fileName = "BOARD.XML";
    board("repo/upper", upper);
    BoardSpec longer = spec("longer", "longer");
    longer.fileName = "board.xml.orig";
    board("repo/longer", longer);
    param("board.repoPaths", path("repo"));

    EXPECT_EQ(all(), (Names{"acme:nested:1.0=nested", "acme:top:1.0=top", "acme:upper:1.0=upper"}));
    EXPECT_FALSE(catalogue()->findBoardFiles(path("repo"), false));
}

TEST_F(CatalogScan, LinkBackToAnAncestorEndsTheWalk) {
    board("repo/a", spec("a", "a"));
    boost::filesystem::create_directory_symlink(path("repo"), path("repo/a/loop"));
    param("board.repoPaths", path("repo"));
    EXPECT_EQ(all(), (Names{"acme:a:1.0=a"}));
}

// A board is filed under the canonical path of its file, however the
// repository is named and whatever links the walk went through.
TEST_F(CatalogScan, BoardFilesAreFiledUnderCanonicalPaths) {
    namespace fs = boost::filesystem;
    board("repo/plain", spec("plain", "plain"));
    board("elsewhere/dir", spec("linkeddir", "linkeddir"));
    board("elsewhere/file", spec("linkedfile", "linkedfile"));
    fs::create_directory_symlink(path("elsewhere/dir"), path("repo/viadir"));
    fs::create_directories(path("repo/viafile"));
    fs::create_symlink(path("elsewhere/file/board.xml"), path("repo/viafile/board.xml"));
    board("other/sub", spec("roundabout", "roundabout"));
    // The second repository is named with a detour and a trailing separator;
    // the third is a file, which cannot be walked and is reported.
    param("board.repoPaths", "{" + path("repo") + "} {" + path("repo") + "/../other/} {" +
                                 path("elsewhere/file/board.xml") + "}");

    auto fileOf = [&](const std::string& name) {
        const HBOBoard* b = catalogue()->getInfoForBoard("acme:" + name + ":1.0");
        return b ? b->getBoardFile() : std::string("(not filed)");
    };
    auto canon = [&](const std::string& rel) { return fs::canonical(path(rel)).generic_string(); };
    EXPECT_EQ(fileOf("plain"), canon("repo/plain/board.xml"));
    EXPECT_EQ(fileOf("linkeddir"), canon("elsewhere/dir/board.xml"));
    EXPECT_EQ(fileOf("linkedfile"), canon("elsewhere/file/board.xml"));
    EXPECT_EQ(fileOf("roundabout"), canon("other/sub/board.xml"));
    EXPECT_EQ(count("49-44"), 1);
}

TEST_F(CatalogScan, UserBoardHidesTheInstalledOne) {
    installed("d1", "boards/board_files", "x", spec("b1", "installed"));
    installed("d1", "boards/board_files", "y", spec("b2", "installed"));
    board("repo/x", spec("B1", "user"));
    useDataDirs({"d1"});
    param("board.repoPaths", path("repo"));

    EXPECT_EQ(all(), (Names{"acme:b1:1.0=user", "acme:b2:1.0=installed"}));
    EXPECT_TRUE(catalogue()->getInfoForBoard("acme:b1:1.0")->isUserDefined());
    std::set<std::string> hidden{"stale"};
    catalogue()->getStaticBoardsReplacedByUser(hidden);
    EXPECT_EQ(hidden, (std::set<std::string>{"acme::b1:1.0"}));
    std::vector<HBOBoard*> statics;
    catalogue()->getAllStaticBoardParts(statics);
    EXPECT_EQ(namesOf(statics), (Names{"acme:b1:1.0=installed", "acme:b2:1.0=installed"}));
}

// Project repositories are walked before the user's, and of two user
// repositories the one listed first wins, silently.
TEST_F(CatalogScan, ProjectBeforeUserAndFirstUserRepositoryWins) {
    board("user1/x", spec("shared", "user1"));
    board("user1/y", spec("mine", "user1"));
    board("user2/y", spec("mine", "user2"));
    board("project/x", spec("shared", "project"));
    param("board.repoPaths", "{" + path("user1") + "} " + path("user2"));
    catalogue()->setProjectRepo(path("project"));

    EXPECT_EQ(all(), (Names{"acme:mine:1.0=user1", "acme:shared:1.0=project"}));
    EXPECT_EQ(catalogue()->getInfoForBoard("acme:shared:1.0")->getRepository(), path("project"));
    EXPECT_EQ(count("49-91") + count("49-44"), 0);
}

TEST_F(CatalogScan, RefreshFiresBothEventsAndReportsMissingRepositoriesEachTime) {
    board("repo/x", spec("b1", "first"));
    param("board.repoPaths", path("repo") + " " + path("nowhere"));
    catalogue();
    EXPECT_EQ(count("49-91"), 1);

    EventLog log;
    boost::filesystem::remove_all(path("repo"));
    board("repo/x", spec("b1", "second"));
    catalogue()->refreshBoards();
    EXPECT_EQ(log.events, (Names{"pre", "post"}));
    EXPECT_EQ(count("49-91"), 2);
    EXPECT_EQ(all(), (Names{"acme:b1:1.0=second"}));

    // The repository goes missing: both events all the same, and an empty catalogue.
    boost::filesystem::remove_all(path("repo"));
    catalogue()->refreshBoards();
    EXPECT_EQ(log.events, (Names{"pre", "post", "pre", "post"}));
    EXPECT_EQ(count("49-91"), 4);
    EXPECT_TRUE(all().empty());
}

// Whatever escapes the steps of a refresh is logged, not passed on, and the
// closing event still fires. Here a message listener of the host throws.
TEST_F(CatalogScan, FailingRefreshStillFiresPostEvent) {
    board("repo/x", spec("b1", "user"));
    param("board.repoPaths", path("repo") + " " + path("nowhere"));
    catalogue();
    EventLog log;
    ComMsgMgr::enableScope("board.error");
    const int thrower = ComMsgMgr::addListener([](const ComMsgMgrInstance& m) {
        if (m.getId() == "49-91")
            throw std::runtime_error("listener failed");
    });
    EXPECT_NO_THROW(catalogue()->refreshBoards());
    ComMsgMgr::removeListener(thrower);
    ComMsgMgr::enableScope("board.error", false);
    EXPECT_EQ(log.events, (Names{"pre", "post"}));
    int errorLines = 0;
    for (const ComMsgMgrInstance& m : m_messages.messages())
        if (m.getChannel() == "board.error")
            ++errorLines;
    EXPECT_EQ(errorLines, 1);
    // The maps stay as the failure left them: user boards read, none merged yet.
    EXPECT_TRUE(all().empty());
    catalogue()->refreshBoards();
    EXPECT_EQ(all(), (Names{"acme:b1:1.0=user"}));
}

// Installed boards are read once and keep their addresses; user boards are
// read anew.
TEST_F(CatalogScan, RefreshKeepsInstalledBoardsAndRereadsUserBoards) {
    installed("d1", "boards/board_files", "x", spec("b1", "installed"));
    board("repo/x", spec("u1", "user"));
    useDataDirs({"d1"});
    param("board.repoPaths", path("repo"));
    HBOBoard* installedBoard = catalogue()->getInfoForBoard("acme:b1:1.0");
    ASSERT_NE(installedBoard, nullptr);
    boost::filesystem::remove_all(path("d1"));
    board("repo/y", spec("u2", "user"));
    catalogue()->setProjectRepo("");
    EXPECT_EQ(catalogue()->getInfoForBoard("acme:b1:1.0"), installedBoard);
    EXPECT_EQ(all(), (Names{"acme:b1:1.0=installed", "acme:u1:1.0=user", "acme:u2:1.0=user"}));
}

// A change of the repository parameter takes effect at the next look-up.
TEST_F(CatalogScan, ParameterChangeIsPickedUpAtTheNextLookUp) {
    board("repo/x", spec("b1", "user"));
    EXPECT_TRUE(all().empty());
    EventLog log;
    param("board.repoPaths", path("repo"));
    EXPECT_TRUE(log.events.empty());
    ASSERT_NE(catalogue()->getInfoForBoard("ACME:B1:1.0"), nullptr);
    EXPECT_EQ(log.events, (Names{"pre", "post"}));
    // No change, no refresh.
    catalogue()->getInfoForBoard("acme:b1:1.0");
    std::vector<HBOBoard*> latest;
    catalogue()->getAllLatestBoards(latest);
    EXPECT_EQ(log.events.size(), 2u);
    EXPECT_EQ(namesOf(latest), (Names{"acme:b1:1.0=user"}));
}

// The host's repository notices refresh the catalogue when their predicate holds.
TEST_F(CatalogScan, RepositoryEventsRefreshWhenApplicable) {
    catalogue();
    EventLog log;
    HUTGuiEvent::NativeEvent(HUTGuiEvent::kRepositoryFilesChanged, 0, false).doEvent();
    EXPECT_TRUE(log.events.empty());
    for (int code : {HUTGuiEvent::kUserRepositoriesChanged, HUTGuiEvent::kProjectRepositoriesChanged,
                     HUTGuiEvent::kRepositoryFilesChanged})
        HUTGuiEvent::GuiEventBase(code).doEvent();
    EXPECT_EQ(log.events.size(), 6u);
}

TEST_F(CatalogScan, ReleaseDestroysAtZeroAndDisconnects) {
    HBOBoardCReposMgr* first = HBOBoardCReposMgr::getGlobal();
    EXPECT_EQ(HBOBoardCReposMgr::getGlobal(), first);
    EXPECT_EQ(HUTGuiEventBroker::listenerCount(HUTGuiEvent::kUserRepositoriesChanged), 1u);
    HBOBoardCReposMgr::release();
    EXPECT_EQ(HBOBoardCReposMgr::peekGlobal(), first);
    HBOBoardCReposMgr::release();
    EXPECT_EQ(HBOBoardCReposMgr::peekGlobal(), nullptr);
    EXPECT_EQ(HUTGuiEventBroker::listenerCount(HUTGuiEvent::kUserRepositoriesChanged), 0u);
    HBOBoardCReposMgr::release();  // without an instance: nothing

    // appendAllBoards keeps its reference.
    std::vector<HBOBoard*> boards;
    HBOBoardCReposMgr::appendAllBoards(boards);
    HBOBoardCReposMgr::getGlobal();
    HBOBoardCReposMgr::release();
    EXPECT_NE(HBOBoardCReposMgr::peekGlobal(), nullptr);
}

// Broken files: a board that does not read is left out with the reader's own
// messages; the rest of the repository is filed.
TEST_F(CatalogScan, BrokenBoardIsLeftOutAndTheWalkGoesOn) {
    board("repo/good", spec("good", "good"));
    write("repo/bad/board.xml", "<board schema_version=\"2.1\" vendor=\"acme\"><unclosed></board>");
    param("board.repoPaths", path("repo"));
    EXPECT_EQ(all(), (Names{"acme:good:1.0=good"}));
    EXPECT_GT(m_messages.messages().size(), 0u);
    EXPECT_EQ(count("49-44"), 0);
}

// A host without data directories: no installed boards, and user boards are
// validated without a grammar.
TEST_F(CatalogScan, HostWithoutDataDirectories) {
    board("repo/x", spec("b1", "user"));
    param("board.validateXML", "true");
    param("board.repoPaths", path("repo"));
    EXPECT_EQ(all(), (Names{"acme:b1:1.0=user"}));
    std::vector<HBOBoard*> statics;
    catalogue()->getAllStaticBoardParts(statics);
    EXPECT_TRUE(statics.empty());
    EXPECT_EQ(count("49-114"), 1);
    EXPECT_EQ(count("49-113"), 0);
}
