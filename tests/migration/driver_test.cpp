// The migration driver: its prints and results for each shape of source
// directory, packed files, the writers' file names and failures, and the one
// board that all runs share.
#include "migration_fixture.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <map>
#include <thread>

#include <boost/algorithm/string/replace.hpp>

#include "HBMBoard.h"
#include "HBMBoardMigration.h"
#include "HBMPin.h"
#include "HEXAll.h"

namespace {

const char* const kBoardXml = "<board schema_version=\"2.1\"><components><component name=\"c0\"/></components></board>";
const char* const kPinsXml = "<part_info part_name=\"zx\"><pins><pin index=\"0\" name=\"p\" loc=\"A1\"/></pins></part_info>";
const char* const kPresetXml = "<ip_presets schema=\"1\"><ip_preset preset_proc_name=\"q\"/></ip_presets>";

std::size_t pinCount() { return HBMBoardMigration::getBoard().getPins().getAllPins().size(); }
std::size_t procCount() { return HBMBoardMigration::getBoard().getPresets().getPresetProcs().size(); }

}  // namespace

class Driver : public MigrationFixture {
protected:
    struct Run {
        bool result = false;
        std::string printed;
    };

    // Runs the singleton's parse() on `source`.
    Run parse(const std::string& source) {
        HBMBoardMigration::getBoard().setSourcePath(source);
        Run run;
        run.printed = stdoutOf([&] { run.result = HBMBoardMigration::getInstance().parse(); });
        return run;
    }

    Run writeTo(const std::string& dest) {
        HBMBoardMigration::getBoard().setDestinationPath(dest);
        Run run;
        run.printed = stdoutOf([&] { run.result = HBMBoardMigration::getInstance().write(); });
        return run;
    }
};

TEST_F(Driver, PrintsAndResultForEachShapeOfSourceDirectory) {
    struct Case {
        const char* what;
        std::map<std::string, std::string> files;
        bool result;
        const char* printed;          // "{src}" stands for the source directory
        std::vector<std::string> missing;  // files named by @49-36, in order
        std::size_t pinsAdded;
    };
    const std::vector<Case> cases = {
        {"all three", {{"board.xml", kBoardXml}, {"part0_pins.xml", kPinsXml}, {"preset.xml", kPresetXml}}, true,
         "Component: c0\n{src}/board.xml parsed\n{src}/part0_pins.xml parsed\n{src}/preset.xml parsed\n", {}, 1},
        {"no preset file", {{"board.xml", kBoardXml}, {"part0_pins.xml", kPinsXml}}, true,
         "Component: c0\n{src}/board.xml parsed\n{src}/part0_pins.xml parsed\n", {"preset.xml"}, 1},
        {"no board file", {{"part0_pins.xml", kPinsXml}, {"preset.xml", kPresetXml}}, false, " not parsed\n",
         {"board.xml"}, 0},
        {"no pins file", {{"board.xml", kBoardXml}, {"preset.xml", kPresetXml}}, false,
         "Component: c0\n{src}/board.xml parsed\n not parsed\n", {"part0_pins.xml"}, 0},
        {"board file without root", {{"board.xml", ""}, {"part0_pins.xml", kPinsXml}, {"preset.xml", kPresetXml}},
         true, "{src}/part0_pins.xml parsed\n{src}/preset.xml parsed\n", {}, 1},
        {"board file not well-formed", {{"board.xml", "<board><components>"}, {"part0_pins.xml", kPinsXml}}, true,
         "{src}/part0_pins.xml parsed\n", {"preset.xml"}, 1},
        {"pins file without root", {{"board.xml", kBoardXml}, {"part0_pins.xml", "<?xml version=\"1.0\"?>"}}, true,
         "Component: c0\n{src}/board.xml parsed\n", {"preset.xml"}, 0},
        {"pins file that stops early still counts", {{"board.xml", kBoardXml}, {"part0_pins.xml", "<p><pins><pin/></pins></p>"}},
         true, "Component: c0\n{src}/board.xml parsed\n{src}/part0_pins.xml parsed\n", {"preset.xml"}, 0},
        {"preset file without root", {{"board.xml", kBoardXml}, {"part0_pins.xml", kPinsXml}, {"preset.xml", "<x"}},
         false, "Component: c0\n{src}/board.xml parsed\n{src}/part0_pins.xml parsed\n{src}/preset.xml not parsed\n",
         {}, 1},
    };
    int n = 0;
    for (const Case& c : cases) {
        const std::string src = dir() + "/case" + std::to_string(n++);
        boost::filesystem::create_directories(src);
        for (const auto& f : c.files)
            write(src.substr(dir().size() + 1) + "/" + f.first, f.second);
        m_messages.clear();
        const std::size_t before = pinCount();
        const Run run = parse(src);
        EXPECT_EQ(run.result, c.result) << c.what;
        EXPECT_EQ(run.printed, boost::algorithm::replace_all_copy(std::string(c.printed), "{src}", src)) << c.what;
        EXPECT_EQ(pinCount() - before, c.pinsAdded) << c.what;
        ASSERT_EQ(m_messages.size(), c.missing.size()) << c.what;
        for (std::size_t i = 0; i < c.missing.size(); ++i) {
            EXPECT_EQ(m_messages[i].getId(), "49-36") << c.what;
            EXPECT_EQ(m_messages[i].getMask(), ComMsgMgr::MSG_WARNING) << c.what;
            EXPECT_EQ(m_messages[i].getScope(), "board") << c.what;
            EXPECT_EQ(m_messages[i].getArgs(), std::vector<std::string>{src + "/" + c.missing[i]}) << c.what;
        }
    }
}

