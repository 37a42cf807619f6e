// The front door: which reader a board file goes to, and what it reports.
#include "../parsers/parser_fixture.h"

#include <utility>

#include <boost/iostreams/copy.hpp>
#include <boost/iostreams/filter/gzip.hpp>
#include <boost/iostreams/filtering_stream.hpp>

#include "HBOBoardComponent.h"
#include "HBOParser.h"

namespace {

std::string schema1Board(const std::string& versionAttr) {
    return "<?xml version=\"1.0\"?>\n<board_part vendor=\"korvelhw\" board_name=\"bdt2\" board_part=\"part0\" "
           "board_revision=\"A\" version=\"1.0\" " + versionAttr +
           ">\n  <part_info part_name=\"zf7k35t-csg324-1\"/>\n"
           "  <ports><port name=\"sw\" dir=\"in\"><pins><pin loc=\"J15\"/></pins></port></ports>\n</board_part>\n";
}

}  // namespace

class FrontDoor : public ParserFixture {
protected:
    bool open(const std::string& path) { return HBOParser().parseFile(path, freshBoard()); }
};

TEST_F(FrontDoor, SchemaVersionChoosesTheReaderAndIsRecorded) {
    const struct {
        const char* attr;
        const char* recorded;
    } cases[] = {
        {"", "1.0"},                         // absent
        {"schema_version=\"1.1\"", "1.1"},   // kept
        {"schema_version=\"1.2\"", "1.0"},   // anything else below 2.0
        {"schema_version=\"1.10\"", "1.0"},  // not exactly "1.1"
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.attr);
        EXPECT_TRUE(open(write("board.xml", schema1Board(c.attr)))) << ::testing::PrintToString(ids());
        EXPECT_EQ(board().getBoardSchemaVersion(), c.recorded);
        ASSERT_NE(board().getActivePart(), nullptr);
        EXPECT_EQ(board().getActivePart()->getPartString(), "zf7k35t-csg324-1");
    }
}

TEST_F(FrontDoor, Schema2GoesToTheNewReaderUnlessDisabled) {
    const std::string file = write("board.xml",
        "<?xml version=\"1.0\"?>\n<board schema_version=\"2.1\" vendor=\"korvelhw\" name=\"bdt3\">"
        "<file_version>1.0</file_version><description>d</description>"
        "<compatible_board_revisions><revision id=\"0\">A</revision></compatible_board_revisions></board>\n");
    open(file);
    EXPECT_EQ(board().getBoardSchemaVersion(), "2.1");
    EXPECT_EQ(board().getName(), "korvelhw:bdt3:1.0");
    // Disabled, the old reader takes it and marks it "1.0"; it fails there,
    // since the schema 2 root lacks the old attributes.
    setParam("board.enableSchemaV2", "false");
    clearMessages();
    EXPECT_FALSE(open(file));
    EXPECT_EQ(board().getBoardSchemaVersion(), "1.0");
    EXPECT_EQ(count("49-4"), 1);
}

TEST_F(FrontDoor, BadInputGivesNumberedMessagesNotExceptions) {
    EXPECT_FALSE(open(dir() + "/missing/board.xml"));
    EXPECT_EQ(ids(), Strings{"49-36"});
    clearMessages();
    EXPECT_FALSE(HBOParser().parseFile(write("x.xml", schema1Board("")), nullptr));
    EXPECT_TRUE(ids().empty());
    const std::pair<std::string, std::string> bad[] = {
        {"malformed.xml", "<board_part vendor=\"x\"><ports>"},
        {"empty.xml", ""},
        {"binary.xml", std::string("\x01\x02\xff\xfe\x00zz", 7)},
        {"text.xml", "just words, no markup\n"},
    };
    for (const auto& b : bad) {
        SCOPED_TRACE(b.first);
        clearMessages();
        const std::string file = write(b.first, b.second);
        EXPECT_FALSE(open(file));
        EXPECT_EQ(arg("49-59", 0), file);
    }
}

TEST_F(FrontDoor, PackedBoardReadsAsItsPlainForm) {
    const std::string plain = write("plain/board.xml", schema1Board("schema_version=\"1.1\""));
    const std::string packed = write("packed/board.xml", "");
    {
        std::ifstream in(plain, std::ios::binary);
        std::ofstream out(packed, std::ios::binary);
        boost::iostreams::filtering_ostream gz;
        gz.push(boost::iostreams::gzip_compressor());
        gz.push(out);
        boost::iostreams::copy(in, gz);
    }
    ASSERT_TRUE(open(plain));
    const std::string name = board().getName();
    ASSERT_TRUE(open(packed)) << ::testing::PrintToString(ids());
    EXPECT_EQ(board().getName(), name);
    EXPECT_EQ(board().getBoardSchemaVersion(), "1.1");
    EXPECT_EQ(board().getActivePart()->getPartString(), "zf7k35t-csg324-1");
}

TEST_F(FrontDoor, BundledSchema1BoardReadsAndMigrates) {
    HBOParser parser;
    ASSERT_TRUE(parser.parseFile(std::string(ZR_TEST_DATA_DIR) + "/boards/board_parts/tamsel/1.0/board.xml",
                                 freshBoard())) << ::testing::PrintToString(ids());
    EXPECT_EQ(board().getBoardSchemaVersion(), "1.1");
    EXPECT_EQ(board().getName(), "korvelhw:tamsel:1.0");
    EXPECT_FALSE(board().getIpPresets().empty());
    parser.migrateV1ToV2(&board());
    EXPECT_EQ(board().getBoardSchemaVersion(), "2.0");
    EXPECT_EQ(board().getMigratedFromSchema(), "1.1");
    EXPECT_GT(board().getBoardComponents().size(), 2u);
    EXPECT_TRUE(ids().empty()) << ::testing::PrintToString(ids());
}
