// Every input that ever broke a reader, replayed through the same entry code
// as its fuzz target (fuzz/ZrFuzzEntries.cpp); the sanitizer build of the
// suite runs them under the sanitizers as well. The bundle form that splits
// one input into a board directory is checked here too: a wrong split would
// quietly starve the board reader's fuzzing of side files.
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iterator>

#include <boost/filesystem.hpp>

#include "ZrFuzzEntries.h"

namespace fs = boost::filesystem;

namespace {

zrfuzz::Bundle split(const std::string& input) {
    return zrfuzz::splitBundle(reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
}

std::vector<std::string> names(const zrfuzz::Bundle& b) {
    std::vector<std::string> out;
    for (const zrfuzz::Bundle::File& f : b.files)
        out.push_back(f.name);
    return out;
}

std::string text(const zrfuzz::Bundle& b, const std::string& name) {
    for (const zrfuzz::Bundle::File& f : b.files)
        if (f.name == name)
            return f.text;
    return "<none>";
}

std::string readAll(const fs::path& p) {
    std::ifstream in(p.string(), std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

const fs::path kRegressions = fs::path(ZR_FUZZ_DIR) / "regressions";

}  // namespace

TEST(FuzzBundle, SplitsSwitchesBoardAndSideFiles) {
    const zrfuzz::Bundle b = split("3<board/>\n%%% part0_pins.xml\n<pins/>\n\n%%% preset.xml\n<p/>");
    EXPECT_EQ(b.switches, 3u);
    EXPECT_TRUE(b.has(zrfuzz::Bundle::kValidate));
    EXPECT_TRUE(b.has(zrfuzz::Bundle::kPackBoard));
    EXPECT_FALSE(b.has(zrfuzz::Bundle::kPackSideFiles));
    EXPECT_EQ(names(b), (std::vector<std::string>{"board.xml", "part0_pins.xml", "preset.xml"}));
    EXPECT_EQ(text(b, "board.xml"), "<board/>");
    // The line feed before a marker belongs to neither file; the ones before it stay.
    EXPECT_EQ(text(b, "part0_pins.xml"), "<pins/>\n");
    EXPECT_EQ(text(b, "preset.xml"), "<p/>");
}

TEST(FuzzBundle, EdgeCases) {
    // Nothing at all, or the switch byte alone: an empty board.xml.
    EXPECT_EQ(names(split("")), std::vector<std::string>{"board.xml"});
    EXPECT_EQ(text(split("0"), "board.xml"), "");
    // Only the low four bits are switches.
    EXPECT_EQ(split("\xff").switches, 15u);
    // A marker at the very start, back to back markers, and one on the last line.
    const zrfuzz::Bundle b = split("0%%% a.xml\n%%% b.xml\nB\n%%% c.xml");
    EXPECT_EQ(names(b), (std::vector<std::string>{"board.xml", "a.xml", "b.xml", "c.xml"}));
    EXPECT_EQ(text(b, "board.xml"), "");
    EXPECT_EQ(text(b, "a.xml"), "");
    EXPECT_EQ(text(b, "b.xml"), "B");
    EXPECT_EQ(text(b, "c.xml"), "");
    // Names that could leave the directory or are no plain file names are dropped with their text;
    // a marker inside a line is text; a later file of a name replaces the earlier one.
    const zrfuzz::Bundle c = split("0x %%% a\n%%% ../up\nU\n%%% .\n%%% a/b\n%%% \nE\n%%% p.xml\n1\n%%% p.xml\n2");
    EXPECT_EQ(names(c), (std::vector<std::string>{"board.xml", "p.xml"}));
    EXPECT_EQ(text(c, "board.xml"), "x %%% a");
    EXPECT_EQ(text(c, "p.xml"), "2");
    EXPECT_EQ(names(split("0\n%%% " + std::string(65, 'n') + "\nX")), std::vector<std::string>{"board.xml"});
}

TEST(FuzzBundle, JoinIsTheInverseOfSplit) {
    zrfuzz::Bundle b;
    b.switches = zrfuzz::Bundle::kPackSideFiles | zrfuzz::Bundle::kStrict;
    b.files = {{"board.xml", "<board>\n</board>\n"}, {"part0_pins.xml", "\n\n"}, {"preset.xml", ""}};
    const std::string joined = zrfuzz::joinBundle(b);
    const zrfuzz::Bundle back = split(joined);
    EXPECT_EQ(back.switches, b.switches);
    ASSERT_EQ(names(back), names(b));
    for (const zrfuzz::Bundle::File& f : b.files)
        EXPECT_EQ(text(back, f.name), f.text) << f.name;
}

TEST(FuzzRegressions, EveryDirectoryNamesATarget) {
    ASSERT_TRUE(fs::is_directory(kRegressions)) << kRegressions;
    for (const fs::directory_entry& d : fs::directory_iterator(kRegressions))
        if (fs::is_directory(d.path())) {
            EXPECT_NE(zrfuzz::findTarget(d.path().filename().string()), nullptr) << d.path();
        }
}

// One case per target, so that a failure names the target; the input's file
// name is in the trace when it crashes.
class FuzzReplay : public ::testing::TestWithParam<std::string> {};

TEST_P(FuzzReplay, RegressionInputsRunClean) {
    const zrfuzz::Entry entry = zrfuzz::findTarget(GetParam());
    ASSERT_NE(entry, nullptr);
    const char* dataDirs = std::getenv("ZR_DATA_DIRS");
    const std::string before = dataDirs ? dataDirs : "<unset>";
    const fs::path dir = kRegressions / GetParam();
    std::vector<fs::path> inputs;
    if (fs::is_directory(dir))
        for (const fs::directory_entry& e : fs::directory_iterator(dir))
            if (fs::is_regular_file(e.path()))
                inputs.push_back(e.path());
    std::sort(inputs.begin(), inputs.end());
    for (const fs::path& p : inputs) {
        SCOPED_TRACE(p.string());
        const std::string data = readAll(p);
        EXPECT_EQ(entry(reinterpret_cast<const std::uint8_t*>(data.data()), data.size()), 0);
    }
    // An entry that borrows the environment puts it back.
    dataDirs = std::getenv("ZR_DATA_DIRS");
    EXPECT_EQ(dataDirs ? dataDirs : "<unset>", before);
}

INSTANTIATE_TEST_SUITE_P(Targets, FuzzReplay,
                         ::testing::Values("board_reader", "schema1_reader", "xml_tree", "preferences", "utilities",
                                           "migration_models"),
                         [](const ::testing::TestParamInfo<std::string>& info) { return info.param; });
