// The validation step (grammar search, DOCTYPE detection, collected grammar
// errors, override documents) and packed board files.
#include "parser_fixture.h"

#include <sstream>

#include "EnvVar.h"
#include "HBOBoardComponent.h"
#include "HBOIpPreset.h"
#include "HBOPinProps.h"
#include "PackedText.h"

namespace {

const char* const kBoardDtd =
    "<!ELEMENT board (compatible_board_revisions|file_version|description|parameters|jumpers)*>\n"
    "<!ATTLIST board schema_version CDATA #REQUIRED vendor CDATA #REQUIRED name CDATA #REQUIRED\n"
    "                preset_file CDATA #IMPLIED>\n"
    "<!ELEMENT compatible_board_revisions (revision)*>\n<!ELEMENT revision (#PCDATA)>\n"
    "<!ATTLIST revision id CDATA #REQUIRED>\n<!ELEMENT file_version (#PCDATA)>\n"
    "<!ELEMENT description (#PCDATA)>\n<!ELEMENT parameters ANY>\n<!ELEMENT jumpers ANY>\n";

const char* const kDoctype = "<!DOCTYPE board SYSTEM \"board.dtd\">\n";

}  // namespace

class ValidationFixture : public ParserFixture {
protected:
    void SetUp() override {
        ParserFixture::SetUp();
        setParam("board.validateXML", "true");
        m_dtdDir = dir() + "/dtd";
        write("dtd/board.dtd", kBoardDtd);
    }
    std::string m_dtdDir;
};

TEST_F(ValidationFixture, DoctypeDecidesWhetherTheDocumentIsValidated) {
    const std::string file = write("board.xml", boardXml(basics(), "", "2.1", kDoctype));
    Parsed r = parse(file, m_dtdDir);
    EXPECT_EQ((std::vector<bool>{r.ok, r.validated}), (std::vector<bool>{true, true}));
    EXPECT_EQ(argsOf("49-113"), (Args{{file, m_dtdDir + "/board.dtd"}}));
    EXPECT_EQ(ids(), Strings{"49-113"});
    EXPECT_EQ(board().getName(), "acme:tb1:1.0");
    clearMessages();
    const std::string plain = write("plain.xml", boardXml(basics() + "<bogus/>"));
    r = parse(plain, m_dtdDir);
    EXPECT_EQ((std::vector<bool>{r.ok, r.validated}), (std::vector<bool>{true, false}));
    EXPECT_EQ(ids(), (Strings{"49-113", "49-117"}));
    EXPECT_EQ(first("49-117").getArgs(), Strings{plain});
}

TEST_F(ValidationFixture, GrammarErrorsAreAllReportedWithLinesAndStopTheRead) {
    const std::string file = write("board.xml", boardXml(basics() + "<bogus/>\n<revision/>", "", "2.1", kDoctype));
    Parsed r = parse(file, m_dtdDir);
    EXPECT_EQ((std::vector<bool>{r.ok, r.validated}), (std::vector<bool>{false, true}));
    Strings got = ids();
    ASSERT_GE(got.size(), 4u);
    EXPECT_EQ(got.front(), "49-113");
    EXPECT_EQ(got.back(), "49-56");
    EXPECT_GE(count("49-105"), 2);
    // xml declaration, DOCTYPE, root, three basics lines: the bogus element is on line 7.
    const Strings bogus = first("49-105").getArgs();
    ASSERT_EQ(bogus.size(), 3u);
    EXPECT_EQ(bogus[0], file);
    EXPECT_EQ(bogus[1], "7");
    EXPECT_EQ(first("49-105").getMask(), ComMsgMgr::MSG_WARNING);
    EXPECT_TRUE(board().getName().empty() || board().getName() == "::");  // the file itself was never read
    clearMessages();
    EXPECT_FALSE(parse(write("bad.xml", std::string(kDoctype) + "<board><file_version>x</board>\n"), m_dtdDir).ok);
    EXPECT_GE(count("49-106"), 1);
    EXPECT_EQ(count("49-111"), 0);
}

TEST_F(ValidationFixture, GrammarSearchFallsThroughToDataDirectories) {
    const std::string empty1 = dir() + "/data1";
    const std::string data2 = dir() + "/data2";
    const std::string grammar = write("data2/boards/board_schemas/current/board.dtd", kBoardDtd);
    const std::string file = write("board.xml", boardXml(basics(), "", "2.1", kDoctype));
    {
        EnvVar env("ZR_DATA_DIRS", empty1 + ":" + data2);
        Parsed r = parse(file, dir() + "/no_grammar_here");
        EXPECT_EQ((std::vector<bool>{r.ok, r.validated}), (std::vector<bool>{true, true}));
    }
    EXPECT_EQ(arg("49-113", 1), grammar);
}

