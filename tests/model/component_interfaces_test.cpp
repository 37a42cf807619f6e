// Interfaces and model ports of a component, the type filters, and interfaces carried
// across connectors.
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "HBOBoard.h"
#include "HBOBoardBus.h"
#include "HBOBoardComponent.h"
#include "HBOBusIf.h"
#include "HBOModelPort.h"
#include "HBOPinProps.h"
#include "HBOPortMap.h"

namespace {

HBOBusIf* makeBusIf(const std::string& name, const std::string& vlnv) {
    HBOBusIf* b = new HBOBusIf();
    b->setName(name);
    std::vector<std::string> f;
    std::string rest = vlnv;
    for (size_t pos; (pos = rest.find(':')) != std::string::npos; rest = rest.substr(pos + 1))
        f.push_back(rest.substr(0, pos));
    f.push_back(rest);
    f.resize(4);
    b->setAbstractTypeVendor(f[0]);
    b->setAbstractTypeLibrary(f[1]);
    b->setAbstractTypeName(f[2]);
    b->setAbstractTypeVersion(f[3]);
    return b;
}

std::vector<std::string> namesOf(const std::vector<HBOBusIf*>& v) {
    std::vector<std::string> out;
    for (const HBOBusIf* b : v)
        out.push_back(b->getName());
    return out;
}

HBOPinProps* makePin(const std::string& name, int index) {
    HBOPinProps* p = new HBOPinProps();
    p->setName(name);
    p->setPinIndex(index);
    return p;
}

typedef std::vector<std::string> Names;

}  // namespace

TEST(ComponentInterfaces, LookUpIsByUpperCasedName) {
    HBOBoardComponent c;
    HBOBusIf* clk = makeBusIf("sys_Clk", "korvelhw:interface:diff_clock_rtl:1.0");
    EXPECT_TRUE(c.setBusIf("sys_Clk", clk));
    EXPECT_EQ(clk, c.getBusIfByName("SYS_CLK"));
    EXPECT_EQ(clk, c.getBusIfByName("sys_clk"));
    EXPECT_EQ(nullptr, c.getBusIfByName(""));
    HBOBusIf* out = nullptr;
    EXPECT_TRUE(c.getBusIfByName(out, "Sys_Clk"));
    EXPECT_EQ(clk, out);
    EXPECT_FALSE(c.getBusIfByName(out, "ddr"));
    EXPECT_EQ(clk, out);

    EXPECT_FALSE(c.setBusIf("", clk));
    EXPECT_FALSE(c.setBusIf("x", nullptr));
    EXPECT_EQ(1u, c.getBusIfMap().size());

    // A replaced interface is freed by the component (leak checkers see it).
    HBOBusIf* clk2 = makeBusIf("SYS_CLK", "korvelhw:interface:diff_clock_rtl:1.0");
    c.setBusIf("SYS_CLK", clk2);
    EXPECT_EQ(clk2, c.getBusIfByName("sys_clk"));
    // Setting the same object twice, or under a second name, frees nothing.
    c.setBusIf("sys_clk", clk2);
    c.setBusIf("alias", clk2);
    EXPECT_EQ(clk2, c.getBusIfByName("ALIAS"));
    c.setBusIf("alias", makeBusIf("alias", "a:b:c:1"));
    EXPECT_EQ(clk2, c.getBusIfByName("sys_clk"));
}

