// Building integrated boards from a base board and daughter boards.

#include "HEXAll.h"
#include "board_fixture.h"

using namespace board_fixture;

namespace {

typedef std::vector<HBOBoard::IntegratedConnection> Connections;

// The id and arguments of the message that createBoard throws; empty when it does not throw.
Names thrown(const HBOBoard* base, const Connections& connections) {
    try {
        std::unique_ptr<HBOBoard> b(HBOBoard::createBoard(base, connections, "x"));
    } catch (const HEXError& e) {
        Names out{e.getMsg().getId()};
        for (const std::string& arg : e.getMsg().getArgs())
            out.push_back(arg);
        return out;
    }
    return {};
}

std::string thrownId(const HBOBoard* base, const Connections& connections) {
    const Names t = thrown(base, connections);
    return t.empty() ? "" : t[0];
}

const HBOBoardBus* busNamed(const HBOBoard& board, const std::string& name) {
    for (const HBOBoardBus* bus : board.getBuses())
        if (bus->getName() == name)
            return bus;
    return nullptr;
}

}  // namespace

TEST(BoardIntegration, BadArgumentsThrowBeforeAnythingIsBuilt) {
    FixtureBoard carrier = makeCarrierBoard();
    FixtureBoard card = makeCardBoard();
    EXPECT_EQ("49-85", thrownId(nullptr, {}));
    EXPECT_EQ("49-126", thrownId(carrier.get(), {boost::make_tuple("fmc9", card.get(), "j1")}));
    EXPECT_EQ("49-126", thrownId(carrier.get(), {boost::make_tuple("fmc1", card.get(), "J1")}));
    EXPECT_EQ((Names{"49-127", "fpga1", "acme:carrier:1.0"}),
              thrown(carrier.get(), {boost::make_tuple("fpga1", card.get(), "j1")}));
    EXPECT_EQ("49-127", thrownId(carrier.get(), {boost::make_tuple("fmc1", card.get(), "led")}));
    // Without a daughter board nothing is checked.
    EXPECT_EQ("", thrownId(carrier.get(), {boost::make_tuple("fmc9", static_cast<const HBOBoard*>(nullptr), "")}));
    carrier->setIntegratedBoard(true);
    EXPECT_EQ("49-84", thrownId(carrier.get(), {}));
}

TEST(BoardIntegration, WithoutConnectionsItIsAnIntegratedCopy) {
    FixtureBoard carrier = makeCarrierBoard();
    std::unique_ptr<HBOBoard> b(HBOBoard::createBoard(carrier.get(), {}, "Plain"));
    EXPECT_TRUE(b->isIntegratedBoard());
    EXPECT_EQ(carrier.get(), b->getBaseBoard());
    EXPECT_EQ("acme:plain:1.0", b->getName());
    EXPECT_EQ(carrier->getBoardComponents().size(), b->getBoardComponents().size());
    // The enablement ran: pmod1 has no connection.
    EXPECT_EQ("false", b->findBoardComponent("pmod1")->getIsEnabled());
    EXPECT_EQ("true", b->findBoardComponent("fmc1")->getIsEnabled());
    EXPECT_EQ("", b->getIntegratedBoardConnectionsAsString());
    EXPECT_EQ("{}", b->getIntegratedBoardConnectionsAsStringProperty());
}

