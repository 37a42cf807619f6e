// The reader's frame: what a parse reports and returns, deferred messages,
// and the rules of element and attribute names.
#include "parser_fixture.h"

#include <string>
#include <vector>

namespace {
using Ids = std::vector<std::string>;
}

TEST_F(ParserFixture, MissingFileSendsOnlyNotFoundAndLeavesCallerUntouched) {
    HBOBoard b;
    HBOBoardParser parser;
    bool validated = false;
    const std::string file = dir() + "/nowhere/board.xml";
    EXPECT_FALSE(parser.parseFile(file, &b, "", "", validated, nullptr));
    EXPECT_FALSE(validated);
    EXPECT_EQ(ids(), Ids{"49-54"});
    EXPECT_EQ(first("49-54").getArgs(), std::vector<std::string>{file});
    EXPECT_TRUE(b.getBoardFile().empty());
}

TEST_F(ParserFixture, MinimalBoardReadsAndChangelogIsRecordedOnlyWhenPresent) {
    const std::string file = write("board.xml", boardXml(basics("1.2"), "display_name=\"Test Board\" url=\"u\""));
    Parsed r = parse(file);
    EXPECT_TRUE(r.ok);
    EXPECT_TRUE(r.validated);
    EXPECT_TRUE(messages().empty());
    EXPECT_EQ(board().getBoardFile(), file);
    EXPECT_EQ(board().getName(), "acme:tb1:1.2");
    EXPECT_EQ(board().getDisplayName(), "Test Board");
    EXPECT_EQ(board().getSpecUrl(), "u");
    EXPECT_EQ(board().getDescription(), "A test board");
    EXPECT_EQ(board().getLongDesc(), "A test board");
    EXPECT_TRUE(board().getChangeLogFilename().empty());

    write("changelog.txt", "1.2 first\n");
    ASSERT_TRUE(parse(file).ok);
    EXPECT_EQ(board().getChangeLogFilename(), dir() + "/changelog.txt");
}

TEST_F(ParserFixture, UnreadableXmlEndsWithItsOwnMessageThenSummaryWithoutReason) {
    const std::string file = write("board.xml", "<board schema_version=\"2.1\"><file_version>1</board>");
    EXPECT_FALSE(parse(file).ok);
    EXPECT_EQ(ids(), (Ids{"49-111", "49-56"}));
    EXPECT_EQ(first("49-56").getArgs(), (std::vector<std::string>{file, ""}));
}

TEST_F(ParserFixture, RootWithoutChildrenFailsWithoutReason) {
    const std::string file = write("board.xml", boardXml(""));
    EXPECT_FALSE(parse(file).ok);
    EXPECT_EQ(ids(), Ids{"49-56"});
    EXPECT_EQ(first("49-56").getArgs()[1], "");
}

// The four ways out of the file reader: HEXError (its message, no reason),
// std::exception (its text as the reason), and a clean return.
TEST_F(ParserFixture, CaughtExceptionsBecomeTheSummaryReason) {
    const std::string bad = write("bad.xml", boardXml(
        "<compatible_board_revisions><revision id=\"x1\">A</revision></compatible_board_revisions>"
        "<file_version>1.0</file_version>"));
    EXPECT_FALSE(parse(bad).ok);
    EXPECT_EQ(ids(), (Ids{"49-69", "49-56"}));
    EXPECT_EQ(first("49-56").getArgs()[1], "");

    clearMessages();
    const std::string blanks = write("blanks.xml", boardXml(
        "<compatible_board_revisions><revision id=\"   \">A</revision></compatible_board_revisions>"
        "<file_version>1.0</file_version>"));
    EXPECT_FALSE(parse(blanks).ok);
    ASSERT_EQ(ids(), Ids{"49-56"});
    const std::string reason = first("49-56").getArgs()[1];
    EXPECT_EQ(reason.substr(0, 2), ", ");
    EXPECT_GT(reason.size(), 2u);
}

