// Finders and IP interface associations of a board.

#include "board_fixture.h"

using namespace board_fixture;

TEST(BoardFinders, ComponentAndParameterLookupsDifferInCase) {
    FixtureBoard f = makeEvalBoard();
    HBOBoardComponent* fpga = f->findBoardComponent("fpga1");
    ASSERT_NE(nullptr, fpga);
    EXPECT_EQ(fpga, f->getCompByName("FPGA1"));
    EXPECT_EQ(nullptr, f->findBoardComponent("FPGA1"));
    EXPECT_EQ(nullptr, f->findBoardComponent(""));
    EXPECT_EQ(nullptr, f->getCompByName(""));
    EXPECT_EQ(nullptr, f->getCompByName("fpga"));
    EXPECT_EQ(fpga, f->findFpgaComponent());
    EXPECT_TRUE(f->hasFPGAPart());
    EXPECT_TRUE(f->isReferenceBoard());
    EXPECT_FALSE(f->isDaughterBoard());
    std::string value = "untouched";
    EXPECT_FALSE(f->getParamValue("FAN", value));
    EXPECT_FALSE(f->getParamValue("", value));
    EXPECT_EQ("untouched", value);
    // The first of two equal names wins.
    f->addParameter(new HBOParameter("fan", "active", "string", "", "", ""));
    EXPECT_TRUE(f->getParamValue("fan", value));
    EXPECT_EQ("none", value);
}

TEST(BoardFinders, InterfaceThroughConnectorsOnly) {
    FixtureBoard f = makeEvalBoard();
    HBOBusIf* found = nullptr;
    EXPECT_TRUE(f->getBusIfByNameUsingConnectors(found, "FMC_GPIO"));
    ASSERT_NE(nullptr, found);
    EXPECT_EQ("fmc_gpio", found->getName());
    // The FPGA is no connector, so its interfaces are not found this way.
    EXPECT_FALSE(f->getBusIfByNameUsingConnectors(found, "ddr_mem"));
}

TEST(BoardFinders, ConnectionsAndNetsOfAComponent) {
    FixtureBoard f = makeEvalBoard();
    f->addBus(nullptr);  // a hole in the list is skipped
    auto busesOf = [&](const std::string& name) {
        std::vector<HBOBoardBus*> buses;
        f->getBusesOfComponent(name, buses);
        return namesOf(buses);
    };
    EXPECT_EQ((Names{"fpga1_ddr", "fpga1_leds", "fpga1_fmc1"}), busesOf("fpga1"));
    EXPECT_EQ((Names{"fpga1_leds"}), busesOf("leds"));
    EXPECT_TRUE(busesOf("LEDS").empty());
    EXPECT_TRUE(busesOf("spare").empty());
    std::vector<HBOBoardBusNet*> nets;
    f->getNetsOfComponent("ddr_chip", nets);
    EXPECT_EQ((Names{"fpga1_ddr_0", "fpga1_ddr_1"}), namesOf(nets));
    f->getNetsOfComponent("fpga1", nets);  // appends
    EXPECT_EQ(6u, nets.size());

    // Connecting components is one direction only.
    HBOBoardComponent* fpga = f->findBoardComponent("fpga1");
    HBOBoardComponent* ddr = f->findBoardComponent("ddr_chip");
    std::vector<HBOBoardBus*> buses;
    f->getBoardBusesConnectingComponents(fpga, ddr, buses);
    EXPECT_EQ((Names{"fpga1_ddr"}), namesOf(buses));
    buses.clear();
    f->getBoardBusesConnectingComponents(ddr, fpga, buses);
    f->getBoardBusesConnectingComponents(nullptr, fpga, buses);
    EXPECT_TRUE(buses.empty());
}

TEST(BoardAssociations, MatchingRulesListTheirBoardInterfaces) {
    FixtureBoard f = makeEvalBoard();
    Names out{"kept"};
    // Every field compares without regard to case; the version is not compared.
    EXPECT_TRUE(f->getIpAssocInterfaces("KORVELHW:IP:GPIO:9.9", "gpio", out));
    EXPECT_EQ((Names{"kept", "fmc_gpio", "user_leds"}), out);
    out.clear();
    EXPECT_FALSE(f->getIpAssocInterfaces("korvelhw:ip:gpio:2.0", "GPIO2", out));
    EXPECT_FALSE(f->getIpAssocInterfaces("korvelhw:ip:memctl:2.1", "GPIO", out));
    EXPECT_FALSE(f->getIpAssocInterfaces("korvelhw:other:gpio:2.0", "GPIO", out));
    // Short or empty texts are no match, and no crash.
    EXPECT_FALSE(f->getIpAssocInterfaces("korvelhw", "GPIO", out));
    EXPECT_FALSE(f->getIpAssocInterfaces("", "", out));
    EXPECT_TRUE(out.empty());

    // All rules are walked, in key order: ANOTHER_RULE before GPIO_RULE.
    HBOIpPreset* second = f.makePreset("korvelhw:ip:gpio:2.0", "gpio");
    second->setPresetorAssocIntf("assoc_intf");
    second->setParam("ref_clock", "0");
    HBOIpPreset* other = f.makePreset("korvelhw:ip:uart:1.0", "gpio");
    other->setParam("uart_port", "0");
    f->setIpAssociatedInterface("another_rule", {other, second});
    EXPECT_TRUE(f->getIpAssocInterfaces("korvelhw:ip:gpio:2.0", "GPIO", out));
    EXPECT_EQ((Names{"ref_clock", "fmc_gpio", "user_leds"}), out);
}