TEST_F(Driver, MissingSourceDirectoryAndTrailingSlashes) {
    const Run missing = parse(dir() + "/nowhere");
    EXPECT_FALSE(missing.result);
    EXPECT_EQ(missing.printed, " not parsed\n");
    EXPECT_EQ(ids(), std::vector<std::string>{"49-36"});

    write("b/board.xml", kBoardXml);
    write("b/part0_pins.xml", kPinsXml);
    write("b/preset.xml", kPresetXml);
    const Run plain = parse(dir() + "/b");
    const Run slashed = parse(dir() + "/b/");
    EXPECT_TRUE(plain.result && slashed.result);
    EXPECT_EQ(plain.printed, slashed.printed);

    std::string out = "kept";
    EXPECT_FALSE(HBMBoard::XmlFilePath("", "zr-no-such-file.xml", out));
    EXPECT_EQ(out, "kept");
    EXPECT_EQ(m_messages.back().getArgs(), std::vector<std::string>{"/zr-no-such-file.xml"});
    EXPECT_TRUE(HBMBoard::XmlFilePath(dir() + "/", "b", out));
    EXPECT_EQ(out, dir() + "/b");
}

TEST_F(Driver, ParsingAgainAddsToTheModels) {
    write("b/board.xml", kBoardXml);
    write("b/part0_pins.xml", kPinsXml);
    write("b/preset.xml", kPresetXml);
    const std::size_t pins = pinCount(), procs = procCount();
    parse(dir() + "/b");
    parse(dir() + "/b");
    EXPECT_EQ(pinCount(), pins + 2);
    EXPECT_EQ(procCount(), procs + 2);
    EXPECT_EQ(&HBMBoardMigration::getInstance(), &HBMBoardMigration::getInstance());
    EXPECT_EQ(&HBMBoardMigration::getBoard(), &HBMBoardMigration::getBoard());
}

