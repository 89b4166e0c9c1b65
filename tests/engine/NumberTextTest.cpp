#include "engine/text/NumberText.h"

#include "taskdef/LeadingNumber.h"

#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>
#include <random>
#include <vector>

using namespace morlevant;

namespace {

struct FixedCase {
    double value;
    int decimals;
    const char* text;
};

class FixedNumbers : public ::testing::TestWithParam<FixedCase> {};

TEST_P(FixedNumbers, RoundTheFifteenDigitTextHalfAwayFromZero) {
    std::string out = "x";
    appendFixedNumber(GetParam().value, GetParam().decimals, out);
    EXPECT_EQ(out, std::string("x") + GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    NumberText, FixedNumbers,
    ::testing::Values(FixedCase{2.675, 2, "2.68"}, FixedCase{-0.004, 2, "0.00"},
                      FixedCase{-0.005, 2, "-0.01"},
                      FixedCase{0.1 + 0.2, 20, "0.30000000000000000000"},
                      FixedCase{1e-7, 9, "0.000000100"}, FixedCase{9.995, 2, "10.00"},
                      FixedCase{123456789012345.67, 1, "123456789012346.0"},
                      FixedCase{12345678901234.5, 0, "12345678901235"},
                      // A half at the 16th digit: the 15 digits round to even, not up.
                      FixedCase{100000000000000.5, 1, "100000000000000.0"},
                      FixedCase{100000000000001.5, 0, "100000000000002"},
                      FixedCase{5e-324, 2, "0.00"}, FixedCase{1e20, 1, "100000000000000000000.0"}));

// The double that the value's 15 significant digits, correctly rounded, read back as.
double fifteenDigitValue(double value) {
    std::array<char, 40> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), value,
                                   std::chars_format::scientific, 14);
    double back = 0;
    std::from_chars(text.data(), end.ptr, back);
    return back;
}

TEST(NumberText, ShortestValueIsTheFifteenDigitValue) {
    // Results of the kind calculations give, any magnitude, and halves at the 16th digit.
    std::mt19937_64 random(13);
    std::uniform_real_distribution<double> unit(0, 1);
    std::vector<double> values = {100000000000000.5, 100000000000001.5, 0.1 + 0.2, 1e-7,
                                  999999999999999.9, 1e15 - 0.25};
    for (int i = 0; i < 100000; ++i) {
        const double hundredths = static_cast<double>(random() % 2000000) / 100.0 - 4000;
        values.push_back((hundredths + 5) * 2 / 3);
        values.push_back(std::pow(10.0, unit(random) * 40 - 20) * (unit(random) - 0.5));
        values.push_back(std::bit_cast<double>(random()));
    }
    for (const double value : values) {
        if (!std::isfinite(value))
            continue;
        ASSERT_EQ(shortestNumberValue(value), fifteenDigitValue(value)) << std::hexfloat << value;
    }
}

TEST(NumberText, LeadingNumberReadDirectlyOrNot) {
    for (const char* text : {" -12.50x", "+.5", "5.", "-0", "-.0", ".", "", "abc", "1.2.3", "\t7 8",
                             "+-5", "123456789012345", "1234567890123456", "0.1234567890123456789",
                             "1e3", "2.5E-2x", "7e", "0000000000000000012", "999999999999999.9"}) {
        const double expected = LeadingNumber(text);
        const double read = readLeadingNumber(text);
        EXPECT_EQ(std::bit_cast<std::uint64_t>(read), std::bit_cast<std::uint64_t>(expected))
            << '"' << text << '"';
    }
}

} // namespace