// A grammar that does not load counts as not found; with none found anywhere
// the message names the last path tried, and the DOCTYPE cannot be resolved,
// which fails the file as a fatal error.
TEST_F(ValidationFixture, UnloadableGrammarIsPassedOverAndMissingGrammarFails) {
    write("bad_dtd/board.dtd", "<!ELEMENT board (a|>\n<!ATTLIST");
    const std::string file = write("board.xml", boardXml(basics(), "", "2.1", kDoctype));
    const std::string last = dir() + "/none/boards/board_schemas/current/board.dtd";
    EnvVar env("ZR_DATA_DIRS", dir() + "/first:" + dir() + "/none");
    EXPECT_FALSE(parse(file, dir() + "/bad_dtd").ok);
    EXPECT_EQ(ids(), (Strings{"49-113", "49-106", "49-56"}));
    EXPECT_EQ(arg("49-113", 1), last);
    EXPECT_NE(arg("49-106", 2).find(last), std::string::npos);
}

TEST_F(ValidationFixture, OverrideDocumentIsCheckedWithLinesShiftedBack) {
    auto withoutDeclaration = [](const std::string& xml) { return xml.substr(xml.find('\n') + 1); };
    const std::string file = write("board.xml", withoutDeclaration(boardXml(basics(), "", "2.1", kDoctype)));
    // The override copy carries one line on top; its bogus element stands on
    // line 7 of the override and line 6 of the board's own numbering.
    write("override/board.xml",
          "<!-- override -->\n" + withoutDeclaration(boardXml(basics() + "<bogus/>", "", "2.1", kDoctype)));
    EXPECT_FALSE(parse(file, m_dtdDir, dir() + "/override").ok);
    EXPECT_EQ(arg("49-105", 0), file);
    EXPECT_EQ(arg("49-105", 1), "6");
    // An override directory without a document of that grammar changes nothing.
    EXPECT_TRUE(parse(file, m_dtdDir, dir() + "/dtd").ok);
}

TEST_F(ValidationFixture, PackedFilesReadAndValidateAsTheirPlainForm) {
    const std::string good = write("y/board.xml", packed(boardXml(basics(), "", "2.1", kDoctype)));
    Parsed r = parse(good, m_dtdDir);
    EXPECT_EQ((std::vector<bool>{r.ok, r.validated}), (std::vector<bool>{true, true}));
    clearMessages();
    const std::string bad = write("y/bad.xml", packed(boardXml(basics() + "<bogus/>", "", "2.1", kDoctype)));
    EXPECT_FALSE(parse(bad, m_dtdDir).ok);
    EXPECT_EQ(count("49-106"), 0);
    EXPECT_EQ(arg("49-105", 0), bad);
    EXPECT_EQ(arg("49-105", 1), "7");
    setParam("board.validateXML", "false");
    clearMessages();
    write("z/preset.xml", packed("<ip_presets><ip_preset preset_proc_name=\"p\"><ip vendor=\"a\" library=\"l\" "
                                 "name=\"n\"><user_parameters><user_parameter name=\"K\" value=\"V\"/>"
                                 "</user_parameters></ip></ip_preset></ip_presets>"));
    write("z/part0_pins.xml", packed("<part_info part_name=\"xc-test\"><pins>"
                                     "<pin index=\"0\" name=\"P0\" loc=\"A1\" iostandard=\"LVCMOS18\"/>"
                                     "</pins></part_info>"));
    const std::string xml = packed(boardXml(basics("4.0") + "<parameters><parameter name=\"a\"/></parameters>"
                                            "<components><component name=\"part0\" type=\"fpga\" part_name=\"xc-test\" "
                                            "pin_map_file=\"part0_pins.xml\"/></components>",
                                            "preset_file=\"preset.xml\""));
    ASSERT_TRUE(parse(write("z/board.xml", xml)).ok);
    EXPECT_TRUE(messages().empty());
    EXPECT_EQ(board().getName(), "acme:tb1:4.0");
    EXPECT_EQ(board().getParameters().size(), 1u);
    std::string v;
    ASSERT_EQ(board().findPresetProc("P").size(), 1u);
    EXPECT_TRUE(board().findPresetProc("P")[0]->getParamValue("K", v));
    EXPECT_EQ(v, "V");
    HBOBoardComponent* part0 = board().findBoardComponent("part0");
    ASSERT_TRUE(part0 && part0->findPin("P0"));
    EXPECT_EQ(part0->findPin("P0")->getPortProp("iostandard"), "LVCMOS18");
    // A packed file whose content is broken fails like a broken plain one.
    clearMessages();
    EXPECT_FALSE(parse(write("z/broken.xml", xml.substr(0, xml.size() / 2))).ok);
    EXPECT_EQ(count("49-56"), 1);
}
