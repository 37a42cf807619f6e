// Connections and their nets: defaults, the components and pins they reach on the
// owner board, the rebase copy, and the display line.

#include "board_fixture.h"

using namespace board_fixture;

namespace {

HBOBoardComponent* addPinned(HBOBoard& board, const std::string& name, int pins) {
    HBOBoardComponent* component = addComponent(board, name, "");
    for (int i = 0; i < pins; ++i)
        component->addPin(makePin(name + "_p" + std::to_string(i), i));
    return component;
}

}  // namespace

TEST(InterfacesConnection, ComponentsFoundOnTheOwnerBoardByExactName) {
    EXPECT_EQ("true", HBOBoardBus().getIsEnabled());
    EXPECT_EQ("true", HBOBoardBusNet().getIsEnabled());
    EXPECT_EQ("true", HBOBusIf().getIsEnabled());
    HBOBoard board;
    HBOBoardComponent* fpga = addPinned(board, "fpga", 0);
    HBOBoardComponent* conn = addPinned(board, "conn", 0);
    HBOBoardBus bus;
    bus.setComp1("fpga");
    bus.setComp2("conn");
    std::vector<HBOBoardComponent*> out{nullptr};
    bus.getBusComponentsVec(out);
    EXPECT_TRUE(out.empty());  // no owner: nothing, and out is cleared
    bus.setOwner(&board);
    bus.getBusComponentsVec(out);
    EXPECT_EQ((std::vector<HBOBoardComponent*>{fpga, conn}), out);
    bus.setComp1("missing");
    bus.getBusComponentsVec(out);
    EXPECT_EQ((std::vector<HBOBoardComponent*>{conn}), out);
    bus.setComp1("conn");
    bus.setComp2("FPGA");
    bus.getBusComponentsVec(out);
    EXPECT_EQ((std::vector<HBOBoardComponent*>{conn}), out);
}

TEST(InterfacesConnection, NetPinsNeedOwnerAndBoard) {
    HBOBoard board;
    addPinned(board, "fpga", 4);
    addPinned(board, "conn", 2);
    HBOBoardBus* bus = new HBOBoardBus();
    bus->setName("c");
    bus->setComp1("fpga");
    bus->setComp2("conn");
    HBOBoardBusNet* net = addNet(*bus, "c_0", 3, 1);
    HBOBoardBusNet* halfOff = addNet(*bus, "c_1", 2, 5);  // no pin 5 on conn
    board.addBus(bus);
    std::vector<HBOPinProps*> pins;
    net->getPinsVec(pins);
    EXPECT_TRUE(pins.empty());  // the connection has no owner board yet
    bus->setOwner(&board);
    net->getPinsVec(pins);
    EXPECT_EQ((Names{"fpga_p3", "conn_p1"}), namesOf(pins));
    halfOff->getPinsVec(pins);  // appends
    EXPECT_EQ((Names{"fpga_p3", "conn_p1", "fpga_p2"}), namesOf(pins));
    HBOBoardBusNet loose;
    std::vector<HBOPinProps*> none;
    loose.getPinsVec(none);
    EXPECT_TRUE(none.empty());
}

TEST(InterfacesConnection, RebaseCopyRenamesTheConnectionButNotItsNets) {
    HBOBoard target;
    HBOBoardBus bus;
    bus.setName("c");
    bus.setConnectionName("link");
    bus.setComp1("a");
    bus.setComp2("b");
    bus.setDelay(1.5f);
    bus.setIsEnabled("false");
    bus.setEnablementDependency("{j1 true}");
    bus.setStartIndexComp1(1);
    bus.setStopIndexComp2(4);
    HBOBoardBusNet* net = addNet(bus, "c_0", 7, 9);
    net->setTypicalDelay(0.5f);
    net->setIsEnabled("false");
    net->setEnablementDependency("{j2 false}");
    HBOBoardBus copy(bus, &target, "d1");
    EXPECT_EQ((Names{"d1_c", "d1_link", "d1_a", "d1_b", "false", "{j1 true}"}),
              (Names{copy.getName(), copy.getConnectionName(), copy.getComp1(), copy.getComp2(), copy.getIsEnabled(),
                     copy.getEnablementDependency()}));
    EXPECT_EQ(&target, copy.getOwner());
    EXPECT_EQ(1.5f, copy.getDelay());
    EXPECT_EQ(1, copy.getStartIndexComp1());
    EXPECT_EQ(4, copy.getStopIndexComp2());
    ASSERT_EQ(1u, copy.getBoardBusNets().size());
    const HBOBoardBusNet* cloned = copy.getBoardBusNets()[0];
    EXPECT_NE(net, cloned);
    EXPECT_EQ(&copy, cloned->getOwner());
    EXPECT_EQ((Names{"c_0", "c", "false", "{j2 false}"}),
              (Names{cloned->getName(), cloned->getBoardBus(), cloned->getIsEnabled(),
                     cloned->getEnablementDependency()}));
    EXPECT_EQ(7, cloned->getC1PinIndex());
    EXPECT_EQ(9, cloned->getC2PinIndex());
    EXPECT_EQ(0.5f, cloned->getTypicalDelay());
    HBOBoardBus plain(bus, nullptr, "");
    EXPECT_EQ((Names{"c", "a", "link"}), (Names{plain.getName(), plain.getComp1(), plain.getConnectionName()}));
    std::vector<HBOBoardBusNet*> nets;
    EXPECT_TRUE(plain.getBoardBusNets(nets));
    EXPECT_EQ(plain.getBoardBusNets(), nets);
}

TEST(InterfacesConnection, DisplayFormat) {
    HBOBoardBus bus;
    bus.setName("c");
    bus.setComp1("fpga");
    bus.setComp2("conn");
    bus.setDelay(1.25f);
    bus.setStartIndexComp1(0);
    bus.setStopIndexComp1(7);
    bus.setStartIndexComp2(8);
    bus.setStopIndexComp2(15);
    EXPECT_EQ("--Connection - name:c, Component1:fpga, Component2:conn, delay:1.250000, C1StIndex:0, "
              "C1EndIndex:7, C2StIndex:8, C2EndIndex:15\n",
              stderrOf([&] { bus.display(2); }));
}
