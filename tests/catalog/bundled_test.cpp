// The installation that ships with the library: what its catalogue holds,
// which daughter boards fit the reference board, and that the preferences
// file covers every interface kind the bundled boards use.
#include <set>

#include "HBOBoardComponent.h"
#include "HBOBusIf.h"
#include "HBOBusIfPreference.h"
#include "catalog_fixture.h"

namespace {

Names componentNames(const std::vector<HBOBoardComponent*>& list) {
    std::set<std::string> sorted;
    for (const HBOBoardComponent* c : list)
        sorted.insert(c->getName());
    return Names(sorted.begin(), sorted.end());
}

}  // namespace

class BundledCatalog : public CatalogFixture {
protected:
    void SetUp() override {
        CatalogFixture::SetUp();
        m_dataDirs.reset();
        m_dataDirs.reset(new EnvVar("ZR_DATA_DIRS", ZR_TEST_DATA_DIR));
    }
};

TEST_F(BundledCatalog, ReferenceBoardConnectorsAndTheirDaughterBoards) {
    catalogue()->rebuildConnectorsCompatibilityCache();
    HBOBoard* tarnwick = catalogue()->getInfoForBoard("korvelhw:tarnwick:part0:1.2");
    ASSERT_NE(tarnwick, nullptr);
    HBOBoardComponent* fmc = tarnwick->findBoardComponent("fmc_lpc");
    HBOBoardComponent* pmod = tarnwick->findBoardComponent("pmod_ja");
    ASSERT_TRUE(fmc && pmod);

    std::vector<HBOBoardComponent*> list;
    tarnwick->getCompatibleConnectorsList(fmc, list);
    EXPECT_EQ(componentNames(list), (Names{"korvelhw:fennock:fmc_conn:1.0", "korvelhw:sorrel:fmc_conn:1.0",
                                           "korvelhw:wrenmoor:fmc_conn:1.0"}));
    HBOBoardComponent* sorrel = catalogue()->getInfoForBoard("korvelhw:sorrel:1.0")->findBoardComponent("fmc_conn");
    EXPECT_TRUE(tarnwick->isConnectorPartialCompatibleWithConnector(fmc, sorrel));
    EXPECT_FALSE(tarnwick->isConnectorFullCompatibleWithConnector(fmc, sorrel));

    list.clear();
    tarnwick->getCompatibleConnectorsList(pmod, list);
    EXPECT_EQ(componentNames(list), (Names{"korvelhw:quillon:pmod_conn:1.0", "korvelhw:quillon:pmod_conn:1.1"}));
    list.clear();
    tarnwick->getLatestCompatibleConnectorsList(pmod, list);
    EXPECT_EQ(componentNames(list), (Names{"korvelhw:quillon:pmod_conn:1.1"}));

    std::vector<HBOBoard*> latest;
    catalogue()->getAllLatestBoards(latest);
    Names latestNames;
    for (HBOBoard* b : latest)
        latestNames.push_back(b->getName());
    EXPECT_EQ(latestNames, (Names{"korvelhw:durnival:1.1", "korvelhw:fennock:1.0", "korvelhw:halvet:1.0",
                                  "korvelhw:quillon:1.1", "korvelhw:sorrel:1.0", "korvelhw:tamsel:1.0",
                                  "korvelhw:tarnwick:1.2", "korvelhw:wrenmoor:1.0"}));
}

TEST_F(BundledCatalog, PreferencesCoverEveryInterfaceKind) {
    std::vector<HBOBoard*> boards;
    catalogue()->getAllBoards(boards);
    ASSERT_GE(boards.size(), 10u);
    int interfaces = 0;
    for (HBOBoard* board : boards) {
        std::vector<HBOBoardComponent*> components;
        board->getBoardComponentsVec(components);
        for (HBOBoardComponent* component : components) {
            std::vector<HBOBusIf*> list;
            component->getBusIfSeq(list, true);
            for (HBOBusIf* busIf : list) {
                ++interfaces;
                // Interfaces with preferred IPs of their own take no preference from the file.
                if (!busIf->getPreferences().empty() || component != board->getActivePart())
                    continue;
                EXPECT_NE(busIf->getPreference(), nullptr)
                    << board->getName() << " " << busIf->getName() << " " << busIf->getAbstractTypeName();
            }
        }
    }
    EXPECT_GE(interfaces, 30);
}
