// `zrboard integrate` on the bundled boards, its refusals and usage errors,
// and `zrboard show NAME --project-repo DIR`.
#include <gtest/gtest.h>

#include <algorithm>

#include "../session/session_support.h"
#include "tool_run.h"

using namespace session_test;

namespace {

const char* const kWrenmoorAtFmc = "fmc_lpc=korvelhw:wrenmoor:1.0:fmc_conn";
const char* const kQuillonAtPmod = "pmod_ja=korvelhw:quillon:*:pmod_conn";

bool hasLine(const std::string& out, const std::string& line) {
    const std::vector<std::string> all = lines(out);
    return std::find(all.begin(), all.end(), line) != all.end();
}

// The line after the first line equal to `line`, or "".
std::string lineAfter(const std::string& out, const std::string& line) {
    const std::vector<std::string> all = lines(out);
    auto it = std::find(all.begin(), all.end(), line);
    return (it == all.end() || it + 1 == all.end()) ? "" : *(it + 1);
}

}  // namespace

TEST(IntegrateCli, BundledBoardsAreJoinedAndShownLikeAnyBoard) {
    const ToolRun r = zrboardRun({"integrate", "korvelhw:tarnwick:1.2", kWrenmoorAtFmc, kQuillonAtPmod});
    ASSERT_EQ(0, r.status) << r.err;
    EXPECT_EQ("", r.err);
    // Named from the base board and the connections; the newest quillon was taken.
    EXPECT_EQ("Board korvelhw:tarnwick_fmc_lpc_wrenmoor_fmc_conn_pmod_ja_quillon_pmod_conn:1.2", lines(r.out).at(0));
    EXPECT_TRUE(hasLine(r.out, "  Integrated from: korvelhw:tarnwick:1.2"));
    EXPECT_TRUE(hasLine(r.out, "    fmc_lpc <- korvelhw:wrenmoor:1.0 fmc_conn"));
    EXPECT_TRUE(hasLine(r.out, "    pmod_ja <- korvelhw:quillon:1.1 pmod_conn"));
    // The daughters' parts under their prefixes, and one generated connection per join with a net per pin.
    EXPECT_NE(std::string::npos, r.out.find("\n  fmc_lpc_fmc_conn: connector"));
    EXPECT_NE(std::string::npos, r.out.find("\n  pmod_ja_pmod_conn: connector"));
    EXPECT_EQ("    Nets (401):",
              lineAfter(r.out, "  fmc_lpc_fmc_lpc_fmc_conn: fmc_lpc[0..400] - fmc_lpc_fmc_conn[0..400], enabled true"));
    EXPECT_EQ("    Nets (101):",
              lineAfter(r.out, "  pmod_ja_pmod_ja_pmod_conn: pmod_ja[0..100] - pmod_ja_pmod_conn[0..100], enabled true"));
    // A daughter interface now sits on the FPGA, its port on an FPGA pin.
    EXPECT_NE(std::string::npos, r.out.find("      fmc_lpc_fmc_uart: korvelhw:interface:uart_rtl:1.0"));
    EXPECT_NE(std::string::npos, r.out.find("TxD -> fmc_lpc_fmc_uart_txd (out): 0=FMC_LA00_CC_P"));
}

TEST(IntegrateCli, JsonAndAChosenName) {
    const ToolRun r = zrboardRun({"integrate", "--json", "--name", "bench_rig", "korvelhw:tarnwick:1.2", kWrenmoorAtFmc});
    ASSERT_EQ(0, r.status) << r.err;
    EXPECT_TRUE(isValidJson(r.out));
    EXPECT_NE(std::string::npos, r.out.find("\"name\": \"korvelhw:bench_rig:1.2\""));
    EXPECT_NE(std::string::npos, r.out.find("\"base_board\": \"korvelhw:tarnwick:1.2\""));
    EXPECT_NE(std::string::npos, r.out.find("\"daughter_connector\": \"fmc_conn\""));
}

