// A fresh directory under the temporary directory, by its canonical path,
// removed with everything in it when the object goes.
#ifndef ZR_TEST_TEMPDIR_H
#define ZR_TEST_TEMPDIR_H

#include <string>

#include <boost/filesystem.hpp>

class TempDir {
public:
    TempDir() : m_path(boost::filesystem::temp_directory_path() / boost::filesystem::unique_path("zr_test_%%%%%%%%")) {
        boost::filesystem::create_directories(m_path);
        m_path = boost::filesystem::canonical(m_path);
    }
    ~TempDir() {
        boost::system::error_code ec;
        boost::filesystem::remove_all(m_path, ec);
    }
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;
    const boost::filesystem::path& path() const { return m_path; }
    std::string str() const { return m_path.string(); }

private:
    boost::filesystem::path m_path;
};

#endif
