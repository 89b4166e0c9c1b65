// The patterns that PCRE2 cannot match the way JavaScript does, matched by the filter's
// backtracking matcher. Expected results are what Node gives for
// line.replace(new RegExp(pattern, "g"), replaceWith).
#include "engine/regex/BacktrackMatcher.h"

#include "engine/regex/EcmaPatternCheck.h"
#include "engine/regex/EcmaPatternParser.h"
#include "engine/regex/EcmaRegex.h"
#include "engine/routines/Filter.h"
#include "tests/engine/RangedRoutineRun.h"

#include <gtest/gtest.h>

using namespace morlevant;
using morlevant::testing::made;
using morlevant::testing::Mode;
using morlevant::testing::runLine;
using morlevant::testing::taskErrorOf;

namespace {

std::string filterLine(const std::string& pattern, const std::string& replaceWith, int kind,
                       const std::string& line) {
    TaskPageSettings settings;
    settings.filterPattern = pattern;
    settings.filterReplacement = replaceWith;
    return runLine(*made(makeFilter, settings, kind), Mode::Whole, line);
}

bool takesBacktrackingMatcher(const std::string& pattern) {
    try {
        checkPcreMatchesLikeJavaScript(parseEcmaPattern(pattern));
    } catch (const PatternError& error) {
        return error.unsupported;
    }
    return false;
}

struct ReplaceCase {
    std::string pattern, replaceWith, line, expected;
};

std::ostream& operator<<(std::ostream& out, const ReplaceCase& c) {
    return out << "/" << c.pattern << "/ with \"" << c.replaceWith << "\" on \"" << c.line << "\"";
}

class BacktrackedReplace : public ::testing::TestWithParam<ReplaceCase> {};

TEST_P(BacktrackedReplace, GivesWhatJavaScriptGives) {
    const ReplaceCase& c = GetParam();
    ASSERT_TRUE(takesBacktrackingMatcher(c.pattern));
    EXPECT_EQ(filterLine(c.pattern, c.replaceWith, 1, c.line), c.expected);
}

// Lookbehinds of any length, matched from right to left.
INSTANTIATE_TEST_SUITE_P(
    Lookbehinds, BacktrackedReplace,
    ::testing::Values(ReplaceCase{"(?<=\\$\\d+\\.)\\d+", "<$&>", "pay $12.50, 3.75 or $4.5",
                                  "pay $12.<50>, 3.75 or $4.<5>"},
                      ReplaceCase{"(?<=a+)b", "-", "ab b aab", "a- b aa-"},
                      ReplaceCase{"(?<=^\\w+)\\d", "-", "ab1 c2", "ab- c2"},
                      ReplaceCase{"(?<!\\d+)x", "-", "1x ax x", "1x a- -"},
                      ReplaceCase{"(?<=a|bc+)x", "-", "ax bccx cx", "a- bcc- cx"},
                      ReplaceCase{"(?<=a(?=b+c)\\w*)d", "-", "abcd abd", "abc- abd"},
                      ReplaceCase{"(?<=(?<!x)y+)z", "-", "yyz xyz", "yy- xyz"}));

// Groups in a lookbehind take the text of the backward match: the one nearest the position
// is matched first and greedy, and a back-reference there looks at the text before it.
INSTANTIATE_TEST_SUITE_P(
    BackwardGroups, BacktrackedReplace,
    ::testing::Values(ReplaceCase{"(?<=(\\d+)(\\d+))$", "[$1|$2]", "1053", "1053[1|053]"},
                      ReplaceCase{"(?<=(\\w)+)c", "[$1]", "abc", "ab[a]"},
                      ReplaceCase{"(?<=\\1(a))b", "[$1]", "aab ab", "aa[a] ab"},
                      ReplaceCase{"(?<=(a)\\1)b", "[$1]", "aab", "aa[a]"},
                      ReplaceCase{"(?<=(?:(a)|b)+)c", "[$1]", "abc bac", "ab[a] ba[]"},
                      ReplaceCase{"(?<!(a)b+)c", "[$1]", "abbc xbc", "abbc xb[]"}));

// An optional iteration that matches the empty text is refused and the next way tried.
INSTANTIATE_TEST_SUITE_P(EmptyIterations, BacktrackedReplace,
                         ::testing::Values(ReplaceCase{"(?:|a)+", "[$&]", "aa", "[aa][]"},
                                           ReplaceCase{"(?:a?\?)*", "[$&]", "aa", "[aa][]"},
                                           ReplaceCase{"(?:a?\?)+b", "[$&]", "aab", "[aab]"},
                                           ReplaceCase{"(a*)*", "[$1]", "aab", "[aa][]b[]"},
                                           ReplaceCase{"(a*)+b", "[$1]", "aab", "[aa]"},
                                           ReplaceCase{"(a*?)+", "[$1]", "aa", "[a][]"},
                                           ReplaceCase{"(?:()|a)+", "[$1]", "aa", "[][]"},
                                           ReplaceCase{"(?:(a)|())+", "[$1|$2]", "aa", "[a|][|]"}));

// Each iteration starts with the groups inside the repeat unset.
INSTANTIATE_TEST_SUITE_P(ClearedGroups, BacktrackedReplace,
                         ::testing::Values(ReplaceCase{"((a)|(b)?)+", "[$2|$3]", "ab", "[|b][|]"},
                                           ReplaceCase{"(?:(a)|b|)+", "[$1]", "abab", "[][]"},
                                           ReplaceCase{"(?:(a)|(b)|)+?c", "[$1|$2]", "abc bac",
                                                       "[|b] [a|]"}));

// A back-reference to a group without a value matches the empty text, also to a group of the
// same iteration that has not closed yet.
INSTANTIATE_TEST_SUITE_P(BackReferences, BacktrackedReplace,
                         ::testing::Values(ReplaceCase{"(\\1a?){2}", "[$1]", "aaaa", "[a][a][]"},
                                           ReplaceCase{"(?:\\1(a))+", "[$1]", "aaa", "[a]"},
                                           ReplaceCase{"(a|\\1b)+", "[$1]", "aab", "[b]"},
                                           ReplaceCase{"(?:(a)\\2(b)?)+", "[$1$2]", "aabab",
                                                       "[ab]"}));

// Counts up to the largest JavaScript reads.
INSTANTIATE_TEST_SUITE_P(
    LargeCounts, BacktrackedReplace,
    ::testing::Values(ReplaceCase{"a{65536}", "-", "aaa", "aaa"},
                      ReplaceCase{"a{0,70000}", "[$&]", "aaab", "[aaa][]b[]"},
                      ReplaceCase{"(?:ab){1,100000}", "-", "ababab", "-"},
                      ReplaceCase{"x{2147483648}", "-", "x", "x"},
                      ReplaceCase{"(?:a|b){3,99999999999}", "-", "abab", "-"},
                      // Found by fuzzing when such lengths were added up: none overflows.
                      ReplaceCase{"(?<=a{40000}a{40000}.{2147483647})b", "-", "ab", "ab"}));

// Characters of several bytes are one character, forwards and backwards.
INSTANTIATE_TEST_SUITE_P(
    WideCharacters, BacktrackedReplace,
    ::testing::Values(ReplaceCase{"(?<=é+)\\w", "-", "éé1 e2", "éé- e2"},
                      ReplaceCase{"(?<=[^a]{2,})b", "-", "éxb ab €€b", "éx- ab €€-"},
                      ReplaceCase{"(?<=\\W)(?:|x)+", "[$&]", "€x €", "€[x] []€[]"}));

TEST(BacktrackMatcher, ServesEveryFilterKind) {
    const struct {
        int kind;
        std::string expected;
    } cases[] = {{1, "pay $12.<50> or $4.<5>"}, {2, "pay $12. or $4."}, {3, "50 5 "}};
    for (const auto& c : cases)
        EXPECT_EQ(filterLine("(?<=\\$\\d+\\.)\\d+", "<$&>", c.kind, "pay $12.50 or $4.5"),
                  c.expected)
            << "kind " << c.kind;
}

// A line that is not UTF-8 is read byte by byte, as the PCRE2 path reads it: a character of the
// pattern beyond ASCII stands for its bytes, a class holds single ASCII bytes and, negated, any
// other byte, and after an empty match the search goes on one byte further.
TEST(BacktrackMatcher, ReadsLinesThatAreNotUtf8ByteByByte) {
    const ReplaceCase cases[] = {
        {"(?<=\\u00e9+)x", "-", "\xff\xc3\xa9\xc3\xa9x", "\xff\xc3\xa9\xc3\xa9-"},
        {"(?<=[^a]{2})b", "-",
         "\xff\xc3\xa9"
         "b ab",
         "\xff\xc3\xa9- ab"},
        {"(?<=(\\W))b", "[$1]",
         "\xa9"
         "b",
         "\xa9[\xa9]"},
        {"(?:|x)+", "-",
         "\xff"
         "b",
         "-\xff-b-"},
        {"(?:|x)+", "-",
         "\xc3\xa9"
         "b",
         "-\xc3\xa9-b-"}, // valid: é is one character
    };
    for (const ReplaceCase& c : cases)
        EXPECT_EQ(filterLine(c.pattern, c.replaceWith, 1, c.line), c.expected) << c;
}

TEST(BacktrackMatcher, WorkThatGrowsWithTheSquareOfTheLineStopsAtTheLinesBudget) {
    // Every position starts a lookbehind that reads back to the start of the line.
    EcmaRegex regex("(?<=a*)a(?!a)", {std::chrono::milliseconds(50), {}});
    const std::string line(400'000, 'a');
    regex.setSubject(line);
    const std::string error = taskErrorOf([&] { regex.find(0); });
    EXPECT_NE(error.find("\"(?<=a*)a(?!a)\" takes too long on this line"), std::string::npos)
        << error;
}

TEST(BacktrackMatcher, RunawayBacktrackingOnAShortLineStopsAtTheBudget) {
    EcmaRegex regex("^(?:|a|aa)+$", {std::chrono::milliseconds(50), {}});
    const std::string line = std::string(60, 'a') + "b";
    regex.setSubject(line);
    const std::string error = taskErrorOf([&] { regex.find(0); });
    EXPECT_NE(error.find("takes too long on this line"), std::string::npos) << error;
}

TEST(BacktrackMatcher, MatchesA20MegabyteLineWithoutRecursion) {
    // Two million iterations, forwards and backwards: a matcher that recursed per iteration
    // would overflow the call stack long before.
    const std::string line = [] {
        std::string text = "0123456789";
        while (text.size() < 20'000'000)
            text += text;
        return text + "!";
    }();
    for (const std::string pattern : {"(?:|0123456789)+!", "!(?<=^(?:|0123456789)+!)"}) {
        EcmaRegex regex(pattern);
        regex.setSubject(line);
        ASSERT_TRUE(regex.find(0)) << pattern;
        EXPECT_EQ(regex.matchEnd(), line.size()) << pattern;
    }
}

TEST(BacktrackMatcher, AFullBacktrackingStackEndsTheSearch) {
    BacktrackMatcher matcher(compileBacktrackProgram(parseEcmaPattern("(?:|a)+b")), 4096);
    const std::string line(10'000, 'a');
    matcher.setSubject(line, true, std::chrono::steady_clock::time_point::max());
    EXPECT_EQ(matcher.find(0), BacktrackMatcher::Outcome::OutOfMemory);
    // The next search starts afresh.
    const std::string shortLine = "aab";
    matcher.setSubject(shortLine, true, std::chrono::steady_clock::time_point::max());
    ASSERT_EQ(matcher.find(0), BacktrackMatcher::Outcome::Match);
    EXPECT_EQ(matcher.captures()[1], 3u);
}

} // namespace
