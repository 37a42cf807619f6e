// The enablement pass: jumper positions to is-enabled texts.
#include <gtest/gtest.h>

#include <string>

#include "board_fixture.h"

using namespace board_fixture;

namespace {

// A board with one connection "c" from "u1" to "u2" (two nets) under the given
// dependency, and the given jumpers.
struct OneConnection {
    FixtureBoard f = makeEmptyBoard();
    HBOBoardBus* bus = nullptr;

    explicit OneConnection(const std::string& dependency) {
        addComponent(*f, "u1", "fpga");
        addComponent(*f, "u2", "chip");
        bus = addConnection(*f, "c", "u1", "u2", dependency, 2);
    }
    std::string netState(std::size_t i) const { return bus->getBoardBusNets().at(i)->getIsEnabled(); }
};

}  // namespace

TEST(BoardEnablement, DependencyNeedsEveryNamedJumperInPosition) {
    OneConnection b("{j1 true j2 false}");
    HBOJumper* j1 = b.f.addJumper("j1", true);
    HBOJumper* j2 = b.f.addJumper("j2", true);
    b.f->updateEnablement();
    EXPECT_EQ("false", b.bus->getIsEnabled());
    EXPECT_EQ("false", b.netState(0));
    EXPECT_EQ("false", b.netState(1));

    j2->setDefaultValue(false);
    b.f->updateEnablement();
    EXPECT_EQ("true", b.bus->getIsEnabled());
    EXPECT_EQ("true", b.netState(1));

    j1->setDefaultValue(false);
    b.f->updateEnablement();
    EXPECT_EQ("false", b.bus->getIsEnabled());
}

TEST(BoardEnablement, NamesIgnoreCaseValuesDoNot) {
    {
        OneConnection b("{J1 true}");
        b.f.addJumper("j1", true);
        b.f->updateEnablement();
        EXPECT_EQ("true", b.bus->getIsEnabled());
    }
    {
        OneConnection b("{j1 TRUE}");
        b.f.addJumper("j1", true);
        b.f->updateEnablement();
        EXPECT_EQ("false", b.bus->getIsEnabled());
    }
}

TEST(BoardEnablement, UnknownNamesHaveNoInfluence) {
    OneConnection b("{nowhere false}");
    b.f.addJumper("j1", false);
    b.bus->setIsEnabled("false");
    b.f->updateEnablement();
    EXPECT_EQ("true", b.bus->getIsEnabled());
}

TEST(BoardEnablement, OnlyTheFirstHitOfAJumperCounts) {
    // The second mention of j1 asks for the other position and is not read.
    OneConnection b("{j1 true j1 false}");
    b.f.addJumper("j1", true);
    b.f->updateEnablement();
    EXPECT_EQ("true", b.bus->getIsEnabled());
}

TEST(BoardEnablement, ValuesArePairedByPositionNotByBlanks) {
    // Two blanks make an empty token, so "true" lands on a name position and
    // j1 is compared with the empty token: the connection is off.
    OneConnection b("{j1  true}");
    b.f.addJumper("j1", true);
    b.f->updateEnablement();
    EXPECT_EQ("false", b.bus->getIsEnabled());
}

TEST(BoardEnablement, NameWithoutValueDisables) {
    OneConnection b("{j1}");
    b.f.addJumper("j1", true);
    b.f->updateEnablement();
    EXPECT_EQ("false", b.bus->getIsEnabled());
}

TEST(BoardEnablement, AbsentDependencyKeepsTheConnectionButWritesNets) {
    for (const char* dependency : {"", "{}"}) {
        OneConnection b(dependency);
        b.f.addJumper("j1", false);
        b.bus->setIsEnabled("false");
        b.bus->getBoardBusNets()[0]->setIsEnabled("false");
        b.f->updateEnablement();
        EXPECT_EQ("false", b.bus->getIsEnabled()) << dependency;
        EXPECT_EQ("true", b.netState(0)) << dependency;
        EXPECT_EQ("true", b.netState(1)) << dependency;
    }
}

TEST(BoardEnablement, NetDependenciesAreNotRead) {
    OneConnection b("{j1 true}");
    b.f.addJumper("j1", true);
    b.bus->getBoardBusNets()[1]->setEnablementDependency("{j1 false}");
    b.f->updateEnablement();
    EXPECT_EQ("true", b.netState(1));
}

