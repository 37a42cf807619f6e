// Interfaces and model ports of a component, the type filters, and interfaces carried
// across connectors.

#include "board_fixture.h"

using namespace board_fixture;

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

    // A replaced interface is freed by the component (leak checkers see it); setting
    // the same object twice, or under a second name, frees nothing.
    HBOBusIf* clk2 = makeBusIf("SYS_CLK", "korvelhw:interface:diff_clock_rtl:1.0");
    c.setBusIf("SYS_CLK", clk2);
    EXPECT_EQ(clk2, c.getBusIfByName("sys_clk"));
    c.setBusIf("sys_clk", clk2);
    c.setBusIf("alias", clk2);
    EXPECT_EQ(clk2, c.getBusIfByName("ALIAS"));
    c.setBusIf("alias", makeBusIf("alias", "a:b:c:1"));
    EXPECT_EQ(clk2, c.getBusIfByName("sys_clk"));
}

TEST(ComponentInterfaces, TypeFilterAcceptsTheClockFromEitherLibrary) {
    HBOBoardComponent c;
    const std::pair<const char*, const char*> interfaces[] = {
        {"a_clk_sig", "korvelhw:signal:clock_rtl:1.0"},     {"b_clk_if", "KorvelHW:Interface:Clock_RTL:2.0"},
        {"c_clk_other", "korvelhw:other:clock_rtl:1.0"},    {"d_clk_misc", "korvelhw:misc:clock_rtl:1.0"},
        {"e_uart_if", "korvelhw:interface:uart_rtl:1.0"},   {"f_uart_sig", "korvelhw:signal:uart_rtl:1.0"},
        {"g_clk_vendor", "acme:interface:clock_rtl:1.0"}};
    for (const auto& i : interfaces)
        c.setBusIf(i.first, makeBusIf(i.first, i.second));
    auto filter = [&](const char* v, const char* l, const char* n, const char* r) {
        std::vector<HBOBusIf*> out;
        c.getBusIfSeq(out, v, l, n, r);
        return namesOf(out);
    };
    std::vector<HBOBusIf*> out;
    EXPECT_TRUE(c.getBusIfSeq(out, "korvelhw", "other", "clock_rtl", ""));
    EXPECT_EQ((Names{"a_clk_sig", "b_clk_if", "c_clk_other"}), namesOf(out));
    EXPECT_EQ((Names{"a_clk_sig", "c_clk_other"}), filter("KORVELHW", "OTHER", "CLOCK_RTL", "1.0"));
    // Other types need the library itself.
    EXPECT_EQ((Names{"e_uart_if"}), filter("korvelhw", "interface", "uart_rtl", ""));
    EXPECT_TRUE(filter("korvelhw", "nothing", "uart_rtl", "").empty());
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
    // The ordinary clock types do not match the pattern and compare as plain text; a
    // one-letter library matches the class, and every such text fits it.
    const std::pair<const char*, Names> cases[] = {
        {"KORVELHW:Interface:clock_rtl:1.0", {"clk_if"}}, {"korvelhw:signal:clock_rtl:1.0", {"clk_sig"}},
        {"korvelhw:|:CLOCK_RTL:1x0", {"clk_short"}},      {"korvelhw:s:clock_rtl:1.0", {"clk_short"}},
        {"korvelhw:interface:uart_rtl:1.0", {"uart"}},    {"korvelhw:interface:uart_rtl", {}}};
    for (const auto& k : cases) {
        Names names;
        c.getBusIfSeq(names, k.first);
        EXPECT_EQ(k.second, names) << k.first;
    }
    Names names;
    EXPECT_TRUE(c.getBusIfSeq(names, "korvelhw:interface:clock_rtl:1.0"));
}

TEST(ComponentInterfaces, ModelPortsFollowTheInterfaces) {
    HBOBoardComponent c;
    HBOModelPort clkIn, rstIn;
    clkIn.setName("clk_in");
    rstIn.setName("rst_in");
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
    c.getModelPortSeq(ports);
    EXPECT_EQ((std::vector<HBOModelPort*>{&clkIn, &rstIn}), ports);
    c.getModelPortsByBusIf(ports, "SYS_CLK");
    EXPECT_EQ(2u, ports.size());
}

