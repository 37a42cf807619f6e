// The validation step (grammar search, DOCTYPE detection, collected grammar
// errors, override documents) and packed board files.
#include "parser_fixture.h"

#include <cstdlib>
#include <sstream>

#include <boost/iostreams/filter/gzip.hpp>
#include <boost/iostreams/filtering_stream.hpp>

#include "EnvVar.h"
#include "HBOBoardComponent.h"
#include "HBOIpPreset.h"
#include "HBOPinProps.h"

namespace {

const char* const kBoardDtd =
    "<!ELEMENT board (compatible_board_revisions|file_version|description|parameters|jumpers)*>\n"
    "<!ATTLIST board schema_version CDATA #REQUIRED vendor CDATA #REQUIRED name CDATA #REQUIRED\n"
    "                preset_file CDATA #IMPLIED>\n"
    "<!ELEMENT compatible_board_revisions (revision)*>\n"
    "<!ELEMENT revision (#PCDATA)>\n"
    "<!ATTLIST revision id CDATA #REQUIRED>\n"
    "<!ELEMENT file_version (#PCDATA)>\n"
    "<!ELEMENT description (#PCDATA)>\n"
    "<!ELEMENT parameters ANY>\n"
    "<!ELEMENT jumpers ANY>\n";

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
    // Stored gzip-packed under `name`; the full path.
    std::string writePacked(const std::string& name, const std::string& text) {
        std::ostringstream packed;
        {
            boost::iostreams::filtering_ostream out;
            out.push(boost::iostreams::gzip_compressor());
            out.push(packed);
            out << text;
            out.reset();
        }
        return write(name, packed.str());
    }
    std::string m_dtdDir;
};

TEST_F(ValidationFixture, DocumentWithDoctypeIsValidatedAgainstTheFoundGrammar) {
    const std::string file = write("board.xml", boardXml(basics(), "", "2.1", kDoctype));
    Parsed r = parse(file, m_dtdDir);
    EXPECT_TRUE(r.ok);
    EXPECT_TRUE(r.validated);
    EXPECT_EQ(ids(), std::vector<std::string>{"49-113"});
    EXPECT_EQ(first("49-113").getArgs(), (std::vector<std::string>{file, m_dtdDir + "/board.dtd"}));
    EXPECT_EQ(board().getName(), "acme:tb1:1.0");
}

TEST_F(ValidationFixture, GrammarErrorsAreAllReportedWithLinesAndStopTheRead) {
    const std::string file = write("board.xml", boardXml(basics() +
        "<bogus/>\n"
        "<revision/>", "", "2.1", kDoctype));
    Parsed r = parse(file, m_dtdDir);
    EXPECT_FALSE(r.ok);
    std::vector<std::string> got = ids();
    ASSERT_GE(got.size(), 4u);
    EXPECT_EQ(got.front(), "49-113");
    EXPECT_EQ(got.back(), "49-56");
    EXPECT_GE(count("49-105"), 2);
    const ComMsgMgrInstance bogus = first("49-105");
    ASSERT_EQ(bogus.getArgs().size(), 3u);
    EXPECT_EQ(bogus.getArgs()[0], file);
    // xml declaration, DOCTYPE, root, three basics lines: the bogus element is on line 7.
    EXPECT_EQ(bogus.getArgs()[1], "7");
    EXPECT_EQ(bogus.getMask(), ComMsgMgr::MSG_WARNING);
    // The file itself was never read.
    EXPECT_TRUE(board().getName().empty() || board().getName() == "::");
    EXPECT_TRUE(r.validated);
}

TEST_F(ValidationFixture, MalformedDocumentGivesFatalGrammarMessage) {
    const std::string file = write("board.xml", std::string(kDoctype) + "<board><file_version>x</board>\n");
    EXPECT_FALSE(parse(file, m_dtdDir).ok);
    EXPECT_GE(count("49-106"), 1);
    EXPECT_EQ(count("49-111"), 0);
}

TEST_F(ValidationFixture, DocumentWithoutDoctypeIsReadUnvalidated) {
    const std::string file = write("board.xml", boardXml(basics() + "<bogus/>"));
    Parsed r = parse(file, m_dtdDir);
    EXPECT_TRUE(r.ok);
    EXPECT_FALSE(r.validated);
    EXPECT_EQ(ids(), (std::vector<std::string>{"49-113", "49-117"}));
    EXPECT_EQ(first("49-117").getArgs(), std::vector<std::string>{file});
    EXPECT_EQ(count("49-105"), 0);
}

TEST_F(ValidationFixture, GrammarSearchFallsThroughToDataDirectories) {
    const std::string empty1 = dir() + "/data1";
    const std::string data2 = dir() + "/data2";
    write("data2/boards/board_schemas/current/board.dtd", kBoardDtd);
    const std::string file = write("board.xml", boardXml(basics(), "", "2.1", kDoctype));
    {
        EnvVar env("ZR_DATA_DIRS", empty1 + ":" + data2);
        Parsed r = parse(file, dir() + "/no_grammar_here");
        EXPECT_TRUE(r.ok);
        EXPECT_TRUE(r.validated);
    }
    EXPECT_EQ(first("49-113").getArgs()[1], data2 + "/boards/board_schemas/current/board.dtd");

    // Nothing found anywhere: the message still names the last path tried.
    clearMessages();
    {
        EnvVar env("ZR_DATA_DIRS", data2 + ":" + empty1);
        write("data2/boards/board_schemas/current/board.dtd", "");
        boost::filesystem::remove(data2 + "/boards/board_schemas/current/board.dtd");
        parse(file);
    }
    EXPECT_EQ(first("49-113").getArgs()[1], empty1 + "/boards/board_schemas/current/board.dtd");
}