TEST(IntegrateCli, RefusalsGiveTheirNumberedMessageAndExitOne) {
    TempDir repo;
    copyIntegratedBoards(repo.path());

    const struct {
        std::vector<std::string> args;
        const char* id;
    } cases[] = {
        {{"korvelhw:nosuch:1.0", kWrenmoorAtFmc}, "49-82"},
        {{"korvelhw:tarnwick:1.2", "fmc_lpc=korvelhw:nosuch:1.0:fmc_conn"}, "49-81"},
        {{"korvelhw:tarnwick:1.2", "fmc_x=korvelhw:wrenmoor:1.0:fmc_conn"}, "49-126"},
        {{"korvelhw:tarnwick:1.2", "fmc_lpc=korvelhw:wrenmoor:1.0:nope"}, "49-126"},
        {{"korvelhw:tarnwick:1.2", "led_8bits=korvelhw:wrenmoor:1.0:fmc_conn"}, "49-127"},
        {{"korvelhw:joinedbase:1.2", kWrenmoorAtFmc, "--repo", repo.str()}, "49-78"},
        {{"korvelhw:tarnwick:1.2", "fmc_lpc=korvelhw:joinedcard:1.0:fmc_conn", "--repo", repo.str()}, "49-79"},
    };
    for (const auto& c : cases) {
        std::vector<std::string> args{"integrate"};
        args.insert(args.end(), c.args.begin(), c.args.end());
        const ToolRun r = zrboardRun(args);
        SCOPED_TRACE(c.id);
        EXPECT_EQ(1, r.status);
        EXPECT_EQ("", r.out);
        EXPECT_NE(std::string::npos, r.err.find(std::string("ERROR: [board ") + c.id + "]")) << r.err;
    }
}

TEST(IntegrateCli, MalformedArgumentsAreUsageErrorsThatSayWhatToWrite) {
    const struct {
        std::vector<std::string> args;
        const char* says;
    } cases[] = {
        {{}, "needs a BASE board"},
        {{"korvelhw:tarnwick:1.2"}, "at least one CONNECTOR=DAUGHTER_BOARD:DAUGHTER_CONNECTOR"},
        {{"korvelhw:tarnwick:1.2", "fmc_lpc"}, "is not CONNECTOR=DAUGHTER_BOARD:DAUGHTER_CONNECTOR"},
        {{"korvelhw:tarnwick:1.2", "=korvelhw:wrenmoor:1.0:fmc_conn"}, "is not CONNECTOR="},
        {{"korvelhw:tarnwick:1.2", "fmc_lpc=wrenmoor:fmc_conn"}, "is not VENDOR:BOARD:VERSION"},
        {{"korvelhw:tarnwick:1.2", kWrenmoorAtFmc, "--name"}, "--name needs a board name"},
        {{"korvelhw:tarnwick:1.2", kWrenmoorAtFmc, "--name", "a:b"}, "is not a board name"},
        {{"korvelhw:tarnwick:1.2", kWrenmoorAtFmc, "--repo", "/no/such/dir"}, "is not a directory"},
        {{"korvelhw:tarnwick:1.2", kWrenmoorAtFmc, "--bogus"}, "unknown option '--bogus'"},
    };
    for (const auto& c : cases) {
        std::vector<std::string> args{"integrate"};
        args.insert(args.end(), c.args.begin(), c.args.end());
        const ToolRun r = zrboardRun(args);
        SCOPED_TRACE(c.says);
        EXPECT_EQ(2, r.status);
        EXPECT_NE(std::string::npos, r.err.find(c.says)) << r.err;
        EXPECT_NE(std::string::npos, r.err.find("Usage: zrboard [global options] integrate BASE")) << r.err;
    }
}

TEST(ShowProjectRepoCli, NameIsResolvedAsAProjectWithThoseRepositoriesWould) {
    TempDir project, user;
    copyFennock(project.path() / "f", "4.0");
    copyBoard(bundled("tarnwick/1.2"), user.path() / "t");

    ToolRun r = zrboardRun({"show", "korvelhw:fennock:*", "--project-repo", project.str()});
    ASSERT_EQ(0, r.status) << r.err;
    EXPECT_EQ("Board korvelhw:fennock:4.0", lines(r.out).at(0));

    // A user copy of an installed board is warned about, and shown.
    r = zrboardRun({"show", "korvelhw:tarnwick:1.2", "--repo", user.str(), "--project-repo", project.str()});
    ASSERT_EQ(0, r.status) << r.err;
    EXPECT_NE(std::string::npos, r.err.find("WARNING: [board 49-151]")) << r.err;
    EXPECT_NE(std::string::npos, r.out.find("File: " + user.str() + "/t/board.xml"));

    r = zrboardRun({"show", "korvelhw:nosuch:1.0", "--project-repo", project.str()});
    EXPECT_EQ(1, r.status);
    EXPECT_NE(std::string::npos, r.err.find("CRITICAL WARNING: [board 49-71]")) << r.err;
    EXPECT_NE(std::string::npos, r.err.find(project.str())) << r.err;

    r = zrboardRun({"show", project.str() + "/f", "--project-repo", project.str()});
    EXPECT_EQ(2, r.status);
    r = zrboardRun({"show", "korvelhw:fennock:4.0", "--project-repo"});
    EXPECT_EQ(2, r.status);
    EXPECT_NE(std::string::npos, r.err.find("--project-repo needs a directory")) << r.err;
}
