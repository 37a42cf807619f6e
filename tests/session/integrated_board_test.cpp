// Integrated boards composed through a project session.
#include <gtest/gtest.h>

#include <memory>

#include "../utils/MessageRecorder.h"
#include "HBOBoard.h"
#include "HBOBoardBus.h"
#include "HBOBoardCDataManager.h"
#include "HBOBoardComponent.h"
#include "HBOBusIf.h"
#include "session_support.h"

using namespace session_test;

namespace {

typedef std::vector<HBOBoardCDataManager::ConnectionPair> Pairs;
typedef std::vector<HBOBoardCDataManager::ConnectionTuple> Tuples;

const char* const kBase = "korvelhw:tarnwick:1.2";
const HBOBoardCDataManager::ConnectionPair kFennockAtFmc{"fmc_lpc", "korvelhw:fennock:fmc_conn:1.0"};

const HBOBoardBus* busNamed(const HBOBoard& board, const std::string& name) {
    for (const HBOBoardBus* bus : board.getBuses())
        if (bus && bus->getName() == name)
            return bus;
    return nullptr;
}

// A project whose repository holds an integrated base and an integrated daughter.
struct Project {
    TempDir repo;
    HBOBoardCDataManager session;
    Project() {
        copyIntegratedBoards(repo.path());
        bool changed = false;
        session.setBoardPartRepoPaths(HSTVector<std::string>{repo.str()}, changed);
    }
    const HBOBoard* board(const std::string& name) {
        bool viaLegacy = false;
        return session.getBoard(name, viaLegacy, false);
    }
};

}  // namespace

TEST(IntegratedBoard, PairFormJoinsTheDaughterAndCopiesItsInterfacesOntoTheFpga) {
    HBOBoardCDataManager session;
    std::unique_ptr<HBOBoard> b(session.createIntegratdBoard(kBase, Pairs{kFennockAtFmc}, "tf"));
    ASSERT_NE(nullptr, b);
    EXPECT_TRUE(b->isIntegratedBoard());
    EXPECT_EQ("korvelhw:tf:1.2", b->getName());
    EXPECT_NE(nullptr, b->findBoardComponent("fmc_lpc_fmc_conn"));
    const HBOBoardBus* wire = busNamed(*b, "fmc_lpc_fmc_lpc_fmc_conn");
    ASSERT_NE(nullptr, wire);
    EXPECT_EQ(401u, wire->getBoardBusNets().size());
    // The card's interfaces now hang on the FPGA under the prefix.
    HBOBoardComponent* fpga = b->getActivePart();
    ASSERT_NE(nullptr, fpga);
    std::vector<HBOBusIf*> interfaces;
    fpga->getBusIfSeq(interfaces, false);
    int fromCard = 0;
    for (const HBOBusIf* i : interfaces)
        fromCard += i->getName().compare(0, 8, "fmc_lpc_") == 0;
    EXPECT_GT(fromCard, 0);
    EXPECT_EQ("{fmc_lpc} korvelhw:fennock:fmc_conn:1.0", b->getIntegratedBoardConnectionsAsString());
}

TEST(IntegratedBoard, NewestDaughterAndEveryOtherFormBuildTheSameBoard) {
    TempDir repo;
    copyFennock(repo.path() / "newer", "1.5");
    HBOBoardCDataManager session;
    bool changed = false;
    session.setBoardPartRepoPaths(HSTVector<std::string>{repo.str()}, changed);
    std::unique_ptr<HBOBoard> newest(
        session.createIntegratdBoard(kBase, Pairs{{"fmc_lpc", "korvelhw:fennock:fmc_conn:*"}}, "n"));
    ASSERT_EQ(1u, newest->getIntegratedBoardConnections().size());
    EXPECT_EQ("korvelhw:fennock:1.5", newest->getIntegratedBoardConnections()[0].get<1>()->getName());

    bool viaLegacy = false;
    const HBOBoard* base = session.getBoard(kBase, viaLegacy, false);
    const HBOBoard* card = session.getBoard("korvelhw:fennock:1.0", viaLegacy, false);
    const Tuples tuples{HBOBoardCDataManager::ConnectionTuple("fmc_lpc", card, "fmc_conn")};
    std::unique_ptr<HBOBoard> byName(session.createIntegratdBoard(kBase, tuples, "a"));
    std::unique_ptr<HBOBoard> byPointer(session.createIntegratdBoard(base, tuples, "b"));
    std::unique_ptr<HBOBoard> byPairs(session.createIntegratdBoard(base, Pairs{kFennockAtFmc}, "c"));
    for (const HBOBoard* b : {byName.get(), byPointer.get(), byPairs.get()}) {
        EXPECT_EQ(byName->getBoardComponents().size(), b->getBoardComponents().size());
        EXPECT_EQ(byName->getBuses().size(), b->getBuses().size());
        EXPECT_EQ(byName->getIntegratedBoardConnectionsAsString(), b->getIntegratedBoardConnectionsAsString());
    }
}

