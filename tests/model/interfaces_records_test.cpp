// The small records: rebase copies, a parameter's supported values, saves to the
// attached board store, the driver copy, and the display lines.

#include "HBOBoardComponentDriver.h"
#include "HBOBoardDB.h"
#include "board_fixture.h"

using namespace board_fixture;

namespace {

struct CountingStore : HBOBoardDB {
    std::vector<HBOBoard*> saved;
    void saveBoard(HBOBoard* board) override { saved.push_back(board); }
};

}  // namespace

TEST(InterfacesRecords, SupportedValuesAreMinimumThenMaximum) {
    Names values{"x"};
    HBOParameter("speed", "3", "int", "1", "5", "false").getSupportedValues(values);
    EXPECT_EQ((Names{"x", "1", "5"}), values);
    Names bounds;
    HBOParameter().getSupportedValues(bounds);
    EXPECT_EQ((Names{"", ""}), bounds);
}

TEST(InterfacesRecords, RebaseCopiesPrefixTheNameOnly) {
    HBOParameter p("speed", "3", "int", "1", "5", "true");
    HBOParameter param(p, "d1");
    EXPECT_EQ((Names{"d1_speed", "3", "true", "speed"}),
              (Names{param.getName(), param.getValue(), param.getReadOnly(), HBOParameter(p, "").getName()}));
    HBOBoard board;
    HBOJumper j;
    j.setName("j1");
    j.setDefaultValue(false);
    j.setDescription("clock select");
    HBOJumper jumper(j, &board, "d1");
    EXPECT_EQ((Names{"d1_j1", "clock select", "j1"}),
              (Names{jumper.getName(), jumper.getDescription(), HBOJumper(j, nullptr, "").getName()}));
    EXPECT_FALSE(jumper.getDefaultValue());
    EXPECT_EQ(&board, jumper.getOwner());
    HBOImage image(HBOImage("board.jpg", "Board", "top view", "high", "board"), "d1");
    // An image's display name is kept.
    EXPECT_EQ((Names{"d1_board.jpg", "Board", "board"}),
              (Names{image.getName(), image.getDisplayName(), image.getSubType()}));
    HBOPortMap m("clk_p", "sys_clk_p");
    HBOPortMap map(m, "fmc0");
    EXPECT_EQ((Names{"clk_p", "fmc0_sys_clk_p", "sys_clk_p"}),
              (Names{map.getLogicalPort(), map.getPhysicalPort(), HBOPortMap(m, "").getPhysicalPort()}));
}

TEST(InterfacesRecords, SavesReachOnlyAnAttachedStore) {
    HBOJumper fresh;
    EXPECT_TRUE(fresh.getDefaultValue());
    HBOBoard board;
    board.saveBoard();  // nothing attached: nothing happens
    CountingStore store;
    HBOJumper jumper;
    jumper.setOwner(&board);
    jumper.setValue(false, true);  // no store attached: value changes, nothing saved
    EXPECT_FALSE(jumper.getDefaultValue());
    board.attach(&store);
    board.saveBoard();
    EXPECT_EQ((std::vector<HBOBoard*>{&board}), store.saved);
    jumper.setValue(true, false);
    EXPECT_TRUE(jumper.getDefaultValue());
    EXPECT_EQ(1u, store.saved.size());
    jumper.setValue(false, true);  // a jumper saves through its board
    EXPECT_EQ((std::vector<HBOBoard*>{&board, &board}), store.saved);
    HBOJumper orphan;
    orphan.setValue(false, true);  // no owner: no crash
    EXPECT_FALSE(orphan.getDefaultValue());
}

TEST(InterfacesRecords, DriverCopyKeepsEverythingButTheComponent) {
    HBOBoardComponentDriver driver;
    driver.setName("eth");
    driver.setPlatform({"a", "b"});
    driver.setDriverPath("/drivers/eth");
    driver.addFile("src", "eth.c");
    driver.addFile("src", "eth2.c");  // replaces
    driver.addFile("hdr", "eth.h");
    HBOBoardComponent component;
    HBOBoardComponentDriver copy(driver, &component);
    EXPECT_EQ(&component, copy.getBoardComponent());
    EXPECT_EQ("eth", copy.getName());
    EXPECT_EQ((Names{"a", "b"}), copy.getPlatform());
    EXPECT_EQ("/drivers/eth", copy.getDriverPath());
    EXPECT_EQ((std::map<std::string, std::string>{{"hdr", "eth.h"}, {"src", "eth2.c"}}), copy.getFiles());
}

TEST(InterfacesRecords, DisplayFormats) {
    HBOParameter p("speed", "3", "int", "1", "5", "false");
    HBOJumper j;
    j.setName("j1");
    j.setDescription("clock select");
    EXPECT_EQ("-Parameter - name:speed, value:3, type:int, min:1, max:5, read_only:false \n"
              "--Jumper - name:j1, default_value:true, description:clock select \n"
              "Jumper - name:j1, default_value:false, description:clock select \n",
              stderrOf([&] {
                  p.display(1);
                  j.display(2);
                  j.setDefaultValue(false);
                  j.display(0);
              }));
}
