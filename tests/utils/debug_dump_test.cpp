// The repository debug print, confined to two boards and a true parameter.
#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "HBOBoard.h"
#include "HBOBoardUtils.h"
#include "HPAParamMgr.h"
#include "ParamStoreGuard.h"

namespace {

std::string dump(const std::string& param, const std::string& stage, HBOBoard* board) {
    ::testing::internal::CaptureStdout();
    HBOBoardUtils::DumpDebugStr(param, stage, board);
    return ::testing::internal::GetCapturedStdout();
}

void nameBoard(HBOBoard& board, const std::string& name) {
    board.setName("korvelhw", name, "1.0");
    board.setDescription("Evaluation board " + name);
}

}  // namespace

TEST(DumpDebugStr, PrintsOneLineForTheTwoBoardsWhenTheParameterIsTrue) {
    ParamStoreGuard guard;
    ASSERT_TRUE(HPAParamMgr::getParamMgr()->setValue("board.debugBoardRepo", "true"));
    for (const char* name : {"bdf0", "bdg0"}) {
        HBOBoard board;
        nameBoard(board, name);
        std::ostringstream expected;
        expected << "board.debugBoardRepo : Adding board for board address " << static_cast<const void*>(&board)
                 << " Evaluation board " << name << "\n";
        EXPECT_EQ(dump("board.debugBoardRepo", "Adding board", &board), expected.str());
    }
}

TEST(DumpDebugStr, SilentForOtherBoardsNullAndAFalseOrMissingParameter) {
    ParamStoreGuard guard;
    HPAParamMgr* mgr = HPAParamMgr::getParamMgr();
    HBOBoard bdf0;
    nameBoard(bdf0, "bdf0");

    // Parameter at its default (false), or not registered at all.
    EXPECT_EQ(dump("board.debugBoardRepo", "stage", &bdf0), "");
    EXPECT_EQ(dump("board.noSuchParameter", "stage", &bdf0), "");

    ASSERT_TRUE(mgr->setValue("board.debugBoardRepo", "true"));
    for (const char* name : {"bdb6", "bdf1", "bdf", "bdf00", "xbdg0"}) {
        HBOBoard other;
        nameBoard(other, name);
        EXPECT_EQ(dump("board.debugBoardRepo", "stage", &other), "") << name;
    }
    EXPECT_EQ(dump("board.debugBoardRepo", "stage", nullptr), "");

    ASSERT_TRUE(mgr->removeParam("board.debugBoardRepo"));
    EXPECT_EQ(dump("board.debugBoardRepo", "stage", &bdf0), "");
}
