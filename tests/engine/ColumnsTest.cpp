#include "engine/LineColumns.h"
#include "engine/TakeRangesOut.h"
#include "engine/Utf8.h"
#include "taskdef/RangePairs.h"

#include <gtest/gtest.h>

using namespace morlevant;

namespace {

std::string takeOut(const std::string& ranges, const std::string& text) {
    LineColumns line;
    line.assign(text);
    std::string out;
    TakeRangesOut(RangePairs::parse(ranges, "column ranges"), line, out);
    return out;
}

struct TakeCase {
    std::string ranges, line, expected;
};

class TakeRangesOutTable : public ::testing::TestWithParam<TakeCase> {};

TEST_P(TakeRangesOutTable, CutsAndJoins) {
    EXPECT_EQ(takeOut(GetParam().ranges, GetParam().line), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Columns, TakeRangesOutTable,
    ::testing::Values(TakeCase{"2-3,6-7", "abcdefgh", "bcfg"},
                      TakeCase{"6-7,2-3", "abcdefgh", "fgbc"},   // written order, not sorted
                      TakeCase{"2-4,3-5", "abcdefgh", "bcdcde"}, // overlaps repeat
                      TakeCase{"5-100", "abcdefgh", "efgh"},     // runs past the end
                      TakeCase{"9-12", "abcdefgh", ""},          // starts past the end
                      TakeCase{"", "abcdefgh", "abcdefgh"},      // blank: the whole line
                      TakeCase{"2-3", "äöüß", "öü"},             // characters, not bytes
                      TakeCase{"2-2",
                               "a\xff"
                               "b",
                               "\xff"},                        // an invalid byte is one character
                      TakeCase{"1-2", "\xe2\x82", "\xe2\x82"}, // a cut-off sequence is two
                      TakeCase{"0-2", "abc", "ab"},            // a zero bound does not crash
                      TakeCase{"3-1", "abc", ""},
                      // An ASCII start, then characters decoded as far as the ranges reach.
                      TakeCase{"8-9,5-6,1-2", "abcd\xc3\xa9\xe2\x82\xacxyz",
                               "yz\xc3\xa9\xe2\x82\xac"
                               "ab"},
                      TakeCase{"3-4", "abcd\xc3\xa9", "cd"},
                      TakeCase{"4-20", "abcd\xc3\xa9\xe2\x82\xacxyz", "d\xc3\xa9\xe2\x82\xacxyz"}));

TEST(LineColumns, CountsTheRestAfterDecodingPartOfTheLine) {
    LineColumns line;
    line.assign("ab\xc3\xa9\xe2\x82\xac"
                "cd"); // a, b, e acute, euro sign, c, d
    EXPECT_EQ(line.slice(3, 3), "\xc3\xa9");
    EXPECT_FALSE(line.endsBefore(6));
    EXPECT_TRUE(line.endsBefore(7));
    EXPECT_EQ(line.length(), 6u);
    EXPECT_EQ(line.slice(4, 9), "\xe2\x82\xac"
                                "cd");
    line.assign("xyz"); // reused: nothing of the previous line stays
    EXPECT_EQ(line.length(), 3u);
    EXPECT_EQ(line.slice(2, 5), "yz");
}

TEST(Utf8, CountsSequencesAndInvalidBytes) {
    EXPECT_EQ(utf8CharCount("abc"), 3u);
    EXPECT_EQ(utf8CharCount("\xe2\x82\xac"), 1u);     // euro sign
    EXPECT_EQ(utf8CharCount("\xf0\x9f\x98\x80"), 1u); // emoji
    EXPECT_EQ(utf8CharCount("\xc0\xaf"), 2u);         // overlong form
    EXPECT_EQ(utf8CharCount("\xed\xa0\x80"), 3u);     // surrogate
    EXPECT_EQ(utf8CharCount("\xf4\x90\x80\x80"), 4u); // beyond U+10FFFF
}

TEST(RangePairs, RowTestsAreInclusiveAndPointsNeedEqualBounds) {
    const RangePairs rows = RangePairs::parse("3-5,7-7", "row ranges");
    EXPECT_FALSE(rows.contains(2));
    EXPECT_TRUE(rows.contains(3));
    EXPECT_TRUE(rows.contains(5));
    EXPECT_TRUE(rows.contains(7));
    EXPECT_FALSE(rows.isPoint(3));
    EXPECT_TRUE(rows.isPoint(7));
    EXPECT_TRUE(RangePairs::parse("  ", "row ranges").empty());
}

} // namespace
