// The two version rules: the revision order (digit sums, two fields) and the
// schema test (field counts, atoi of two fields).
#include <gtest/gtest.h>

#include "HBOBoardUtils.h"

using HBOBoardUtils::isEqualOrGreater;
using HBOBoardUtils::version_compare;

TEST(VersionCompare, EmptyAndNonNumericStringsOrderBeforeNumericOnes) {
    EXPECT_EQ(version_compare("", ""), 0);
    EXPECT_EQ(version_compare("", "1.0"), -1);
    EXPECT_EQ(version_compare("", "A"), -1);
    EXPECT_EQ(version_compare("1.0", ""), 1);
    EXPECT_EQ(version_compare("A", ""), 1);
    EXPECT_EQ(version_compare("1.0", "A"), 1);
    EXPECT_EQ(version_compare("A", "1.0"), -1);
}

TEST(VersionCompare, NonNumericStringsCompareByteWise) {
    EXPECT_GT(version_compare("B", "A"), 0);
    EXPECT_LT(version_compare("A", "B"), 0);
    EXPECT_EQ(version_compare("rev_a", "rev_a"), 0);
    // Byte order, not case-insensitive order: 'a' (0x61) is after 'B' (0x42).
    EXPECT_GT(version_compare("a", "B"), 0);
    // The shorter string of a shared prefix is the smaller.
    EXPECT_LT(version_compare("A", "AB"), 0);
    EXPECT_GT(version_compare("AB", "A"), 0);
    // Bytes compare unsigned: a high byte is after 'z'.
    EXPECT_GT(version_compare("\xe9", "z"), 0);
}

TEST(VersionCompare, NumericFieldsWeighByTheirDigitSum) {
    // A numeric reading would order these the other way round.
    EXPECT_EQ(version_compare("1.2", "1.10"), 1);
    EXPECT_EQ(version_compare("1.10", "1.2"), -1);
    EXPECT_EQ(version_compare("10.0", "9.0"), -8);
    EXPECT_EQ(version_compare("1.19", "1.91"), 0);
    EXPECT_EQ(version_compare("2.0", "1.9"), 1);
}

TEST(VersionCompare, ResultIsTheRawDifferenceNotClamped) {
    EXPECT_EQ(version_compare("3.0", "1.0"), 2);
    EXPECT_EQ(version_compare("1.0", "3.0"), -2);
    EXPECT_EQ(version_compare("1.7", "1.2"), 5);
    // Majors differ: the minor fields are not looked at.
    EXPECT_EQ(version_compare("2.0", "1.99"), 1);
}

TEST(VersionCompare, OnlyTheFirstTwoFieldsAndTheirDigitRunsCount) {
    EXPECT_EQ(version_compare("1.0.1", "1.0.2"), 0);
    EXPECT_EQ(version_compare("1.0.9", "1.1.0"), -1);
    EXPECT_EQ(version_compare("1a.2", "1.2"), 0);
    EXPECT_EQ(version_compare("1.2rc", "1.2"), 0);
    // A missing field weighs 0.
    EXPECT_EQ(version_compare("2", "2.0"), 0);
    EXPECT_EQ(version_compare("2", "2.1"), -1);
    EXPECT_EQ(version_compare("1.x", "1.0"), 0);
}

TEST(IsEqualOrGreater, OrdersTwoFieldVersions) {
    EXPECT_TRUE(isEqualOrGreater("2.0", "2.0"));
    EXPECT_TRUE(isEqualOrGreater("2.1", "2.0"));
    EXPECT_TRUE(isEqualOrGreater("3.0", "2.9"));
    EXPECT_FALSE(isEqualOrGreater("1.9", "2.0"));
    EXPECT_FALSE(isEqualOrGreater("2.0", "2.1"));
    // Fields are numbers here, unlike the revision order.
    EXPECT_TRUE(isEqualOrGreater("2.10", "2.9"));
    EXPECT_FALSE(isEqualOrGreater("2.9", "2.10"));
}

TEST(IsEqualOrGreater, DifferentFieldCountsAreNeverGreater) {
    EXPECT_FALSE(isEqualOrGreater("2.0.1", "2.0"));
    EXPECT_FALSE(isEqualOrGreater("2", "2.0"));
    EXPECT_FALSE(isEqualOrGreater("3", "2.0"));
    EXPECT_FALSE(isEqualOrGreater("2.0", "1"));
    EXPECT_FALSE(isEqualOrGreater("", "2.0"));
}

TEST(IsEqualOrGreater, SameValueInOtherSpellingIsNotEqual) {
    EXPECT_FALSE(isEqualOrGreater("2.00", "2.0"));
    EXPECT_FALSE(isEqualOrGreater("2.1.7", "2.1.0"));
    EXPECT_TRUE(isEqualOrGreater("2.1.7", "2.1.7"));
    // The third field is never read.
    EXPECT_TRUE(isEqualOrGreater("2.1.0", "2.0.9"));
    EXPECT_FALSE(isEqualOrGreater("2.0.9", "2.1.0"));
    // Identity is tested without regard to case.
    EXPECT_TRUE(isEqualOrGreater("ab", "AB"));
    EXPECT_TRUE(isEqualOrGreater("2.0a", "2.0A"));
}

TEST(IsEqualOrGreater, SingleFieldsAndNonNumbersUseAtoi) {
    EXPECT_TRUE(isEqualOrGreater("3", "2"));
    EXPECT_FALSE(isEqualOrGreater("2", "3"));
    EXPECT_TRUE(isEqualOrGreater("02", "2"));
    // Text that is no number reads as 0 without complaint.
    EXPECT_TRUE(isEqualOrGreater("a", "b"));
    EXPECT_FALSE(isEqualOrGreater("x", "1"));
    EXPECT_TRUE(isEqualOrGreater("x.1", "0.0"));
    // Empty fields are kept and read as 0.
    EXPECT_FALSE(isEqualOrGreater("2.", "2.0"));
    EXPECT_TRUE(isEqualOrGreater("3.", "2.0"));
}
