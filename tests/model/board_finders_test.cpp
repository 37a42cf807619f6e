// Finders and IP interface associations of a board.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "board_fixture.h"

using namespace board_fixture;

namespace {

std::vector<std::string> busNames(const std::vector<HBOBoardBus*>& buses) {
    std::vector<std::string> names;
    for (const HBOBoardBus* b : buses)
        names.push_back(b->getName());
    return names;
}

}  // namespace

TEST(BoardFinders, ComponentLookupsDifferInCase) {
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
}

TEST(BoardFinders, ParameterValueByExactName) {
    FixtureBoard f = makeEvalBoard();
    std::string value = "untouched";
    EXPECT_TRUE(f->getParamValue("fan", value));
    EXPECT_EQ("none", value);
    value = "untouched";
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
    found = nullptr;
    EXPECT_FALSE(f->getBusIfByNameUsingConnectors(found, "ddr_mem"));
}

TEST(BoardFinders, ConnectionsOfAComponent) {
    FixtureBoard f = makeEvalBoard();
    f->addBus(nullptr);  // a hole in the list is skipped
    std::vector<HBOBoardBus*> buses;
    f->getBusesOfComponent("fpga1", buses);
    EXPECT_EQ((std::vector<std::string>{"fpga1_ddr", "fpga1_leds", "fpga1_fmc1"}), busNames(buses));

    buses.clear();
    f->getBusesOfComponent("leds", buses);
    EXPECT_EQ((std::vector<std::string>{"fpga1_leds"}), busNames(buses));

    buses.clear();
    f->getBusesOfComponent("LEDS", buses);
    f->getBusesOfComponent("spare", buses);
    EXPECT_TRUE(buses.empty());

    std::vector<HBOBoardBusNet*> nets;
    f->getNetsOfComponent("ddr_chip", nets);
    ASSERT_EQ(2u, nets.size());
    EXPECT_EQ("fpga1_ddr_0", nets[0]->getName());
    EXPECT_EQ("fpga1_ddr_1", nets[1]->getName());
    f->getNetsOfComponent("fpga1", nets);  // appends
    EXPECT_EQ(6u, nets.size());
}

TEST(BoardFinders, ConnectingComponentsIsOneDirectionOnly) {
    FixtureBoard f = makeEvalBoard();
    HBOBoardComponent* fpga = f->findBoardComponent("fpga1");
    HBOBoardComponent* ddr = f->findBoardComponent("ddr_chip");
    std::vector<HBOBoardBus*> buses;
    f->getBoardBusesConnectingComponents(fpga, ddr, buses);
    EXPECT_EQ((std::vector<std::string>{"fpga1_ddr"}), busNames(buses));

    buses.clear();
    f->getBoardBusesConnectingComponents(ddr, fpga, buses);
    EXPECT_TRUE(buses.empty());
    f->getBoardBusesConnectingComponents(nullptr, fpga, buses);
    EXPECT_TRUE(buses.empty());
}

TEST(BoardAssociations, MatchingRulesListTheirBoardInterfaces) {
    FixtureBoard f = makeEvalBoard();
    std::vector<std::string> out{"kept"};
    // Every field compares without regard to case; the version is not compared.
    EXPECT_TRUE(f->getIpAssocInterfaces("KORVELHW:IP:GPIO:9.9", "gpio", out));
    EXPECT_EQ((std::vector<std::string>{"kept", "fmc_gpio", "user_leds"}), out);

    out.clear();
    EXPECT_FALSE(f->getIpAssocInterfaces("korvelhw:ip:gpio:2.0", "GPIO2", out));
    EXPECT_FALSE(f->getIpAssocInterfaces("korvelhw:ip:memctl:2.1", "GPIO", out));
    EXPECT_FALSE(f->getIpAssocInterfaces("korvelhw:other:gpio:2.0", "GPIO", out));
    EXPECT_TRUE(out.empty());

    // Short or empty texts are no match, and no crash.
    EXPECT_FALSE(f->getIpAssocInterfaces("korvelhw", "GPIO", out));
    EXPECT_FALSE(f->getIpAssocInterfaces("", "", out));
    EXPECT_TRUE(out.empty());
}

TEST(BoardAssociations, AllRulesAreWalked) {
    FixtureBoard f = makeEvalBoard();
    HBOIpPreset* second = f.makePreset("korvelhw:ip:gpio:2.0", "gpio");
    second->setPresetorAssocIntf("assoc_intf");
    second->setParam("ref_clock", "0");
    HBOIpPreset* other = f.makePreset("korvelhw:ip:uart:1.0", "gpio");
    other->setParam("uart_port", "0");
    f->setIpAssociatedInterface("another_rule", {other, second});

    std::vector<std::string> out;
    EXPECT_TRUE(f->getIpAssocInterfaces("korvelhw:ip:gpio:2.0", "GPIO", out));
    // Rules in key order: ANOTHER_RULE before GPIO_RULE.
    EXPECT_EQ((std::vector<std::string>{"ref_clock", "fmc_gpio", "user_leds"}), out);
}

TEST(BoardModes, RequiredInterfacesAreThoseNotFlaggedOptional) {
    HBOComponentMode mode;
    mode.addInterface(1, std::make_pair(std::string("a"), false));
    mode.addInterface(2, std::make_pair(std::string("b"), true));
    mode.addInterface(3, std::make_pair(std::string("c"), false));
    HBOComponentMode::InterfaceMap required;
    required[7] = std::make_pair(std::string("stale"), false);
    EXPECT_TRUE(mode.getRequiredInterfaces(required));
    ASSERT_EQ(2u, required.size());
    EXPECT_EQ("a", required.at(1).first);
    EXPECT_EQ("c", required.at(3).first);
    EXPECT_EQ(0u, required.count(2));
}