TEST(ComponentInterfaces, PinsOfAnInterfaceOnASchema2Board) {
    HBOBoard board;
    board.setBoardSchemaVersion("2.0");
    HBOBoardComponent* c = addComponent(board, "part0", "fpga");
    c->addPin(makePin("A1", 0));
    c->addPin(makePin("B2", 1));
    HBOBusIf* led = addInterface(c, "led", "");
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
    c->setModelPort("led_o", &ledO);
    std::vector<HBOPinProps*> pins{nullptr};
    EXPECT_TRUE(c->getPinPropsByBusIf(pins, "LED"));
    EXPECT_EQ((Names{"B2", "A1"}), namesOf(pins));
    EXPECT_FALSE(c->getPinPropsByBusIf(pins, "uart"));
    EXPECT_TRUE(pins.empty());
}

TEST(ComponentInterfaces, InterfacesOfAComponentOnTheActivePart) {
    HBOBoard board;
    HBOBoardComponent* fpga = addComponent(board, "part0", "fpga");
    HBOBoardComponent* led = addComponent(board, "led_4bits", "");
    addInterface(fpga, "a_leds", "LED_4Bits");
    addInterface(fpga, "b_sws", "sws");
    addInterface(fpga, "d_leds", "led_4bits");
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

TEST(ComponentInterfaces, ConnectorChainsAreWalkedOnce) {
    HBOBoard board;
    for (const std::string name : {"j1", "j2", "j3", "j4"})
        addInterface(addComponent(board, name, "connector", "pmod"), name + "_if", "");
    addConnection(board, "a", "j1", "j2", "", 0);
    addConnection(board, "b", "j3", "j2", "", 0);
    addConnection(board, "c", "j2", "j1", "", 0);
    std::vector<HBOBusIf*> out;
    Names names;
    board.findBoardComponent("j1")->getBusIfSeqFromConnectors(out, names);
    EXPECT_EQ((Names{"j1", "j2", "j3"}), names);
    EXPECT_EQ((Names{"j1_if", "j2_if", "j3_if"}), namesOf(out));
}

namespace {

// A base board (FPGA and an LPC connector wired to it) and a daughter board whose
// connector carries two interfaces, one of which uses a pin the base does not wire.
struct JoinFixture : ::testing::Test {
    HBOBoard base, daughter;
    HBOBoardComponent* fpga = nullptr;
    HBOBoardComponent* baseConn = nullptr;
    HBOBoardComponent* dConn = nullptr;
    HBOModelPort ledPort, badPort;
    void SetUp() override {
        base.setBoardSchemaVersion("2.0");
        daughter.setBoardSchemaVersion("2.0");
        fpga = addComponent(base, "part0", "fpga");
        fpga->addPin(makePin("FA1", 0));
        fpga->addPin(makePin("FA2", 1));
        fpga->findPin("FA1")->setPinDrive("8");
        baseConn = addComponent(base, "fmc", "connector", "fmc_lpc");
        baseConn->addPin(makePin("FA1", 10));
        baseConn->addPin(makePin("FA2", 11));
        baseConn->addPin(makePin("FA9", 12));  // wired name that the FPGA does not have
        dConn = addComponent(daughter, "fmc", "connector", "fmc_hpc");
        HBOPinProps* d10 = makePin("D_10", 10);
        d10->setPinIOStandard("LVCMOS18");
        d10->setPinDrive("");
        dConn->addPin(d10);
        for (int i = 11; i <= 13; ++i)
            dConn->addPin(makePin("D_" + std::to_string(i), i));
        portInterface("leds", ledPort, {{"0", "D_10"}, {"1", "D_11"}});
        portInterface("bad", badPort, {{"0", "D_12"}});
        addInterface(dConn, "empty", "");
    }
    void portInterface(const std::string& name, HBOModelPort& port, const std::map<std::string, std::string>& pins) {
        HBOBusIf* b = addInterface(dConn, name, "");
        port.setName(name + "_o");
        port.setOwner(b);
        for (const auto& kv : pins)
            port.addPinPortMap(kv.first, kv.second);
        b->populatePortMap(new HBOPortMap("TRI_O", port.getName()));
        b->addPort(&port);
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
