// Board files that are not plain files: every reader refuses them with a
// message naming the path, without blocking, and goes on.
#include <gtest/gtest.h>

#include <chrono>
#include <fstream>

#include <sys/stat.h>
#include <unistd.h>

#include "../parsers/parser_fixture.h"
#include "HBMBoard.h"
#include "HBOParser.h"
#include "HBOPartParser.h"
#include "HUTFile.h"
#include "HXMLWInterface.h"
#include "packed_bomb.h"

namespace {

// Catches a reader that hangs (the faults took minutes); how fast the bounds
// stop a read is for the benchmarks, not for a loaded test machine.
const std::chrono::seconds kHangGuard(30);

class HostileFiles : public ParserFixture {
protected:
    std::string fifo(const std::string& name) {
        const std::string path = dir() + "/" + name;
        boost::filesystem::create_directories(boost::filesystem::path(path).parent_path());
        EXPECT_EQ(::mkfifo(path.c_str(), 0600), 0);
        return path;
    }
    // A sparse file just past the input bound: large on paper, cheap on disk.
    std::string oversized(const std::string& name) {
        const std::string path = write(name, "<board/>");
        EXPECT_EQ(::truncate(path.c_str(), static_cast<off_t>(HUTFileUtils::kMaxInputBytes + 1)), 0);
        return path;
    }
    // The path of every 49-900 refusal, in order.
    Strings refused() const {
        Strings out;
        for (const Strings& a : argsOf("49-900"))
            out.push_back(a.empty() ? "" : a[0]);
        return out;
    }
};

TEST_F(HostileFiles, BoardFileThatIsNoRegularFileIsRefusedByEveryReader) {
    const std::string pipe = fifo("p/board.xml");
    const std::string big = oversized("big/board.xml");
    const auto start = std::chrono::steady_clock::now();
    for (const std::string& file : {pipe, big}) {
        EXPECT_FALSE(HBOParser().parseFile(file, freshBoard())) << file;
        EXPECT_FALSE(parse(file).ok) << file;
        EXPECT_FALSE(HBOPartParser().parseFile(file, freshBoard())) << file;
    }
    setParam("board.validateXML", "true");
    EXPECT_FALSE(parse(pipe).ok);
    EXPECT_LT(std::chrono::steady_clock::now() - start, kHangGuard);
    EXPECT_EQ(refused(), (Strings{pipe, pipe, pipe, big, big, big, pipe}));
    const Args args = argsOf("49-900");
    EXPECT_EQ(args[0][1], "it is a named pipe");
    EXPECT_NE(args[3][1].find("more than the 33554432 bytes"), std::string::npos) << args[3][1];
}

TEST_F(HostileFiles, SideFilesThatAreNoRegularFilesAreSkipped) {
    // Schema 1: the preset file is a named pipe; it is reported and skipped.
    const std::string presets = fifo("s1/presets.xml");
    const std::string board1 = write(
        "s1/board.xml", "<?xml version=\"1.0\"?>\n<board_part vendor=\"v\" board_name=\"b\" board_part=\"part0\" "
                        "board_revision=\"A\" version=\"1.0\" schema_version=\"1.1\" preset_file=\"" +
                            presets + "\"><PART_INFO part_name=\"p\" jtag_position=\"1\"/></board_part>\n");
    HBOPartParser().parseFile(board1, freshBoard());
    ASSERT_EQ(count("49-63"), 1);
    EXPECT_EQ(arg("49-63", 0), presets);
    EXPECT_NE(arg("49-63", 1).find("it is a named pipe"), std::string::npos) << arg("49-63", 1);

    // The migration tool: a pin file that is a named pipe.
    const std::string pins = fifo("m/part0_pins.xml");
    clearMessages();
    HBMBoard model;
    EXPECT_FALSE(model.parsePins(pins));
    EXPECT_EQ(refused(), Strings{pins});

    // The tree reader on its own never blocks either.
    EXPECT_EQ(HXMLWInterface::readFromFile(pins), nullptr);
    EXPECT_NE(HXMLWInterface::lastError().find("named pipe"), std::string::npos) << HXMLWInterface::lastError();
}

TEST_F(HostileFiles, PackedFileThatUnpacksPastTheBoundIsRefused) {
    const std::string file = dir() + "/z/board.xml";
    writePackedBomb(file, "<board>");
    ASSERT_LT(boost::filesystem::file_size(file), 1u << 20);
    EXPECT_FALSE(HBOParser().parseFile(file, freshBoard()));
    ASSERT_EQ(refused(), Strings{file});
    EXPECT_EQ(argsOf("49-900")[0][1].compare(0, 9, "unpacked,"), 0) << argsOf("49-900")[0][1];
}

TEST(InputFiles, ReadInputReadsRegularFilesWhole) {
    const std::string path = (boost::filesystem::temp_directory_path() /
                              boost::filesystem::unique_path("zr-input-%%%%-%%%%.xml")).string();
    std::string text(100000, 'x');
    text[99999] = '\0';
    std::ofstream(path, std::ios::binary) << text;
    std::string out, why;
    EXPECT_TRUE(HUTFileUtils::readInput(path, out, why)) << why;
    EXPECT_EQ(out, text);
    EXPECT_FALSE(HUTFileUtils::readInput(path, out, why, 99999));
    EXPECT_TRUE(out.empty());
    EXPECT_FALSE(HUTFileUtils::readInput(path + ".missing", out, why));
    EXPECT_NE(why.find("cannot be read"), std::string::npos) << why;
    boost::filesystem::remove(path);
}

}  // namespace
