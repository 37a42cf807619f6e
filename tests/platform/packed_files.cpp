#include <gtest/gtest.h>

#include <fstream>
#include <string>

#include <boost/filesystem.hpp>
#include <boost/iostreams/copy.hpp>
#include <boost/iostreams/filter/gzip.hpp>
#include <boost/iostreams/filtering_stream.hpp>

#include "xp_format.h"

namespace fs = boost::filesystem;
namespace io = boost::iostreams;

namespace {

class PackedFiles : public ::testing::Test {
protected:
    void SetUp() override {
        m_dir = fs::temp_directory_path() / fs::unique_path("zr-xp-%%%%%%");
        fs::create_directories(m_dir);
    }
    void TearDown() override { fs::remove_all(m_dir); }

    std::string path(const char* name) const { return (m_dir / name).string(); }

    std::string pack(const char* name, const std::string& text) const {
        std::string p = path(name);
        std::ofstream file(p, std::ios::binary);
        io::filtering_stream<io::output> out;
        out.push(io::gzip_compressor());
        out.push(file);
        out << text;
        io::close(out);
        return p;
    }

private:
    fs::path m_dir;
};

std::string readLines(const std::string& p, bool& failedAtOnce) {
    io::filtering_stream<io::input> in;
    isl::iostreams::xp_autodetect()(p, in);
    failedAtOnce = in.fail() || in.bad();
    std::string text, line;
    while (!failedAtOnce && std::getline(in, line))
        text += line + "\n";
    return text;
}

}  // namespace

TEST_F(PackedFiles, UnpackedLineByLine) {
    std::string text = "<?xml version=\"1.0\"?>\n<board name=\"b\">\n";
    for (int i = 0; i < 5000; ++i)
        text += "  <pin name=\"p" + std::to_string(i) + "\"/>\n";
    text += "</board>\n";
    std::string p = pack("board.xml", text);

    EXPECT_TRUE(isl::iostreams::xp::is_xp_format(p));
    bool failed = true;
    EXPECT_EQ(readLines(p, failed), text);
    EXPECT_FALSE(failed);
}

TEST_F(PackedFiles, PlainMissingAndShortFilesAreNotPacked) {
    std::ofstream(path("plain.xml")) << "<board/>\n";
    std::ofstream(path("one.bin"), std::ios::binary) << '\x1f';
    std::ofstream(path("swapped.bin"), std::ios::binary) << "\x8b\x1f rest";
    std::ofstream(path("empty.xml"));
    EXPECT_FALSE(isl::iostreams::xp::is_xp_format(path("plain.xml")));
    EXPECT_FALSE(isl::iostreams::xp::is_xp_format(path("one.bin")));
    EXPECT_FALSE(isl::iostreams::xp::is_xp_format(path("swapped.bin")));
    EXPECT_FALSE(isl::iostreams::xp::is_xp_format(path("empty.xml")));
    EXPECT_FALSE(isl::iostreams::xp::is_xp_format(path("none.xml")));
}

TEST_F(PackedFiles, UnopenableFileLeavesTheStreamFailed) {
    bool failed = false;
    EXPECT_EQ(readLines(path("none.xml.gz"), failed), "");
    EXPECT_TRUE(failed);
}
