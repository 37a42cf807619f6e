// Model ports: widths and bounds, the pin port map, schema 1 pins, the pins a port
// finds on its component, and who frees a port.

#include "board_fixture.h"

using namespace board_fixture;

namespace {

HBOModelPort* makePort(const std::string& name, bool isVector, int left = -1, int right = -1) {
    HBOModelPort* port = new HBOModelPort();
    port->setName(name);
    port->setIsVector(isVector);
    if (isVector)
        port->setRange(left, right);
    return port;
}

// A board of the given schema with one component "fpga" holding pins P0..P11 at
// indices 0..11 and one interface "ddr"; the board owns all of it.
struct PinnedBoard {
    HBOBoard board;
    HBOBusIf* busIf = nullptr;
    explicit PinnedBoard(const std::string& schema) {
        board.setBoardSchemaVersion(schema);
        HBOBoardComponent* component = addComponent(board, "fpga", "");
        for (int i = 0; i < 12; ++i)
            component->addPin(makePin("P" + std::to_string(i), i));
        busIf = addInterface(component, "ddr", "");
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
    int left = 42, right = 42;
    EXPECT_FALSE(port.getPortVecLeft(left));
    EXPECT_FALSE(port.getPortVecRight(right));
    EXPECT_EQ(-1, left);
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
    EXPECT_EQ((std::map<std::string, std::string>{{"0", "B7"}, {"1", "C3"}}), port.getPinPortMap());

    // Entries kept before the first read come out in text order, the last of an index winning,
    // and the map read first follows later entries.
    HBOModelPort fresh;
    for (const char* index : {"9", "10", "2", "10"})
        fresh.addPinPortMap(index, std::string("P") + index + (fresh.getPinPortMap().count(index) ? "b" : ""));
    HBOModelPort unread;
    unread.reservePinPortMap(3);
    for (const auto& entry : {std::make_pair("9", "P9"), std::make_pair("10", "P10"), std::make_pair("2", "P2"),
                              std::make_pair("10", "P10b")})
        unread.addPinPortMap(entry.first, entry.second);
    const std::map<std::string, std::string> expected{{"10", "P10b"}, {"2", "P2"}, {"9", "P9"}};
    EXPECT_EQ(expected, fresh.getPinPortMap());
    EXPECT_EQ("P10b", unread.getPinPort("10"));
    const std::map<std::string, std::string>& held = unread.getPinPortMap();
    EXPECT_EQ(expected, held);
    unread.addPinPortMap("3", "P3");
    EXPECT_EQ("P3", held.at("3"));

    // Indices that are no plain number keep their text exactly.
    HBOModelPort odd;
    for (const char* index : {"1", "01", "", "x", "1234567890", "2"})
        odd.addPinPortMap(index, std::string("P") + index);
    EXPECT_EQ((std::map<std::string, std::string>{{"", "P"},
                                                   {"01", "P01"},
                                                   {"1", "P1"},
                                                   {"1234567890", "P1234567890"},
                                                   {"2", "P2"},
                                                   {"x", "Px"}}),
              odd.getPinPortMap());
}

// The port owns its schema 1 pins (the sanitizer run reports them otherwise).
TEST(InterfacesModelPort, SchemaOnePinsOnePerBit) {
    HBOModelPort* vec = makePort("dq", true, 2, 0);
    EXPECT_TRUE(vec->populatePinProps());
    EXPECT_EQ((Names{"dq[0]", "dq[1]", "dq[2]"}), namesOf(vec->getPinPropsSeq()));
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(i, vec->getPinPropsSeq()[static_cast<std::size_t>(i)]->getPinIndex());
        EXPECT_EQ(vec, vec->getPinPropsSeq()[static_cast<std::size_t>(i)]->getOwnerPort());
    }
    HBOModelPort* scalar = makePort("clk", false);
    scalar->populatePinProps();
    EXPECT_EQ((Names{"clk"}), namesOf(scalar->getPinPropsSeq()));
    EXPECT_EQ(-1, scalar->getPinPropsSeq()[0]->getPinIndex());
    // Unknown width: nothing is made.
    HBOModelPort* unknown = makePort("x", true, -1, 4);
    EXPECT_TRUE(unknown->populatePinProps());
    EXPECT_TRUE(unknown->getPinPropsSeq().empty());
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
    EXPECT_EQ((Names{"P0", "P10", "P2"}), namesOf(pins));
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

// Ports outlive the interface, component and board that hold them; they are freed
// at the end of the process (the leak check of the sanitizer run proves it), and a
// reader may delete one by hand without a second free then.
TEST(InterfacesModelPort, PortsOutliveTheirHoldersAndMayBeDeletedByHand) {
    HBOBusIf* busIf = new HBOBusIf();
    HBOModelPort* port = makePort("ddr_dq", true, 7, 0);
    port->setOwner(busIf);
    busIf->addPort(port);
    delete busIf;
    EXPECT_EQ("ddr_dq", port->getName());  // still a live object
    port->setOwner(nullptr);
    HBOModelPort* held = nullptr;
    {
        PinnedBoard fixture("2.0");
        held = fixture.addPort("ddr_dq", {{"0", "P0"}});
        fixture.board.findBoardComponent("fpga")->setModelPort("ddr_dq", held);
    }
    EXPECT_EQ(1, widthOf(*held));
    held->setOwner(nullptr);
    HBOModelPort* gone = makePort("gone", false);
    gone->populatePinProps();
    delete gone;
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
    EXPECT_EQ("-Port - name:DQ, physical_name:ddr_dq, direction:inout, start:1, stop:0, width:2 \n"
              "-----pin_index:0 -- fpga_pin:A1\n"
              "-----pin_index:1 -- fpga_pin:B2\n",
              stderrOf([&] { vec.display(1); }));
    // A scalar port shows -1, -1 and 1 whatever range it holds.
    HBOModelPort scalar;
    scalar.setName("clk");
    scalar.setRange(5, 2);
    EXPECT_EQ("Port - name:, physical_name:clk, direction:, start:-1, stop:-1, width:1 \n",
              stderrOf([&] { scalar.display(0); }));
}
