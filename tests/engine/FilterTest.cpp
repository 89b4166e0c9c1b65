#include "engine/EcmaRegex.h"
#include "tests/engine/RangedRoutineRun.h"

#include <gtest/gtest.h>

using namespace morlevant;
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
    return runLine(*makeFilter(filter(pattern, replaceWith), kind), Mode::Whole, line);
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
                      FilterCase{".*", "", 2, "all of it", ""},
                      FilterCase{"abc", "", 2, "ABC abc", "ABC "}, // case-sensitive
                      FilterCase{"\\d*", "", 3, "a1", " 1  "},     // empty matches are output
                      // A line that is not UTF-8 is matched byte by byte (\377 is the byte 0xff).
                      FilterCase{".", "", 3, "a\377b", "a \377 b "},
                      FilterCase{"x*", "-", 1, "\377b", "-\377-b-"}));

// Expected texts are what JavaScript's String.prototype.replace with a global RegExp gives
// (kind 1), and the global matches each followed by a blank (kind 3).
struct JsCase {
    std::string pattern, replaceWith, line, replaced, output;
};

class FilterLikeJavaScript : public ::testing::TestWithParam<JsCase> {};

TEST_P(FilterLikeJavaScript, AgreesWithJavaScript) {
    const JsCase& c = GetParam();
    EXPECT_EQ(filterLine(c.pattern, c.replaceWith, 1, c.line), c.replaced)
        << "/" << c.pattern << "/ with " << c.replaceWith << " on " << c.line;
    EXPECT_EQ(filterLine(c.pattern, "", 3, c.line), c.output) << "/" << c.pattern << "/";
}

INSTANTIATE_TEST_SUITE_P(
    Patterns, FilterLikeJavaScript,
    ::testing::Values(
        JsCase{"\\d+(?=px)", "[$&]", "10px 20em 30px", "[10]px 20em [30]px", "10 30 "},
        JsCase{"(?<=\\$)\\d+", "N", "cost $15 and $7", "cost $N and $N", "15 7 "},

        JsCase{"(\\w)\\1", "<$1>", "aabbcd", "<a><b>cd", "aa bb "},
        JsCase{"(a)?b\\1", "X", "b ab aba", "X aX X", "b b aba "},
        JsCase{"\\u00e9+", "e", "caf\xc3\xa9 \xc3\xa9\xc3\xa9", "cafe e",
               "\xc3\xa9 \xc3\xa9\xc3\xa9 "},

        JsCase{"a[^]c", "_", "abc a-c ac", "_ _ ac", "abc a-c "},
        JsCase{"a[]", "_", "a[] ab", "a[] ab", "a[] ab"},
        JsCase{"x*", "-", "abc", "-a-b-c-", "    "},
        JsCase{"x*", "-", "\u00e4b", "-\u00e4-b-", "   "}, JsCase{"a*?", "-", "aa", "-a-a-", "   "},
        JsCase{"b*", "-", "abc", "-a--c-", " b   "},

        JsCase{"a|ab", "[$&]", "abc", "[a]bc", "a "},
        JsCase{"b", "[$`|$']", "abc", "a[a|c]c", "b "},
        JsCase{"(a)|(b)", "[$1$2]", "ab", "[a][b]", "a b "},
        JsCase{"(?<d>\\d)", "$<x>|$<d>", "a1", "a|1", "1 "},
        JsCase{"(\\d)", "$<d>", "a1", "a$<d>", "1 "}, JsCase{"(\\d)", "$9$1", "a1", "a$91", "1 "},
        JsCase{"(\\d)", "$10|$01|$00", "a1", "a10|1|$00", "1 "},
        JsCase{"\\d", "$$|$0|$", "a1", "a$|$0|$", "1 "},
        JsCase{"(?<y>\\d{4})-(?<m>\\d\\d)", "$<m>/$<y>", "on 2024-05 and 1999-12",
               "on 05/2024 and 12/1999", "2024-05 1999-12 "},
        // Without the u flag \u{...} is the letter u and braces, not a code point.
        JsCase{"\\u{e9}", "-", "u{e9}\xc3\xa9", "-\xc3\xa9", "u{e9} "}));

TEST(Filter, RangesFilterEachRangeOnItsOwn) {
    EXPECT_EQ(runLine(*makeFilter(filter("\\d", "", "3-5"), 2), Mode::InPlace, "a1b2c3d4"),
              "a1bc3d4");
    // "^" matches at the start of each range's text; the range past the end gives nothing.
    EXPECT_EQ(runLine(*makeFilter(filter("\\d|^", "", "1-2,5-6,9-9"), 3), Mode::Out, "a1b2c3d4"),
              " 1  3 ");
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
            [&] { runLine(*makeFilter(filter(c.pattern), c.kind), Mode::Whole, c.line); });
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