TEST(ComponentInterfaces, TypeFilterAcceptsTheClockFromEitherLibrary) {
    HBOBoardComponent c;
    c.setBusIf("a_clk_sig", makeBusIf("a_clk_sig", "korvelhw:signal:clock_rtl:1.0"));
    c.setBusIf("b_clk_if", makeBusIf("b_clk_if", "KorvelHW:Interface:Clock_RTL:2.0"));
    c.setBusIf("c_clk_other", makeBusIf("c_clk_other", "korvelhw:other:clock_rtl:1.0"));
    c.setBusIf("d_clk_misc", makeBusIf("d_clk_misc", "korvelhw:misc:clock_rtl:1.0"));
    c.setBusIf("e_uart_if", makeBusIf("e_uart_if", "korvelhw:interface:uart_rtl:1.0"));
    c.setBusIf("f_uart_sig", makeBusIf("f_uart_sig", "korvelhw:signal:uart_rtl:1.0"));
    c.setBusIf("g_clk_vendor", makeBusIf("g_clk_vendor", "acme:interface:clock_rtl:1.0"));

    std::vector<HBOBusIf*> out;
    EXPECT_TRUE(c.getBusIfSeq(out, "korvelhw", "other", "clock_rtl", ""));
    EXPECT_EQ((Names{"a_clk_sig", "b_clk_if", "c_clk_other"}), namesOf(out));

    out.clear();
    c.getBusIfSeq(out, "KORVELHW", "OTHER", "CLOCK_RTL", "1.0");
    EXPECT_EQ((Names{"a_clk_sig", "c_clk_other"}), namesOf(out));

    // Other types need the library itself.
    out.clear();
    c.getBusIfSeq(out, "korvelhw", "interface", "uart_rtl", "");
    EXPECT_EQ((Names{"e_uart_if"}), namesOf(out));

    out.clear();
    c.getBusIfSeq(out, "korvelhw", "nothing", "uart_rtl", "");
    EXPECT_TRUE(out.empty());

    out.clear();
    EXPECT_TRUE(c.getBusIfSeq(out, true));
    EXPECT_EQ(7u, out.size());
    EXPECT_EQ("a_clk_sig", out.front()->getName());
    EXPECT_TRUE(c.getBusIfSeq(out, false));
    EXPECT_EQ(14u, out.size());
}

TEST(ComponentInterfaces, VlnvFilterTreatsTheBracketAsACharacterClass) {
    HBOBoardComponent c;
    c.setBusIf("clk_if", makeBusIf("clk_if", "korvelhw:interface:clock_rtl:1.0"));
    c.setBusIf("clk_sig", makeBusIf("clk_sig", "korvelhw:signal:clock_rtl:1.0"));
    c.setBusIf("clk_short", makeBusIf("clk_short", "korvelhw:s:clock_rtl:1.0"));
    c.setBusIf("uart", makeBusIf("uart", "korvelhw:interface:uart_rtl:1.0"));

    Names names;
    // The ordinary clock types do not match the pattern and compare as plain text.
    EXPECT_TRUE(c.getBusIfSeq(names, "KORVELHW:Interface:clock_rtl:1.0"));
    EXPECT_EQ((Names{"clk_if"}), names);
    names.clear();
    c.getBusIfSeq(names, "korvelhw:signal:clock_rtl:1.0");
    EXPECT_EQ((Names{"clk_sig"}), names);

    // A one-letter library matches the class; every such text fits it, and nothing else.
    names.clear();
    c.getBusIfSeq(names, "korvelhw:|:CLOCK_RTL:1x0");
    EXPECT_EQ((Names{"clk_short"}), names);
    names.clear();
    c.getBusIfSeq(names, "korvelhw:s:clock_rtl:1.0");
    EXPECT_EQ((Names{"clk_short"}), names);

    names.clear();
    c.getBusIfSeq(names, "korvelhw:interface:uart_rtl:1.0");
    EXPECT_EQ((Names{"uart"}), names);
    names.clear();
    c.getBusIfSeq(names, "korvelhw:interface:uart_rtl");
    EXPECT_TRUE(names.empty());
}