TEST(BoardIntegration, DaughterIsMergedWiredAndItsInterfacesReachTheFpga) {
    FixtureBoard carrier = makeCarrierBoard();
    FixtureBoard card = makeCardBoard();
    std::unique_ptr<HBOBoard> b(
        HBOBoard::createBoard(carrier.get(), {boost::make_tuple("fmc2", card.get(), "j1")}, "carrier_card"));

    // The daughter's objects are there under the prefix.
    ASSERT_NE(nullptr, b->findBoardComponent("fmc2_j1"));
    ASSERT_NE(nullptr, b->findBoardComponent("fmc2_led"));
    EXPECT_EQ(Names{"fmc2_jd"}, namesOf(b->getJumpers()));

    // The generated connection between base and daughter connector.
    const HBOBoardBus* wire = busNamed(*b, "fmc2_fmc2_j1");
    ASSERT_NE(nullptr, wire);
    EXPECT_EQ("fmc2", wire->getComp1());
    EXPECT_EQ("fmc2_j1", wire->getComp2());
    EXPECT_EQ(400, wire->getStopIndexComp1());
    ASSERT_EQ(401u, wire->getBoardBusNets().size());
    EXPECT_EQ("fmc2_fmc2_j1_0", wire->getBoardBusNets()[0]->getName());
    EXPECT_EQ(400, wire->getBoardBusNets()[400]->getC2PinIndex());
    const HBOBoardBus* daughterBus = busNamed(*b, "fmc2_j1_led");
    ASSERT_NE(nullptr, daughterBus);
    EXPECT_EQ("{fmc2_jd true}", daughterBus->getEnablementDependency());
    EXPECT_EQ("true", daughterBus->getIsEnabled());
    EXPECT_EQ("true", b->findBoardComponent("fmc2_led")->getIsEnabled());

    // Missing connector pins were made; existing ones (by index) were kept.
    const HBOBoardComponent* fmc2 = b->findBoardComponent("fmc2");
    ASSERT_NE(nullptr, fmc2->getPinByIndex(2));
    EXPECT_EQ("fmc2_2", fmc2->getPinByIndex(2)->getName());
    EXPECT_EQ("F7", fmc2->getPinByIndex(9)->getName());
    EXPECT_EQ(nullptr, fmc2->findPin("fmc2_9"));

    // Both daughter interfaces reach the FPGA through fmc2, on FPGA pins, under the merged names.
    HBOBoardComponent* fpga = b->getActivePart();
    ASSERT_NE(nullptr, fpga);
    EXPECT_EQ("fpga1", fpga->getComponentName());
    HBOBusIf* gpio = b->getBusIfByName("fmc2_gpio");
    ASSERT_NE(nullptr, gpio);
    ASSERT_EQ(1u, gpio->getPortMaps().size());
    EXPECT_EQ((std::map<std::string, std::string>{{"0", "F0"}, {"1", "F1"}}),
              gpio->getPortMaps().begin()->second->getPinPortMap());
    EXPECT_NE(nullptr, b->getBusIfByName("fmc2_aux"));
    HBOModelPort* port = nullptr;
    EXPECT_TRUE(b->getModelPortByName(port, "fmc2_gpio_io"));
    // The daughter fixes the I/O standard of the FPGA pin it uses.
    EXPECT_EQ("LVCMOS18", fpga->findPin("F0")->getPinIOStandard());
    EXPECT_EQ("{fmc2} acme:card:j1:1.0", b->getIntegratedBoardConnectionsAsString());
    EXPECT_EQ("{fmc2 acme:card:j1:1.0}", b->getIntegratedBoardConnectionsAsStringProperty());
    EXPECT_EQ(card->findBoardComponent("j1"), b->getConnectorConnected(carrier->findBoardComponent("fmc2")));
    EXPECT_FALSE(b->isConnectorConnected(carrier->findBoardComponent("fmc1")));
    std::vector<std::pair<HBOBoardComponent*, HBOBoardComponent*>> pairs;
    b->getConnectedConnectors(pairs);
    EXPECT_EQ((std::vector<std::pair<HBOBoardComponent*, HBOBoardComponent*>>{
                  {carrier->findBoardComponent("fmc2"), card->findBoardComponent("j1")}}),
              pairs);

    // The sources are left as they were.
    EXPECT_EQ(nullptr, carrier->getBusIfByName("gpio"));
    EXPECT_EQ("{jd true}", card->getBuses()[0]->getEnablementDependency());
    EXPECT_EQ(nullptr, carrier->findBoardComponent("fmc2")->findPin("fmc2_2"));
}

