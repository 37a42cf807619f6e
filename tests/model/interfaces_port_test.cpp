// Model ports: widths and bounds, the pin port map, schema 1 pins, the pins a port
// finds on its component, the rebase copy made by an interface copy, and who frees
// a port.
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "HBOBoard.h"
#include "HBOBoardComponent.h"
#include "HBOBusIf.h"
#include "HBOModelPort.h"
#include "HBOPinProps.h"

namespace {

HBOModelPort* makePort(const std::string& name, bool isVector, int left = -1, int right = -1) {
    HBOModelPort* port = new HBOModelPort();
    port->setName(name);
    port->setIsVector(isVector);
    if (isVector)
        port->setRange(left, right);
    return port;
}

HBOPinProps* makePin(const std::string& name, int index) {
    HBOPinProps* pin = new HBOPinProps();
    pin->setName(name);
    pin->setPinIndex(index);
    return pin;
}

// A board of the given schema with one component "fpga" holding pins named
// P0..P11 at indices 0..11 and one interface "ddr"; the board owns all of it.
struct PinnedBoard {
    HBOBoard board;
    HBOBoardComponent* component = new HBOBoardComponent();
    HBOBusIf* busIf = new HBOBusIf();

    explicit PinnedBoard(const std::string& schema) {
        board.setBoardSchemaVersion(schema);
        component->setComponentName("fpga");
        component->setBoard(&board);
        for (int i = 0; i < 12; ++i)
            component->addPin(makePin("P" + std::to_string(i), i));
        busIf->setName("ddr");
        busIf->setOwnerComponent(component);
        component->setBusIf("ddr", busIf);
        board.addBoardComponent(component);
    }

    HBOModelPort* addPort(const std::string& name, const std::map<std::string, std::string>& pinMap) {
        HBOModelPort* port = makePort(name, true, static_cast<int>(pinMap.size()) - 1, 0);
        port->setOwner(busIf);
        for (const auto& entry : pinMap)
            port->addPinPortMap(entry.first, entry.second);
        busIf->addPort(port);
        return port;
    }
};

std::vector<std::string> names(const std::vector<HBOPinProps*>& pins) {
    std::vector<std::string> out;
    for (const HBOPinProps* pin : pins)
        out.push_back(pin->getName());
    return out;
}

}  // namespace

namespace {
int widthOf(const HBOModelPort& port) {
    int width = 0;
    EXPECT_TRUE(port.getPortWidth(width));  // true whatever the width
    return width;
}
}  // namespace

TEST(InterfacesModelPort, WidthAndBounds) {
    HBOModelPort port;
    port.setRange(7, 0);  // ignored while the port is scalar
    EXPECT_EQ(1, widthOf(port));
    int left = 42;
    EXPECT_FALSE(port.getPortVecLeft(left));
    EXPECT_EQ(-1, left);
    int right = 42;
    EXPECT_FALSE(port.getPortVecRight(right));
    EXPECT_EQ(-1, right);

    port.setIsVector(true);
    EXPECT_EQ(8, widthOf(port));
    port.setRange(0, 7);
    EXPECT_EQ(8, widthOf(port));
    port.setRange(15, 8);
    EXPECT_EQ(8, widthOf(port));
    EXPECT_TRUE(port.getPortVecLeft(left));
    EXPECT_TRUE(port.getPortVecRight(right));
    EXPECT_EQ(15, left);
    EXPECT_EQ(8, right);

    // An unset bound makes the width -1; its getter answers false and leaves out alone.
    port.setRange(7, -1);
    EXPECT_EQ(-1, widthOf(port));
    right = 99;
    EXPECT_FALSE(port.getPortVecRight(right));
    EXPECT_EQ(99, right);
    EXPECT_TRUE(port.getPortVecLeft(left));
    EXPECT_EQ(7, left);
    HBOModelPort unset;
    unset.setIsVector(true);
    EXPECT_EQ(-1, widthOf(unset));
}

TEST(InterfacesModelPort, PinPortLookupAndRewrite) {
    HBOModelPort port;
    port.addPinPortMap("0", "A1");
    port.addPinPortMap("1", "C3");
    port.addPinPortMap("0", "A2");  // replaces

    std::string out = "stale";
    EXPECT_TRUE(port.getPinPort("0", out));
    EXPECT_EQ("A2", out);
    EXPECT_TRUE(port.getPinPort("7", out));
    EXPECT_EQ("", out);
    EXPECT_EQ("C3", port.getPinPort("1"));

    port.addPinPortMap("0", "A1");
    port.updatePortPinMap({{"A1", "B7"}, {"Z9", "Q1"}});
    const std::map<std::string, std::string> expected{{"0", "B7"}, {"1", "C3"}};
    EXPECT_EQ(expected, port.getPinPortMap());
}

