// The enablement pass: jumper positions to is-enabled texts; renamed jumpers.

#include "board_fixture.h"

using namespace board_fixture;

TEST(BoardEnablement, ConnectionDependenciesAgainstTheJumpers) {
    struct Case {
        const char* dependency;
        bool j1, j2;
        const char* bus;   // the connection was "false" before the pass
        const char* nets;  // both nets; net 1 asks for "{j1 false}", which is never read
    };
    const Case cases[] = {
        {"{j1 true j2 false}", true, true, "false", "false"},  // every named jumper must be in position
        {"{j1 true j2 false}", true, false, "true", "true"},
        {"{j1 true j2 false}", false, false, "false", "false"},
        {"{J1 true}", true, false, "true", "true"},     // names ignore case ...
        {"{j1 TRUE}", true, false, "false", "false"},   // ... values do not
        {"{nowhere false}", false, false, "true", "true"},
        {"{j1 true j1 false}", true, false, "true", "true"},  // only the first hit of a jumper counts
        {"{j1  true}", true, false, "false", "false"},  // two blanks: "true" lands on a name position
        {"{j1}", true, false, "false", "false"},        // a name without a value disables
        {"", false, false, "false", "true"},            // absent: the connection is kept, nets written
        {"{}", false, false, "false", "true"},
    };
    for (const Case& k : cases) {
        SCOPED_TRACE(k.dependency);
        FixtureBoard f = makeEmptyBoard();
        addComponent(*f, "u1", "fpga");
        addComponent(*f, "u2", "chip");
        HBOBoardBus* bus = addConnection(*f, "c", "u1", "u2", k.dependency, 2);
        bus->setIsEnabled("false");
        bus->getBoardBusNets()[0]->setIsEnabled("false");
        bus->getBoardBusNets()[1]->setEnablementDependency("{j1 false}");
        f.addJumper("j1", k.j1);
        f.addJumper("j2", k.j2);
        f->updateEnablement();
        EXPECT_EQ(k.bus, bus->getIsEnabled());
        EXPECT_EQ(k.nets, bus->getBoardBusNets()[0]->getIsEnabled());
        EXPECT_EQ(k.nets, bus->getBoardBusNets()[1]->getIsEnabled());
    }
}

TEST(BoardEnablement, EvalBoardComponentsAndModes) {
    FixtureBoard f = makeEvalBoard();
    HBOBoardComponent* spare = f->findBoardComponent("spare");
    spare->setIsEnabled("true");
    HBOBoardComponent* leds = f->findBoardComponent("leds");
    HBOComponentMode* ledMode = leds->getComponentModes()[0];
    ledMode->setIsEnabled("false");
    f->updateEnablement();
    EXPECT_EQ("true", f->findBoardComponent("fpga1")->getIsEnabled());
    EXPECT_EQ("true", f->findBoardComponent("ddr_chip")->getIsEnabled());
    EXPECT_EQ("false", leds->getIsEnabled());  // its only connection needs j2 on
    EXPECT_EQ("true", f->findBoardComponent("fmc1")->getIsEnabled());
    EXPECT_EQ("false", spare->getIsEnabled());  // no connection at all
    // "{J1 true}" with j1 on; an absent dependency leaves the mode alone.
    EXPECT_EQ("true", f->findBoardComponent("ddr_chip")->getComponentModes()[0]->getIsEnabled());
    EXPECT_EQ("false", ledMode->getIsEnabled());
}

TEST(BoardEnablement, ComponentNeedsOneEnabledConnectionIgnoringCase) {
    FixtureBoard f = makeEmptyBoard();
    HBOBoardComponent* u1 = addComponent(*f, "u1", "chip");
    addComponent(*f, "u2", "chip");
    addComponent(*f, "u3", "chip");
    f.addJumper("j", false);
    addConnection(*f, "a", "u1", "u2", "{j true}", 1);
    addConnection(*f, "b", "u3", "u1", "", 1)->setIsEnabled("TRUE");
    f->updateEnablement();
    EXPECT_EQ("true", u1->getIsEnabled());
    EXPECT_EQ("false", f->findBoardComponent("u2")->getIsEnabled());
    EXPECT_EQ("true", f->findBoardComponent("u3")->getIsEnabled());
}

TEST(BoardEnablement, InterfaceOfALaterComponentSeesItsOldState) {
    FixtureBoard f = makeEmptyBoard();
    // "a_host" sorts before "b_dev" and reads its state before the pass reaches
    // it; "c_host" sorts after and reads the new text.
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
    f->updateEnablement();  // a second pass sees what the first one wrote
    EXPECT_EQ("false", early->getIsEnabled());
}

// Every occurrence, ignoring case and also inside a longer name: the text is
// replaced, not parsed, and the new name is lower-cased.
TEST(BoardEnablement, JumperRenameFollowsIntoDependencies) {
    FixtureBoard f = makeEmptyBoard();
    addComponent(*f, "u1", "fpga");
    HBOBoardComponent* u2 = addComponent(*f, "u2", "chip");
    HBOBoardBus* bus = addConnection(*f, "c", "u1", "u2", "{J1 true jj1 false j1 true j2 false}", 1);
    bus->updateEnablementDependencyJumperName("j1", "Fmc1_J1");
    bus->updateEnablementDependencyJumperName("", "x");
    EXPECT_EQ("{fmc1_j1 true jfmc1_j1 false fmc1_j1 true j2 false}", bus->getEnablementDependency());
    HBOComponentMode* m1 = addMode(u2, "m1", "{J2 true} {j20 false} {k2 true}");
    HBOComponentMode* m2 = addMode(u2, "m2", "{k3 true}");
    u2->updateEnablementDependencyJumperName("j2", "D_J2");
    u2->updateEnablementDependencyJumperName("", "x");
    EXPECT_EQ("{d_j2 true} {d_j20 false} {k2 true}", m1->getEnablementDependency());
    EXPECT_EQ("{k3 true}", m2->getEnablementDependency());

    // The renamed dependency now follows the renamed jumper.
    f.addJumper("fmc1_j1", false);
    f.addJumper("j2", false);
    f->updateEnablement();
    EXPECT_EQ("false", bus->getIsEnabled());
}