TEST(ComponentInterfaces, ModelPortsFollowTheInterfaces) {
    HBOBoardComponent c;
    HBOModelPort clkIn;
    clkIn.setName("clk_in");
    EXPECT_FALSE(c.setModelPort("", &clkIn));
    EXPECT_FALSE(c.setModelPort("x", nullptr));
    EXPECT_TRUE(c.setModelPort("clk_in", &clkIn));
    EXPECT_EQ(&clkIn, c.getModelPortByName("CLK_IN"));
    HBOModelPort* found = nullptr;
    EXPECT_FALSE(c.getModelPortByName(found, ""));
    EXPECT_TRUE(c.getModelPortByName(found, "Clk_In"));
    EXPECT_EQ(&clkIn, found);

    // An interface that maps a known physical port tells the port who owns it.
    HBOBusIf* clk = makeBusIf("Sys_Clk", "korvelhw:interface:clock_rtl:1.0");
    clk->populatePortMap(new HBOPortMap("CLK", "clk_in"));
    clk->populatePortMap(new HBOPortMap("RST", "rst_in"));
    HBOModelPort rstIn;
    rstIn.setName("rst_in");
    clk->addPort(&clkIn);
    clk->addPort(&rstIn);
    c.setBusIf("Sys_Clk", clk);
    EXPECT_EQ("Sys_Clk", clkIn.getOwnerBusIf());
    EXPECT_EQ("CLK", clkIn.getBusIfLogicalPortName());
    EXPECT_EQ("", rstIn.getOwnerBusIf());

    std::vector<HBOModelPort*> ports{&rstIn};
    EXPECT_TRUE(c.getModelPortsByBusIf(ports, "sys_clk"));
    EXPECT_EQ((std::vector<HBOModelPort*>{&clkIn}), ports);
    EXPECT_FALSE(c.getModelPortsByBusIf(ports, "ddr"));
    EXPECT_TRUE(ports.empty());

    EXPECT_TRUE(c.createModelPortsForInterfaces());
    EXPECT_EQ(&rstIn, c.getModelPortByName("RST_IN"));
    ports.clear();
    c.getModelPortSeq(ports);
    EXPECT_EQ((std::vector<HBOModelPort*>{&clkIn, &rstIn}), ports);
    c.getModelPortsByBusIf(ports, "SYS_CLK");
    EXPECT_EQ(2u, ports.size());
}

TEST(ComponentInterfaces, PinsOfAnInterfaceOnASchema2Board) {
    HBOBoard board;
    board.setBoardSchemaVersion("2.0");
    HBOBoardComponent& c = *new HBOBoardComponent();
    c.setComponentName("part0");
    c.setType("fpga");
    c.setBoard(&board);
    board.addBoardComponent(&c);
    c.addPin(makePin("A1", 0));
    c.addPin(makePin("B2", 1));

    HBOBusIf* led = makeBusIf("led", "korvelhw:interface:gpio_rtl:1.0");
    led->setOwnerComponent(&c);
    led->populatePortMap(new HBOPortMap("TRI_O", "led_o"));
    HBOModelPort ledO;
    ledO.setName("led_o");
    ledO.setIsVector(true);
    ledO.setRange(1, 0);
    ledO.setOwner(led);
    ledO.addPinPortMap("0", "B2");
    ledO.addPinPortMap("1", "A1");
    ledO.addPinPortMap("2", "nowhere");
    led->addPort(&ledO);
    c.setBusIf("led", led);
    c.setModelPort("led_o", &ledO);

    std::vector<HBOPinProps*> pins{nullptr};
    EXPECT_TRUE(c.getPinPropsByBusIf(pins, "LED"));
    ASSERT_EQ(2u, pins.size());
    EXPECT_EQ("B2", pins[0]->getName());
    EXPECT_EQ("A1", pins[1]->getName());
    EXPECT_FALSE(c.getPinPropsByBusIf(pins, "uart"));
    EXPECT_TRUE(pins.empty());
}