TEST_F(Driver, PackedFilesReadLikePlainOnes) {
    writePacked("z/board.xml", kBoardXml);
    writePacked("z/part0_pins.xml", kPinsXml);
    writePacked("z/preset.xml", kPresetXml);
    const std::size_t pins = pinCount();
    const std::string src = dir() + "/z";
    const Run run = parse(src);
    EXPECT_TRUE(run.result);
    EXPECT_EQ(run.printed, "Component: c0\n" + src + "/board.xml parsed\n" + src + "/part0_pins.xml parsed\n" + src +
                               "/preset.xml parsed\n");
    EXPECT_EQ(pinCount(), pins + 1);
    EXPECT_EQ(HBMBoardMigration::getBoard().getPins().getAllPins().back()->getLOC(), "A1");
}

// A board.xml that is packed when first looked at and gone when it is opened
// as a stream: a pipe whose writer removes its name before sending the magic.
TEST_F(Driver, PackedFileThatCannotBeOpenedThrowsOutOfParse) {
    const std::string src = dir() + "/fifo";
    boost::filesystem::create_directories(src);
    const std::string board = src + "/board.xml";
    ASSERT_EQ(mkfifo(board.c_str(), 0600), 0);
    std::thread writer([board] {
        int fd = -1;
        for (int i = 0; i < 10000 && fd < 0; ++i) {
            fd = open(board.c_str(), O_WRONLY | O_NONBLOCK);
            if (fd < 0)
                std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        unlink(board.c_str());
        if (fd >= 0) {
            EXPECT_EQ(::write(fd, "\x1f\x8b", 2), 2);
            close(fd);
        }
    });
    HBMBoardMigration::getBoard().setSourcePath(src);
    try {
        HBMBoardMigration::getInstance().parse();
        ADD_FAILURE() << "no exception";
    } catch (const HEXError& e) {
        EXPECT_EQ(e.getMsg().getId(), "49-110");
        EXPECT_EQ(e.getMsg().getMask(), ComMsgMgr::MSG_ERROR);
        EXPECT_EQ(e.getMsg().getScope(), "board");
        EXPECT_EQ(e.getMsg().getArgs(), std::vector<std::string>{board});
    }
    writer.join();
}

TEST_F(Driver, WritesAllThreeFilesAndStopsAtTheFirstThatCannotBeOpened) {
    write("b/board.xml", kBoardXml);
    write("b/part0_pins.xml", kPinsXml);
    parse(dir() + "/b");

    boost::filesystem::create_directories(dir() + "/out");
    const Run ok = writeTo(dir() + "/out/");
    EXPECT_TRUE(ok.result);
    EXPECT_EQ(ok.printed, "");
    EXPECT_EQ(read(dir() + "/out/board.xml"), "");
    // The shared board holds the pins of earlier runs too; this run's come last.
    const std::string pins = read(dir() + "/out/part0_pins.xml");
    const std::string head = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"no\" ?>\n\n<part_info part_name=\"zx\">\n";
    const std::string tail = "<pin index=\"0\" name=\"p\" loc=\"A1\"/>\n</part_info>\n";
    EXPECT_EQ(pins.substr(0, head.size()), head);
    EXPECT_EQ(pins.substr(pins.size() - std::min(pins.size(), tail.size())), tail);
    EXPECT_NE(read(dir() + "/out/preset.xml").find("<ip_presets schema="), std::string::npos);

    boost::filesystem::create_directories(dir() + "/half/part0_pins.xml");
    const Run half = writeTo(dir() + "/half");
    EXPECT_FALSE(half.result);
    EXPECT_EQ(half.printed, "Cannot open" + dir() + "/half/part0_pins.xmlfor output.\n");
    EXPECT_TRUE(boost::filesystem::exists(dir() + "/half/board.xml"));
    EXPECT_FALSE(boost::filesystem::exists(dir() + "/half/preset.xml"));

    const Run none = writeTo(dir() + "/nowhere/");
    EXPECT_FALSE(none.result);
    EXPECT_EQ(none.printed, "Cannot open" + dir() + "/nowhere/board.xmlfor output.\n");
}
