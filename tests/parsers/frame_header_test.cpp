// The root of board.xml: identity attributes, revisions, images, parameters
// and jumpers, and the strict integer rule.
#include "parser_fixture.h"

#include "HBOParameter.h"

namespace {

std::string revisions(const std::string& id) {
    return "<compatible_board_revisions><revision id=\"" + id +
           "\">R</revision></compatible_board_revisions><file_version>1.0</file_version>";
}

}  // namespace

// is_integrated compares exactly, supports_ced goes through the boolean words,
// jumper default_value ignores case (below): three different rules on purpose.
TEST_F(ParserFixture, BooleanAttributesFollowTheirOwnRules) {
    const struct {
        const char* attrs;
        bool integrated, ced;
    } cases[] = {
        {"is_integrated=\"true\"", true, true}, {"is_integrated=\"TRUE\"", false, true},
        {"supports_ced=\"no\"", false, false},  {"supports_ced=\"banana\"", false, false},
        {"supports_ced=\"YES\"", false, true},  {"supports_ced=\"\"", false, true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.attrs);
        ASSERT_TRUE(read("b.xml", "", c.attrs).ok);
        EXPECT_EQ(board().isIntegratedBoard(), c.integrated);
        EXPECT_EQ(board().getSupportsCED(), c.ced);
    }
}

// A jumper is made for each description element and for none without one.
TEST_F(ParserFixture, JumpersAreMadeOncePerDescription) {
    ASSERT_TRUE(read("board.xml", "<jumpers><jumper name=\"silent\"/>"
        "<jumper name=\"upper\" default_value=\"TRUE\"><other/><description>first</description></jumper>"
        "<jumper name=\"off\" default_value=\"yes\"><description>a</description><DESCRIPTION>b</DESCRIPTION></jumper>"
        "<jumper name=\"plain\" default_value=\"true\"><description>p</description></jumper>"
        "<jumper name=\"none\"><description>n</description></jumper></jumpers>").ok);
    Strings got;
    for (HBOJumper* j : board().getJumpers()) {
        got.push_back(j->getName() + "=" + j->getDescription() + (j->getDefaultValue() ? ":on" : ":off"));
        EXPECT_EQ(j->getOwner(), &board());
    }
    EXPECT_EQ(got, (Strings{"upper=first:on", "off=a:off", "off=b:off", "plain=p:on", "none=n:off"}));
    EXPECT_TRUE(messages().empty());
}

TEST_F(ParserFixture, ParametersTakeSixAttributesInOrder) {
    ASSERT_TRUE(read("board.xml", "<parameters>"
        "<parameter name=\"n\" value=\"v\" value_type=\"t\" value_min=\"1\" value_max=\"9\" readonly=\"r\"/>"
        "<anything name=\"bare\"/></parameters>").ok);
    const std::vector<HBOParameter*>& p = board().getParameters();
    ASSERT_EQ(p.size(), 2u);
    EXPECT_EQ((Strings{p[0]->getName(), p[0]->getValue(), p[0]->getValueType(), p[0]->getValueMin(),
                       p[0]->getValueMax(), p[0]->getReadOnly(), p[1]->getName(), p[1]->getValue()}),
              (Strings{"n", "v", "t", "1", "9", "r", "bare", ""}));
}

TEST_F(ParserFixture, RevisionsMapIdsAndLaterDuplicatesWin) {
    ASSERT_TRUE(parse(write("board.xml", boardXml(
        "<compatible_board_revisions>"
        "<revision id=\"3\">C</revision><rev id=\" 1\">A</rev><revision id=\"3\">C2</revision>"
        "<revision id=\"1 2\">B</revision></compatible_board_revisions><file_version>1.0</file_version>"
        "<description>first</description><description>last</description><file_version>2.0</file_version>"))).ok);
    // "1 2" converts as far as it fits, to 1, and replaces " 1".
    EXPECT_EQ(board().getCompatibleBoardRevisions(), (std::map<int, std::string>{{1, "B"}, {3, "C2"}}));
    EXPECT_EQ(board().getDescription(), "last");
    EXPECT_EQ(board().getVersion(), "2.0");
}

TEST_F(ParserFixture, NonNegativeIntegerRuleRejectsSignsAndLetters) {
    for (const std::string id : {"-1", "+1", "1a", "0x10", "", "1.5"}) {
        SCOPED_TRACE(id);
        clearMessages();
        const std::string file = write("board.xml", boardXml(revisions(id)));
        EXPECT_FALSE(parse(file).ok);
        EXPECT_EQ(argsOf("49-69"),
                  (Args{{file, "revision id value \"" + id + "\" is not valid, must be a non-negative integer."}}));
        // A HEXError: its own message, then the summary without reason.
        EXPECT_EQ(ids(), (Strings{"49-69", "49-56"}));
        EXPECT_EQ(arg("49-56", 1), "");
    }
    // Allowed characters that the standard conversion then refuses: its own
    // exception, whose text becomes the summary's reason.
    for (const std::string id : {"  ", "99999999999"}) {
        SCOPED_TRACE(id);
        clearMessages();
        EXPECT_FALSE(parse(write("board.xml", boardXml(revisions(id)))).ok);
        ASSERT_EQ(ids(), Strings{"49-56"});
        const std::string reason = arg("49-56", 1);
        EXPECT_EQ(reason.substr(0, 2), ", ");
        EXPECT_GT(reason.size(), 2u);
    }
    ASSERT_TRUE(parse(write("board.xml", boardXml(revisions(" 007 ")))).ok);
    EXPECT_EQ(board().getCompatibleBoardRevisions().begin()->first, 7);
}

TEST_F(ParserFixture, BoardImageIsLastHighResolutionBoardPicture) {
    ASSERT_TRUE(read("img/board.xml", "<images><image name=\"a.jpg\" sub_type=\"board\" resolution=\"high\"/>"
        "<image name=\"b.jpg\" sub_type=\"BOARD\" display_name=\"B\"><description>one</description>"
        "<description>two</description></image><image name=\"c.jpg\" sub_type=\"board\" resolution=\"low\"/>"
        "<picture name=\"d.jpg\" sub_type=\"chip\"/></images>").ok);
    const std::vector<HBOImage*>& images = board().getImages();
    ASSERT_EQ(images.size(), 4u);
    const std::string d = dir() + "/img/";
    EXPECT_EQ(images[0]->getName(), d + "a.jpg");
    EXPECT_EQ((Strings{images[1]->getResolution(), images[1]->getDisplayName(), images[1]->getDescription(),
                       images[2]->getResolution(), images[3]->getSubType()}),
              (Strings{"high", "B", "two", "low", "chip"}));
    // b.jpg qualifies through the default resolution and wins over a.jpg.
    EXPECT_EQ(board().getBoardImage(), d + "b.jpg");
}

TEST_F(ParserFixture, MissingIdentityIsDeferredAndReadingGoesOn) {
    setParam("board.validateXML", "true");
    EXPECT_FALSE(parse(write("board.xml", "<board schema_version=\"2.1\" name=\"tb1\">"
        "<compatible_board_revisions><revision id=\"0\">R</revision></compatible_board_revisions>"
        "<parameters><parameter name=\"p\"/></parameters></board>")).ok);
    EXPECT_EQ(count("49-108"), 1);
    EXPECT_EQ(board().getParameters().size(), 1u);
    EXPECT_EQ(board().getBoardName(), "tb1");
}
