// Which daughter connectors fit which connectors of a reference board.
#include <gtest/gtest.h>

#include <string>
#include <vector>

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

std::vector<std::string> names(const std::vector<HBOBoardComponent*>& components) {
    std::vector<std::string> out;
    for (const HBOBoardComponent* c : components)
        out.push_back(c->getName());
    return out;
}

}  // namespace

TEST(BoardConnectors, FullWhenEveryInterfaceReachesTheFpga) {
    Catalogue c;
    EXPECT_TRUE(c.carrier->isConnectorFullCompatibleWithConnector(c.own("fmc2"), c.j1()));
    EXPECT_FALSE(c.carrier->isConnectorPartialCompatibleWithConnector(c.own("fmc2"), c.j1()));
    EXPECT_TRUE(c.carrier->isConnectorCompatibleWithConnector(c.own("fmc2"), c.j1()));
    // The daughter connector asks the base connector's board.
    EXPECT_TRUE(c.j1()->isFullCompatibleWithConnector(c.own("fmc2")));
}

TEST(BoardConnectors, PartialWhenSomeInterfaceDoesNot) {
    Catalogue c;
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
    std::vector<HBOBoardComponent*> list;
    carrier->getCompatibleConnectorsList(carrier->findBoardComponent("fmc1"), list);
    carrier->getCompatibleConnectorsList(carrier->findBoardComponent("fmc2"), list);
    EXPECT_TRUE(list.empty());
}

TEST(BoardConnectors, IntegratedOrFpgaLessBoardsKeepTheirCaches) {
    Catalogue c;
    c.carrier->setIntegratedBoard(true);
    c.carrier->rebuildConnectorsCompatibilityCache({});
    EXPECT_TRUE(c.carrier->isConnectorFullCompatibleWithConnector(c.own("fmc2"), c.j1()));

    FixtureBoard card = makeCardBoard();
    card->rebuildConnectorsCompatibilityCache({c.card.get()});
    std::vector<HBOBoardComponent*> list;
    card->getCompatibleConnectorsList(card->findBoardComponent("j1"), list);
    EXPECT_TRUE(list.empty());
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

    std::vector<HBOBoardComponent*> all;
    carrier->getCompatibleConnectorsList(carrier->findBoardComponent("fmc2"), all);
    EXPECT_EQ(4u, all.size());

    std::vector<HBOBoardComponent*> latest;
    carrier->getLatestCompatibleConnectorsList(carrier->findBoardComponent("fmc2"), latest);
    EXPECT_EQ((std::vector<std::string>{"acme:card:j1:1.2", "acme:card:j1", "acme:card:j1:next"}), names(latest));

    latest.clear();
    carrier->getLatestCompatibleConnectorsList(carrier->findBoardComponent("pmod1"), latest);
    EXPECT_TRUE(latest.empty());
}

TEST(BoardConnectors, ConnectorsOfTheBoardAndTheirWiring) {
    FixtureBoard carrier = makeCarrierBoard();
    std::vector<HBOBoardComponent*> list;
    carrier->getConnectorsList(list);
    EXPECT_EQ((std::vector<std::string>{"acme:carrier:fmc1:1.0", "acme:carrier:fmc2:1.0", "acme:carrier:pmod1:1.0"}),
              names(list));

    // fmc1 is wired to fpga1 and fmc2; only the connector counts.
    list.clear();
    EXPECT_TRUE(carrier->getConnectedConnectors(carrier->findBoardComponent("fmc1"), list));
    EXPECT_EQ(std::vector<std::string>{"acme:carrier:fmc2:1.0"}, names(list));
    list.clear();
    EXPECT_TRUE(carrier->getConnectedConnectors(carrier->findBoardComponent("fmc2"), list));
    EXPECT_EQ(std::vector<std::string>{"acme:carrier:fmc1:1.0"}, names(list));
    EXPECT_FALSE(carrier->getConnectedConnectors(nullptr, list));
}
