#include <gtest/gtest.h>

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <set>
#include <string>
#include <vector>

#include "placeholders.h"
#include "ComMsgMgr.h"
#include "HEXAll.h"
#include "HTCErrors.h"

namespace {

// Collects what listeners hear and keeps standard error quiet.
class Messages : public ::testing::Test {
protected:
    void SetUp() override {
        ComMsgMgr::setPrintToStderr(false);
        m_handle = ComMsgMgr::addListener([this](const ComMsgMgrInstance& m) { heard.push_back(m); });
    }
    void TearDown() override {
        ComMsgMgr::removeListener(m_handle);
        ComMsgMgr::setPrintToStderr(true);
    }
    std::vector<ComMsgMgrInstance> heard;

private:
    int m_handle = 0;
};

}  // namespace

TEST(MessageCatalogue, EveryIdHasATextWithItsArgumentsInOrder) {
    std::vector<std::string> ids = ComMsgMgr::catalogueIds();
    ASSERT_EQ(ids.size(), 78u);
    EXPECT_EQ(ids.front(), "49-4");
    EXPECT_EQ(ids.back(), "17-3635");
    std::set<std::string> seen;
    for (const std::string& id : ids) {
        SCOPED_TRACE(id);
        EXPECT_TRUE(seen.insert(id).second) << "listed twice";
        const char* text = ComMsgMgr::catalogueText(id);
        const char* format = ComMsgMgr::catalogueFormat(id);
        ASSERT_NE(text, nullptr);
        ASSERT_NE(format, nullptr);
        EXPECT_GT(std::string(text).size(), 10u);
        EXPECT_EQ(placeholders(text), placeholders(format));
    }
    EXPECT_EQ(std::string(ComMsgMgr::catalogueFormat("49-141")), "%s%d%d");
    EXPECT_EQ(std::string(ComMsgMgr::catalogueFormat("49-142")), "%d%s%s");
    EXPECT_EQ(std::string(ComMsgMgr::catalogueFormat("49-149")), "%s%s%s%s");
    EXPECT_EQ(ComMsgMgr::catalogueText("49-5"), nullptr);
    EXPECT_EQ(ComMsgMgr::catalogueText("49-1"), nullptr);
}

TEST_F(Messages, SendCarriesIdSeverityScopeAndArgumentTexts) {
    std::string file = "/boards/x/board.xml";
    ComMsgMgr::sendMsg::eval(2, __FILE__, __LINE__, "board", ComMsgMgr::MSG_WARNING, "@49-69@%s%s", file,
                             "bad port");
    ComMsgMgr::sendMsg::eval(3, __FILE__, __LINE__, "board", ComMsgMgr::MSG_ERROR, "@49-141@%s%d%d", "vcc", 4, 4);
    ComMsgMgr::sendMsg::eval(0, __FILE__, __LINE__, "board", ComMsgMgr::MSG_ERROR, "@49-85@");
    ASSERT_EQ(heard.size(), 3u);

    EXPECT_EQ(heard[0].getId(), "49-69");
    EXPECT_EQ(heard[0].getMask(), ComMsgMgr::MSG_WARNING);
    EXPECT_EQ(heard[0].getScope(), "board");
    EXPECT_EQ(heard[0].getArgs(), (std::vector<std::string>{file, "bad port"}));
    EXPECT_EQ(heard[0].getText(), "Board file '/boards/x/board.xml': bad port");

    EXPECT_EQ(heard[1].getArgs(), (std::vector<std::string>{"vcc", "4", "4"}));
    EXPECT_NE(heard[1].getText().find("'vcc' has 4 phases"), std::string::npos);

    for (const ComMsgMgrInstance& m : heard) {
        EXPECT_EQ(m.getArgCount(), static_cast<int>(m.getArgs().size())) << m.getId();
        EXPECT_EQ(placeholders(m.getFormat()), placeholders(ComMsgMgr::catalogueFormat(m.getId())));
    }
    EXPECT_EQ(heard[2].getArgCount(), 0);
}

TEST_F(Messages, TextOfUnknownIdsAndDebugLines) {
    ComMsgMgrInstance unknown = ComMsgMgrInstance::createInstance::eval(
        2, __FILE__, __LINE__, "board", ComMsgMgr::MSG_INFO, "@99-1@value %s of %d%%", "x", 7);
    EXPECT_EQ(unknown.getId(), "99-1");
    EXPECT_EQ(unknown.getText(), "value x of 7%");

    ComMsgMgrInstance debug = ComMsgMgrInstance::createInstance::eval(
        1, __FILE__, __LINE__, "board", ComMsgMgr::MSG_DEBUG1, "HBOBoardParser parsing '%s'\n", "b.xml");
    EXPECT_EQ(debug.getId(), "");
    EXPECT_EQ(debug.getText(), "HBOBoardParser parsing 'b.xml'");

    // A built message is not delivered until it is sent.
    EXPECT_TRUE(heard.empty());
    ComMsgMgr::sendMessage(unknown);
    ASSERT_EQ(heard.size(), 1u);
    EXPECT_EQ(heard[0].getText(), "value x of 7%");
}

