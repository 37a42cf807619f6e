// Shared set-up of the catalogue tests: a temporary tree of data directories
// and repositories, small board files written into it, the parameters and the
// environment put back afterwards, and the catalogue torn down whatever
// references it kept.
#ifndef ZR_TEST_CATALOG_FIXTURE_H
#define ZR_TEST_CATALOG_FIXTURE_H

#include <gtest/gtest.h>

#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include <boost/filesystem.hpp>

#include "EnvVar.h"
#include "HBOBoard.h"
#include "HBOBoardCReposMgr.h"
#include "HPAParamMgr.h"
#include "../utils/MessageRecorder.h"
#include "../utils/ParamStoreGuard.h"

using Names = std::vector<std::string>;

// One board file: the fields the catalogue looks at, and room for components.
struct BoardSpec {
    std::string name = "b1";
    std::string version = "1.0";
    std::string vendor = "acme";
    std::string display = "";
    std::vector<std::string> revisions = {"Rev A"};
    std::string interfaces = "";  // <interface> elements of part0
    std::string extra = "";       // more <component> elements
    std::string fileName = "board.xml";
};

class CatalogFixture : public ::testing::Test {
protected:
    void SetUp() override {
        namespace fs = boost::filesystem;
        m_root = (fs::temp_directory_path() / fs::unique_path("zr-catalog-%%%%-%%%%-%%%%")).string();
        fs::create_directories(m_root);
        // No installation unless a case asks for one.
        useDataDirs({});
        param("board.repoPaths", "");
        param("project.boardPartRepoPaths", "");
    }

    void TearDown() override {
        dropCatalogue();
        boost::system::error_code ec;
        boost::filesystem::remove_all(m_root, ec);
    }

    void dropCatalogue() {
        // Some callers keep a reference by design: let go of all of them.
        while (HBOBoardCReposMgr::peekGlobal())
            HBOBoardCReposMgr::release();
        m_catalogue = nullptr;
    }

    HBOBoardCReposMgr* catalogue() {
        if (!m_catalogue)
            m_catalogue = HBOBoardCReposMgr::getGlobal();
        return m_catalogue;
    }

    void useDataDirs(const std::vector<std::string>& dirs) {
        std::string list;
        for (const std::string& d : dirs)
            list += (list.empty() ? "" : ":") + path(d);
        m_dataDirs.reset();
        m_dataDirs.reset(new EnvVar("ZR_DATA_DIRS", list));
    }

    void param(const std::string& name, const std::string& value) {
        ASSERT_TRUE(HPAParamMgr::getParamMgr()->setValue(name, value)) << name;
    }

    std::string path(const std::string& relative) const { return m_root + "/" + relative; }

    std::string write(const std::string& relative, const std::string& text) {
        const std::string full = path(relative);
        boost::filesystem::create_directories(boost::filesystem::path(full).parent_path());
        std::ofstream(full, std::ios::binary) << text;
        return full;
    }

    static std::string boardXml(const BoardSpec& b) {
        std::string revisions;
        for (std::size_t i = 0; i < b.revisions.size(); ++i)
            revisions += "<revision id=\"" + std::to_string(i) + "\">" + b.revisions[i] + "</revision>";
        return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
               "<board schema_version=\"2.1\" vendor=\"" + b.vendor + "\" name=\"" + b.name +
               "\" display_name=\"" + (b.display.empty() ? b.name : b.display) + "\">\n"
               "<compatible_board_revisions>" + revisions + "</compatible_board_revisions>\n"
               "<file_version>" + b.version + "</file_version>\n<description>test board</description>\n"
               "<components>\n"
               "<component name=\"part0\" display_name=\"FPGA\" type=\"fpga\" part_name=\"zf5m40-kbg256-1\">\n"
               "<interfaces>" + b.interfaces + "</interfaces>\n</component>\n" + b.extra + "</components>\n</board>\n";
    }

    // A board below `dir` (relative to the case's root); its directory.
    std::string board(const std::string& dir, const BoardSpec& spec) {
        write(dir + "/" + spec.fileName, boardXml(spec));
        return path(dir);
    }

    // The data directory `data` with one board under boards/<kind>/<sub>.
    void installed(const std::string& data, const std::string& kind, const std::string& sub, const BoardSpec& spec) {
        board(data + "/" + kind + "/" + sub, spec);
    }

    static Names namesOf(const std::vector<HBOBoard*>& boards) {
        Names names;
        for (const HBOBoard* b : boards)
            names.push_back(b ? b->getName() + "=" + b->getDisplayName() : "null");
        return names;
    }

    Names all() {
        std::vector<HBOBoard*> boards;
        catalogue()->getAllBoards(boards);
        return namesOf(boards);
    }

    int count(const std::string& id) const {
        int n = 0;
        for (const ComMsgMgrInstance& m : m_messages.messages())
            if (m.getId() == id)
                ++n;
        return n;
    }

    std::string m_root;
    ParamStoreGuard m_params;
    MessageRecorder m_messages;
    std::unique_ptr<EnvVar> m_dataDirs;
    HBOBoardCReposMgr* m_catalogue = nullptr;
};

#endif
