// The migration driver: its prints and results for each shape of source
// directory, packed files, the writers' file names and failures, and the one
// board that all runs share.
#include "migration_fixture.h"

#include <sys/stat.h>

#include <map>

#include <boost/algorithm/string/replace.hpp>

#include "HBMBoard.h"
#include "HBMBoardMigration.h"
#include "HBMPin.h"
#include "HEXAll.h"

namespace {

const char* const kBoardXml = "<board schema_version=\"2.1\"><components><component name=\"c0\"/></components></board>";
const char* const kPinsXml = "<part_info part_name=\"zx\"><pins><pin index=\"0\" name=\"p\" loc=\"A1\"/></pins></part_info>";
const char* const kPresetXml = "<ip_presets schema=\"1\"><ip_preset preset_proc_name=\"q\"/></ip_presets>";
const char* const kAllRead = "Component: c0\n{src}/board.xml parsed\n{src}/part0_pins.xml parsed\n{src}/preset.xml parsed\n";

HBMBoard& board() { return HBMBoardMigration::getBoard(); }
std::size_t pinCount() { return board().getPins().getAllPins().size(); }

}  // namespace

class Driver : public MigrationFixture {
protected:
    // parse() or write() of the singleton; its result and what it printed.
    std::pair<bool, std::string> run(bool (HBMBoardMigration::*step)()) {
        bool result = false;
        std::string printed = stdoutOf([&] { result = (HBMBoardMigration::getInstance().*step)(); });
        return {result, printed};
    }
    std::pair<bool, std::string> parse(const std::string& source) {
        board().setSourcePath(source);
        return run(&HBMBoardMigration::parse);
    }
    std::pair<bool, std::string> writeTo(const std::string& dest) {
        board().setDestinationPath(dest);
        return run(&HBMBoardMigration::write);
    }
};

TEST_F(Driver, PrintsAndResultForEachShapeOfSourceDirectory) {
    const std::map<std::string, std::string> all = {
        {"board.xml", kBoardXml}, {"part0_pins.xml", kPinsXml}, {"preset.xml", kPresetXml}};
    struct Case {
        const char* what;
        std::map<std::string, std::string> files;  // none: no directory either
        bool packed;
        bool result;
        const char* printed;               // "{src}" stands for the source directory
        std::vector<std::string> missing;  // files named by @49-36, in order
        std::size_t pinsAdded;
    };
    const std::vector<Case> cases = {
        {"all three", all, false, true, kAllRead, {}, 1},
        {"all three packed", all, true, true, kAllRead, {}, 1},
        {"no source directory", {}, false, false, " not parsed\n", {"board.xml"}, 0},
        {"no board file", {{"part0_pins.xml", kPinsXml}}, false, false, " not parsed\n", {"board.xml"}, 0},
        {"no pins file", {{"board.xml", kBoardXml}, {"preset.xml", kPresetXml}}, false, false,
         "Component: c0\n{src}/board.xml parsed\n not parsed\n", {"part0_pins.xml"}, 0},
        {"no preset file", {{"board.xml", kBoardXml}, {"part0_pins.xml", kPinsXml}}, false, true,
         "Component: c0\n{src}/board.xml parsed\n{src}/part0_pins.xml parsed\n", {"preset.xml"}, 1},
        {"board file without root", {{"board.xml", ""}, {"part0_pins.xml", kPinsXml}}, false, true,
         "{src}/part0_pins.xml parsed\n", {"preset.xml"}, 1},
        {"board file not well-formed", {{"board.xml", "<board><components>"}, {"part0_pins.xml", kPinsXml}}, false,
         true, "{src}/part0_pins.xml parsed\n", {"preset.xml"}, 1},
        {"pins file without root", {{"board.xml", kBoardXml}, {"part0_pins.xml", "<?xml version=\"1.0\"?>"}}, false,
         true, "Component: c0\n{src}/board.xml parsed\n", {"preset.xml"}, 0},
        {"pins read that stops early", {{"board.xml", kBoardXml}, {"part0_pins.xml", "<p><pins><pin/></pins></p>"}},
         false, true, "Component: c0\n{src}/board.xml parsed\n{src}/part0_pins.xml parsed\n", {"preset.xml"}, 0},
        {"preset file without root", {{"board.xml", kBoardXml}, {"part0_pins.xml", kPinsXml}, {"preset.xml", "<x"}},
         false, false, "Component: c0\n{src}/board.xml parsed\n{src}/part0_pins.xml parsed\n{src}/preset.xml not parsed\n",
         {}, 1},
    };
    int n = 0;
    for (const Case& c : cases) {
        const std::string sub = "case" + std::to_string(n++);
        const std::string src = dir() + "/" + sub;
        for (const auto& f : c.files)
            c.packed ? writePacked(sub + "/" + f.first, f.second) : write(sub + "/" + f.first, f.second);
        m_messages.clear();
        const std::size_t before = pinCount();
        const auto r = parse(src);
        EXPECT_EQ(r.first, c.result) << c.what;
        EXPECT_EQ(r.second, boost::algorithm::replace_all_copy(std::string(c.printed), "{src}", src)) << c.what;
        EXPECT_EQ(pinCount() - before, c.pinsAdded) << c.what;
        ASSERT_EQ(m_messages.size(), c.missing.size()) << c.what;
        for (std::size_t i = 0; i < c.missing.size(); ++i) {
            EXPECT_EQ(m_messages[i].getLine(), "WARNING: [board 49-36] The file '" + src + "/" + c.missing[i] +
                                                   "' does not exist.") << c.what;
        }
    }
    // "dir/" names the same files as "dir".
    EXPECT_EQ(parse(dir() + "/case0/").second, parse(dir() + "/case0").second);
    std::string out = "kept";
    EXPECT_FALSE(HBMBoard::XmlFilePath("", "zr-no-such-file.xml", out));
    EXPECT_EQ(out, "kept");
    EXPECT_EQ(m_messages.back().getArgs(), std::vector<std::string>{"/zr-no-such-file.xml"});
}

