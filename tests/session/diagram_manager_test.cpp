// Which boards have a diagram open, and the current one.
#include <gtest/gtest.h>

#include "HBOBoard.h"
#include "HBOBoardDiagramMgr.h"

namespace {

// Each test gets the singleton to itself and gives its reference back.
struct Diagrams {
    HBOBoardDiagramMgr* mgr = HBOBoardDiagramMgr::getGlobal();
    HBOBoard a, b, sameAsA;
    Diagrams() {
        a.setName("acme", "alpha", "1.0");
        b.setName("acme", "beta", "1.0");
        sameAsA.setName("acme", "alpha", "1.0");
    }
    ~Diagrams() { HBOBoardDiagramMgr::release(); }
};

std::vector<HBOBoard*> opened(const HBOBoardDiagramMgr& mgr) {
    std::vector<HBOBoard*> out;
    mgr.getOpenedBoardDiagrams(out);
    return out;
}

}  // namespace

TEST(DiagramManager, OpenBoardsAreKeptByNameAndTheFirstOfANameStays) {
    Diagrams d;
    d.mgr->addToOpenedBoardDiagrams(&d.b);
    d.mgr->addToOpenedBoardDiagrams(&d.a);
    d.mgr->addToOpenedBoardDiagrams(&d.sameAsA);
    d.mgr->addToOpenedBoardDiagrams(nullptr);
    EXPECT_EQ((std::vector<HBOBoard*>{&d.a, &d.b}), opened(*d.mgr));
    d.mgr->removeFromOpenedBoardDiagrams("acme:none:1.0");
    d.mgr->removeFromOpenedBoardDiagrams("acme:beta:1.0");
    EXPECT_EQ(std::vector<HBOBoard*>{&d.a}, opened(*d.mgr));
}

TEST(DiagramManager, CurrentBoardByNameByPointerAndOnRemoval) {
    Diagrams d;
    EXPECT_EQ(nullptr, d.mgr->getCurrentBoardDiagram());
    d.mgr->addToOpenedBoardDiagrams(&d.a);
    EXPECT_EQ(&d.a, d.mgr->setCurrentBoardDiagram(std::string("acme:alpha:1.0")));
    // A name that is not open changes nothing.
    EXPECT_EQ(nullptr, d.mgr->setCurrentBoardDiagram(std::string("acme:beta:1.0")));
    EXPECT_EQ(&d.a, d.mgr->getCurrentBoardDiagram());
    // By pointer it need not be open, and removing a name not open leaves it.
    d.mgr->setCurrentBoardDiagram(&d.b);
    d.mgr->setCurrentBoardDiagram(static_cast<HBOBoard*>(nullptr));
    EXPECT_EQ(&d.b, d.mgr->getCurrentBoardDiagram());
    d.mgr->removeFromOpenedBoardDiagrams("acme:beta:1.0");
    EXPECT_EQ(&d.b, d.mgr->getCurrentBoardDiagram());
    // Removing the current board's name, when it is open, clears it.
    d.mgr->addToOpenedBoardDiagrams(&d.b);
    d.mgr->removeFromOpenedBoardDiagrams("acme:beta:1.0");
    EXPECT_EQ(nullptr, d.mgr->getCurrentBoardDiagram());
}

TEST(DiagramManager, SingletonLivesWhileReferencedAndReleaseWithoutOneDoesNothing) {
    HBOBoardDiagramMgr* first = HBOBoardDiagramMgr::getGlobal();
    EXPECT_EQ(first, HBOBoardDiagramMgr::getGlobal());
    HBOBoardDiagramMgr::release();
    HBOBoard board;
    board.setName("acme", "kept", "1.0");
    first->addToOpenedBoardDiagrams(&board);
    HBOBoardDiagramMgr::release();
    HBOBoardDiagramMgr::release();  // none left: nothing happens
    // A new singleton starts empty.
    HBOBoardDiagramMgr* fresh = HBOBoardDiagramMgr::getGlobal();
    EXPECT_TRUE(opened(*fresh).empty());
    EXPECT_EQ(nullptr, fresh->getCurrentBoardDiagram());
    HBOBoardDiagramMgr::release();
}
