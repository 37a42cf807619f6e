// Data directories, paths and text conversions.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

#include <boost/filesystem.hpp>

#include "EnvVar.h"
#include "HSTStringUtils.h"
#include "HUTConvert.h"
#include "HUTEnv.h"
#include "HUTFile.h"

namespace fs = boost::filesystem;

namespace {


std::string canonical(const std::string& p) { return fs::canonical(p).string(); }

}  // namespace

TEST(DataDirs, FromTheEnvironmentInOrder) {
    EnvVar env("ZR_DATA_DIRS", "/first/data::/second/data:");
    EXPECT_EQ(HUTEnv::getQDEDataDirList(), (std::vector<std::string>{"/first/data", "/second/data"}));
}

TEST(DataDirs, DefaultIsTheSourceDataWhenRunFromTheBuildTree) {
    EnvVar env("ZR_DATA_DIRS", nullptr);
    std::vector<std::string> dirs = HUTEnv::getQDEDataDirList();
    ASSERT_EQ(dirs.size(), 1u);
    EXPECT_EQ(canonical(dirs[0]), canonical(ZR_TEST_DATA_DIR));
}

// A host may have no data directories; only an unset variable means the default.
TEST(DataDirs, SetButEmptyMeansNone) {
    for (const char* value : {"", "::"}) {
        EnvVar env("ZR_DATA_DIRS", value);
        EXPECT_TRUE(HUTEnv::getQDEDataDirList().empty()) << "'" << value << "'";
    }
}

TEST(DataDirs, ApplicationRoot) {
    {
        EnvVar env("ZR_APP_ROOT", "/opt/zr");
        std::string root;
        EXPECT_TRUE(HUTEnv::getQDEAppRoot(root));
        EXPECT_EQ(root, "/opt/zr");
    }
    EnvVar env("ZR_APP_ROOT", nullptr);
    std::string root;
    ASSERT_TRUE(HUTEnv::getQDEAppRoot(root));
    // From the build tree the root is the build directory, which holds the libraries.
    EXPECT_TRUE(fs::is_directory(fs::path(root) / "lib")) << root;
}

// A copy of the library in an installed layout finds the data beside itself,
// wherever that tree was put.
TEST(DataDirs, InstalledTreeIsRelocatable) {
    EnvVar dirs("ZR_DATA_DIRS", nullptr);
    EnvVar appRoot("ZR_APP_ROOT", nullptr);
    Dl_info info;
    ASSERT_NE(dladdr(reinterpret_cast<void*>(&HUTEnv::getQDEDataDirList), &info), 0);
    if (std::string(info.dli_fname).find("zr_common") == std::string::npos)
        GTEST_SKIP() << "the function's address lies in " << info.dli_fname << ", not in the library";
    fs::path prefix = fs::temp_directory_path() / fs::unique_path("zr-prefix-%%%%%%");
    fs::create_directories(prefix / "lib");
    fs::path copy = prefix / "lib" / fs::path(info.dli_fname).filename();
    fs::copy_file(info.dli_fname, copy);

    void* lib = dlopen(copy.string().c_str(), RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(lib, nullptr) << dlerror();
    using DirList = std::vector<std::string> (*)();
    using AppRoot = bool (*)(std::string&);
    // The copy's own entry points, found under the symbol names of the loaded ones.
    Dl_info rootInfo;
    ASSERT_NE(dladdr(reinterpret_cast<void*>(&HUTEnv::getQDEAppRoot), &rootInfo), 0);
    ASSERT_NE(info.dli_sname, nullptr);
    ASSERT_NE(rootInfo.dli_sname, nullptr);
    auto dirList = reinterpret_cast<DirList>(dlsym(lib, info.dli_sname));
    auto root = reinterpret_cast<AppRoot>(dlsym(lib, rootInfo.dli_sname));
    ASSERT_NE(dirList, nullptr);
    ASSERT_NE(root, nullptr);

    std::string base = canonical(prefix.string());
    std::vector<std::string> found = dirList();
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0].rfind(base + "/", 0), 0u) << found[0];
    EXPECT_EQ(found[0].find(".."), std::string::npos) << found[0];
    EXPECT_EQ(fs::path(found[0]).filename(), "data");
    std::string r;
    EXPECT_TRUE(root(r));
    EXPECT_EQ(r, base);

    dlclose(lib);
    fs::remove_all(prefix);
}