TEST(InterfacesModelPort, SchemaOnePinsOnePerBit) {
    HBOModelPort* vec = makePort("dq", true, 2, 0);
    EXPECT_TRUE(vec->populatePinProps());
    ASSERT_EQ(3u, vec->getPinPropsSeq().size());
    for (int i = 0; i < 3; ++i) {
        const HBOPinProps* pin = vec->getPinPropsSeq()[static_cast<std::size_t>(i)];
        EXPECT_EQ("dq[" + std::to_string(i) + "]", pin->getName());
        EXPECT_EQ(i, pin->getPinIndex());
        EXPECT_EQ(vec, pin->getOwnerPort());
    }

    HBOModelPort* scalar = makePort("clk", false);
    scalar->populatePinProps();
    ASSERT_EQ(1u, scalar->getPinPropsSeq().size());
    EXPECT_EQ("clk", scalar->getPinPropsSeq()[0]->getName());
    EXPECT_EQ(-1, scalar->getPinPropsSeq()[0]->getPinIndex());

    // Unknown width: nothing is made.
    HBOModelPort* unknown = makePort("x", true, -1, 4);
    EXPECT_TRUE(unknown->populatePinProps());
    EXPECT_TRUE(unknown->getPinPropsSeq().empty());

    // The port owns its pins (ASan reports them otherwise).
    delete vec;
    delete scalar;
    delete unknown;
}

TEST(InterfacesModelPort, SchemaTwoPinsComeFromTheComponentInTextOrderOfTheIndex) {
    PinnedBoard fixture("2.0");
    HBOModelPort* port = fixture.addPort("ddr_dq", {{"2", "P2"}, {"10", "P10"}, {"0", "P0"}, {"1", "NOPE"}});

    std::vector<HBOPinProps*> pins;
    port->getPins(pins);
    // "10" sorts before "2"; an unknown pin name is skipped.
    EXPECT_EQ((std::vector<std::string>{"P0", "P10", "P2"}), names(pins));

    // On a schema 2 board the pins are appended to what out holds.
    std::vector<HBOPinProps*> out{nullptr};
    EXPECT_TRUE(port->getPortPropsSeq(out));
    ASSERT_EQ(4u, out.size());
    EXPECT_EQ(nullptr, out[0]);
    EXPECT_EQ("P0", out[1]->getName());
}

TEST(InterfacesModelPort, SchemaOnePortReplacesOutWithItsOwnPins) {
    PinnedBoard fixture("1.0");
    HBOModelPort* port = fixture.addPort("ddr_dq", {{"0", "P0"}});

    std::vector<HBOPinProps*> out;
    EXPECT_FALSE(port->getPortPropsSeq(out));  // no schema 1 pins yet

    port->populatePinProps();
    std::vector<HBOPinProps*> sentinel{nullptr, nullptr, nullptr};
    EXPECT_TRUE(port->getPortPropsSeq(sentinel));
    EXPECT_EQ(port->getPinPropsSeq(), sentinel);

    // A port without an owner chain is no schema 2 port.
    HBOModelPort* loose = makePort("loose", false);
    loose->addPinPortMap("0", "P0");
    std::vector<HBOPinProps*> none;
    EXPECT_FALSE(loose->getPortPropsSeq(none));
    loose->getPins(none);
    EXPECT_TRUE(none.empty());
    delete loose;
}

TEST(InterfacesModelPort, InterfaceDoesNotDeleteItsPorts) {
    HBOBusIf* busIf = new HBOBusIf();
    HBOModelPort* port = makePort("ddr_dq", true, 7, 0);
    port->setOwner(busIf);
    busIf->addPort(port);
    delete busIf;

    // Still a live object: ASan would report a use after free here.
    EXPECT_EQ("ddr_dq", port->getName());
    port->setOwner(nullptr);
    // Left for the end of the process, as a reader would leave it; the leak check of
    // the sanitizer run proves that it is freed then.
}

TEST(InterfacesModelPort, PortsOfADeletedBoardStayReachable) {
    HBOModelPort* port = nullptr;
    {
        PinnedBoard fixture("2.0");
        port = fixture.addPort("ddr_dq", {{"0", "P0"}});
        fixture.component->setModelPort("ddr_dq", port);
    }
    // The board, its component and its interface are gone; the port is not.
    int width = 0;
    port->getPortWidth(width);
    EXPECT_EQ(1, width);
    port->setOwner(nullptr);
}

TEST(InterfacesModelPort, ReaderMayDeleteAPortItGaveUpOn) {
    // Deleted by hand: the end-of-process clean-up must not free it a second time.
    HBOModelPort* port = makePort("gone", false);
    port->populatePinProps();
    delete port;
    HBOModelPort onStack;
    onStack.setName("stack");
    EXPECT_EQ("stack", onStack.getName());
}

TEST(InterfacesModelPort, DisplayFormat) {
    HBOModelPort vec;
    vec.setName("ddr_dq");
    vec.setDirection("inout");
    vec.setIsVector(true);
    vec.setRange(1, 0);
    vec.setOwnerBusIf("ddr", "DQ");
    vec.addPinPortMap("0", "A1");
    vec.addPinPortMap("1", "B2");

    testing::internal::CaptureStderr();
    vec.display(1);
    EXPECT_EQ("-Port - name:DQ, physical_name:ddr_dq, direction:inout, start:1, stop:0, width:2 \n"
              "-----pin_index:0 -- fpga_pin:A1\n"
              "-----pin_index:1 -- fpga_pin:B2\n",
              testing::internal::GetCapturedStderr());

    // A scalar port shows -1, -1 and 1 whatever range it holds.
    HBOModelPort scalar;
    scalar.setName("clk");
    scalar.setRange(5, 2);
    testing::internal::CaptureStderr();
    scalar.display(0);
    EXPECT_EQ("Port - name:, physical_name:clk, direction:, start:-1, stop:-1, width:1 \n",
              testing::internal::GetCapturedStderr());
}
