// The reader's frame: what a parse reports and returns, deferred messages,
// and the rules of element and attribute names.
#include "parser_fixture.h"

TEST_F(ParserFixture, MissingFileSendsOnlyNotFoundAndLeavesCallerUntouched) {
    HBOBoard b;
    bool validated = false;
    const std::string file = dir() + "/nowhere/board.xml";
    EXPECT_FALSE(HBOBoardParser().parseFile(file, &b, "", "", validated, nullptr));
    EXPECT_FALSE(validated);
    EXPECT_EQ(argsOf("49-54"), Args{{file}});
    EXPECT_EQ(ids(), Strings{"49-54"});
    EXPECT_TRUE(b.getBoardFile().empty());
}

TEST_F(ParserFixture, MinimalBoardReadsAndChangelogIsRecordedOnlyWhenPresent) {
    const std::string file = write("board.xml", boardXml(basics("1.2"), "display_name=\"Test Board\" url=\"u\""));
    Parsed r = parse(file);
    EXPECT_EQ((std::vector<bool>{r.ok, r.validated}), (std::vector<bool>{true, true}));
    EXPECT_TRUE(messages().empty());
    EXPECT_EQ((Strings{board().getBoardFile(), board().getName(), board().getDisplayName(), board().getSpecUrl(),
                       board().getDescription(), board().getLongDesc(), board().getChangeLogFilename()}),
              (Strings{file, "acme:tb1:1.2", "Test Board", "u", "A test board", "A test board", ""}));
    write("changelog.txt", "1.2 first\n");
    ASSERT_TRUE(parse(file).ok);
    EXPECT_EQ(board().getChangeLogFilename(), dir() + "/changelog.txt");
}

// Unreadable XML and an empty root end with the summary and no reason.
TEST_F(ParserFixture, FailuresEndWithTheSummaryWithoutReason) {
    const std::string unreadable = write("u.xml", "<board schema_version=\"2.1\"><file_version>1</board>");
    EXPECT_FALSE(parse(unreadable).ok);
    EXPECT_EQ(ids(), (Strings{"49-111", "49-56"}));
    EXPECT_EQ(first("49-56").getArgs(), (Strings{unreadable, ""}));
    clearMessages();
    EXPECT_FALSE(parse(write("empty.xml", boardXml(""))).ok);
    EXPECT_EQ(ids(), Strings{"49-56"});
    EXPECT_EQ(arg("49-56", 1), "");
}

// Deferred faults always fail the board but are shown only with
// board.validateXML; the summary comes last either way.
TEST_F(ParserFixture, DeferredMessagesAreCountedAlwaysButFlushedOnlyWhenReporting) {
    const std::string file = write("board.xml", boardXml("<compatible_board_revisions/><description>d</description>"));
    EXPECT_FALSE(parse(file).ok);
    EXPECT_EQ(ids(), Strings{"49-56"});
    clearMessages();
    setParam("board.validateXML", "true");
    Parsed r = parse(file);
    EXPECT_FALSE(r.ok);
    // No DOCTYPE: validation steps aside, the deferred faults follow in order.
    Strings got = ids();
    ASSERT_GE(got.size(), 3u);
    EXPECT_EQ(Strings(got.end() - 3, got.end()), (Strings{"49-97", "49-108", "49-56"}));
    EXPECT_FALSE(r.validated);
    EXPECT_EQ(first("49-97").getArgs(), Strings{file});
    EXPECT_EQ(first("49-108").getMask(), ComMsgMgr::MSG_ERROR);
    EXPECT_EQ(board().getDescription(), "d");  // the faults did not stop the read
}

// Sections may stand in any order and any case; attribute names are exact.
TEST_F(ParserFixture, SectionAndChildNamesIgnoreCaseButAttributeNamesDoNot) {
    ASSERT_TRUE(parse(write("board.xml", boardXml(
        "<PARAMETERS><Parameter name=\"p\" value=\"v\"/></PARAMETERS>"
        "<Jumpers><jumper name=\"j\" default_value=\"true\"><Description>x</Description></jumper></Jumpers>"
        "<COMPATIBLE_Board_Revisions><Revision id=\"2\">B</Revision></COMPATIBLE_Board_Revisions>"
        "<File_Version>3.1</File_Version><DESCRIPTION>Upper</DESCRIPTION>"))).ok);
    EXPECT_EQ(board().getVersion(), "3.1");
    EXPECT_EQ(board().getDescription(), "Upper");
    EXPECT_EQ(board().getCompatibleBoardRevisions(), (std::map<int, std::string>{{2, "B"}}));
    EXPECT_EQ(board().getParameters().size(), 1u);
    EXPECT_EQ(board().getJumpers().size(), 1u);
    clearMessages();
    EXPECT_FALSE(parse(write("case.xml", "<board schema_version=\"2.1\" Vendor=\"acme\" NAME=\"tb1\">" + basics() +
                                             "</board>")).ok);
    EXPECT_EQ(ids(), Strings{"49-56"});
    EXPECT_EQ(board().getName(), "::1.0");
}

TEST_F(ParserFixture, LaterChecksFollowSchemaVersionByDottedRule) {
    enableScope("board.parse");
    const std::string on = "HBOBoardParser: 2020.1 DRC checks enabled for '";
    auto checksOn = [&](const std::string& schema) {
        clearMessages();
        parse(write("b" + schema + ".xml", boardXml(basics(), "", schema)));
        for (const ComMsgMgrInstance& m : messages())
            if (m.getChannel() == "board.parse" && m.getText().compare(0, on.size(), on) == 0)
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
    Parsed r = parse(write("board.xml", boardXml("<compatible_board_revisions/>" + basics())));
    mgr->registerBoolParam("board.validateXML", description, false);
    // Not validating and not reporting: the deferred fault is silent.
    EXPECT_EQ((std::vector<bool>{r.ok, r.validated}), (std::vector<bool>{false, true}));
    EXPECT_EQ(ids(), Strings{"49-56"});
}
