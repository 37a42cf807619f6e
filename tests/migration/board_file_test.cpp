// The board file slot: it lists components while reading and writes nothing.
#include "migration_fixture.h"

#include "HBMBoard.h"
#include "HBMBoardFile.h"

class BoardFile : public MigrationFixture {};

TEST_F(BoardFile, ListsTheComponentsOfEveryComponentsElement) {
    struct Case {
        const char* xml;
        bool result;
        const char* printed;
    };
    const std::vector<Case> cases = {
        {"<board><components><component name=\"part0\"/><component name=\"led\"/></components></board>", true,
         "Component: part0\nComponent: led\n"},
        {"<board><Components><x name=\"a\"/></Components><parameters/><COMPONENTS><component/></COMPONENTS></board>",
         true, "Component: a\nComponent: \n"},
        {"<board><parameters><component name=\"no\"/></parameters></board>", true, ""},
        {"<board schema_version=\"2.1\"/>", false, ""},
    };
    for (const Case& c : cases) {
        HBMBoardFile file;
        auto root = xml(c.xml);
        bool result = !c.result;
        EXPECT_EQ(stdoutOf([&] { result = file.parse(root.get()); }), c.printed) << c.xml;
        EXPECT_EQ(result, c.result) << c.xml;
    }
    HBMBoardFile file;
    EXPECT_FALSE(file.parse(nullptr));
}

TEST_F(BoardFile, WritingLeavesAnEmptyFileInPlaceOfWhatStoodThere) {
    write("out/board.xml", "<board>old content</board>");
    HBMBoard board;
    auto root = xml("<board><components><component name=\"c\"/></components></board>");
    stdoutOf([&] { board.getBoardFile().parse(root.get()); });
    EXPECT_TRUE(board.writeBoardFile(dir() + "/out"));
    EXPECT_TRUE(boost::filesystem::exists(dir() + "/out/board.xml"));
    EXPECT_EQ(boost::filesystem::file_size(dir() + "/out/board.xml"), 0u);
}