TEST_F(Messages, SendMsgStringDeliversAnIdWithoutArguments) {
    ComMsgMgr::sendMsgString("@17-2520@", ComMsgMgr::MSG_ERROR, "common");
    ASSERT_EQ(heard.size(), 1u);
    EXPECT_EQ(heard[0].getId(), "17-2520");
    EXPECT_EQ(heard[0].getScope(), "common");
    EXPECT_EQ(heard[0].getMask(), ComMsgMgr::MSG_ERROR);
    EXPECT_TRUE(heard[0].getArgs().empty());
    EXPECT_EQ(heard[0].getText(), ComMsgMgr::catalogueText("17-2520"));
}

TEST(MessagePrinting, OneLinePerMessageOnStandardError) {
    struct Case {
        ComMsgMgr::MsgMask mask;
        const char* severity;
    };
    const Case cases[] = {{ComMsgMgr::MSG_INFO, "INFO"},
                          {ComMsgMgr::MSG_WARNING, "WARNING"},
                          {ComMsgMgr::MSG_CRITICAL_WARNING, "CRITICAL WARNING"},
                          {ComMsgMgr::MSG_ERROR, "ERROR"},
                          {ComMsgMgr::MSG_NOTE, "NOTE"}};
    for (const Case& c : cases) {
        testing::internal::CaptureStderr();
        ComMsgMgr::sendMsg::eval(1, __FILE__, __LINE__, "board", c.mask, "@49-36@%s", "a.xml");
        std::string out = testing::internal::GetCapturedStderr();
        EXPECT_EQ(out, std::string(c.severity) + ": [board 49-36] The file 'a.xml' does not exist.\n");
    }

    ComMsgMgr::enableScope("board.parse");
    testing::internal::CaptureStderr();
    ComMsgMgr::sendScopedMsg::eval(1, __FILE__, __LINE__, "board", "board.parse", ComMsgMgr::MSG_DEBUG2,
                                   "HBOBoardParser parsing pin file'%s'\n", "p.xml");
    std::string debug = testing::internal::GetCapturedStderr();
    ComMsgMgr::enableScope("board.parse", false);
    EXPECT_EQ(debug, "DEBUG: [board board.parse] HBOBoardParser parsing pin file'p.xml'\n");

    ComMsgMgr::setPrintToStderr(false);
    testing::internal::CaptureStderr();
    ComMsgMgr::sendMsg::eval(1, __FILE__, __LINE__, "board", ComMsgMgr::MSG_ERROR, "@49-36@%s", "a.xml");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    ComMsgMgr::setPrintToStderr(true);
}

TEST_F(Messages, ListenersRunInOrderAndMayDetachThemselves) {
    std::vector<std::string> calls;
    int first = 0, third = 0;
    first = ComMsgMgr::addListener([&](const ComMsgMgrInstance&) {
        calls.push_back("first");
        ComMsgMgr::removeListener(first);
    });
    int second = ComMsgMgr::addListener([&](const ComMsgMgrInstance&) {
        calls.push_back("second");
        // Detaching a later listener during delivery keeps it from this message too.
        ComMsgMgr::removeListener(third);
    });
    third = ComMsgMgr::addListener([&](const ComMsgMgrInstance&) { calls.push_back("third"); });

    ComMsgMgr::sendMsgString("@49-85@", ComMsgMgr::MSG_ERROR, "board");
    ComMsgMgr::sendMsgString("@49-86@", ComMsgMgr::MSG_ERROR, "board");
    ComMsgMgr::removeListener(second);
    ComMsgMgr::sendMsgString("@49-73@", ComMsgMgr::MSG_ERROR, "board");

    EXPECT_EQ(calls, (std::vector<std::string>{"first", "second", "second"}));
    EXPECT_EQ(heard.size(), 3u);
}

namespace {
// Counts how often a debug argument is turned into text.
struct CountedArg {
    int* count;
    operator std::string() const {
        ++*count;
        return "counted";
    }
};
}  // namespace

