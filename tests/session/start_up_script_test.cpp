// The board start-up script under the application root: run once per project.
#include <gtest/gtest.h>

#include <tcl.h>

#include "../utils/MessageRecorder.h"
#include "../utils/ParamStoreGuard.h"
#include "EnvVar.h"
#include "HBOBoardCDataManager.h"
#include "HBOBoardUtils.h"
#include "HTCTclInterp.h"
#include "session_support.h"

using namespace session_test;

namespace {

// An application root whose start-up script is `script` (none when empty).
struct AppRoot {
    TempDir root;
    EnvVar env;
    explicit AppRoot(const std::string& script) : env("ZR_APP_ROOT", root.str()) {
        if (!script.empty())
            writeFile(root.path() / "scripts" / "board" / "init.tcl", script);
    }
    std::string scriptPath() const { return root.str() + "/scripts/board/init.tcl"; }
};

std::string tclVar(const char* name) {
    const char* v = Tcl_GetVar(HTCTclInterp::getDefaultInterp(), name, TCL_GLOBAL_ONLY);
    return v ? v : "";
}

// Counts its runs and notes where it ran.
const char* const kCountingScript =
    "if {![info exists ::test_runs]} {set ::test_runs 0}\n"
    "incr ::test_runs\n"
    "set ::test_dir [pwd]\n";

}  // namespace

TEST(StartUpScript, WorkingScriptRunsOnceInItsOwnDirectory) {
    AppRoot app(kCountingScript);
    Tcl_UnsetVar(HTCTclInterp::getDefaultInterp(), "test_runs", TCL_GLOBAL_ONLY);
    std::string before;
    HBOBoardUtils::getCurrDir(before);
    HBOBoardCDataManager session;
    MessageRecorder recorder;
    EXPECT_TRUE(session.loadBoardTcl());
    EXPECT_TRUE(session.loadBoardTcl());
    EXPECT_EQ("1", tclVar("test_runs"));
    EXPECT_EQ(app.root.str() + "/scripts/board", tclVar("test_dir"));
    std::string after;
    HBOBoardUtils::getCurrDir(after);
    EXPECT_EQ(before, after);
    EXPECT_TRUE(recorder.messages().empty());
    // Another project runs it for itself.
    HBOBoardCDataManager other;
    EXPECT_TRUE(other.loadBoardTcl());
    EXPECT_EQ("2", tclVar("test_runs"));
}

TEST(StartUpScript, FailingScriptIsReportedWithTclsErrorInfoAndNotRunAgain) {
    AppRoot app("incr ::fail_runs\nerror \"no board today\"\n");
    Tcl_SetVar(HTCTclInterp::getDefaultInterp(), "fail_runs", "0", TCL_GLOBAL_ONLY);
    HBOBoardCDataManager session;
    MessageRecorder recorder;
    EXPECT_FALSE(session.loadBoardTcl());
    ASSERT_EQ(1u, recorder.messages().size());
    const ComMsgMgrInstance& m = recorder.messages()[0];
    EXPECT_EQ("49-46", m.getId());
    EXPECT_EQ(ComMsgMgr::MSG_ERROR, m.getMask());
    ASSERT_EQ(2u, m.getArgs().size());
    EXPECT_EQ(app.scriptPath(), m.getArgs()[0]);
    EXPECT_NE(std::string::npos, m.getArgs()[1].find("no board today"));
    EXPECT_NE(std::string::npos, m.getArgs()[1].find("init.tcl"));
    EXPECT_TRUE(session.loadBoardTcl());
    EXPECT_EQ("1", tclVar("fail_runs"));
}

TEST(StartUpScript, MissingScriptAnswersFalseOnceAndSwitchedOffIsAskedEachTime) {
    {
        AppRoot app("");
        HBOBoardCDataManager session;
        MessageRecorder recorder;
        EXPECT_FALSE(session.loadBoardTcl());
        EXPECT_TRUE(session.loadBoardTcl());
        EXPECT_TRUE(recorder.messages().empty());
    }
    AppRoot app(kCountingScript);
    Tcl_UnsetVar(HTCTclInterp::getDefaultInterp(), "test_runs", TCL_GLOBAL_ONLY);
    ParamStoreGuard params;
    HBOBoardCDataManager session;
    HPAParamMgr::getParamMgr()->setValue("project.enableBITabFlow", "false");
    EXPECT_FALSE(session.loadBoardTcl());
    EXPECT_FALSE(session.loadBoardTcl());
    EXPECT_EQ("", tclVar("test_runs"));
    HPAParamMgr::getParamMgr()->setValue("project.enableBITabFlow", "true");
    EXPECT_TRUE(session.loadBoardTcl());
    EXPECT_EQ("1", tclVar("test_runs"));
}

TEST(StartUpScript, InstalledScriptRunsFromTheBuildTree) {
    // Without ZR_APP_ROOT the root is the tree the libraries run from.
    EnvVar unset("ZR_APP_ROOT", nullptr);
    Tcl_UnsetVar(HTCTclInterp::getDefaultInterp(), "zr_board_script_dir", TCL_GLOBAL_ONLY);
    HBOBoardCDataManager session;
    EXPECT_TRUE(session.loadBoardTcl());
    EXPECT_NE(std::string::npos, tclVar("zr_board_script_dir").find("/scripts/board"));
}