TEST_F(Driver, ParsingAgainAddsToTheModels) {
    write("b/board.xml", kBoardXml);
    write("b/part0_pins.xml", kPinsXml);
    write("b/preset.xml", kPresetXml);
    const std::size_t pins = pinCount(), procs = board().getPresets().getPresetProcs().size();
    parse(dir() + "/b");
    parse(dir() + "/b");
    EXPECT_EQ(pinCount(), pins + 2);
    EXPECT_EQ(board().getPresets().getPresetProcs().size(), procs + 2);
    EXPECT_EQ(board().getPins().getAllPins().back()->getLOC(), "A1");
}

// A board.xml that is a named pipe is refused before it is opened, so the run
// neither blocks nor reads from it: the refusal names the file.
TEST_F(Driver, NamedPipeAsBoardFileIsRefusedWithoutBlocking) {
    const std::string src = dir() + "/fifo";
    boost::filesystem::create_directories(src);
    const std::string file = src + "/board.xml";
    ASSERT_EQ(mkfifo(file.c_str(), 0600), 0);
    board().setSourcePath(src);
    EXPECT_NO_THROW(HBMBoardMigration::getInstance().parse());
    ASSERT_FALSE(m_messages.empty());
    EXPECT_EQ(m_messages.front().getId(), "49-900");
    EXPECT_EQ(m_messages.front().getArgs(), (std::vector<std::string>{file, "it is a named pipe"}));
}

TEST_F(Driver, WritesAllThreeFilesAndStopsAtTheFirstThatCannotBeOpened) {
    write("b/board.xml", kBoardXml);
    write("b/part0_pins.xml", kPinsXml);
    parse(dir() + "/b");

    boost::filesystem::create_directories(dir() + "/out");
    EXPECT_EQ(writeTo(dir() + "/out/"), std::make_pair(true, std::string()));
    EXPECT_EQ(read(dir() + "/out/board.xml"), "");
    // The shared board holds the pins of earlier runs too; this run's come last.
    const std::string pins = read(dir() + "/out/part0_pins.xml");
    const std::string head = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"no\" ?>\n\n<part_info part_name=\"zx\">\n";
    const std::string tail = "<pin index=\"0\" name=\"p\" loc=\"A1\"/>\n</part_info>\n";
    EXPECT_EQ(pins.substr(0, head.size()), head);
    EXPECT_EQ(pins.substr(pins.size() - std::min(pins.size(), tail.size())), tail);
    EXPECT_NE(read(dir() + "/out/preset.xml").find("<ip_presets schema="), std::string::npos);

    boost::filesystem::create_directories(dir() + "/half/part0_pins.xml");
    EXPECT_EQ(writeTo(dir() + "/half"),
              std::make_pair(false, "Cannot open" + dir() + "/half/part0_pins.xmlfor output.\n"));
    EXPECT_TRUE(boost::filesystem::exists(dir() + "/half/board.xml"));
    EXPECT_FALSE(boost::filesystem::exists(dir() + "/half/preset.xml"));
    EXPECT_EQ(writeTo(dir() + "/nowhere/"), std::make_pair(false, "Cannot open" + dir() + "/nowhere/board.xmlfor output.\n"));
}
