#include "engine/routines/Calculation.h"

#include "engine/RunAlerts.h"
#include "engine/text/LineEnds.h"
#include "engine/text/NumberText.h"
#include "taskdef/LeadingNumber.h"
#include "tests/engine/RangedRoutineRun.h"

#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>
#include <random>
#include <vector>

using namespace morlevant;
using namespace morlevant::testing;

namespace {

TaskPageSettings calculate(const std::string& steps, const std::string& decimals,
                           const std::string& columns = "", const std::string& alignment = "Left") {
    TaskPageSettings settings;
    settings.calculateSteps = steps;
    settings.decimalNumber = decimals;
    settings.columnRange = columns;
    settings.alignment = alignment;
    return settings;
}

struct LineCase {
    std::string steps, decimals, line, expected;
};

class CalculateLineTable : public ::testing::TestWithParam<LineCase> {};

TEST_P(CalculateLineTable, ChainsStepsAndRounds) {
    const LineCase& c = GetParam();
    std::string out;
    made(makeCalculation, calculate(c.steps, c.decimals), nullptr)->wholeLine(c.line, out);
    EXPECT_EQ(out, c.expected) << c.steps << " with decimals \"" << c.decimals << "\" on "
                               << c.line;
}

INSTANTIATE_TEST_SUITE_P(
    Steps, CalculateLineTable,
    ::testing::Values(
        // The line's number is read as LeadingNumber reads it (tested there).
        LineCase{"+5,*2", "0", "10", "30"}, LineCase{"/3", "2", "10", "3.33"},
        // Each step reads the 15-digit text of the one before, not the binary value.
        LineCase{"/3,*3", "15", "1", "0.999999999999999"},
        LineCase{"*1E10,*1E10", "0", "1", "1E+20"}, LineCase{"/1E5", "5", "1", "0.00001"},
        LineCase{"*-1", "0", "0", "0"},                                    // never "-0"
        LineCase{"%3", "0", "-10", "-1"}, LineCase{"%3", "0", "2.5", "2"}, // 2.5 rounds to 2
        LineCase{"%2.5", "0", "7", "1"}, LineCase{"^2", "1", "1.5", "2.3"},
        // Decimals are written as NumberText writes them (tested there), from 1e15 on after
        // rounding to 15 digits; "0" rounds half to even.
        LineCase{"+0", "2", "123456789012345678", "123456789012346000.00"},
        // The 16th and 17th digits decide the 15th, however close to a half they come.
        LineCase{"+0", "16", "1.0000000000000044", "1.0000000000000000"},
        LineCase{"+0", "16", "1.0000000000000078", "1.0000000000000100"},
        LineCase{"+0", "2", "9.999999999999998", "10.00"}, LineCase{"+0", "0", "2.5", "2"},
        LineCase{"+0", "0", "3.5", "4"}, LineCase{"/3,/7", "18", "1", "0.047619047619047600"},
        // Below 1e-7 and from 1e15 on the digits are laid out one by one. 5e-8 lies just below
        // the half in binary but is 5 in its 15 digits; a carry runs through the nines; a zero
        // has no sign; past the 15 digits come zeros, not the binary value's digits.
        LineCase{"+0", "7", "0.00000005", "0.0000001"},
        LineCase{"+0", "7", "-0.00000005", "-0.0000001"},
        LineCase{"+0", "7", "-0.00000004", "0.0000000"},
        LineCase{"+0", "13", "0.00000009999999", "0.0000001000000"},
        LineCase{"+0", "24", "0.0000000123456789012345678", "0.000000012345678901234600"},
        LineCase{"*1E10", "2", "1E15", "10000000000000000000000000.00"},
        LineCase{"*-1", "1", "123456789012345678", "-123456789012346000.0"},
        LineCase{"+0", "1", "9999999999999996", "10000000000000000.0"},
        // A blank line 6 is 0 decimals of format "#0.": half away from zero, no point written.
        LineCase{"+0", "00", "2.5", "3"}, LineCase{"+0", "", "2.5", "3"},
        LineCase{"+0", " ", "-2.5", "-3"}, LineCase{"+0", "2x", "0.125", "0.13"},
        // Steps that do not start with an operator are skipped; with none left the line stays.
        LineCase{"x5,+1", "0", "10", "11"}, LineCase{"x5", "2", "10 apples", "10 apples"}));

struct RangeCase {
    std::string columns, alignment;
    Mode mode;
    std::string line, expected;
};

class CalculateRangesTable : public ::testing::TestWithParam<RangeCase> {};

TEST_P(CalculateRangesTable, FitsResultsToTheirRanges) {
    const RangeCase& c = GetParam();
    const auto operation =
        made(makeCalculation, calculate("*2", "0", c.columns, c.alignment), nullptr);
    EXPECT_EQ(runLine(*operation, c.mode, c.line), c.expected) << c.columns << " on " << c.line;
    EXPECT_EQ(morlevant::testing::runLongLine(*operation, c.mode, c.line), c.expected)
        << c.columns << " on " << c.line << " as a long line";
}

INSTANTIATE_TEST_SUITE_P(
    Columns, CalculateRangesTable,
    ::testing::Values(
        // How the ranges are walked (order, overlaps, empty ranges, characters) is pinned for
        // every page by the replacement's table; these are the fitting of results to widths.
        RangeCase{"1-3,4-6", "Left", Mode::Out, "  5 10", "10 20 "},
        RangeCase{"4-6,1-3", "Right", Mode::Out, "  5 10", " 20 10"}, // written order
        RangeCase{"1-1", "Left", Mode::Out, "9", "18"},               // never cut
        RangeCase{"5-8", "Right", Mode::Out, "  5 10", "  20"}, // rest of the line, full width
        RangeCase{"1-3", "Left", Mode::InPlace, "  5 10", "10  10"},
        RangeCase{"4-6", "Right", Mode::InPlace, "  5 10x", "  5 20x"},
        RangeCase{"5-9", "Right", Mode::InPlace, "  5 10", "  5    20"},
        RangeCase{"", "Left", Mode::InPlace, "  5 10", "10"},
        RangeCase{"2-4", "Right", Mode::Out, "\xc3\xa9 5x\xc3\xa9", " 10"}));

TEST(Calculation, ABlockOfLinesGivesTheLinesOneByOneEachEndedByCrLf) {
    const std::string lines = "12.5\r\n-3\nid=7\r\r\n\n 0.125x\r 1e3\n.5\r\n-0\nlast 99";
    for (const auto& [steps, decimals] : std::vector<std::pair<std::string, std::string>>{
             {"+5,*2,/3", "2"}, {"*1.5,-0.25", "0"}, {"^2,%7", ""}, {"", "3"}, {"/8", "20"}}) {
        const auto routine = made(makeCalculation, calculate(steps, decimals), nullptr);
        std::string expected;
        std::string result;
        forEachLine(lines, [&](std::string_view line) {
            expected += runLine(*routine, Mode::Whole, std::string(line)) + "|";
        });
        ASSERT_TRUE(routine->manyLines(lines, result)) << steps;
        std::string ends; // every line's but the last, which has none
        for (int line = 0; line < 9; ++line)
            ends += "\r\n";
        std::string joined;
        forEachLine(result, [&](std::string_view line) { joined += std::string(line) + "|"; });
        EXPECT_EQ(joined, expected) << steps;
        std::erase_if(result, [](char c) { return c != '\r' && c != '\n'; });
        EXPECT_EQ(result, ends) << steps;
    }
    // A row without a number is noted where its place is known: line by line.
    RunAlerts alerts(true, false);
    std::string out;
    EXPECT_TRUE(made(makeCalculation, calculate("+1", "0"), &alerts)->manyLines("1\n2\n", out));
    EXPECT_FALSE(made(makeCalculation, calculate("+1", "0"), &alerts)->manyLines("1\nx\n", out));
}

TEST(Calculation, StopsWithAMessageNamingTheStep) {
    const struct {
        std::string steps, decimals, columns, line, named;
    } cases[] = {{"+1,/0", "0", "", "5", "\"/0\" divides by zero"},
                 {"%0.4", "0", "", "5", "\"%0.4\" divides by zero"},
                 {"*1E308,*10", "0", "", "1", "\"*10\" overflows"},
                 {"^0.5", "0", "", "-4", "\"^0.5\" has no result"},
                 {"+1", "0", "", "1e999", "\"+1\" overflows"},
                 {"+1", "99999999999", "", "1", "decimals 99999999999 is too large"},
                 {"+1", "0", "1-999999999", "1", "too wide"},
                 // Each range within bounds, together a gigabyte a row.
                 {"+1", "0", "1-16777216,1-16777216", "1", "1-16777216 on are too wide"},
                 {"+1", "0", "1-3,5", "1", "no partner"}};
    for (const auto& c : cases) {
        const std::string error = taskErrorOf([&] {
            runLine(*made(makeCalculation, calculate(c.steps, c.decimals, c.columns), nullptr),
                    Mode::Whole, c.line);
        });
        EXPECT_NE(error.find(c.named), std::string::npos) << error;
    }
}

// The number text a calculation writes, and the leading number it reads.
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
        // The decimals guessed change nothing, right or wrong.
        for (const int decimals : {-1, 0, 2, 7, 22, 23})
            ASSERT_EQ(shortestNumberValue(value, decimals), fifteenDigitValue(value))
                << std::hexfloat << value << " guessed " << decimals;
    }
}

