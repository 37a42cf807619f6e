// Which daughter connectors fit which connectors of a reference board.

#include "board_fixture.h"

using namespace board_fixture;

namespace {

struct Catalogue {
    FixtureBoard carrier = makeCarrierBoard();
    FixtureBoard card = makeCardBoard();
    FixtureBoard pmodCard = makeEmptyBoard("Acme", "Pmod_Card", "1.0");
    Catalogue() {
        addComponent(*pmodCard, "p1", "connector", "pmod");
        carrier->rebuildConnectorsCompatibilityCache({carrier.get(), card.get(), pmodCard.get()});
    }
    HBOBoardComponent* own(const std::string& name) const { return carrier->findBoardComponent(name); }
    HBOBoardComponent* j1() const { return card->findBoardComponent("j1"); }
    HBOBoardComponent* p1() const { return pmodCard->findBoardComponent("p1"); }
};

Names compatible(const FixtureBoard& board, const std::string& connector, bool latest = false) {
    std::vector<HBOBoardComponent*> list;
    if (latest)
        board->getLatestCompatibleConnectorsList(board->findBoardComponent(connector), list);
    else
        board->getCompatibleConnectorsList(board->findBoardComponent(connector), list);
    return namesOf(list);
}

}  // namespace

TEST(BoardConnectors, FullWhenEveryInterfaceReachesTheFpgaPartialWhenSome) {
    Catalogue c;
    EXPECT_TRUE(c.carrier->isConnectorFullCompatibleWithConnector(c.own("fmc2"), c.j1()));
    EXPECT_FALSE(c.carrier->isConnectorPartialCompatibleWithConnector(c.own("fmc2"), c.j1()));
    EXPECT_TRUE(c.carrier->isConnectorCompatibleWithConnector(c.own("fmc2"), c.j1()));
    // The daughter connector asks the base connector's board.
    EXPECT_TRUE(c.j1()->isFullCompatibleWithConnector(c.own("fmc2")));

    // fmc1 has no pin of index 9, so aux cannot be served there.
    EXPECT_FALSE(c.carrier->isConnectorFullCompatibleWithConnector(c.own("fmc1"), c.j1()));
    EXPECT_TRUE(c.carrier->isConnectorPartialCompatibleWithConnector(c.own("fmc1"), c.j1()));
    EXPECT_TRUE(c.j1()->isPartialCompatibleWithConnector(c.own("fmc1")));
    EXPECT_TRUE(c.j1()->isCompatibleWithConnector(c.own("fmc1")));
}

TEST(BoardConnectors, CategoriesMustAgree) {
    Catalogue c;
    EXPECT_FALSE(c.carrier->isConnectorCompatibleWithConnector(c.own("pmod1"), c.j1()));
    EXPECT_FALSE(c.carrier->isConnectorCompatibleWithConnector(c.own("fmc1"), c.p1()));
    // No interfaces at all, and a fitting category: full.
    EXPECT_TRUE(c.carrier->isConnectorFullCompatibleWithConnector(c.own("pmod1"), c.p1()));
    EXPECT_FALSE(c.carrier->isConnectorCompatibleWithConnector(nullptr, c.p1()));
}

TEST(BoardConnectors, OnlyNonIntegratedBoardsWithoutFpgaAreDaughters) {
    FixtureBoard carrier = makeCarrierBoard();
    FixtureBoard card = makeCardBoard();
    card->setIntegratedBoard(true);
    FixtureBoard other = makeCarrierBoard();  // has an FPGA: not a daughter
    carrier->rebuildConnectorsCompatibilityCache({card.get(), other.get(), nullptr});
    EXPECT_TRUE(compatible(carrier, "fmc1").empty());
    EXPECT_TRUE(compatible(carrier, "fmc2").empty());
}

TEST(BoardConnectors, IntegratedOrFpgaLessBoardsKeepTheirCaches) {
    Catalogue c;
    c.carrier->setIntegratedBoard(true);
    c.carrier->rebuildConnectorsCompatibilityCache({});
    EXPECT_TRUE(c.carrier->isConnectorFullCompatibleWithConnector(c.own("fmc2"), c.j1()));
    FixtureBoard card = makeCardBoard();
    card->rebuildConnectorsCompatibilityCache({c.card.get()});
    EXPECT_TRUE(compatible(card, "j1").empty());
}

TEST(BoardConnectors, ListsAppendPartialThenFull) {
    FixtureBoard carrier = makeCarrierBoard();
    FixtureBoard card = makeCardBoard();
    FixtureBoard small = makeEmptyBoard("Acme", "Small", "1.0");
    addComponent(*small, "s1", "connector", "fmc_lpc");  // no interfaces: full
    carrier->rebuildConnectorsCompatibilityCache({small.get(), card.get()});
    std::vector<HBOBoardComponent*> list{nullptr};
    carrier->getCompatibleConnectorsList(carrier->findBoardComponent("fmc1"), list);
    ASSERT_EQ(3u, list.size());
    EXPECT_EQ(nullptr, list[0]);
    EXPECT_EQ("acme:card:j1:1.0", list[1]->getName());
    EXPECT_EQ("acme:small:s1:1.0", list[2]->getName());
}

TEST(BoardConnectors, LatestListKeepsTheHighestVersionAsANumber) {
    FixtureBoard carrier = makeCarrierBoard();
    FixtureBoard old = makeCardBoard("1.10");
    FixtureBoard newer = makeCardBoard("1.2");
    FixtureBoard odd = makeCardBoard("1.0");
    odd->findBoardComponent("j1")->setName("acme:card:j1");  // three parts: always kept
    FixtureBoard text = makeCardBoard("next");                 // no number: always kept
    carrier->rebuildConnectorsCompatibilityCache({old.get(), newer.get(), odd.get(), text.get()});
    EXPECT_EQ(4u, compatible(carrier, "fmc2").size());
    EXPECT_EQ((Names{"acme:card:j1:1.2", "acme:card:j1", "acme:card:j1:next"}), compatible(carrier, "fmc2", true));
    EXPECT_TRUE(compatible(carrier, "pmod1", true).empty());
}

TEST(BoardConnectors, ConnectorsOfTheBoardAndTheirWiring) {
    FixtureBoard carrier = makeCarrierBoard();
    std::vector<HBOBoardComponent*> list;
    carrier->getConnectorsList(list);
    EXPECT_EQ((Names{"acme:carrier:fmc1:1.0", "acme:carrier:fmc2:1.0", "acme:carrier:pmod1:1.0"}), namesOf(list));

    // fmc1 is wired to fpga1 and fmc2; only the connector counts.
    list.clear();
    EXPECT_TRUE(carrier->getConnectedConnectors(carrier->findBoardComponent("fmc1"), list));
    EXPECT_EQ(Names{"acme:carrier:fmc2:1.0"}, namesOf(list));
    list.clear();
    EXPECT_TRUE(carrier->getConnectedConnectors(carrier->findBoardComponent("fmc2"), list));
    EXPECT_EQ(Names{"acme:carrier:fmc1:1.0"}, namesOf(list));
    EXPECT_FALSE(carrier->getConnectedConnectors(nullptr, list));
}
