// Working directory helpers. Each test puts the directory back.
#include <gtest/gtest.h>

#include <boost/filesystem.hpp>
#include <string>

#include "HBOBoardUtils.h"

namespace fs = boost::filesystem;

namespace {

class WorkingDir : public ::testing::Test {
protected:
    void SetUp() override {
        m_start = fs::current_path();
        m_tmp = fs::temp_directory_path() / fs::unique_path("zr_utils_cwd_%%%%%%%%");
        fs::create_directories(m_tmp);
        m_tmp = fs::canonical(m_tmp);
    }
    void TearDown() override {
        fs::current_path(m_start);
        boost::system::error_code ec;
        fs::remove_all(m_tmp, ec);
    }
    fs::path m_start;
    fs::path m_tmp;
};

}  // namespace

TEST_F(WorkingDir, ReadsAndChangesTheProcessDirectory) {
    std::string dir;
    ASSERT_EQ(HBOBoardUtils::getCurrDir(dir), 0);
    EXPECT_EQ(dir, m_start.string());

    ASSERT_EQ(HBOBoardUtils::changeDir(m_tmp.string()), 0);
    EXPECT_EQ(fs::current_path(), m_tmp);
    ASSERT_EQ(HBOBoardUtils::getCurrDir(dir), 0);
    EXPECT_EQ(dir, m_tmp.string());
}

TEST_F(WorkingDir, FailedChangeReportsAndStaysPut) {
    EXPECT_NE(HBOBoardUtils::changeDir((m_tmp / "does_not_exist").string()), 0);
    EXPECT_EQ(fs::current_path(), m_start);
}

TEST_F(WorkingDir, PathLongerThanTheBufferFailsAndLeavesTheResultAlone) {
    // Descend one short step at a time until the absolute path exceeds 1024 bytes.
    const std::string part(100, 'd');
    fs::current_path(m_tmp);
    while (fs::current_path().string().size() <= 1100) {
        fs::create_directory(part);
        fs::current_path(part);
    }
    std::string dir = "untouched";
    EXPECT_EQ(HBOBoardUtils::getCurrDir(dir), 1);
    EXPECT_EQ(dir, "untouched");
}
