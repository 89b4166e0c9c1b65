// Row ranges are searched, not walked: the search must answer as a walk over every range
// written would, whatever their order, overlaps or reversed bounds.
#include "taskdef/RangePairs.h"

#include <gtest/gtest.h>
#include <random>
#include <string>

namespace {

bool walkContains(const morlevant::RangePairs& ranges, double row) {
    for (const morlevant::RangePair& pair : ranges.pairs())
        if (pair.low <= row && row <= pair.high)
            return true;
    return false;
}

bool walkIsPoint(const morlevant::RangePairs& ranges, double row) {
    for (const morlevant::RangePair& pair : ranges.pairs())
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
        const auto ranges = morlevant::RangePairs::parse(text, "row ranges");
        for (double row = -1; row <= 60; row += 0.5) {
            EXPECT_EQ(ranges.contains(row), walkContains(ranges, row)) << text << " row " << row;
            EXPECT_EQ(ranges.isPoint(row), walkIsPoint(ranges, row)) << text << " row " << row;
        }
    }
}

} // namespace
