// The parameters registered at load, and the helpers that read them.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ComMsgMgr.h"
#include "HBOBoardUtils.h"
#include "HPAParamMgr.h"
#include "HUTConvert.h"
#include "MessageRecorder.h"
#include "ParamStoreGuard.h"

namespace {

struct ExpectedParam {
    const char* name;
    HPAParam::Kind kind;
    const char* defaultValue;  // for booleans "true" or "false"
    bool hidden;
    const char* description;
};

const char* const kRepoText = "Used to provide access to board part repositories during project creation.";

const std::vector<ExpectedParam> kExpected = {
    {"board.enableSchemaV2", HPAParam::BOOL, "true", false, "Allows board data model to work on board schema 2.0"},
    {"board.validateXML", HPAParam::BOOL, "false", false, "Use validating XML parser when parsing board XML files."},
    {"board.enableBoardIntegratorSupport", HPAParam::BOOL, "false", false,
     "Allows board data model to work on board integrator functionality & tcl commands, board 2.0 must be enabled "
     "as well."},
    {"board.enableFMCDaughterBoardSupport", HPAParam::BOOL, "true", false, "Enable FMC Daughterboard Support."},
    {"board.repoPaths", HPAParam::STRING, "", false, kRepoText},
    {"board.enableDiffCommand", HPAParam::BOOL, "false", false, "Enable beta command board::diff_board."},
    {"project.boardPartRepoPaths", HPAParam::STRING, "", false, kRepoText},
    {"board.enable2020Checks", HPAParam::BOOL, "false", true,
     "Temporary param in HEAD, enable new 2020.1 DRC checks on boards when board.validateXML is true"},
    {"board.usePre2019Dot2Mode", HPAParam::BOOL, "false", true,
     "Revert to legacy behavior of ignoring several I/O port constraint types that can appear a board file."},
    {"board.dataProps.stubData", HPAParam::BOOL, "false", true,
     "Use stub data rather than the values in the XML file for BOARD_DATA_PROPS."},
    {"board.dataProps.enableTclProps", HPAParam::BOOL, "true", true,
     "Make board_data_props available as Tcl properties on the board object."},
    {"board.debugMemory", HPAParam::BOOL, "false", true, "Turn on debug output"},
    {"board.debugBoardRepo", HPAParam::BOOL, "false", true, "Turn on debug output for board repo"},
};

HPAParamMgr& params() { return *HPAParamMgr::getParamMgr(); }

}  // namespace

TEST(ParamRegistration, ThirteenParametersInTableOrderWithKindsDefaultsFlagsAndTexts) {
    std::vector<const HPAParam*> ours;
    for (const HPAParam* p : params().getParams()) {
        const std::string& n = p->getName();
        if (n == "project.enableBITabFlow")  // the host's own, not the library's
            continue;
        if (n.compare(0, 6, "board.") == 0 || n.compare(0, 8, "project.") == 0)
            ours.push_back(p);
    }
    ASSERT_EQ(ours.size(), kExpected.size());
    for (std::size_t i = 0; i < kExpected.size(); ++i) {
        const ExpectedParam& e = kExpected[i];
        const HPAParam* p = ours[i];
        SCOPED_TRACE(e.name);
        EXPECT_EQ(p->getName(), e.name);
        EXPECT_EQ(p->getKind(), e.kind);
        EXPECT_EQ(p->isHidden(), e.hidden);
        EXPECT_EQ(p->getDescription(), e.description);
        if (e.kind == HPAParam::BOOL) {
            const bool expected = std::string(e.defaultValue) == "true";
            EXPECT_EQ(HUTConvert::toBool(p->getDefaultAsString()), expected);
            EXPECT_EQ(p->getValueAsBool(), expected);
        } else {
            EXPECT_EQ(p->getDefaultAsString(), e.defaultValue);
            EXPECT_EQ(p->getValueAsString(), e.defaultValue);
        }
    }
}

