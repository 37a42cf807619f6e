// The diagnostic listing of a board.

#include "board_fixture.h"

using namespace board_fixture;

TEST(BoardDisplay, HeadersOfAnEmptyBoard) {
    FixtureBoard f = makeEmptyBoard();
    f->setDescription("d");
    f->setBoardFile("/b.xml");
    EXPECT_EQ("-Board - name:acme:lynx_eval:1.2, description:d, boardfile:/b.xml \n"
              "--Parameters:\n--Jumpers:\n--Components:\n--Connections:\nPresets:\nIP Associated Presets:\n",
              stderrOf([&] { f->display(1); }));
    EXPECT_EQ(0u, stderrOf([&] { f->display(0); })
                      .find("Board - name:acme:lynx_eval:1.2, description:d, boardfile:/b.xml \n-Parameters:\n"));
}

TEST(BoardDisplay, ChildrenInOrderAndPresetIndents) {
    FixtureBoard f = makeEvalBoard();
    const std::string text = stderrOf([&] { f->display(1); });
    // Sections in this order; components in key order: ddr_chip, fmc1, fpga1, leds, spare.
    const char* const parts[] = {
        "--Parameters:\n--Parameter - name:heat_sink, value:passive",
        "--Jumpers:\n--Jumper - name:j1, default_value:true",
        "--Components:\n--Component - name:acme:lynx_eval:ddr_chip:1.2",
        "Component - name:acme:lynx_eval:fmc1:1.2",
        "Component - name:acme:lynx_eval:fpga1:1.2",
        "Component - name:acme:lynx_eval:leds:1.2",
        "Component - name:acme:lynx_eval:spare:1.2",
        "--Connections:\n--Connection - name:fpga1_ddr",
        "\nPresets:\n--Preset Name:DDR_PRESET\n  Name : memctl\n",
        "\nIP Associated Presets:\n--Preset Name:GPIO_RULE\n    Name : gpio\n",
    };
    std::size_t last = 0;
    for (const char* part : parts) {
        const std::size_t at = text.find(part);
        ASSERT_NE(std::string::npos, at) << part << "\n" << text;
        EXPECT_LT(last, at) << part;
        last = at;
    }
}
