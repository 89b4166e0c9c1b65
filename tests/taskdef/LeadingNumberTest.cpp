#include "taskdef/LeadingNumber.h"

#include <cmath>
#include <gtest/gtest.h>

using morlevant::LeadingNumber;

TEST(LeadingNumber, ReadsAsFarAsANumberGoes) {
    const struct {
        const char* text;
        double value;
    } cases[] = {
        {"10", 10},  {"10abc", 10}, {"  -2.5e1x", -25}, {"+7", 7},  {".5", 0.5}, {"5.", 5},
        {"1e", 1},   {"1e+", 1},    {"abc", 0},         {"", 0},    {"-", 0},    {".", 0},
        {"12a", 12}, {"3-4", 3},    {"1E+20", 1e20},    {"\t4", 4},
    };
    for (const auto& c : cases)
        EXPECT_DOUBLE_EQ(LeadingNumber(c.text), c.value) << c.text;
    EXPECT_TRUE(std::isinf(LeadingNumber("1e999")));
    EXPECT_EQ(LeadingNumber("1e-999"), 0.0);
}
