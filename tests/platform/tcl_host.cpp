// The host's Tcl side: one interpreter for the process, with Tcl's own start-up run.
#include <gtest/gtest.h>

#include <tcl.h>

#include "HPAParamMgr.h"
#include "HTCTaskHelpers.h"
#include "HTCTclInterp.h"

TEST(TclHost, OneInterpreterWithTclsLibraryLoaded) {
    Tcl_Interp* interp = HTCTclInterp::getDefaultInterp();
    ASSERT_NE(nullptr, interp);
    EXPECT_EQ(interp, HTCTclInterp::getDefaultInterp());
    EXPECT_EQ("", HTCTclInterp::getInitError());
    // Commands of Tcl's script library exist only after its start-up script ran.
    ASSERT_EQ(TCL_OK, Tcl_Eval(interp, "llength [info procs auto_load]"));
    EXPECT_STREQ("1", Tcl_GetStringResult(interp));
    ASSERT_EQ(TCL_OK, Tcl_Eval(interp, "set ::tcl_host_probe [expr {6 * 7}]"));
    EXPECT_STREQ("42", Tcl_GetVar(HTCTclInterp::getDefaultInterp(), "tcl_host_probe", TCL_GLOBAL_ONLY));
}

TEST(TclHost, BraceMakesOneListElement) {
    EXPECT_EQ("{fmc_lpc}", HTCTaskHelpers::brace("fmc_lpc"));
    EXPECT_EQ("{}", HTCTaskHelpers::brace(""));
    Tcl_Interp* interp = HTCTclInterp::getDefaultInterp();
    const std::string list = HTCTaskHelpers::brace("a b") + " c";
    ASSERT_EQ(TCL_OK, Tcl_Eval(interp, ("llength {" + list + "}").c_str()));
    EXPECT_STREQ("2", Tcl_GetStringResult(interp));
}

TEST(TclHost, StartUpScriptSwitchIsAHostParameterOnByDefault) {
    const HPAParam* p = HPAParamMgr::getParamMgr()->findParam("project.enableBITabFlow");
    ASSERT_NE(nullptr, p);
    EXPECT_EQ(HPAParam::BOOL, p->getKind());
    EXPECT_EQ("true", p->getDefaultAsString());
    EXPECT_FALSE(p->isHidden());
}
