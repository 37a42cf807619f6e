#include <gtest/gtest.h>

#include "HPAParamMgr.h"

namespace {

// Each case works on names of its own and removes them again.
class ParamStore : public ::testing::Test {
protected:
    void TearDown() override {
        for (const char* n : {"zrtest.flag", "zrtest.text", "zrtest.hidden"})
            mgr->removeParam(n);
    }
    HPAParamMgr* mgr = HPAParamMgr::getParamMgr();
};

}  // namespace

TEST_F(ParamStore, RegisteringTwiceKeepsTheFirst) {
    EXPECT_TRUE(mgr->registerBoolParam("zrtest.flag", "first", true));
    EXPECT_FALSE(mgr->registerBoolParam("zrtest.flag", "second", false));
    EXPECT_FALSE(mgr->registerStringParam("zrtest.flag", "third", "x"));
    HPAParam* p = mgr->findParam("zrtest.flag");
    ASSERT_NE(p, nullptr);
    EXPECT_EQ(p->getDescription(), "first");
    EXPECT_EQ(p->getKind(), HPAParam::BOOL);
    EXPECT_TRUE(mgr->getValueAsBool("zrtest.flag"));
    EXPECT_EQ(mgr->getValueAsString("zrtest.flag"), "true");

    std::size_t count = 0;
    for (const HPAParam* q : mgr->getParams())
        count += q->getName() == "zrtest.flag";
    EXPECT_EQ(count, 1u);
}

TEST_F(ParamStore, HiddenRemovedAndMissing) {
    EXPECT_TRUE(mgr->registerStringParam("zrtest.hidden", "h", ""));
    EXPECT_FALSE(mgr->findParam("zrtest.hidden")->isHidden());
    EXPECT_TRUE(mgr->setHidden("zrtest.hidden", true));
    EXPECT_TRUE(mgr->findParam("zrtest.hidden")->isHidden());
    EXPECT_FALSE(mgr->setHidden("zrtest.nosuch", true));

    EXPECT_TRUE(mgr->removeParam("zrtest.hidden"));
    EXPECT_FALSE(mgr->paramExists("zrtest.hidden"));
    EXPECT_EQ(mgr->findParam("zrtest.hidden"), nullptr);
    EXPECT_FALSE(mgr->removeParam("zrtest.hidden"));
    EXPECT_FALSE(mgr->getValueAsBool("zrtest.hidden"));
    EXPECT_EQ(mgr->getValueAsString("zrtest.hidden"), "");
    EXPECT_FALSE(mgr->setValue("zrtest.hidden", "x"));
    EXPECT_FALSE(mgr->resetValue("zrtest.hidden"));

    // A name freed by removal can be registered anew.
    EXPECT_TRUE(mgr->registerBoolParam("zrtest.hidden", "again", false));
    EXPECT_FALSE(mgr->findParam("zrtest.hidden")->isHidden());
}

TEST_F(ParamStore, BooleanWordsAndReset) {
    ASSERT_TRUE(mgr->registerBoolParam("zrtest.flag", "f", false));
    struct Word {
        const char* text;
        bool value;
    };
    for (Word w : {Word{"TRUE", true}, Word{"0", false}, Word{"yes", true}, Word{"Off", false}, Word{" on ", true},
                   Word{"1", true}, Word{"No", false}}) {
        SCOPED_TRACE(w.text);
        EXPECT_TRUE(mgr->setValue("zrtest.flag", w.text));
        EXPECT_EQ(mgr->getValueAsBool("zrtest.flag"), w.value);
        EXPECT_EQ(mgr->findParam("zrtest.flag")->getValueAsBool(), w.value);
        EXPECT_EQ(mgr->getValueAsString("zrtest.flag"), w.value ? "true" : "false");
    }
    // A text that is no boolean word leaves the value alone.
    ASSERT_TRUE(mgr->setValue("zrtest.flag", "true"));
    EXPECT_FALSE(mgr->setValue("zrtest.flag", "maybe"));
    EXPECT_FALSE(mgr->setValue("zrtest.flag", ""));
    EXPECT_TRUE(mgr->getValueAsBool("zrtest.flag"));

    EXPECT_TRUE(mgr->resetValue("zrtest.flag"));
    EXPECT_FALSE(mgr->getValueAsBool("zrtest.flag"));
    EXPECT_EQ(mgr->findParam("zrtest.flag")->getDefaultAsString(), "false");
}

TEST_F(ParamStore, TextParametersTakeAnyText) {
    ASSERT_TRUE(mgr->registerStringParam("zrtest.text", "t", "/a/b"));
    EXPECT_EQ(mgr->getValueAsString("zrtest.text"), "/a/b");
    EXPECT_TRUE(mgr->setValue("zrtest.text", " {/x y} /z "));
    EXPECT_EQ(mgr->getValueAsString("zrtest.text"), " {/x y} /z ");
    EXPECT_FALSE(mgr->getValueAsBool("zrtest.text"));
    EXPECT_TRUE(mgr->setValue("zrtest.text", ""));
    EXPECT_EQ(mgr->getValueAsString("zrtest.text"), "");
    mgr->resetValue("zrtest.text");
    EXPECT_EQ(mgr->getValueAsString("zrtest.text"), "/a/b");
}
