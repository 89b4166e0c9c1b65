#include "engine/ranges/TakeRangesOut.h"
#include "engine/text/LineColumns.h"
#include "engine/text/Utf8.h"
#include "taskdef/RangePairs.h"

#include <gtest/gtest.h>
#include <vector>

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
                      TakeCase{"4-20", "abcd\xc3\xa9\xe2\x82\xacxyz", "d\xc3\xa9\xe2\x82\xacxyz"}));

// Positions beyond the ASCII start, asked for in any order, back and forth across the offsets
// kept, give what a walk from the line's start gives; those past the end give its size.
TEST(LineColumns, FindsPositionsInAnyOrder) {
    std::string text = "ab";
    for (int n = 0; n < 200; ++n)
        text += n % 7 == 0 ? "x" : n % 3 != 0 ? "\xc3\xa9" : "\xe2\x82\xac\xff";
    std::vector<std::size_t> starts; // of each character, counted from 0
    for (std::size_t at = 0; at < text.size(); at += utf8CharLength(text, at))
        starts.push_back(at);
    LineColumns line;
    line.assign(text);
    std::vector<std::size_t> positions = {150, 3, 149, 70, 66, 67, 2, 900, 68, 131, 0};
    for (std::size_t position = starts.size() + 2; position > 0; --position)
        positions.push_back(position);
    for (const std::size_t position : positions)
        EXPECT_EQ(line.byteOffset(position), position == 0               ? 0
                                             : position <= starts.size() ? starts[position - 1]
                                                                         : text.size())
            << "position " << position;
    EXPECT_EQ(line.length(), starts.size());
}

} // namespace
