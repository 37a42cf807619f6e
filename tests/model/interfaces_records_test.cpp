// The small records: rebase copies, a parameter's supported values, a jumper's save
// to the attached board store, the driver copy, and the display lines.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "HBOBoard.h"
#include "HBOBoardComponent.h"
#include "HBOBoardComponentDriver.h"
#include "HBOBoardDB.h"
#include "HBOImage.h"
#include "HBOJumper.h"
#include "HBOParameter.h"
#include "HBOPortMap.h"

namespace {

struct CountingStore : HBOBoardDB {
    std::vector<HBOBoard*> saved;
    void saveBoard(HBOBoard* board) override { saved.push_back(board); }
};

}  // namespace

TEST(InterfacesRecords, SupportedValuesAreMinimumThenMaximum) {
    std::vector<std::string> values{"x"};
    HBOParameter("speed", "3", "int", "1", "5", "false").getSupportedValues(values);
    EXPECT_EQ((std::vector<std::string>{"x", "1", "5"}), values);

    std::vector<std::string> bounds;
    HBOParameter().getSupportedValues(bounds);
    EXPECT_EQ((std::vector<std::string>{"", ""}), bounds);
}

TEST(InterfacesRecords, RebaseCopiesPrefixTheNameOnly) {
    HBOParameter p("speed", "3", "int", "1", "5", "true");
    HBOParameter param(p, "d1");
    EXPECT_EQ("d1_speed", param.getName());
    EXPECT_EQ("3", param.getValue());
    EXPECT_EQ("true", param.getReadOnly());
    EXPECT_EQ("speed", HBOParameter(p, "").getName());

    HBOBoard board;
    HBOJumper j;
    j.setName("j1");
    j.setDefaultValue(false);
    j.setDescription("clock select");
    HBOJumper jumper(j, &board, "d1");
    EXPECT_EQ("d1_j1", jumper.getName());
    EXPECT_FALSE(jumper.getDefaultValue());
    EXPECT_EQ("clock select", jumper.getDescription());
    EXPECT_EQ(&board, jumper.getOwner());
    EXPECT_EQ("j1", HBOJumper(j, nullptr, "").getName());

    HBOImage i("board.jpg", "Board", "top view", "high", "board");
    HBOImage image(i, "d1");
    EXPECT_EQ("d1_board.jpg", image.getName());
    EXPECT_EQ("Board", image.getDisplayName());  // an image's display name is kept
    EXPECT_EQ("board", image.getSubType());

    HBOPortMap m("clk_p", "sys_clk_p");
    HBOPortMap map(m, "fmc0");
    EXPECT_EQ("clk_p", map.getLogicalPort());
    EXPECT_EQ("fmc0_sys_clk_p", map.getPhysicalPort());
    EXPECT_EQ("sys_clk_p", HBOPortMap(m, "").getPhysicalPort());
}

TEST(InterfacesRecords, JumperSetValueSavesOnlyWhenAsked) {
    HBOJumper fresh;
    EXPECT_TRUE(fresh.getDefaultValue());

    HBOBoard board;
    CountingStore store;
    HBOJumper jumper;
    jumper.setOwner(&board);
    jumper.setValue(false, true);  // no store attached: value changes, nothing saved
    EXPECT_FALSE(jumper.getDefaultValue());

    board.attach(&store);
    jumper.setValue(true, false);
    EXPECT_TRUE(jumper.getDefaultValue());
    EXPECT_TRUE(store.saved.empty());
    jumper.setValue(false, true);
    EXPECT_EQ((std::vector<HBOBoard*>{&board}), store.saved);

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
    EXPECT_EQ((std::vector<std::string>{"a", "b"}), copy.getPlatform());
    EXPECT_EQ("/drivers/eth", copy.getDriverPath());
    EXPECT_EQ((std::map<std::string, std::string>{{"hdr", "eth.h"}, {"src", "eth2.c"}}), copy.getFiles());
}

TEST(InterfacesRecords, DisplayFormats) {
    HBOParameter p("speed", "3", "int", "1", "5", "false");
    HBOJumper j;
    j.setName("j1");
    j.setDescription("clock select");
    testing::internal::CaptureStderr();
    p.display(1);
    j.display(2);
    j.setDefaultValue(false);
    j.display(0);
    EXPECT_EQ("-Parameter - name:speed, value:3, type:int, min:1, max:5, read_only:false \n"
              "--Jumper - name:j1, default_value:true, description:clock select \n"
              "Jumper - name:j1, default_value:false, description:clock select \n",
              testing::internal::GetCapturedStderr());
}