TEST(ComponentInterfaces, InterfacesOfAComponentOnTheActivePart) {
    HBOBoard board;
    HBOBoardComponent* fpga = new HBOBoardComponent();
    fpga->setComponentName("part0");
    fpga->setType("fpga");
    fpga->setBoard(&board);
    HBOBoardComponent* led = new HBOBoardComponent();
    led->setComponentName("led_4bits");
    led->setBoard(&board);
    board.addBoardComponent(fpga);
    board.addBoardComponent(led);

    HBOBusIf* a = makeBusIf("a_leds", "korvelhw:interface:gpio_rtl:1.0");
    a->setOfComponent("LED_4Bits");
    HBOBusIf* b = makeBusIf("b_sws", "korvelhw:interface:gpio_rtl:1.0");
    b->setOfComponent("sws");
    HBOBusIf* d = makeBusIf("d_leds", "korvelhw:interface:gpio_rtl:1.0");
    d->setOfComponent("led_4bits");
    fpga->setBusIf(a->getName(), a);
    fpga->setBusIf(b->getName(), b);
    fpga->setBusIf(d->getName(), d);

    std::vector<HBOBusIf*> out{nullptr};
    led->getOfCompInterfaces(out, true, nullptr);
    EXPECT_EQ((Names{"a_leds", "d_leds"}), namesOf(out));
    led->getOfCompInterfaces(out, false, nullptr);
    EXPECT_TRUE(out.empty());
    led->getOfCompInterfaces(out, false, fpga);
    EXPECT_EQ(2u, out.size());
    fpga->getOfCompInterfaces(out, false, fpga);
    EXPECT_TRUE(out.empty());
}

namespace {

// A base board (FPGA and an LPC connector wired to it) and a daughter board whose
// connector carries two interfaces, one of which uses a pin the base does not wire.
struct JoinFixture : ::testing::Test {
    HBOBoard base;
    HBOBoard daughter;
    HBOBoardComponent* fpga = nullptr;
    HBOBoardComponent* baseConn = nullptr;
    HBOBoardComponent* dConn = nullptr;
    HBOModelPort ledPort;
    HBOModelPort badPort;

    void SetUp() override {
        base.setName("acme", "base", "1.0");
        base.setBoardSchemaVersion("2.0");
        daughter.setName("acme", "dtr", "1.0");
        daughter.setBoardSchemaVersion("2.0");

        fpga = add(base, "part0", "fpga", "");
        fpga->addPin(makePin("FA1", 0));
        fpga->addPin(makePin("FA2", 1));
        baseConn = add(base, "fmc", "connector", "fmc_lpc");
        baseConn->addPin(makePin("FA1", 10));
        baseConn->addPin(makePin("FA2", 11));
        baseConn->addPin(makePin("FA9", 12));  // wired name that the FPGA does not have

        dConn = add(daughter, "fmc", "connector", "fmc_hpc");
        HBOPinProps* d10 = makePin("D_10", 10);
        d10->setPinIOStandard("LVCMOS18");
        d10->setPinDrive("");
        dConn->addPin(d10);
        dConn->addPin(makePin("D_11", 11));
        dConn->addPin(makePin("D_12", 12));
        dConn->addPin(makePin("D_13", 13));
        fpga->findPin("FA1")->setPinDrive("8");

        addPortInterface(dConn, "leds", ledPort, {{"0", "D_10"}, {"1", "D_11"}});
        addPortInterface(dConn, "bad", badPort, {{"0", "D_12"}});
        HBOBusIf* none = makeBusIf("empty", "korvelhw:interface:gpio_rtl:1.0");
        none->setOwnerComponent(dConn);
        dConn->setBusIf("empty", none);
    }

    HBOBoardComponent* add(HBOBoard& b, const std::string& name, const std::string& type,
                           const std::string& subType) {
        HBOBoardComponent* c = new HBOBoardComponent();
        c->setComponentName(name);
        c->setType(type);
        c->setSubType(subType);
        c->setBoard(&b);
        b.addBoardComponent(c);
        return c;
    }

    void addPortInterface(HBOBoardComponent* c, const std::string& name, HBOModelPort& port,
                          const std::map<std::string, std::string>& pins) {
        HBOBusIf* b = makeBusIf(name, "korvelhw:interface:gpio_rtl:1.0");
        b->setOwnerComponent(c);
        port.setName(name + "_o");
        port.setOwner(b);
        for (const auto& kv : pins)
            port.addPinPortMap(kv.first, kv.second);
        b->populatePortMap(new HBOPortMap("TRI_O", port.getName()));
        b->addPort(&port);
        c->setBusIf(name, b);
    }
};

}  // namespace