TEST(IntegratedBoard, EveryFormRefusesWithItsOwnMessageBeforeBuilding) {
    Project p;
    HBOBoardCDataManager& s = p.session;
    const HBOBoard* integratedBase = p.board("korvelhw:joinedbase:1.2");
    ASSERT_NE(nullptr, integratedBase);
    ASSERT_TRUE(integratedBase->isIntegratedBoard());
    const HBOBoard* nullBase = nullptr;

    EXPECT_EQ(Names{"49-86"}, thrownBy([&] { s.createIntegratdBoard(nullBase, Pairs{}, "x"); }));
    EXPECT_EQ((Names{"49-78", "korvelhw:joinedbase:1.2"}),
              thrownBy([&] { s.createIntegratdBoard(integratedBase, Pairs{kFennockAtFmc}, "x"); }));
    EXPECT_EQ((Names{"49-82", "acme:none:1.0"}), thrownBy([&] { s.createIntegratdBoard("acme:none:1.0", Pairs{}, "x"); }));
    EXPECT_EQ((Names{"49-80", "acme:none:1.0", "x"}),
              thrownBy([&] { s.createIntegratdBoard("acme:none:1.0", Tuples{}, "x"); }));
    EXPECT_EQ((Names{"49-81", "korvelhw:nocard:1.0", "x"}),
              thrownBy([&] { s.createIntegratdBoard(kBase, Pairs{{"fmc_lpc", "korvelhw:nocard:fmc_conn:1.0"}}, "x"); }));
    EXPECT_EQ((Names{"49-79", "korvelhw:joinedcard:1.0"}),
              thrownBy([&] {
                  s.createIntegratdBoard(kBase, Pairs{kFennockAtFmc, {"pmod_ja", "korvelhw:joinedcard:fmc_conn:1.0"}},
                                         "x");
              }));
    // Connectors are the board's to refuse, also through the session.
    EXPECT_EQ((Names{"49-126", kBase, "fmc_hpc"}),
              thrownBy([&] { s.createIntegratdBoard(kBase, Pairs{{"fmc_hpc", kFennockAtFmc.second}}, "x"); }));
    EXPECT_EQ((Names{"49-127", "led_8bits", kBase}),
              thrownBy([&] { s.createIntegratdBoard(kBase, Pairs{{"led_8bits", kFennockAtFmc.second}}, "x"); }));
    // The tuple forms go straight to the board: an integrated base is its 49-84.
    EXPECT_EQ((Names{"49-84", "korvelhw:joinedbase:1.2"}),
              thrownBy([&] { s.createIntegratdBoard(integratedBase, Tuples{}, "x"); }));
}

TEST(IntegratedBoard, CreationIsTracedOnItsDebugChannel) {
    HBOBoardCDataManager session;
    MessageRecorder recorder;
    ComMsgMgr::enableScope("board.BoardCreation", true);
    std::unique_ptr<HBOBoard> b(session.createIntegratdBoard(kBase, Pairs{kFennockAtFmc}, "traced"));
    ComMsgMgr::enableScope("board.BoardCreation", false);
    Names lines;
    for (const ComMsgMgrInstance& m : recorder.messages())
        if (m.getChannel() == "board.BoardCreation")
            lines.push_back(m.getText() + (m.getFormat().back() == '\n' ? "\n" : ""));
    EXPECT_EQ((Names{"Creating Integrated Board traced : Base Board=korvelhw:tarnwick:1.2, Connections Size=1\n",
                     "  Connection(0): Base Board Connector=fmc_lpc, Daughter Board "
                     "Connector=korvelhw:fennock:fmc_conn:1.0\n",
                     "Creating Integrated Board traced : Base Board=korvelhw:tarnwick:1.2, Connections Size=1\n",
                     "  Connection(0): Base Board Connector=fmc_lpc, Daughter Board=korvelhw:fennock:1.0 Daughter "
                     "Board Connector=fmc_conn\n"}),
              lines);
}

TEST(IntegratedBoard, UniqueNameJoinsBaseConnectorsDaughtersAndTheirConnectors) {
    HBOBoardCDataManager session;
    EXPECT_EQ("tarnwick", session.createUniqBoardNameForIntegratedBoard("tarnwick", Pairs{}));
    EXPECT_EQ("tarnwick_fmc_lpc_fennock_fmc_conn_pmod_ja_pcard_ja",
              session.createUniqBoardNameForIntegratedBoard(
                  "tarnwick", Pairs{kFennockAtFmc, {"pmod_ja", "acme:pcard:ja:2.0"}}));
}
