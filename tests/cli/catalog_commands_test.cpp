// `zrboard list`, `show NAME` and `compat` on the bundled data and on
// temporary user repositories, bad names and broken boards included.
#include <gtest/gtest.h>

#include <fstream>
#include <string>

#include <boost/filesystem.hpp>

#include "tool_run.h"

namespace fs = boost::filesystem;

namespace {

const std::string kBoards = std::string(ZR_TEST_DATA_DIR) + "/boards/board_files";

bool contains(const std::string& hay, const std::string& needle) { return hay.find(needle) != std::string::npos; }

// A user repository: a copy of a bundled board with another display name,
// a board of its own, and a broken one.
struct UserRepo {
    fs::path dir = fs::temp_directory_path() / fs::unique_path("zrlist-%%%%-%%%%");
    UserRepo() {
        fs::create_directories(dir / "quillon");
        std::ifstream in(kBoards + "/quillon/1.0/board.xml");
        std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
        text.replace(text.find("Quillon PMOD LED Card"), 21, "Quillon Respin");
        std::ofstream((dir / "quillon" / "Board.XML").string()) << text;
        text.replace(text.find("name=\"quillon\""), 14, "name=\"brakken\"");
        fs::create_directories(dir / "nested" / "brakken");
        std::ofstream((dir / "nested" / "brakken" / "board.xml").string()) << text;
        fs::create_directories(dir / "broken");
        std::ofstream((dir / "broken" / "board.xml").string()) << "<board schema_version=\"2.2\" vendor=\"x\"><oops>";
    }
    ~UserRepo() {
        boost::system::error_code ec;
        fs::remove_all(dir, ec);
    }
    std::string path() const { return dir.string(); }
};

// The NAME column of a listing.
std::vector<std::string> listedNames(const std::string& out) {
    std::vector<std::string> names;
    for (const std::string& line : lines(out))
        if (line.compare(0, 4, "NAME") != 0)
            names.push_back(line.substr(0, line.find(' ')));
    return names;
}

}  // namespace

TEST(ListCommand, BundledCatalogueLatestAndPattern) {
    ToolRun r = zrboardRun({"list"});
    EXPECT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(r.err, "");
    const std::vector<std::string> all = listedNames(r.out);
    EXPECT_EQ(all.front(), "korvelhw:durnival:1.0");
    EXPECT_NE(std::find(all.begin(), all.end(), "korvelhw:tamsel:1.0"), all.end());
    EXPECT_TRUE(contains(r.out, "korvelhw:tarnwick:1.2  Tarnwick K160T Reference Board"));
    EXPECT_TRUE(contains(r.out, "zf7k160t-ffg676-2  1.2      Rev C     installed"));

    r = zrboardRun({"list", "--latest", "*QUILLON*"});
    EXPECT_EQ(listedNames(r.out), (std::vector<std::string>{"korvelhw:quillon:1.1"}));
    r = zrboardRun({"list", "dur?ival"});
    EXPECT_EQ(listedNames(r.out), (std::vector<std::string>{"korvelhw:durnival:1.0", "korvelhw:durnival:1.1"}));
    r = zrboardRun({"list", "nothing-like-this"});
    EXPECT_EQ(r.status, 0);
    EXPECT_TRUE(listedNames(r.out).empty());
}

TEST(ListCommand, UserRepositoriesBrokenBoardsAndMissingRepositories) {
    UserRepo repo;
    const ToolRun r = zrboardRun({"list", "--repo", repo.path(), "--repo=/no/such/repo", "--json"});
    EXPECT_EQ(r.status, 1);
    ASSERT_TRUE(isValidJson(r.out)) << r.out;
    // The user's copy hides the installed board; the other user board stands beside it.
    EXPECT_TRUE(contains(r.out, "\"name\": \"korvelhw:quillon:1.0\",\n      \"display_name\": \"Quillon Respin\""))
        << r.out;
    EXPECT_TRUE(contains(r.out, "\"hides_installed\": true"));
    EXPECT_TRUE(contains(r.out, "\"name\": \"korvelhw:brakken:1.0\""));
    EXPECT_TRUE(contains(r.out, "\"name\": \"korvelhw:tarnwick:1.2\""));
    // Problems on standard error, and in the document.
    EXPECT_TRUE(contains(r.err, "[board 49-91] The board repository directory '/no/such/repo' does not exist."))
        << r.err;
    EXPECT_TRUE(contains(r.err, "cannot read the board file '" + fs::canonical(repo.dir).string() +
                                    "/broken/board.xml'"))
        << r.err;
    // With the reader's messages below it.
    EXPECT_TRUE(contains(r.err, "/broken/board.xml'\n  CRITICAL WARNING: [board ")) << r.err;
    EXPECT_TRUE(contains(r.out, "\"failed\": [\n    {\n      \"file\": "));

    const ToolRun text = zrboardRun({"list", "--repo", repo.path(), "quillon"});
    EXPECT_TRUE(contains(text.out, "Quillon Respin")) << text.out;
    EXPECT_TRUE(contains(text.out, "user, hides installed"));
}

