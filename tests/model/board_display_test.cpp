// The diagnostic listing of a board.
#include <gtest/gtest.h>

#include <string>

#include "ComMsgMgr.h"
#include "board_fixture.h"

using namespace board_fixture;

namespace {

std::string displayed(const HBOBoard& board, unsigned int indent) {
    testing::internal::CaptureStderr();
    board.display(indent);
    return testing::internal::GetCapturedStderr();
}

}  // namespace

TEST(BoardDisplay, HeadersOfAnEmptyBoard) {
    FixtureBoard f = makeEmptyBoard();
    f->setDescription("d");
    f->setBoardFile("/b.xml");
    EXPECT_EQ("-Board - name:acme:lynx_eval:1.2, description:d, boardfile:/b.xml \n"
              "--Parameters:\n"
              "--Jumpers:\n"
              "--Components:\n"
              "--Connections:\n"
              "Presets:\n"
              "IP Associated Presets:\n",
              displayed(*f, 1));
    EXPECT_EQ(0u, displayed(*f, 0).find("Board - name:acme:lynx_eval:1.2, description:d, boardfile:/b.xml \n"
                                        "-Parameters:\n"));
}

TEST(BoardDisplay, ChildrenInOrderAndPresetIndents) {
    FixtureBoard f = makeEvalBoard();
    const std::string text = displayed(*f, 1);

    const std::size_t params = text.find("--Parameters:\n--Parameter - name:heat_sink, value:passive");
    const std::size_t jumpers = text.find("--Jumpers:\n--Jumper - name:j1, default_value:true");
    const std::size_t components = text.find("--Components:\n--Component - name:acme:lynx_eval:ddr_chip:1.2");
    const std::size_t connections = text.find("--Connections:\n--Connection - name:fpga1_ddr");
    const std::size_t presets = text.find("\nPresets:\n--Preset Name:DDR_PRESET\n  Name : memctl\n");
    const std::size_t assoc = text.find("\nIP Associated Presets:\n--Preset Name:GPIO_RULE\n    Name : gpio\n");
    ASSERT_NE(std::string::npos, params) << text;
    ASSERT_NE(std::string::npos, jumpers) << text;
    ASSERT_NE(std::string::npos, components) << text;
    ASSERT_NE(std::string::npos, connections) << text;
    ASSERT_NE(std::string::npos, presets) << text;
    ASSERT_NE(std::string::npos, assoc) << text;
    EXPECT_LT(params, jumpers);
    EXPECT_LT(jumpers, components);
    EXPECT_LT(components, connections);
    EXPECT_LT(connections, presets);
    EXPECT_LT(presets, assoc);
    // Components in key order: ddr_chip, fmc1, fpga1, leds, spare.
    EXPECT_LT(text.find("Component - name:acme:lynx_eval:fmc1:1.2"), text.find("Component - name:acme:lynx_eval:fpga1:1.2"));
    EXPECT_LT(text.find("Component - name:acme:lynx_eval:leds:1.2"), text.find("Component - name:acme:lynx_eval:spare:1.2"));
}
