// The example boards of the data directory read cleanly, validated against
// the grammars shipped beside them, and each of their files is found.
#include "parser_fixture.h"

#include <fstream>
#include <iterator>

#include <boost/filesystem.hpp>

TEST_F(ParserFixture, ExampleBoardsValidateAndRead) {
    namespace fs = boost::filesystem;
    const std::string root = std::string(ZR_TEST_DATA_DIR) + "/boards/board_files";
    const std::string grammars = std::string(ZR_TEST_DATA_DIR) + "/boards/board_schemas/current";
    setParam("board.validateXML", "true");
    int boards = 0;
    for (fs::recursive_directory_iterator it(root), end; it != end; ++it) {
        if (it->path().filename() != "board.xml")
            continue;
        ++boards;
        clearMessages();
        const std::string file = it->path().string();
        std::ifstream in(file);
        const std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
        const std::string::size_type at = text.find("schema_version=\"") + 16;
        Parsed r = parse(file, grammars, "", nullptr, text.substr(at, text.find('"', at) - at));
        EXPECT_TRUE(r.ok) << file;
        EXPECT_TRUE(r.validated) << file;
        for (const ComMsgMgrInstance& m : messages())
            EXPECT_TRUE(m.getId().empty() || m.getId() == "49-113" || m.getId() == "49-149")
                << file << ": " << m.getLine();
        EXPECT_FALSE(board().getName().empty()) << file;
        EXPECT_FALSE(board().getBoardComponents().empty()) << file;
    }
    EXPECT_GE(boards, 1);
}