TEST(ListCommand, EmptyRepositoryAndNoDataDirectories) {
    UserRepo repo;
    fs::remove_all(repo.dir);
    fs::create_directories(repo.dir);
    ToolRun r = zrboardRun({"list", "--repo", repo.path()});
    EXPECT_EQ(r.status, 0) << r.err;
    EXPECT_GE(listedNames(r.out).size(), 10u);

    r = runCommand("ZR_DATA_DIRS= " + shellQuote(ZR_ZRBOARD_BIN) + " list");
    EXPECT_EQ(r.status, 0) << r.err;
    EXPECT_TRUE(listedNames(r.out).empty()) << r.out;
}

TEST(ListCommand, BadArguments) {
    for (const std::vector<std::string>& args :
         {std::vector<std::string>{"list", "--repo"}, {"list", "--repo="}, {"list", "a*", "b*"}, {"list", "--all"}}) {
        const ToolRun r = zrboardRun(args);
        EXPECT_EQ(r.status, 2) << args.back();
        EXPECT_TRUE(contains(r.err, "Usage: zrboard [global options] list")) << r.err;
    }
}

// Every name form the catalogue answers to; a path keeps working.
TEST(ShowCommand, ByAnyCatalogueName) {
    for (const char* name : {"korvelhw:tarnwick:1.2", "KORVELHW:Tarnwick:1.2", "korvelhw:tarnwick:part0:1.2"}) {
        const ToolRun r = zrboardRun({"show", name});
        EXPECT_EQ(r.status, 0) << name << r.err;
        EXPECT_EQ(lines(r.out).front(), "Board korvelhw:tarnwick:1.2") << name;
    }
    EXPECT_EQ(lines(zrboardRun({"show", kBoards + "/tarnwick/1.2"}).out).front(), "Board korvelhw:tarnwick:1.2");

    UserRepo repo;
    ToolRun r = zrboardRun({"show", "--repo", repo.path(), "korvelhw:quillon:1.0"});
    EXPECT_TRUE(contains(r.out, "Display name: Quillon Respin")) << r.out;

    r = zrboardRun({"show", "korvelhw:nowhere:1.0"});
    EXPECT_EQ(r.status, 1);
    EXPECT_TRUE(contains(r.err, "'korvelhw:nowhere:1.0' is neither a path nor a board name")) << r.err;
    EXPECT_EQ(r.out, "");
}

TEST(CompatCommand, ReferenceBoardConnectors) {
    ToolRun r = zrboardRun({"compat", "korvelhw:tarnwick:1.2"});
    ASSERT_EQ(r.status, 0) << r.err;
    const std::vector<std::string> text = lines(r.out);
    const std::vector<std::string> expected = {
        "korvelhw:tarnwick:1.2 (Tarnwick K160T Reference Board)",
        "  fmc_lpc (fmc_lpc)",
        "    fits fully:",
        "      korvelhw:fennock:fmc_conn:1.0  Fennock FMC I/O Card",
        "      korvelhw:wrenmoor:fmc_conn:1.0  Wrenmoor FMC Serial Card",
        "    fits partly:",
        "      korvelhw:sorrel:fmc_conn:1.0  Sorrel FMC Relay Card",
        "  pmod_ja (pmod)",
        "    fits fully:",
        "      korvelhw:quillon:pmod_conn:1.0  Quillon PMOD LED Card",
        "      korvelhw:quillon:pmod_conn:1.1  Quillon PMOD LED Card",
        "    fits partly: none"};
    EXPECT_EQ(text, expected);

    r = zrboardRun({"compat", "--latest", "--json", kBoards + "/tarnwick/1.2"});
    ASSERT_EQ(r.status, 0) << r.err;
    EXPECT_TRUE(isValidJson(r.out));
    EXPECT_TRUE(contains(r.out, "korvelhw:quillon:pmod_conn:1.1"));
    EXPECT_FALSE(contains(r.out, "korvelhw:quillon:pmod_conn:1.0"));
}

// A daughter board is answered the other way round.
TEST(CompatCommand, DaughterBoardsAndUnknownNames) {
    ToolRun r = zrboardRun({"compat", "korvelhw:sorrel:1.0"});
    EXPECT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(lines(r.out), (std::vector<std::string>{"korvelhw:sorrel:1.0 (Sorrel FMC Relay Card)",
                                                       "  fmc_conn (fmc_lpc)", "    fits fully on: none",
                                                       "    fits partly on:",
                                                       "      korvelhw:tarnwick:fmc_lpc:1.2  Tarnwick K160T Reference Board"}));
    r = zrboardRun({"compat", "fennock"});
    EXPECT_EQ(r.status, 1);
    EXPECT_TRUE(contains(r.err, "no board 'fennock' in the catalogue")) << r.err;
    r = zrboardRun({"compat"});
    EXPECT_EQ(r.status, 2);
}
