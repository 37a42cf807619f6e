// The front door: which reader a board file goes to, and what it reports.
#include <memory>
#include <utility>

#include <boost/iostreams/copy.hpp>
#include <boost/iostreams/filter/gzip.hpp>
#include <boost/iostreams/filtering_stream.hpp>

#include "HBOBoard.h"
#include "HBOBoardComponent.h"
#include "HBOParser.h"
#include "legacy_fixture.h"

namespace {

std::string schema1Board(const std::string& versionAttr) {
    return "<?xml version=\"1.0\"?>\n<board_part vendor=\"korvelhw\" board_name=\"bdt2\" board_part=\"part0\" "
           "board_revision=\"A\" version=\"1.0\" " +
           versionAttr +
           ">\n  <part_info part_name=\"zf7k35t-csg324-1\"/>\n"
           "  <ports><port name=\"sw\" dir=\"in\"><pins><pin loc=\"J15\"/></pins></port></ports>\n"
           "</board_part>\n";
}

const char* const kSchema2Board = R"(<?xml version="1.0"?>
<board schema_version="2.1" vendor="korvelhw" name="bdt3" display_name="Schema 2">
  <file_version>1.0</file_version>
  <description>d</description>
  <compatible_board_revisions><revision id="0">A</revision></compatible_board_revisions>
</board>
)";

bool parse(const std::string& path, HBOBoard& board) {
    HBOParser parser;
    return parser.parseFile(path, &board);
}

void gzipFile(const std::string& from, const std::string& to) {
    std::ifstream in(from, std::ios::binary);
    std::ofstream out(to, std::ios::binary);
    boost::iostreams::filtering_ostream gz;
    gz.push(boost::iostreams::gzip_compressor());
    gz.push(out);
    boost::iostreams::copy(in, gz);
}

}  // namespace

TEST(FrontDoor, SchemaVersionChoosesTheReaderAndIsRecorded) {
    ScratchDir dir;
    struct Case {
        const char* attr;
        const char* recorded;
    } cases[] = {
        {"", "1.0"},                         // absent
        {"schema_version=\"1.1\"", "1.1"},   // kept
        {"schema_version=\"1.2\"", "1.0"},   // anything else below 2.0
        {"schema_version=\"1.10\"", "1.0"},  // not exactly "1.1"
    };
    for (const Case& c : cases) {
        const std::string file = dir.write(std::string("v") + c.recorded + c.attr + "/board.xml", schema1Board(c.attr));
        MessageLog log;
        HBOBoard board;
        EXPECT_TRUE(parse(file, board)) << c.attr << ::testing::PrintToString(log.ids());
        EXPECT_EQ(board.getBoardSchemaVersion(), c.recorded) << c.attr;
        ASSERT_NE(board.getActivePart(), nullptr);
        EXPECT_EQ(board.getActivePart()->getPartString(), "zf7k35t-csg324-1");
    }
}

TEST(FrontDoor, Schema2GoesToTheNewReaderUnlessDisabled) {
    ScratchDir dir;
    const std::string file = dir.write("board.xml", kSchema2Board);
    {
        MessageLog log;
        HBOBoard board;
        parse(file, board);
        EXPECT_EQ(board.getBoardSchemaVersion(), "2.1");
        EXPECT_EQ(board.getName(), "korvelhw:bdt3:1.0");
    }
    {
        // Disabled, the old reader takes it and marks it "1.0"; it fails
        // there, since the schema 2 root lacks the old attributes.
        ParamOverride off("board.enableSchemaV2", "false");
        MessageLog log;
        HBOBoard board;
        EXPECT_FALSE(parse(file, board));
        EXPECT_EQ(board.getBoardSchemaVersion(), "1.0");
        EXPECT_EQ(log.count("49-4"), 1u);
    }
}

TEST(FrontDoor, BadInputGivesNumberedMessagesNotExceptions) {
    ScratchDir dir;
    {
        MessageLog log;
        HBOBoard board;
        EXPECT_FALSE(parse(dir.path("missing/board.xml"), board));
        EXPECT_EQ(log.ids(), std::vector<std::string>{"49-36"});
    }
    {
        MessageLog log;
        HBOParser parser;
        EXPECT_FALSE(parser.parseFile(dir.write("x.xml", schema1Board("")), nullptr));
        EXPECT_TRUE(log.ids().empty());
    }
    const std::pair<std::string, std::string> bad[] = {
        {"malformed.xml", "<board_part vendor=\"x\"><ports>"},
        {"empty.xml", ""},
        {"binary.xml", std::string("\x01\x02\xff\xfe\x00zz", 7)},
        {"text.xml", "just words, no markup\n"},
    };
    for (const auto& b : bad) {
        const std::string file = dir.write(b.first, b.second);
        MessageLog log;
        HBOBoard board;
        EXPECT_FALSE(parse(file, board)) << b.first;
        ASSERT_NE(log.find("49-59"), nullptr) << b.first;
        EXPECT_EQ(log.find("49-59")->getArgs()[0], file);
    }
}

TEST(FrontDoor, PackedBoardReadsAsItsPlainForm) {
    ScratchDir dir;
    const std::string plain = dir.write("plain/board.xml", schema1Board("schema_version=\"1.1\""));
    const std::string packedPath = dir.path("packed/board.xml");
    boost::filesystem::create_directories(dir.path("packed"));
    gzipFile(plain, packedPath);
    MessageLog log;
    HBOBoard a, b;
    ASSERT_TRUE(parse(plain, a));
    ASSERT_TRUE(parse(packedPath, b)) << ::testing::PrintToString(log.ids());
    EXPECT_EQ(a.getName(), b.getName());
    EXPECT_EQ(b.getBoardSchemaVersion(), "1.1");
    EXPECT_EQ(b.getActivePart()->getPartString(), "zf7k35t-csg324-1");
}

TEST(FrontDoor, BundledSchema1BoardReadsAndMigrates) {
    const std::string file = std::string(ZR_TEST_DATA_DIR) + "/boards/board_parts/tamsel/1.0/board.xml";
    MessageLog log;
    HBOBoard board;
    HBOParser parser;
    ASSERT_TRUE(parser.parseFile(file, &board)) << ::testing::PrintToString(log.ids());
    EXPECT_EQ(board.getBoardSchemaVersion(), "1.1");
    EXPECT_EQ(board.getName(), "korvelhw:tamsel:1.0");
    EXPECT_FALSE(board.getIpPresets().empty());
    parser.migrateV1ToV2(&board);
    EXPECT_EQ(board.getBoardSchemaVersion(), "2.0");
    EXPECT_EQ(board.getMigratedFromSchema(), "1.1");
    EXPECT_GT(board.getBoardComponents().size(), 2u);
    EXPECT_TRUE(log.ids().empty()) << ::testing::PrintToString(log.ids());
}