// Deferred faults always fail the board but are shown only with
// board.validateXML; the summary comes last either way.
TEST_F(ParserFixture, DeferredMessagesAreCountedAlwaysButFlushedOnlyWhenReporting) {
    const std::string file = write("board.xml", boardXml(
        "<compatible_board_revisions/><description>d</description>"));
    EXPECT_FALSE(parse(file).ok);
    EXPECT_EQ(ids(), Ids{"49-56"});

    clearMessages();
    setParam("board.validateXML", "true");
    Parsed r = parse(file);
    EXPECT_FALSE(r.ok);
    // No DOCTYPE: validation steps aside, the deferred faults follow in order.
    Ids got = ids();
    ASSERT_GE(got.size(), 3u);
    EXPECT_EQ(std::vector<std::string>(got.end() - 3, got.end()), (Ids{"49-97", "49-108", "49-56"}));
    EXPECT_FALSE(r.validated);
    EXPECT_EQ(first("49-97").getArgs(), std::vector<std::string>{file});
    EXPECT_EQ(first("49-108").getMask(), ComMsgMgr::MSG_ERROR);
    // The faults did not stop the read.
    EXPECT_EQ(board().getDescription(), "d");
}

// Sections may stand in any order and any case; attribute names are exact.
TEST_F(ParserFixture, SectionAndChildNamesIgnoreCaseButAttributeNamesDoNot) {
    const std::string file = write("board.xml", boardXml(
        "<PARAMETERS><Parameter name=\"p\" value=\"v\"/></PARAMETERS>"
        "<Jumpers><jumper name=\"j\" default_value=\"true\"><Description>x</Description></jumper></Jumpers>"
        "<COMPATIBLE_Board_Revisions><Revision id=\"2\">B</Revision></COMPATIBLE_Board_Revisions>"
        "<File_Version>3.1</File_Version><DESCRIPTION>Upper</DESCRIPTION>"));
    ASSERT_TRUE(parse(file).ok);
    EXPECT_EQ(board().getVersion(), "3.1");
    EXPECT_EQ(board().getDescription(), "Upper");
    EXPECT_EQ(board().getCompatibleBoardRevisions(), (std::map<int, std::string>{{2, "B"}}));
    ASSERT_EQ(board().getParameters().size(), 1u);
    ASSERT_EQ(board().getJumpers().size(), 1u);

    clearMessages();
    const std::string wrongCase = write("case.xml",
        "<board schema_version=\"2.1\" Vendor=\"acme\" NAME=\"tb1\">" + basics() + "</board>");
    EXPECT_FALSE(parse(wrongCase).ok);
    EXPECT_EQ(ids(), Ids{"49-56"});
    EXPECT_EQ(board().getName(), "::1.0");
}

TEST_F(ParserFixture, LaterChecksFollowSchemaVersionByDottedRule) {
    enableScope("board.parse");
    const std::string on = "HBOBoardParser: 2020.1 DRC checks enabled for '";
    auto checksOn = [&](const std::string& schema) {
        clearMessages();
        parse(write("b" + schema + ".xml", boardXml(basics(), "", schema)));
        for (const std::string& line : debugLines("board.parse"))
            if (line.compare(0, on.size(), on) == 0)
                return true;
        return false;
    };
    EXPECT_FALSE(checksOn("2.1"));
    EXPECT_TRUE(checksOn("2.2"));
    EXPECT_TRUE(checksOn("2.10"));
    EXPECT_FALSE(checksOn("2.2.0"));
    setParam("board.enable2020Checks", "true");
    EXPECT_TRUE(checksOn("2.0"));
}

TEST_F(ParserFixture, ParserRunsWithFlagsOffWhenHostRemovedParameters) {
    HPAParamMgr* mgr = HPAParamMgr::getParamMgr();
    HPAParam* validate = mgr->findParam("board.validateXML");
    ASSERT_NE(validate, nullptr);
    const std::string description = validate->getDescription();
    mgr->setValue("board.validateXML", "true");
    mgr->removeParam("board.validateXML");
    const std::string file = write("board.xml", boardXml("<compatible_board_revisions/>" + basics()));
    Parsed r = parse(file);
    mgr->registerBoolParam("board.validateXML", description, false);
    // Not validating and not reporting: the deferred fault is silent.
    EXPECT_FALSE(r.ok);
    EXPECT_TRUE(r.validated);
    EXPECT_EQ(ids(), Ids{"49-56"});
}