TEST(Paths, CanonicalAndAbsolute) {
    fs::path tmp = fs::temp_directory_path() / fs::unique_path("zr-paths-%%%%%%");
    fs::create_directories(tmp / "real" / "sub");
    fs::create_symlink(tmp / "real", tmp / "link");
    std::string base = canonical(tmp.string());

    std::string out;
    EXPECT_TRUE(HUTFile((tmp / "link" / "sub" / ".." / "sub" / ".").string()).getCanonicalName(out));
    EXPECT_EQ(out, base + "/real/sub");
    // A tail that does not exist is tidied by its text.
    EXPECT_TRUE(HUTFile((tmp / "link" / "new" / ".." / "f.xml").string()).getCanonicalName(out));
    EXPECT_EQ(out, base + "/real/f.xml");
    EXPECT_TRUE(HUTFile((tmp / "real" / "sub/").string()).getCanonicalName(out));
    EXPECT_EQ(out, base + "/real/sub");
    out = "unchanged";
    EXPECT_FALSE(HUTFile("").getCanonicalName(out));
    EXPECT_EQ(out, "unchanged");

    std::string rel = "boards/x";
    HUTFileUtils::makeAbsolutePath(rel);
    EXPECT_EQ(rel, (fs::current_path() / "boards/x").string());
    std::string abs = "/already/abs";
    HUTFileUtils::makeAbsolutePath(abs);
    EXPECT_EQ(abs, "/already/abs");

    fs::remove_all(tmp);
}

TEST(Conversions, BooleanWords) {
    bool b = false;
    for (const char* t : {"1", "true", "TRUE", "Yes", "on"}) {
        b = false;
        EXPECT_TRUE(HUTConvert::stringToBoolean(t, b)) << t;
        EXPECT_TRUE(b) << t;
        EXPECT_TRUE(HUTConvert::toBool(t)) << t;
    }
    for (const char* t : {"0", "false", "False", "NO", "off"}) {
        b = true;
        EXPECT_TRUE(HUTConvert::stringToBoolean(t, b)) << t;
        EXPECT_FALSE(b) << t;
    }
    for (const char* t : {"", "2", "truth", "y", "enable", "0x1"}) {
        b = true;
        EXPECT_FALSE(HUTConvert::stringToBoolean(t, b)) << t;
        EXPECT_TRUE(b) << "left alone: " << t;
        EXPECT_FALSE(HUTConvert::toBool(t)) << t;
    }
    EXPECT_FALSE(HUTConvert::stringToBoolean(" true", b, true));
    EXPECT_TRUE(HUTConvert::stringToBoolean(" true\t", b, false));
    EXPECT_TRUE(HUTConvert::toBool(" yes "));
}

TEST(Conversions, FloatsOnlyWhenTheWholeTextIsANumber) {
    struct Good {
        const char* text;
        double value;
    };
    for (Good g : {Good{"1.0", 1.0}, Good{" 2.5 ", 2.5}, Good{"-3", -3.0}, Good{"+4.", 4.0}, Good{".5", 0.5},
                   Good{"1e3", 1000.0}, Good{"2.0E-1", 0.2}}) {
        double d = -99;
        EXPECT_TRUE(HUTConvert::stringToFloat(g.text, d)) << g.text;
        EXPECT_DOUBLE_EQ(d, g.value) << g.text;
    }
    for (const char* bad : {"", " ", "1.0a", "1.0.0", "abc", "1e", ".", "-", "inf", "nan", "0x10", "1 2", "1,5"}) {
        double d = -99;
        EXPECT_FALSE(HUTConvert::stringToFloat(bad, d)) << bad;
        EXPECT_EQ(d, -99) << bad;
    }
}

TEST(Conversions, CaseBlindEquality) {
    EXPECT_TRUE(HSTStringUtils::iequals("Board_XML", "board_xml"));
    EXPECT_TRUE(HSTStringUtils::iequals("", ""));
    EXPECT_FALSE(HSTStringUtils::iequals("board", "boards"));
    EXPECT_FALSE(HSTStringUtils::iequals("board", nullptr));
    // Bytes beyond ASCII compare as they are.
    EXPECT_FALSE(HSTStringUtils::iequals("\xc3\xa9", "\xc3\x89"));
}
