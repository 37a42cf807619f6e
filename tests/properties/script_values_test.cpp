// Script values and collections: shared bodies, bounds, and the text a script sees.
#include <gtest/gtest.h>

#include "HATAttr.h"
#include "HTCErrors.h"
#include "tcl_collection.h"

using namespace zrc::tcltasks;

namespace {

// Puts the display limit back after a case.
struct LimitGuard {
    bool check = collection_result_display_limit_check_enabled();
    int limit = get_collection_result_display_limit();
    ~LimitGuard() {
        set_collection_result_display_limit_check_enabled(check);
        set_collection_result_display_limit(limit);
    }
};

}  // namespace

TEST(ScriptValues, CollectionsShareTheirBodyAndCountReferences) {
    tcl_collection<HSTVector<std::string>> a;
    a.append("x");
    {
        tcl_collection<HSTVector<std::string>> b = a;
        EXPECT_EQ(a.wrapper()->ref_count(), 2);
        b.append("y");
    }
    EXPECT_EQ(a.wrapper()->ref_count(), 1);
    EXPECT_EQ(a.size(), 2u);
    EXPECT_EQ(a[1], "y");
    try {
        a.at(2);
        FAIL();
    } catch (const HTCErrors::index_out_of_range& e) {
        EXPECT_STREQ(e.what(), "index is out of range");
    }
}

TEST(ScriptValues, StringRepStopsAtTheDisplayLimitWithAMark) {
    LimitGuard guard;
    tcl_collection<HSTVector<tclany>> c;
    for (int i = 0; i < 5; ++i)
        c.append(tclany(i));
    set_collection_result_display_limit_check_enabled(true);
    set_collection_result_display_limit(3);
    EXPECT_EQ(c.get_string_rep(), "0 1 2 ...");
    set_collection_result_display_limit(5);
    EXPECT_EQ(c.get_string_rep(), "0 1 2 3 4");
    set_collection_result_display_limit_check_enabled(false);
    set_collection_result_display_limit(1);
    EXPECT_EQ(c.get_string_rep(), "0 1 2 3 4");
    c.context().set_string_rep("five numbers");
    EXPECT_EQ(c.get_string_rep(), "five numbers");
}

TEST(ScriptValues, AnyValueKeepsItsTypeAndText) {
    int n = 4;
    tclany empty, text(std::string("t")), flag(true), object(&n);
    EXPECT_TRUE(empty.empty());
    EXPECT_EQ(text.to_string(), "t");
    EXPECT_EQ(flag.to_string(), "1");
    EXPECT_EQ(object.get<int*>() ? *object.get<int*>() : nullptr, &n);
    EXPECT_EQ(object.get<long*>(), nullptr);
    tclany copy = object;
    EXPECT_EQ(copy.type(), typeid(int*));
    EXPECT_EQ(HATAttr(false).getCharStringVal(), "0");
    EXPECT_EQ(HATAttr(-12).getCharStringVal(), "-12");
}
