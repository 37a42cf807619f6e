// Names a board answers to, and the filters that keep the newest boards.
#include "HBOBoardComponent.h"
#include "catalog_fixture.h"

namespace {

BoardSpec named(const std::string& vendor, const std::string& name, const std::string& version,
                std::vector<std::string> revisions = {"Rev A"}) {
    BoardSpec s;
    s.vendor = vendor;
    s.name = name;
    s.version = version;
    s.display = vendor + " " + name + " " + version;
    s.revisions = std::move(revisions);
    s.extra = "<component name=\"led\" display_name=\"LED\" type=\"chip\" sub_type=\"led\"/>";
    return s;
}

}  // namespace

class CatalogNames : public CatalogFixture {
protected:
    void SetUp() override {
        CatalogFixture::SetUp();
        board("repo/b1", named("acme", "b1", "1.0"));
        // Boards whose catalogue names old project names reduce to.
        board("repo/marlun7", named("korvelhw", "marlun7", "1.0"));
        board("repo/halcyr7", named("korvelhw", "halcyr7", "a"));
        param("board.repoPaths", path("repo"));
    }

    std::string found(const std::string& name) {
        HBOBoard* b = catalogue()->getInfoForBoard(name);
        return b ? b->getName() : "null";
    }
};

TEST_F(CatalogNames, CatalogueAndBoardPartNamesInAnyCase) {
    EXPECT_EQ(found("acme:b1:1.0"), "acme:b1:1.0");
    EXPECT_EQ(found("ACME:B1:1.0"), "acme:b1:1.0");
    EXPECT_EQ(found("acme:b1:part0:1.0"), "acme:b1:1.0");
    EXPECT_EQ(found("Acme:B1:ANY_PART:1.0"), "acme:b1:1.0");
    EXPECT_EQ(found("acme:b1:1.1"), "null");
    EXPECT_EQ(found("acme:b1"), "null");
    EXPECT_EQ(found(""), "null");
    EXPECT_EQ(m_messages.messages().size(), 0u);
}

// A short name finds its board with a critical warning; a famous full name
// (it has a colon) is served silently.
TEST_F(CatalogNames, FamousNamesWarnOnlyWithoutColon) {
    EXPECT_EQ(found("BDD5"), "korvelhw:marlun7:1.0");
    ASSERT_EQ(count("49-35"), 1);
    Names args;
    for (const ComMsgMgrInstance& m : m_messages.messages())
        if (m.getId() == "49-35")
            args = m.getArgs();
    EXPECT_EQ(args, (Names{"korvelhw:marlun7:bdd5:1.0", "bdd5"}));

    EXPECT_EQ(found("korvel:halcyr7:bde7:a"), "korvelhw:halcyr7:a");
    EXPECT_EQ(found("bde7"), "korvelhw:halcyr7:a");
    EXPECT_EQ(count("49-35"), 2);
    // Short names of boards that are not installed: nothing, and no message.
    EXPECT_EQ(found("bdc1"), "null");
    EXPECT_EQ(found("bdb2"), "null");
    EXPECT_EQ(count("49-35"), 2);
}

TEST_F(CatalogNames, LegacyNamesAnswerInAnyCaseButNotTheirSuccessor) {
    EXPECT_EQ(catalogue()->getBoardPartNameForBoard("KORVELHW:ORDANA:BDB2:C"), "korvelhw:bdb2:part0:0.9");
    EXPECT_EQ(catalogue()->getBoardPartNameForBoard("korvelhw:marlun7:bdd5:1.1"), "korvelhw:bdd5:part0:1.0");
    EXPECT_EQ(catalogue()->getBoardPartNameForBoard("korvelhw:bdb2:part0:0.9"), "");
    EXPECT_EQ(catalogue()->getBoardPartNameForBoard(""), "");
    // An old name goes through the key rule: vendor, family and version.
    EXPECT_EQ(found("korvelhw:marlun7:bdd5:1.0"), "korvelhw:marlun7:1.0");
    EXPECT_EQ(found("korvelhw:ordana:bdb2:c"), "null");
}

// The latest map and the two filters over versions and revisions, ties included.
class CatalogFilters : public CatalogFixture {
protected:
    void SetUp() override {
        CatalogFixture::SetUp();
        board("repo/a10", named("acme", "a", "1.0", {"Rev A", "Rev C"}));
        board("repo/a11", named("acme", "a", "1.1", {"Rev C"}));
        board("repo/a09", named("acme", "a", "0.9", {"Rev B"}));
        board("repo/b10", named("acme", "b", "1.0"));
        param("board.repoPaths", path("repo"));
    }

    HBOBoardComponent* part(const std::string& name) {
        HBOBoard* b = catalogue()->getInfoForBoard(name);
        return b ? b->getActivePart() : nullptr;
    }

    // Components of a board other than its active part.
    HBOBoardComponent* otherComponent(const std::string& name) {
        HBOBoard* b = catalogue()->getInfoForBoard(name);
        std::vector<HBOBoardComponent*> all;
        b->getBoardComponentsVec(all);
        for (HBOBoardComponent* c : all)
            if (c != b->getActivePart())
                return c;
        return nullptr;
    }

    static Names boardsOf(const std::vector<HBOBoardComponent*>& parts) {
        Names names;
        for (const HBOBoardComponent* p : parts)
            names.push_back(p ? p->getBoard()->getName() + "/" + p->getComponentName() : "null");
        return names;
    }
};

TEST_F(CatalogFilters, LatestMapKeepsTheHighestVersion) {
    std::vector<HBOBoard*> latest;
    catalogue()->getAllLatestBoards(latest);
    EXPECT_EQ(namesOf(latest), (Names{"acme:a:1.1=acme a 1.1", "acme:b:1.0=acme b 1.0"}));
}

TEST_F(CatalogFilters, VersionFilterKeepsOneActivePartPerBoard) {
    std::vector<HBOBoardComponent*> parts{otherComponent("acme:a:1.0"), nullptr, part("acme:a:1.1"),
                                          part("acme:b:1.0"), part("acme:a:0.9")};
    EXPECT_TRUE(catalogue()->filterLatestVersionBoardParts(parts));
    EXPECT_EQ(boardsOf(parts), (Names{"acme:a:1.1/part0", "acme:b:1.0/part0"}));

    std::vector<HBOBoardComponent*> oneBoard{otherComponent("acme:b:1.0"), part("acme:b:1.0")};
    catalogue()->filterLatestVersionBoardParts(oneBoard);
    EXPECT_EQ(boardsOf(oneBoard), (Names{"acme:b:1.0/part0"}));

    std::vector<HBOBoardComponent*> none;
    EXPECT_TRUE(catalogue()->filterLatestVersionBoardParts(none));
    EXPECT_TRUE(none.empty());
}

// 1.0 and 1.1 share the highest revision (Rev C) and both stay, in list order.
TEST_F(CatalogFilters, RevisionFilterKeepsTies) {
    std::vector<HBOBoardComponent*> parts{part("acme:a:0.9"), part("acme:a:1.1"), part("acme:b:1.0"),
                                          otherComponent("acme:a:1.0")};
    EXPECT_TRUE(catalogue()->filterLatestRevisionBoardParts(parts));
    EXPECT_EQ(boardsOf(parts), (Names{"acme:a:1.1/part0", "acme:a:1.0/part0", "acme:b:1.0/part0"}));
}