TEST(BoardEnablement, EvalBoardComponentsInterfacesAndModes) {
    FixtureBoard f = makeEvalBoard();
    HBOBoardComponent* spare = f->findBoardComponent("spare");
    spare->setIsEnabled("true");
    HBOBoardComponent* leds = f->findBoardComponent("leds");
    HBOComponentMode* ledMode = leds->getComponentModes()[0];
    ledMode->setIsEnabled("false");

    f->updateEnablement();

    EXPECT_EQ("true", f->findBoardComponent("fpga1")->getIsEnabled());
    EXPECT_EQ("true", f->findBoardComponent("ddr_chip")->getIsEnabled());
    EXPECT_EQ("false", leds->getIsEnabled());                 // its only connection needs j2 on
    EXPECT_EQ("true", f->findBoardComponent("fmc1")->getIsEnabled());
    EXPECT_EQ("false", spare->getIsEnabled());                // no connection at all

    // "{J1 true}" with j1 on; an absent dependency leaves the mode alone.
    EXPECT_EQ("true", f->findBoardComponent("ddr_chip")->getComponentModes()[0]->getIsEnabled());
    EXPECT_EQ("false", ledMode->getIsEnabled());

    // Interfaces of fpga1 copy the state of their of-component. fpga1 comes
    // before ddr_chip and leds in key order, so it sees their old texts.
    EXPECT_EQ("true", f->getBusIfByName("ddr_mem")->getIsEnabled());
    EXPECT_EQ("true", f->getBusIfByName("user_leds")->getIsEnabled());
    EXPECT_EQ("true", f->getBusIfByName("ref_clock")->getIsEnabled());

    // A second pass sees what the first one wrote.
    f->updateEnablement();
    EXPECT_EQ("false", f->getBusIfByName("user_leds")->getIsEnabled());
    EXPECT_EQ("true", f->getBusIfByName("ddr_mem")->getIsEnabled());
}

TEST(BoardEnablement, ComponentNeedsOneEnabledConnectionIgnoringCase) {
    FixtureBoard f = makeEmptyBoard();
    HBOBoardComponent* u1 = addComponent(*f, "u1", "chip");
    addComponent(*f, "u2", "chip");
    addComponent(*f, "u3", "chip");
    f.addJumper("j", false);
    addConnection(*f, "a", "u1", "u2", "{j true}", 1);
    HBOBoardBus* b = addConnection(*f, "b", "u3", "u1", "", 1);
    b->setIsEnabled("TRUE");
    f->updateEnablement();
    EXPECT_EQ("true", u1->getIsEnabled());
    EXPECT_EQ("false", f->findBoardComponent("u2")->getIsEnabled());
    EXPECT_EQ("true", f->findBoardComponent("u3")->getIsEnabled());
}

TEST(BoardEnablement, InterfaceOfALaterComponentSeesItsOldState) {
    FixtureBoard f = makeEmptyBoard();
    // "a_host" sorts before "b_dev": its interface reads b_dev before the pass
    // reaches it; "c_host" sorts after and reads the new text.
    HBOBoardComponent* host = addComponent(*f, "a_host", "chip");
    HBOBoardComponent* dev = addComponent(*f, "b_dev", "chip");
    HBOBoardComponent* late = addComponent(*f, "c_host", "chip");
    HBOBusIf* early = addInterface(host, "to_dev", "B_DEV");
    HBOBusIf* after = addInterface(late, "to_dev", "b_dev");
    HBOBusIf* missing = addInterface(late, "to_nothing", "zz");
    missing->setIsEnabled("kept");
    dev->setIsEnabled("true");
    f->updateEnablement();  // no connections: every component goes off
    EXPECT_EQ("true", early->getIsEnabled());
    EXPECT_EQ("false", after->getIsEnabled());
    EXPECT_EQ("kept", missing->getIsEnabled());
}

TEST(BoardEnablement, JumperRenameFollowsIntoDependencies) {
    OneConnection b("{J1 true j2 false}");
    b.bus->updateEnablementDependencyJumperName("j1", "Fmc1_J1");
    EXPECT_EQ("{fmc1_j1 true j2 false}", b.bus->getEnablementDependency());

    HBOBoardComponent* u2 = b.f->findBoardComponent("u2");
    HBOComponentMode* m1 = addMode(u2, "m1", "{j2 true}");
    HBOComponentMode* m2 = addMode(u2, "m2", "{J2 false j3 true}");
    u2->updateEnablementDependencyJumperName("J2", "D_J2");
    EXPECT_EQ("{d_j2 true}", m1->getEnablementDependency());
    EXPECT_EQ("{d_j2 false j3 true}", m2->getEnablementDependency());

    // The renamed dependency now follows the renamed jumper.
    b.f.addJumper("fmc1_j1", true);
    b.f.addJumper("j2", true);
    b.f->updateEnablement();
    EXPECT_EQ("false", b.bus->getIsEnabled());
}