TEST_F(Messages, ChannelsOffBuildAndDeliverNothing) {
    int built = 0;
    CountedArg arg{&built};
    ASSERT_FALSE(ComMsgMgr::hasScope("board.findBoards"));
    ComMsgMgr::sendScopedMsg::eval(1, __FILE__, __LINE__, "board", "board.findBoards", ComMsgMgr::MSG_DEBUG1,
                                   "HBOBoardCReposMgr::findBoardFiles searching '%s'\n", arg);
    EXPECT_EQ(built, 0);
    EXPECT_TRUE(heard.empty());

    ComMsgMgr::enableScope("board.findBoards");
    EXPECT_TRUE(ComMsgMgr::hasScope("board.findBoards"));
    EXPECT_FALSE(ComMsgMgr::hasScope("board.find"));
    ComMsgMgr::sendScopedMsg::eval(1, __FILE__, __LINE__, "board", "board.findBoards", ComMsgMgr::MSG_DEBUG1,
                                   "HBOBoardCReposMgr::findBoardFiles searching '%s'\n", arg);
    ComMsgMgr::enableScope("board.findBoards", false);
    EXPECT_FALSE(ComMsgMgr::hasScope("board.findBoards"));
    EXPECT_EQ(built, 1);
    ASSERT_EQ(heard.size(), 1u);
    EXPECT_EQ(heard[0].getChannel(), "board.findBoards");
    EXPECT_EQ(heard[0].getMask(), ComMsgMgr::MSG_DEBUG1);
    EXPECT_EQ(heard[0].getText(), "HBOBoardCReposMgr::findBoardFiles searching 'counted'");
}

// ZR_DEBUG is read once per process, so it is checked in a child run of this program.
// ZR_DEBUG is read once per process, so each setting is tried in a run of the
// tool; the board read prints on the channels board.parse and board.dataProps.
namespace {

std::string debugChannelsSeen(const std::string& zrDebug) {
    const std::string cmd = "ZR_DEBUG='" + zrDebug + "' '" + ZR_ZRBOARD_BIN + "' check '" + ZR_TEST_DATA_DIR +
                            "/boards/board_files/tarnwick/1.2/board.xml' 2>&1";
    std::string seen;
    if (FILE* out = popen(cmd.c_str(), "r")) {
        char line[4096];
        while (std::fgets(line, sizeof line, out)) {
            const std::string l = line;
            for (const char* channel : {"[board board.parse]", "[board board.dataProps]"})
                if (l.compare(0, 7, "DEBUG: ") == 0 && l.find(channel) == 7 && seen.find(channel) == std::string::npos)
                    seen += channel;
        }
        pclose(out);
    }
    return seen;
}

}  // namespace

TEST(DebugChannels, ZrDebugSwitchesOnTheChannelsItNames) {
    EXPECT_EQ(debugChannelsSeen(" board.parse,,board.dataProps"), "[board board.parse][board board.dataProps]");
    EXPECT_EQ(debugChannelsSeen(",board.dataProps "), "[board board.dataProps]");
    EXPECT_EQ(debugChannelsSeen("board.parse"), "[board board.parse]");
    // A channel's parent name is not the channel.
    EXPECT_EQ(debugChannelsSeen("board,board.event"), "");
}

TEST(Exceptions, CarryTheirMessage) {
    ComMsgMgrInstance m = ComMsgMgrInstance::createInstance::eval(1, __FILE__, __LINE__, "board",
                                                                  ComMsgMgr::MSG_ERROR, "@49-110@%s", "b.xml.gz");
    try {
        throw HEXError(m);
    } catch (const HEXAll& e) {
        EXPECT_EQ(std::string(e.what()), "ERROR: [board 49-110] The packed file 'b.xml.gz' could not be opened.");
        EXPECT_EQ(e.getMsg().getId(), "49-110");
    }

    try {
        throw HEXAlgException("index out of range");
    } catch (const HEXError& e) {
        EXPECT_STREQ(e.what(), "index out of range");
    }

    try {
        throw HTCErrors::index_out_of_range(7);
    } catch (const HEXError& e) {
        EXPECT_STREQ(e.what(), "index is out of range");
    }

    // A percent sign in our own text is printed as it stands.
    std::vector<ComMsgMgrInstance> heard;
    ComMsgMgr::setPrintToStderr(false);
    int h = ComMsgMgr::addListener([&](const ComMsgMgrInstance& msg) { heard.push_back(msg); });
    HEXInternalException("Conversion failed at 100%s").print();
    ComMsgMgr::removeListener(h);
    ComMsgMgr::setPrintToStderr(true);
    ASSERT_EQ(heard.size(), 1u);
    EXPECT_EQ(heard[0].getText(), "Conversion failed at 100%s");
    EXPECT_EQ(heard[0].getMask(), ComMsgMgr::MSG_ERROR);
}
