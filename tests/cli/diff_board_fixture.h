// Boards for the comparison tests: a bundled board copied into a temporary
// directory, where a test edits its files before reading it.
#ifndef ZR_TESTS_DIFF_BOARD_FIXTURE_H
#define ZR_TESTS_DIFF_BOARD_FIXTURE_H

#include <memory>
#include <string>

#include <gtest/gtest.h>
#include <boost/algorithm/string/replace.hpp>
#include <boost/filesystem.hpp>

#include "HBOBoard.h"
#include "HBOParser.h"
#include "show_tool_run.h"

namespace difftest {

namespace fs = boost::filesystem;

class BoardCopy {
public:
    // `relative` is a board directory under data/boards, e.g. "board_files/tarnwick/1.2".
    // It keeps its place under a boards directory of its own, beside the
    // grammars that a legacy board names by a relative path.
    explicit BoardCopy(const std::string& relative) : m_dir(m_temp.path() / "boards" / relative) {
        fs::create_directories(m_dir);
        fs::create_directory_symlink(showtest::boardDir("board_schemas"), m_temp.path() / "boards" / "board_schemas");
        const fs::path source = showtest::boardDir(relative);
        for (const fs::directory_entry& e : fs::recursive_directory_iterator(source)) {
            const fs::path target = m_dir / fs::relative(e.path(), source);
            if (fs::is_directory(e.path()))
                fs::create_directories(target);
            else
                fs::copy_file(e.path(), target);
        }
    }

    // Replaces the one occurrence of `from` in `file`; a text that is missing
    // or ambiguous fails the test, so that an edit never silently does nothing.
    void edit(const std::string& file, const std::string& from, const std::string& to) {
        const fs::path p = m_dir / file;
        std::string text = showtest::readFile(p);
        const std::string::size_type at = text.find(from);
        ASSERT_NE(at, std::string::npos) << from << " not in " << file;
        ASSERT_EQ(text.find(from, at + 1), std::string::npos) << from << " occurs twice in " << file;
        text.replace(at, from.size(), to);
        showtest::writeFile(p, text);
    }

    const fs::path& dir() const { return m_dir; }

private:
    showtest::TempDir m_temp;
    fs::path m_dir;
};

// Reads a board as the tool does; null when it cannot be read.
inline std::unique_ptr<HBOBoard> readBoard(const fs::path& dir) {
    std::unique_ptr<HBOBoard> board(new HBOBoard());
    HBOParser parser;
    if (!parser.parseFile((dir / "board.xml").string(), board.get()))
        return nullptr;
    parser.migrateV1ToV2(board.get());
    return board;
}

}  // namespace difftest

#endif