// The value's 15 significant digits, correctly rounded, then rounded half away from zero to
// `decimals`, in decimal text.
std::string fixedReference(double value, int decimals) {
    std::array<char, 40> text{};
    const char* end = std::to_chars(text.data(), text.data() + text.size(), std::fabs(value),
                                    std::chars_format::scientific, 14)
                          .ptr;
    std::string digits = std::string(1, text[0]) + std::string(text.data() + 2, 14);
    int exponent = 0;
    std::from_chars(text.data() + 17 + (text[17] == '+'), end, exponent);
    // Digits from 10^(exponent) down; pad so that the digit at 10^-(decimals + 1) is there.
    int highest = exponent;
    if (highest < 0) {
        digits.insert(0, static_cast<std::size_t>(-highest), '0');
        highest = 0;
    }
    const auto kept = static_cast<std::size_t>(highest + 1 + decimals);
    if (digits.size() < kept + 1)
        digits.append(kept + 1 - digits.size(), '0');
    const bool up = digits[kept] >= '5';
    digits.resize(kept);
    for (std::size_t i = kept; up; --i) {
        if (i == 0) {
            digits.insert(0, 1, '1');
            break;
        }
        if (digits[i - 1] != '9') {
            ++digits[i - 1];
            break;
        }
        digits[i - 1] = '0';
    }
    digits.erase(0, std::min(digits.find_first_not_of('0'), digits.size() - decimals - 1));
    if (decimals > 0)
        digits.insert(digits.size() - static_cast<std::size_t>(decimals), 1, '.');
    const bool zero = digits.find_first_not_of("0.") == std::string::npos;
    return (value < 0 && !zero ? "-" : "") + digits;
}

TEST(NumberText, FixedNumbersAreTheirFifteenDigitTextRounded) {
    // Results of the kind calculations give, halves at the decimals asked for, and any digits.
    std::mt19937_64 random(29);
    std::uniform_real_distribution<double> unit(0, 1);
    for (int i = 0; i < 200000; ++i) {
        const int decimals = static_cast<int>(random() % 12);
        const double hundredths = static_cast<double>(random() % 2000000) / 100.0 - 4000;
        const double power = std::pow(10.0, decimals);
        for (const double value :
             {(hundredths + 5) * 2 / 3, (std::round(unit(random) * 1e6) + 0.5) / power,
              std::pow(10.0, unit(random) * 22 - 8) * (unit(random) - 0.5)}) {
            std::string out;
            appendFixedNumber(value, decimals, out);
            ASSERT_EQ(out, fixedReference(value, decimals)) << std::hexfloat << value;
        }
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
