#include "taskdef/RangeText.h"

#include "taskdef/RangePairs.h"

#include <gtest/gtest.h>
#include <random>
#include <string>

using namespace morlevant;

namespace {

struct NormaliseCase {
    std::string typed, normalised;
};

class NormaliseTable : public ::testing::TestWithParam<NormaliseCase> {};

TEST_P(NormaliseTable, TidiesInAFixedOrder) {
    EXPECT_EQ(normaliseRangeText(GetParam().typed), GetParam().normalised) << GetParam().typed;
}

INSTANTIATE_TEST_SUITE_P(
    Steps, NormaliseTable,
    ::testing::Values(NormaliseCase{"", ""}, NormaliseCase{"1--5,,,7-,-9", "1-5,7,9"},
                      NormaliseCase{"0-5", "1-5"}, NormaliseCase{"05-9", "15-9"},
                      NormaliseCase{"1-0,0-5", "1-0,0-5"},

                      NormaliseCase{"0-5,0-3", "1-5,0-3"}, // only the text's first zero
                      NormaliseCase{"12a-b5", "12a-b5"},   // letters are not removed
                      // Line starts count for the anchors; control characters go last.
                      NormaliseCase{"1-2,\n,3-4\t", "1-23-4"},
                      NormaliseCase{"1-2\r\n0-4", "1-21-4"},
                      NormaliseCase{"1-2\xc3\x85", "1-2\xc3\x85"})); // not a vertical space

struct OrderCase {
    std::string text;
    RangeBox box;
    std::optional<std::string> error;
};

class OrderTable : public ::testing::TestWithParam<OrderCase> {};

TEST_P(OrderTable, ReportsTheFirstPairOutOfOrder) {
    EXPECT_EQ(rangeOrderError(GetParam().text, GetParam().box), GetParam().error)
        << GetParam().text;
}

INSTANTIATE_TEST_SUITE_P(
    Pairs, OrderTable,
    ::testing::Values(
        OrderCase{"5", RangeBox::Row, std::nullopt},
        OrderCase{"5-4", RangeBox::Row, std::nullopt}, // one below its start is tolerated
        OrderCase{"5-3", RangeBox::Row, "row range error:5 was bigger than 3"},
        OrderCase{"1-10,10-20", RangeBox::Row, std::nullopt},
        OrderCase{"1-10,5-20", RangeBox::Row, "row range error:10 was bigger than 5"},
        OrderCase{"1-3,2", RangeBox::Row, "row range error:3 was bigger than 2"},
        // A start is checked against every later item before the end of its range is.
        OrderCase{"9-20,30-40,8-50", RangeBox::Row, "row range error:9 was bigger than 8"},
        OrderCase{"12a-5", RangeBox::Column, "column range error:12a was bigger than 5"},
        OrderCase{"1-3,04-5", RangeBox::Row, std::nullopt}));

TEST(RangeText, CheckReportsOnTheNormalisedText) {
    const RangeCheck check = checkRangeText("5--3,,", RangeBox::Row);
    EXPECT_EQ(check.text, "5-3");
    EXPECT_EQ(check.error, "row range error:5 was bigger than 3");
}

// Row ranges are searched, not walked: the search must answer as a walk over every range
// written would, whatever their order, overlaps or reversed bounds.
bool walkContains(const RangePairs& ranges, double row) {
    for (const RangePair& pair : ranges.pairs())
        if (pair.low <= row && row <= pair.high)
            return true;
    return false;
}

bool walkIsPoint(const RangePairs& ranges, double row) {
    for (const RangePair& pair : ranges.pairs())
        if (pair.low == row && pair.high == row)
            return true;
    return false;
}

TEST(RangePairs, SearchAnswersAsAWalkOverEveryRange) {
    std::mt19937 random(20);
    for (int round = 0; round < 500; ++round) {
        std::string text;
        const int pairs = static_cast<int>(random() % 8);
        for (int i = 0; i < pairs; ++i) {
            const unsigned low = random() % 40;
            // Mostly ordinary ranges, some points, some reversed.
            const unsigned high = random() % 4 == 0   ? low
                                  : random() % 3 == 0 ? low - 1
                                                      : low + random() % 10;
            text += (i ? "," : "") + std::to_string(low) + "-" + std::to_string(high);
        }
        const auto ranges = RangePairs::parse(text, "row ranges");
        for (double row = -1; row <= 60; row += 0.5) {
            EXPECT_EQ(ranges.contains(row), walkContains(ranges, row)) << text << " row " << row;
            EXPECT_EQ(ranges.isPoint(row), walkIsPoint(ranges, row)) << text << " row " << row;
        }
    }
}

} // namespace