TEST(BoardIntegration, OneDaughterAtTwoConnectorsAndConnectsWith) {
    FixtureBoard carrier = makeCarrierBoard();
    FixtureBoard card = makeCardBoard();
    addComponent(*card, "eeprom", "chip")
        ->addParameter(new HBOParameter("connects_with", "fmc1", "string", "", "", ""));
    std::unique_ptr<HBOBoard> b(HBOBoard::createBoard(
        carrier.get(), {boost::make_tuple("fmc1", card.get(), "j1"), boost::make_tuple("fmc2", card.get(), "j1")},
        "twice"));
    EXPECT_NE(nullptr, b->findBoardComponent("fmc1_j1"));
    EXPECT_NE(nullptr, b->findBoardComponent("fmc2_j1"));
    EXPECT_NE(nullptr, b->findBoardComponent("fmc1_eeprom"));
    EXPECT_EQ(nullptr, b->findBoardComponent("fmc2_eeprom"));
    EXPECT_EQ((Names{"fmc1_jd", "fmc2_jd"}), namesOf(b->getJumpers()));
    EXPECT_EQ("{fmc1} acme:card:j1:1.0 {fmc2} acme:card:j1:1.0", b->getIntegratedBoardConnectionsAsString());
}

TEST(BoardIntegration, CreateConnectionSizesByConnectorKindAndCreatePinsKeepsExisting) {
    FixtureBoard f = makeEmptyBoard();
    addComponent(*f, "fmc1", "connector", "fmc_lpc");
    addComponent(*f, "fmc1_j1", "connector", "fmc_lpc");
    addComponent(*f, "som1", "connector", "som240");
    addComponent(*f, "som1_j1", "connector", "som240");
    f->createConnection("FMC1", "fmc1_j1");
    ASSERT_EQ(1u, f->getBuses().size());
    const HBOBoardBus* bus = f->getBuses()[0];
    EXPECT_EQ("fmc1_fmc1_j1", bus->getName());
    EXPECT_EQ("fmc1_fmc1_j1", bus->getConnectionName());
    EXPECT_EQ(f.get(), bus->getOwner());
    ASSERT_EQ(401u, bus->getBoardBusNets().size());
    EXPECT_EQ("fmc1_fmc1_j1_0", bus->getBoardBusNets()[0]->getName());
    EXPECT_EQ("fmc1_fmc1_j1", bus->getBoardBusNets()[0]->getBoardBus());
    EXPECT_EQ("fmc1_j1_400", f->findBoardComponent("fmc1_j1")->getPinByIndex(400)->getName());
    // "som240" is a SOM connector elsewhere, but gets a single net here.
    f->createConnection("som1", "som1_j1");
    ASSERT_EQ(2u, f->getBuses().size());
    EXPECT_EQ(1u, f->getBuses()[1]->getBoardBusNets().size());
    f->createConnection("fmc1", "nowhere");
    EXPECT_EQ(2u, f->getBuses().size());
    HBOBoardComponent* c = addComponent(*f, "c", "chip");
    addPin(c, "keep", 1);
    EXPECT_FALSE(f->createPinsForComponent("missing", 0, 2));
    EXPECT_FALSE(f->createPinsForComponent("c", 3, 2));
    EXPECT_TRUE(f->createPinsForComponent("c", 0, 2));
    EXPECT_EQ((Names{"c_0", "keep"}), (Names{c->getPinByIndex(0)->getName(), c->getPinByIndex(1)->getName()}));
    EXPECT_EQ(c, c->getPinByIndex(2)->getOwner());
    EXPECT_EQ(3u, c->getPins().size());
}

TEST(BoardIntegration, AppendBoardRenamesUnderTheGivenName) {
    FixtureBoard host = makeEmptyBoard("Acme", "Host", "2.0");
    FixtureBoard card = makeCardBoard();
    card->addJtagChain("chain1");
    host->appendBoard(card.get(), "Cb");
    const HBOBoardComponent* j1 = host->findBoardComponent("cb_j1");
    ASSERT_NE(nullptr, j1);
    EXPECT_EQ("acme:host:cb_j1:2.0", j1->getName());
    ASSERT_NE(nullptr, j1->getBusIfByName("gpio"));  // still found under its old key
    EXPECT_EQ("Cb_gpio", j1->getBusIfByName("gpio")->getName());
    ASSERT_EQ(1u, host->getBuses().size());
    EXPECT_EQ("Cb_j1_led", host->getBuses()[0]->getName());
    EXPECT_EQ("Cb_j1", host->getBuses()[0]->getComp1());
    EXPECT_EQ(Names{"chain1"}, host->getJtagChains());
    EXPECT_EQ(Names{"jd"}, namesOf(host->getJumpers()));
    EXPECT_EQ(nullptr, host->getActivePart());
}
