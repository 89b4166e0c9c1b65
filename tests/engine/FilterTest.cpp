#include "engine/routines/Filter.h"

#include "engine/regex/EcmaRegex.h"
#include "tests/engine/RangedRoutineRun.h"

#include <gtest/gtest.h>

using namespace morlevant;
using morlevant::testing::made;
using morlevant::testing::Mode;
using morlevant::testing::runLine;

namespace {

TaskPageSettings filter(const std::string& pattern, const std::string& replaceWith = "",
                        const std::string& columns = "") {
    TaskPageSettings settings;
    settings.filterPattern = pattern;
    settings.filterReplacement = replaceWith;
    settings.columnRange = columns;
    return settings;
}

std::string filterLine(const std::string& pattern, const std::string& replaceWith, int kind,
                       const std::string& line) {
    return runLine(*made(makeFilter, filter(pattern, replaceWith), kind), Mode::Whole, line);
}

struct FilterCase {
    std::string pattern, replaceWith;
    int kind;
    std::string line, expected;
};

class FilterLineTable : public ::testing::TestWithParam<FilterCase> {};

TEST_P(FilterLineTable, ReplacesDeletesOrOutputsMatches) {
    const FilterCase& c = GetParam();
    EXPECT_EQ(filterLine(c.pattern, c.replaceWith, c.kind, c.line), c.expected)
        << "/" << c.pattern << "/ kind " << c.kind << " on " << c.line;
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, FilterLineTable,
    ::testing::Values(FilterCase{"[0-9]+", "", 3, "a12b345", "12 345 "},
                      FilterCase{"[0-9]+", "", 3, "abc", "abc"}, // no match: the line stays
                      FilterCase{"\\s+$", "", 2, "text \t ", "text"},
                      FilterCase{"(\\w+)=", "[$1]", 1, "x=y", "[x]y"},
                      FilterCase{"abc", "", 2, "ABC abc", "ABC "}, // case-sensitive
                      FilterCase{"\\d*", "", 3, "a1", " 1  "},     // empty matches are output
                      // A line that is not UTF-8 is matched byte by byte (\377 is the byte 0xff).
                      FilterCase{".", "", 3, "a\377b", "a \377 b "},
                      FilterCase{"x*", "-", 1, "\377b", "-\377-b-"}));

TEST(Filter, RangesFilterEachRangeOnItsOwn) {
    // A long line's ranges the same, their results handed on in parts.
    for (const auto run : {runLine, morlevant::testing::runLongLine}) {
        EXPECT_EQ(run(*made(makeFilter, filter("\\d", "", "3-5"), 2), Mode::InPlace, "a1b2c3d4"),
                  "a1bc3d4");
        // "^" matches at the start of each range's text; the range past the end gives nothing.
        EXPECT_EQ(
            run(*made(makeFilter, filter("\\d|^", "", "1-2,5-6,9-9"), 3), Mode::Out, "a1b2c3d4"),
            " 1  3 ");
    }
}

TEST(Filter, StopsWithAMessageInsteadOfFailingLater) {
    const struct {
        std::string pattern;
        int kind;
        std::string line, named;
    } cases[] = {{"a", 4, "", "Unknown filter kind 4"},
                 // Runaway backtracking ends in an error, never a crash.
                 {"^(a|aa)+$", 2, std::string(60, 'a') + "b", "too complex"}};
    for (const auto& c : cases) {
        const std::string error = morlevant::testing::taskErrorOf(
            [&] { runLine(*made(makeFilter, filter(c.pattern), c.kind), Mode::Whole, c.line); });
        EXPECT_NE(error.find(c.named), std::string::npos) << error;
    }
}

TEST(Filter, WorkThatGrowsWithTheSquareOfTheLineStopsAtTheLinesBudget) {
    // Every position starts a lookahead that reads to the end of the line and never matches.
    EcmaRegex regex("(?=(a|b)*c)", {std::chrono::milliseconds(50), {}});
    std::string line;
    for (int i = 0; i < 100'000; ++i)
        line += "ab";
    regex.setSubject(line);
    const std::string error = morlevant::testing::taskErrorOf([&] { regex.find(0); });
    EXPECT_NE(error.find("\"(?=(a|b)*c)\" takes too long on this line"), std::string::npos)
        << error;
}

} // namespace
