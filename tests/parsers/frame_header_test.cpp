// The root of board.xml: identity attributes, revisions, images, parameters
// and jumpers, and the strict integer rule.
#include "parser_fixture.h"

#include "HBOImage.h"
#include "HBOJumper.h"
#include "HBOParameter.h"

namespace {

std::string revisions(const std::string& id) {
    return "<compatible_board_revisions><revision id=\"" + id +
           "\">R</revision></compatible_board_revisions><file_version>1.0</file_version>";
}

}  // namespace

// is_integrated compares exactly, supports_ced goes through the boolean words,
// jumper default_value ignores case: three different rules on purpose.
TEST_F(ParserFixture, BooleanAttributesFollowTheirOwnRules) {
    struct Case {
        const char* attrs;
        bool integrated;
        bool ced;
    };
    const Case cases[] = {
        {"is_integrated=\"true\"", true, true},   {"is_integrated=\"TRUE\"", false, true},
        {"supports_ced=\"no\"", false, false},    {"supports_ced=\"banana\"", false, false},
        {"supports_ced=\"YES\"", false, true},    {"supports_ced=\"\"", false, true},
    };
    int i = 0;
    for (const Case& c : cases) {
        ASSERT_TRUE(parse(write("b" + std::to_string(i++) + ".xml", boardXml(basics(), c.attrs))).ok) << c.attrs;
        EXPECT_EQ(board().isIntegratedBoard(), c.integrated) << c.attrs;
        EXPECT_EQ(board().getSupportsCED(), c.ced) << c.attrs;
    }

    const std::string file = write("jumpers.xml", boardXml(basics() +
        "<jumpers>"
        "<jumper name=\"upper\" default_value=\"TRUE\"><description>u</description></jumper>"
        "<jumper name=\"plain\" default_value=\"true\"><description>p</description></jumper>"
        "<jumper name=\"off\" default_value=\"yes\"><description>o</description></jumper>"
        "<jumper name=\"none\"><description>n</description></jumper>"
        "</jumpers>"));
    ASSERT_TRUE(parse(file).ok);
    const std::vector<HBOJumper*>& jumpers = board().getJumpers();
    ASSERT_EQ(jumpers.size(), 4u);
    EXPECT_TRUE(jumpers[0]->getDefaultValue());
    EXPECT_TRUE(jumpers[1]->getDefaultValue());
    EXPECT_FALSE(jumpers[2]->getDefaultValue());
    EXPECT_FALSE(jumpers[3]->getDefaultValue());
}

TEST_F(ParserFixture, JumpersAreMadeOncePerDescription) {
    const std::string file = write("board.xml", boardXml(basics() +
        "<jumpers>"
        "<jumper name=\"silent\"/>"
        "<jumper name=\"one\"><other/><description>first</description></jumper>"
        "<jumper name=\"two\"><description>a</description><DESCRIPTION>b</DESCRIPTION></jumper>"
        "</jumpers>"));
    ASSERT_TRUE(parse(file).ok);
    const std::vector<HBOJumper*>& jumpers = board().getJumpers();
    ASSERT_EQ(jumpers.size(), 3u);
    EXPECT_EQ(jumpers[0]->getName(), "one");
    EXPECT_EQ(jumpers[0]->getDescription(), "first");
    EXPECT_EQ(jumpers[1]->getName(), "two");
    EXPECT_EQ(jumpers[1]->getDescription(), "a");
    EXPECT_EQ(jumpers[2]->getDescription(), "b");
    for (HBOJumper* j : jumpers)
        EXPECT_EQ(j->getOwner(), &board());
    EXPECT_TRUE(messages().empty());
}

TEST_F(ParserFixture, ParametersTakeSixAttributesInOrder) {
    const std::string file = write("board.xml", boardXml(basics() +
        "<parameters>"
        "<parameter name=\"n\" value=\"v\" value_type=\"t\" value_min=\"1\" value_max=\"9\" readonly=\"r\"/>"
        "<anything name=\"bare\"/>"
        "</parameters>"));
    ASSERT_TRUE(parse(file).ok);
    const std::vector<HBOParameter*>& params = board().getParameters();
    ASSERT_EQ(params.size(), 2u);
    EXPECT_EQ(params[0]->getName(), "n");
    EXPECT_EQ(params[0]->getValue(), "v");
    EXPECT_EQ(params[0]->getValueType(), "t");
    EXPECT_EQ(params[0]->getValueMin(), "1");
    EXPECT_EQ(params[0]->getValueMax(), "9");
    EXPECT_EQ(params[0]->getReadOnly(), "r");
    EXPECT_EQ(params[1]->getName(), "bare");
    EXPECT_EQ(params[1]->getValue(), "");
}

