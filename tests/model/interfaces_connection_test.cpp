// Connections and their nets: defaults, the components and pins they reach on the
// owner board, the rebase copy, following renamed jumpers, and the display line.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "HBOBoard.h"
#include "HBOBoardBus.h"
#include "HBOBoardBusNet.h"
#include "HBOBoardComponent.h"
#include "HBOBusIf.h"
#include "HBOPinProps.h"

namespace {

HBOBoardComponent* addComponent(HBOBoard& board, const std::string& name, int pins) {
    HBOBoardComponent* component = new HBOBoardComponent();
    component->setComponentName(name);
    component->setBoard(&board);
    for (int i = 0; i < pins; ++i) {
        HBOPinProps* pin = new HBOPinProps();
        pin->setName(name + "_p" + std::to_string(i));
        pin->setPinIndex(i);
        component->addPin(pin);
    }
    board.addBoardComponent(component);
    return component;
}

HBOBoardBusNet* addNet(HBOBoardBus& bus, const std::string& name, int c1, int c2) {
    HBOBoardBusNet* net = new HBOBoardBusNet();
    net->setName(name);
    net->setBoardBus(bus.getName());
    net->setC1PinIndex(c1);
    net->setC2PinIndex(c2);
    net->setOwner(&bus);
    bus.addBoardBusNet(net);
    return net;
}

std::vector<std::string> pinNames(const std::vector<HBOPinProps*>& pins) {
    std::vector<std::string> out;
    for (const HBOPinProps* pin : pins)
        out.push_back(pin->getName());
    return out;
}

}  // namespace

TEST(InterfacesConnection, IsEnabledIsTheTextTrueByDefault) {
    EXPECT_EQ("true", HBOBoardBus().getIsEnabled());
    EXPECT_EQ("true", HBOBoardBusNet().getIsEnabled());
    EXPECT_EQ("true", HBOBusIf().getIsEnabled());
    EXPECT_EQ(nullptr, HBOBusIf().getPreference());
}

TEST(InterfacesConnection, ComponentsFoundOnTheOwnerBoardByExactName) {
    HBOBoard board;
    HBOBoardComponent* fpga = addComponent(board, "fpga", 0);
    HBOBoardComponent* conn = addComponent(board, "conn", 0);
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
    addComponent(board, "fpga", 4);
    addComponent(board, "conn", 2);
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
    EXPECT_EQ((std::vector<std::string>{"fpga_p3", "conn_p1"}), pinNames(pins));
    halfOff->getPinsVec(pins);  // appends
    EXPECT_EQ((std::vector<std::string>{"fpga_p3", "conn_p1", "fpga_p2"}), pinNames(pins));

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
    EXPECT_EQ("d1_c", copy.getName());
    EXPECT_EQ("d1_link", copy.getConnectionName());
    EXPECT_EQ("d1_a", copy.getComp1());
    EXPECT_EQ("d1_b", copy.getComp2());
    EXPECT_EQ(&target, copy.getOwner());
    EXPECT_EQ(1.5f, copy.getDelay());
    EXPECT_EQ("false", copy.getIsEnabled());
    EXPECT_EQ("{j1 true}", copy.getEnablementDependency());
    EXPECT_EQ(1, copy.getStartIndexComp1());
    EXPECT_EQ(4, copy.getStopIndexComp2());

    ASSERT_EQ(1u, copy.getBoardBusNets().size());
    const HBOBoardBusNet* cloned = copy.getBoardBusNets()[0];
    EXPECT_NE(net, cloned);
    EXPECT_EQ(&copy, cloned->getOwner());
    EXPECT_EQ("c_0", cloned->getName());
    EXPECT_EQ("c", cloned->getBoardBus());
    EXPECT_EQ(7, cloned->getC1PinIndex());
    EXPECT_EQ(9, cloned->getC2PinIndex());
    EXPECT_EQ(0.5f, cloned->getTypicalDelay());
    EXPECT_EQ("false", cloned->getIsEnabled());
    EXPECT_EQ("{j2 false}", cloned->getEnablementDependency());

    HBOBoardBus plain(bus, nullptr, "");
    EXPECT_EQ("c", plain.getName());
    EXPECT_EQ("a", plain.getComp1());
    EXPECT_EQ("link", plain.getConnectionName());

    std::vector<HBOBoardBusNet*> nets;
    EXPECT_TRUE(plain.getBoardBusNets(nets));
    EXPECT_EQ(plain.getBoardBusNets(), nets);
}

TEST(InterfacesConnection, RenamedJumperIsFollowedIgnoringCase) {
    HBOBoardBus bus;
    bus.setEnablementDependency("{J1 true jj1 false j1 true}");
    bus.updateEnablementDependencyJumperName("j1", "D1_J1");
    // Every occurrence, also inside a longer name: the text is replaced, not parsed.
    EXPECT_EQ("{d1_j1 true jd1_j1 false d1_j1 true}", bus.getEnablementDependency());

    bus.updateEnablementDependencyJumperName("", "x");
    EXPECT_EQ("{d1_j1 true jd1_j1 false d1_j1 true}", bus.getEnablementDependency());
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
    testing::internal::CaptureStderr();
    bus.display(2);
    EXPECT_EQ("--Connection - name:c, Component1:fpga, Component2:conn, delay:1.250000, C1StIndex:0, "
              "C1EndIndex:7, C2StIndex:8, C2EndIndex:15\n",
              testing::internal::GetCapturedStderr());
}
