// The minimal brace-list scanner and its writer.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "HBOBoardUtils.h"

using HBOBoardUtils::asTclSpaceSeparatedStr;
using HBOBoardUtils::parseTclList;
using Strings = std::vector<std::string>;

TEST(ParseTclList, SplitsAtWhiteSpaceAndGroupsBraces) {
    EXPECT_EQ(parseTclList("a {b c} d"), (Strings{"a", "b c", "d"}));
    EXPECT_EQ(parseTclList("  a\tb\n c  "), (Strings{"a", "b", "c"}));
    EXPECT_EQ(parseTclList("{a}{b}"), (Strings{"a", "b"}));
    // An opening brace ends a bare token.
    EXPECT_EQ(parseTclList("a{b c}"), (Strings{"a", "b c"}));
    // Blanks inside braces are kept as they stand.
    EXPECT_EQ(parseTclList("{ a }"), (Strings{" a "}));
}

TEST(ParseTclList, EmptyInputsGiveNoElements) {
    EXPECT_TRUE(parseTclList("").empty());
    EXPECT_TRUE(parseTclList("{}").empty());
    EXPECT_TRUE(parseTclList("   ").empty());
    EXPECT_EQ(parseTclList("a {} b"), (Strings{"a", "b"}));
}

TEST(ParseTclList, StrayClosingBracesCountAsBlanks) {
    EXPECT_EQ(parseTclList("}a"), (Strings{"a"}));
    EXPECT_EQ(parseTclList("a}b"), (Strings{"a", "b"}));
}

TEST(ParseTclList, NoNestingTheFirstClosingBraceEndsTheGroup) {
    // The nested "{" turns into a blank, its "}" closes the group, and the
    // rest is read outside braces.
    EXPECT_EQ(parseTclList("{a {b} c}"), (Strings{"a  b", "c"}));
    EXPECT_EQ(parseTclList("{{x}}"), (Strings{" x"}));
}

TEST(ParseTclList, UnterminatedGroupKeepsItsText) {
    EXPECT_EQ(parseTclList("{a b"), (Strings{"a b"}));
    EXPECT_EQ(parseTclList("x {a b"), (Strings{"x", "a b"}));
}

TEST(ParseTclList, BackslashesAndQuotesAreOrdinaryBytes) {
    EXPECT_EQ(parseTclList("a\\ b"), (Strings{"a\\", "b"}));
    EXPECT_EQ(parseTclList("\"a b\""), (Strings{"\"a", "b\""}));
}

TEST(AsTclSpaceSeparatedStr, BracesOnlyElementsWithWhiteSpace) {
    EXPECT_EQ(asTclSpaceSeparatedStr({"a", "b c"}), "a {b c}");
    EXPECT_EQ(asTclSpaceSeparatedStr({}), "");
    EXPECT_EQ(asTclSpaceSeparatedStr({"x"}), "x");
    EXPECT_EQ(asTclSpaceSeparatedStr({"tab\there", "nl\n"}), "{tab\there} {nl\n}");
    // An empty element is written bare: only its separators remain.
    EXPECT_EQ(asTclSpaceSeparatedStr({"a", "", "b"}), "a  b");
    // Braces inside an element are not escaped.
    EXPECT_EQ(asTclSpaceSeparatedStr({"x{y", "p }"}), "x{y {p }}");
}

TEST(AsTclSpaceSeparatedStr, RoundTripsThroughTheScanner) {
    const Strings elements{"/repo/one", "/path with blanks/two", "three"};
    EXPECT_EQ(parseTclList(asTclSpaceSeparatedStr(elements)), elements);
}