TEST_F(ParserFixture, RevisionsMapIdsAndLaterDuplicatesWin) {
    const std::string file = write("board.xml", boardXml(
        "<compatible_board_revisions>"
        "<revision id=\"3\">C</revision><rev id=\" 1\">A</rev><revision id=\"3\">C2</revision>"
        "<revision id=\"1 2\">B</revision>"
        "</compatible_board_revisions><file_version>1.0</file_version>"
        "<description>first</description><description>last</description>"
        "<file_version>2.0</file_version>"));
    ASSERT_TRUE(parse(file).ok);
    // "1 2" converts as far as it fits, to 1, and replaces " 1".
    EXPECT_EQ(board().getCompatibleBoardRevisions(), (std::map<int, std::string>{{1, "B"}, {3, "C2"}}));
    EXPECT_EQ(board().getDescription(), "last");
    EXPECT_EQ(board().getVersion(), "2.0");
}

TEST_F(ParserFixture, NonNegativeIntegerRuleRejectsSignsAndLetters) {
    for (const std::string id : {"-1", "+1", "1a", "0x10", "", "1.5"}) {
        clearMessages();
        const std::string file = write("board.xml", boardXml(revisions(id)));
        EXPECT_FALSE(parse(file).ok) << id;
        ASSERT_EQ(count("49-69"), 1) << id;
        EXPECT_EQ(first("49-69").getArgs(),
                  (std::vector<std::string>{
                      file, "revision id value \"" + id + "\" is not valid, must be a non-negative integer."}))
            << id;
        EXPECT_EQ(first("49-56").getArgs()[1], "") << id;
    }
    // Allowed characters that the standard conversion then refuses: its own
    // exception, reported as the summary's reason.
    for (const std::string id : {"  ", "99999999999"}) {
        clearMessages();
        EXPECT_FALSE(parse(write("board.xml", boardXml(revisions(id)))).ok) << id;
        EXPECT_EQ(count("49-69"), 0) << id;
        ASSERT_EQ(count("49-56"), 1) << id;
        EXPECT_NE(first("49-56").getArgs()[1], "") << id;
    }
    clearMessages();
    ASSERT_TRUE(parse(write("board.xml", boardXml(revisions(" 007 ")))).ok);
    EXPECT_EQ(board().getCompatibleBoardRevisions().begin()->first, 7);
}

TEST_F(ParserFixture, BoardImageIsLastHighResolutionBoardPicture) {
    const std::string file = write("img/board.xml", boardXml(basics() +
        "<images>"
        "<image name=\"a.jpg\" sub_type=\"board\" resolution=\"high\"/>"
        "<image name=\"b.jpg\" sub_type=\"BOARD\" display_name=\"B\"><description>one</description>"
        "<description>two</description></image>"
        "<image name=\"c.jpg\" sub_type=\"board\" resolution=\"low\"/>"
        "<picture name=\"d.jpg\" sub_type=\"chip\"/>"
        "</images>"));
    ASSERT_TRUE(parse(file).ok);
    const std::vector<HBOImage*>& images = board().getImages();
    ASSERT_EQ(images.size(), 4u);
    const std::string d = dir() + "/img/";
    EXPECT_EQ(images[0]->getName(), d + "a.jpg");
    EXPECT_EQ(images[1]->getResolution(), "high");
    EXPECT_EQ(images[1]->getDisplayName(), "B");
    EXPECT_EQ(images[1]->getDescription(), "two");
    EXPECT_EQ(images[2]->getResolution(), "low");
    EXPECT_EQ(images[3]->getSubType(), "chip");
    // b.jpg qualifies through the default resolution and wins over a.jpg.
    EXPECT_EQ(board().getBoardImage(), d + "b.jpg");
}

TEST_F(ParserFixture, MissingIdentityIsDeferredAndReadingGoesOn) {
    setParam("board.validateXML", "true");
    const std::string file = write("board.xml",
        "<board schema_version=\"2.1\" name=\"tb1\">"
        "<compatible_board_revisions><revision id=\"0\">R</revision></compatible_board_revisions>"
        "<parameters><parameter name=\"p\"/></parameters></board>");
    EXPECT_FALSE(parse(file).ok);
    EXPECT_EQ(count("49-108"), 1);
    EXPECT_EQ(board().getParameters().size(), 1u);
    EXPECT_EQ(board().getBoardName(), "tb1");
}