TEST_F(JoinFixture, PinsMapThroughTheIndexOfTheBaseConnector) {
    std::string fpgaPin;
    EXPECT_TRUE(fpga->mapConnectorPin(baseConn, dConn, "D_11", fpgaPin));
    EXPECT_EQ("FA2", fpgaPin);
    EXPECT_FALSE(fpga->mapConnectorPin(baseConn, dConn, "D_12", fpgaPin));  // FPGA lacks FA9
    EXPECT_FALSE(fpga->mapConnectorPin(baseConn, dConn, "D_13", fpgaPin));  // base lacks index 13
    EXPECT_FALSE(fpga->mapConnectorPin(baseConn, dConn, "D_99", fpgaPin));
    EXPECT_FALSE(fpga->mapConnectorPin(nullptr, dConn, "D_11", fpgaPin));

    std::vector<HBOBusIf*> out;
    fpga->getInterfacesWhichCanBeConnected(baseConn, dConn, out);
    EXPECT_EQ((Names{"empty", "leds"}), namesOf(out));
}

TEST_F(JoinFixture, ConnectableInterfacesAreClonedOntoTheFpgaPins) {
    EXPECT_TRUE(fpga->copyInterfacesFromComponent(baseConn, dConn));
    HBOBusIf* leds = fpga->getBusIfByName("LEDS");
    ASSERT_NE(nullptr, leds);
    EXPECT_NE(dConn->getBusIfByName("leds"), leds);
    EXPECT_EQ(nullptr, fpga->getBusIfByName("bad"));
    EXPECT_NE(nullptr, fpga->getBusIfByName("empty"));

    ASSERT_EQ(1u, leds->getPortMaps().size());
    const HBOModelPort* clone = leds->getPortMaps().begin()->second;
    EXPECT_EQ("FA1", clone->getPinPort("0"));
    EXPECT_EQ("FA2", clone->getPinPort("1"));
    // The daughter's pin rewrote the FPGA pin's standard, and kept its drive.
    EXPECT_EQ("LVCMOS18", fpga->findPin("FA1")->getPinIOStandard());
    EXPECT_EQ("8", fpga->findPin("FA1")->getPinDrive());

    // A missing side copies nothing.
    EXPECT_TRUE(fpga->copyInterfacesFromComponent(nullptr, dConn));
    EXPECT_EQ(2u, fpga->getBusIfMap().size());
}

TEST(ComponentInterfaces, ConnectorChainsAreWalkedOnce) {
    HBOBoard board;
    auto add = [&](const std::string& name) {
        HBOBoardComponent* c = new HBOBoardComponent();
        c->setComponentName(name);
        c->setType("connector");
        c->setSubType("pmod");
        c->setBoard(&board);
        board.addBoardComponent(c);
        c->setBusIf(name + "_if", makeBusIf(name + "_if", "korvelhw:interface:gpio_rtl:1.0"));
        return c;
    };
    HBOBoardComponent* j1 = add("j1");
    add("j2");
    add("j3");
    add("j4");
    auto wire = [&](const std::string& a, const std::string& b) {
        HBOBoardBus* bus = new HBOBoardBus();
        bus->setName(a + "_" + b);
        bus->setComp1(a);
        bus->setComp2(b);
        bus->setOwner(&board);
        board.addBus(bus);
    };
    wire("j1", "j2");
    wire("j3", "j2");
    wire("j2", "j1");

    std::vector<HBOBusIf*> out;
    Names names;
    j1->getBusIfSeqFromConnectors(out, names);
    EXPECT_EQ((Names{"j1", "j2", "j3"}), names);
    EXPECT_EQ((Names{"j1_if", "j2_if", "j3_if"}), namesOf(out));
}
