// Shared set-up of the position tests: a scratch copy of a bundled board to
// break, reads through the front door with the messages kept, and the place
// of a piece of text in a file, as an editor counts it.
#ifndef ZR_TEST_POSITION_SUPPORT_H
#define ZR_TEST_POSITION_SUPPORT_H

#include <gtest/gtest.h>

#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include <boost/filesystem.hpp>

#include "ComMsgMgr.h"
#include "HBOBoard.h"
#include "HBOParser.h"
#include "HPAParamMgr.h"
#include "PackedText.h"
#include "TempDir.h"

namespace fs = boost::filesystem;

inline const std::string kData = ZR_TEST_DATA_DIR;

inline std::string slurp(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream out;
    out << in.rdbuf();
    return out.str();
}

// Line and column (in characters, both from 1) of the first `marker` in `text`.
struct Place {
    int line = 0;
    int column = 0;
};
inline Place placeOf(const std::string& text, const std::string& marker) {
    Place p;
    const std::size_t at = text.find(marker);
    if (at == std::string::npos) {
        ADD_FAILURE() << "no '" << marker << "' in the text";
        return p;
    }
    p.line = 1;
    std::size_t lineStart = 0;
    for (std::size_t i = 0; i < at; ++i)
        if (text[i] == '\n') {
            ++p.line;
            lineStart = i + 1;
        }
    p.column = 1;
    for (std::size_t i = lineStart; i < at; ++i)
        p.column += (static_cast<unsigned char>(text[i]) & 0xC0) != 0x80;
    return p;
}

class PositionFixture : public ::testing::Test {
protected:
    void SetUp() override {
        m_wasPrinting = ComMsgMgr::printToStderr();
        ComMsgMgr::setPrintToStderr(false);
        m_listener = ComMsgMgr::addListener([this](const ComMsgMgrInstance& m) {
            if (!m.getId().empty())
                m_messages.push_back(m);
        });
        setParam("board.validateXML", "true");
        setParam("board.enable2020Checks", "true");
    }

    void TearDown() override {
        ComMsgMgr::removeListener(m_listener);
        ComMsgMgr::setPrintToStderr(m_wasPrinting);
        HPAParamMgr::getParamMgr()->resetValue("board.validateXML");
        HPAParamMgr::getParamMgr()->resetValue("board.enable2020Checks");
    }

    void setParam(const std::string& name, const std::string& value) {
        HPAParamMgr::getParamMgr()->setValue(name, value);
    }

    // Copies a bundled board directory (below board_files or board_parts) into the scratch directory.
    std::string copyBoard(const std::string& bundled) {
        const fs::path to = m_dir.path() / fs::path(bundled).filename();
        fs::create_directories(to);
        for (const fs::directory_entry& e : fs::directory_iterator(kData + "/boards/" + bundled))
            if (fs::is_regular_file(e.path()))
                fs::copy_file(e.path(), to / e.path().filename());
        return to.string();
    }

    // Replaces the first `from` in the file by `to`; the new text.
    std::string change(const std::string& file, const std::string& from, const std::string& to) {
        std::string text = slurp(file);
        const std::size_t at = text.find(from);
        EXPECT_NE(at, std::string::npos) << "no '" << from << "' in " << file;
        if (at != std::string::npos)
            text.replace(at, from.size(), to);
        write(file, text);
        return text;
    }

    static void write(const std::string& file, const std::string& text) {
        std::ofstream(file, std::ios::binary) << text;
    }

    // Reads the board file through the front door, as `zrboard check` does.
    bool read(const std::string& boardFile) {
        m_messages.clear();
        std::unique_ptr<HBOBoard> board(new HBOBoard());
        return HBOParser().parseFile(boardFile, board.get());
    }

    // The first message of `id`; fails the case when there is none.
    ComMsgMgrInstance first(const std::string& id) const {
        for (const ComMsgMgrInstance& m : m_messages)
            if (m.getId() == id)
                return m;
        ADD_FAILURE() << "no message " << id << "; got " << ids();
        return ComMsgMgrInstance();
    }

    // The first message of `id` whose text holds `words`.
    ComMsgMgrInstance firstWith(const std::string& id, const std::string& words) const {
        for (const ComMsgMgrInstance& m : m_messages)
            if (m.getId() == id && m.getText().find(words) != std::string::npos)
                return m;
        ADD_FAILURE() << "no message " << id << " with '" << words << "'; got " << ids();
        return ComMsgMgrInstance();
    }

    std::string ids() const {
        std::string out;
        for (const ComMsgMgrInstance& m : m_messages)
            out += m.getId() + " ";
        return out;
    }

    const std::vector<ComMsgMgrInstance>& messages() const { return m_messages; }
    const std::string& dir() const { return m_dirText; }

private:
    TempDir m_dir;
    const std::string m_dirText = m_dir.str();
    bool m_wasPrinting = true;
    int m_listener = 0;
    std::vector<ComMsgMgrInstance> m_messages;
};

// The message lies in `file` at the place of `marker` in `text`.
#define EXPECT_AT(msg, inFile, text, marker)                               \
    do {                                                                   \
        const Place expected_ = placeOf(text, marker);                     \
        const ComMsgMgrInstance msg_ = (msg);                              \
        const ComMsgPosition& at_ = msg_.getPosition();                    \
        EXPECT_EQ(at_.file, inFile) << msg_.getLine();                     \
        EXPECT_EQ(at_.line, expected_.line) << msg_.getLine();             \
        EXPECT_EQ(at_.column, expected_.column) << msg_.getLine();         \
    } while (0)

#endif