TEST(FeatureParameters, FollowTheirValues) {
    ParamStoreGuard guard;
    EXPECT_TRUE(HBOBoardUtils::isV2SchemaEnabled());
    EXPECT_FALSE(HBOBoardUtils::isBoardIntegraterSupportEnabled());

    ASSERT_TRUE(params().setValue("board.enableSchemaV2", "false"));
    ASSERT_TRUE(params().setValue("board.enableBoardIntegratorSupport", "true"));
    EXPECT_FALSE(HBOBoardUtils::isV2SchemaEnabled());
    EXPECT_TRUE(HBOBoardUtils::isBoardIntegraterSupportEnabled());
}

TEST(FeatureParameters, MissingParametersReadAsFalse) {
    ParamStoreGuard guard;
    ASSERT_TRUE(params().setValue("board.enableBoardIntegratorSupport", "true"));
    ASSERT_TRUE(params().removeParam("board.enableSchemaV2"));
    ASSERT_TRUE(params().removeParam("board.enableBoardIntegratorSupport"));
    EXPECT_FALSE(HBOBoardUtils::isV2SchemaEnabled());
    EXPECT_FALSE(HBOBoardUtils::isBoardIntegraterSupportEnabled());
}

class UserRepoPath : public ::testing::Test {
protected:
    ParamStoreGuard guard;
    MessageRecorder recorder;
};

TEST_F(UserRepoPath, GivesTheRepositoryParameterEvenWhenEmpty) {
    std::string out = "stale";
    EXPECT_TRUE(HBOBoardUtils::getUserRepoPathFromParam(out));
    EXPECT_EQ(out, "");

    ASSERT_TRUE(params().setValue("board.repoPaths", "/repo/a /repo/b"));
    EXPECT_TRUE(HBOBoardUtils::getUserRepoPathFromParam(out));
    EXPECT_EQ(out, "/repo/a /repo/b");
    EXPECT_TRUE(recorder.messages().empty());
}

TEST_F(UserRepoPath, ProjectLevelListIsAnErrorAndLeavesTheResultAlone) {
    ASSERT_TRUE(params().setValue("board.repoPaths", "/repo/a"));
    ASSERT_TRUE(params().setValue("project.boardPartRepoPaths", "/project/repo"));
    std::string out = "untouched";
    EXPECT_FALSE(HBOBoardUtils::getUserRepoPathFromParam(out));
    EXPECT_EQ(out, "untouched");

    ASSERT_EQ(recorder.messages().size(), 1u);
    const ComMsgMgrInstance& m = recorder.messages()[0];
    EXPECT_EQ(m.getId(), "49-73");
    EXPECT_EQ(m.getMask(), ComMsgMgr::MSG_ERROR);
    EXPECT_EQ(m.getScope(), "board");
    EXPECT_EQ(m.getArgCount(), 0);
    EXPECT_TRUE(m.getArgs().empty());
}

TEST_F(UserRepoPath, ProjectLevelListWinsEvenWithoutTheRepositoryParameter) {
    ASSERT_TRUE(params().setValue("project.boardPartRepoPaths", "/project/repo"));
    ASSERT_TRUE(params().removeParam("board.repoPaths"));
    std::string out = "untouched";
    EXPECT_FALSE(HBOBoardUtils::getUserRepoPathFromParam(out));
    EXPECT_EQ(out, "untouched");
    ASSERT_EQ(recorder.messages().size(), 1u);
    EXPECT_EQ(recorder.messages()[0].getId(), "49-73");
}

TEST_F(UserRepoPath, MissingParametersGiveAnEmptyListOrTheRepositoryList) {
    ASSERT_TRUE(params().setValue("board.repoPaths", "/repo/a"));
    ASSERT_TRUE(params().removeParam("project.boardPartRepoPaths"));
    std::string out;
    EXPECT_TRUE(HBOBoardUtils::getUserRepoPathFromParam(out));
    EXPECT_EQ(out, "/repo/a");

    ASSERT_TRUE(params().removeParam("board.repoPaths"));
    out = "stale";
    EXPECT_FALSE(HBOBoardUtils::getUserRepoPathFromParam(out));
    EXPECT_EQ(out, "");
    EXPECT_TRUE(recorder.messages().empty());
}