TEST_F(ValidationFixture, OverrideDocumentIsCheckedWithLinesShiftedBack) {
    auto withoutDeclaration = [](const std::string& xml) { return xml.substr(xml.find('\n') + 1); };
    const std::string file = write("board.xml", withoutDeclaration(boardXml(basics(), "", "2.1", kDoctype)));
    // The override copy carries one line on top; its bogus element stands on
    // line 7 of the override and line 6 of the board's own numbering.
    write("override/board.xml",
          "<!-- override -->\n" + withoutDeclaration(boardXml(basics() + "<bogus/>", "", "2.1", kDoctype)));
    Parsed r = parse(file, m_dtdDir, dir() + "/override");
    EXPECT_FALSE(r.ok);
    ASSERT_GE(count("49-105"), 1);
    EXPECT_EQ(first("49-105").getArgs()[0], file);
    EXPECT_EQ(first("49-105").getArgs()[1], "6");

    // An override directory without a document of that grammar changes nothing.
    clearMessages();
    EXPECT_TRUE(parse(file, m_dtdDir, dir() + "/dtd").ok);
}

TEST_F(ValidationFixture, PackedFilesReadAsTheirPlainForm) {
    setParam("board.validateXML", "false");
    const std::string preset =
        "<ip_presets><ip_preset preset_proc_name=\"p\"><ip vendor=\"a\" library=\"l\" name=\"n\">"
        "<user_parameters><user_parameter name=\"K\" value=\"V\"/></user_parameters></ip></ip_preset></ip_presets>";
    writePacked("z/preset.xml", preset);
    writePacked("z/part0_pins.xml", "<part_info part_name=\"xc-test\"><pins>"
                                    "<pin index=\"0\" name=\"P0\" loc=\"A1\" iostandard=\"LVCMOS18\"/>"
                                    "</pins></part_info>");
    const std::string xml = boardXml(basics("4.0") + "<parameters><parameter name=\"a\"/></parameters>"
                                     "<components><component name=\"part0\" type=\"fpga\" part_name=\"xc-test\" "
                                     "pin_map_file=\"part0_pins.xml\"/></components>",
                                     "preset_file=\"preset.xml\"");
    const std::string packed = writePacked("z/board.xml", xml);
    ASSERT_TRUE(parse(packed).ok);
    EXPECT_TRUE(messages().empty());
    EXPECT_EQ(board().getName(), "acme:tb1:4.0");
    EXPECT_EQ(board().getParameters().size(), 1u);
    std::vector<HBOIpPreset*> list = board().findPresetProc("P");
    ASSERT_EQ(list.size(), 1u);
    std::string v;
    EXPECT_TRUE(list[0]->getParamValue("K", v));
    EXPECT_EQ(v, "V");
    HBOBoardComponent* part0 = board().findBoardComponent("part0");
    ASSERT_NE(part0, nullptr);
    ASSERT_NE(part0->findPin("P0"), nullptr);
    EXPECT_EQ(part0->findPin("P0")->getPortProp("iostandard"), "LVCMOS18");

    // A packed file whose content is broken fails like a broken plain one.
    std::string broken;
    {
        std::ostringstream packedText;
        boost::iostreams::filtering_ostream out;
        out.push(boost::iostreams::gzip_compressor());
        out.push(packedText);
        out << xml;
        out.reset();
        broken = packedText.str().substr(0, packedText.str().size() / 2);
    }
    clearMessages();
    EXPECT_FALSE(parse(write("z/broken.xml", broken)).ok);
    EXPECT_EQ(count("49-56"), 1);
}

TEST_F(ValidationFixture, PackedDocumentIsValidatedInItsPlainForm) {
    const std::string good = writePacked("y/board.xml", boardXml(basics(), "", "2.1", kDoctype));
    Parsed r = parse(good, m_dtdDir);
    EXPECT_TRUE(r.ok);
    EXPECT_TRUE(r.validated);

    clearMessages();
    const std::string bad = writePacked("y/bad.xml", boardXml(basics() + "<bogus/>", "", "2.1", kDoctype));
    EXPECT_FALSE(parse(bad, m_dtdDir).ok);
    EXPECT_EQ(count("49-106"), 0);
    ASSERT_GE(count("49-105"), 1);
    EXPECT_EQ(first("49-105").getArgs()[0], bad);
    EXPECT_EQ(first("49-105").getArgs()[1], "7");
}

// A grammar that does not load counts as not found; with none found anywhere
// the DOCTYPE cannot be resolved, which fails the file as a fatal error.
TEST_F(ValidationFixture, UnloadableGrammarIsPassedOverAndMissingGrammarFails) {
    write("bad_dtd/board.dtd", "<!ELEMENT board (a|>\n<!ATTLIST");
    const std::string file = write("board.xml", boardXml(basics(), "", "2.1", kDoctype));
    const std::string last = dir() + "/none/boards/board_schemas/current/board.dtd";
    EnvVar env("ZR_DATA_DIRS", dir() + "/none");
    EXPECT_FALSE(parse(file, dir() + "/bad_dtd").ok);
    EXPECT_EQ(ids(), (std::vector<std::string>{"49-113", "49-106", "49-56"}));
    EXPECT_EQ(first("49-113").getArgs()[1], last);
    EXPECT_NE(first("49-106").getArgs()[2].find(last), std::string::npos);
}
