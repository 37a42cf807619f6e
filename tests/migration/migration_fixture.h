// Shared set-up of the migration tool tests: a scratch directory per case,
// the messages delivered, the standard output of a call, packed files, and
// the expected files of the writers.
#ifndef ZR_TEST_MIGRATION_FIXTURE_H
#define ZR_TEST_MIGRATION_FIXTURE_H

#include <gtest/gtest.h>

#include <fstream>
#include <functional>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include <boost/filesystem.hpp>
#include <boost/iostreams/filter/gzip.hpp>
#include <boost/iostreams/filtering_stream.hpp>

#include "ComMsgMgr.h"
#include "HXMLWElement.h"
#include "HXMLWInterface.h"

class MigrationFixture : public ::testing::Test {
protected:
    void SetUp() override {
        namespace fs = boost::filesystem;
        m_dir = (fs::temp_directory_path() / fs::unique_path("zr-migrate-%%%%-%%%%-%%%%")).string();
        fs::create_directories(m_dir);
        m_wasPrinting = ComMsgMgr::printToStderr();
        ComMsgMgr::setPrintToStderr(false);
        m_listener = ComMsgMgr::addListener([this](const ComMsgMgrInstance& m) {
            if (!m.getId().empty())
                m_messages.push_back(m);
        });
    }

    void TearDown() override {
        ComMsgMgr::removeListener(m_listener);
        ComMsgMgr::setPrintToStderr(m_wasPrinting);
        boost::system::error_code ec;
        boost::filesystem::remove_all(m_dir, ec);
    }

    const std::string& dir() const { return m_dir; }

    // Writes `text` to `name` below the case's directory; the full path.
    std::string write(const std::string& name, const std::string& text) const {
        const std::string path = m_dir + "/" + name;
        boost::filesystem::create_directories(boost::filesystem::path(path).parent_path());
        std::ofstream(path, std::ios::binary) << text;
        return path;
    }

    // As write, in the packed form.
    std::string writePacked(const std::string& name, const std::string& text) const {
        std::ostringstream bytes;
        {
            boost::iostreams::filtering_stream<boost::iostreams::output> gz;
            gz.push(boost::iostreams::gzip_compressor());
            gz.push(bytes);
            gz << text;
        }
        return write(name, bytes.str());
    }

    static std::string read(const std::string& path) {
        std::ifstream in(path, std::ios::binary);
        std::ostringstream text;
        text << in.rdbuf();
        return text.str();
    }

    // The bytes that `model.write` puts into a file.
    template <class Model>
    std::string written(const Model& model) const {
        const std::string path = m_dir + "/written.xml";
        {
            std::ofstream out(path);
            model.write(out);
        }
        return read(path);
    }

    static std::string expected(const std::string& name) {
        return read(std::string(ZR_TEST_FIXTURES_DIR) + "/migration/" + name);
    }

    // What `call` printed on the standard output.
    static std::string stdoutOf(const std::function<void()>& call) {
        ::testing::internal::CaptureStdout();
        call();
        return ::testing::internal::GetCapturedStdout();
    }

    static std::shared_ptr<HXMLWElement> xml(const std::string& text) {
        std::shared_ptr<HXMLWElement> root = HXMLWInterface::readFromBuffer(text);
        EXPECT_TRUE(root) << HXMLWInterface::lastError() << "\n" << text;
        return root;
    }

    std::vector<ComMsgMgrInstance> m_messages;

private:
    std::string m_dir;
    bool m_wasPrinting = true;
    int m_listener = 0;
};

#endif
