// The patterns that PCRE2 cannot match the way JavaScript does, matched by the filter's
// backtracking matcher. Expected results are what Node gives for
// line.replace(new RegExp(pattern, "g"), replaceWith).
#include "engine/regex/BacktrackMatcher.h"

#include "engine/regex/EcmaPatternCheck.h"
#include "engine/regex/EcmaPatternParser.h"
#include "engine/regex/EcmaRegex.h"
#include "engine/regex/LookbehindStarts.h"
#include "engine/routines/Filter.h"
#include "tests/engine/RangedRoutineRun.h"

#include <gtest/gtest.h>

using namespace morlevant;
using namespace morlevant::testing;

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
        ParsedPattern parsed = parseEcmaPattern(pattern);
        shortenLookbehindStarts(parsed.root);
        checkPcreMatchesLikeJavaScript(parsed);
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

// Most cases of lookbehinds of any length, of repeats of what can match the empty text and of
// back-references into the iteration that sets them are in differential.js's hand-picked list,
// which Node itself checks; these are the ones it does not hold.
INSTANTIATE_TEST_SUITE_P(
    Cases, BacktrackedReplace,
    ::testing::Values(ReplaceCase{"(?<!\\d+ ?)x", "-", "1x 1 x ax x", "1x 1 x a- -"},
                      ReplaceCase{"(?<=a|bc+)x", "-", "ax bccx cx", "a- bcc- cx"},
                      // Groups in a lookbehind take the text of the backward match.
                      ReplaceCase{"(?<=(\\w)+)c", "[$1]", "abc", "ab[a]"},
                      // Each iteration starts with the groups inside the repeat unset.
                      ReplaceCase{"(?:(a)|(b)|)+?c", "[$1|$2]", "abc bac", "[|b] [a|]"},
                      // Found by fuzzing when such lengths were added up: none overflows.
                      ReplaceCase{"(?<=a{40000}a{40000}.{2147483647})b", "-", "ab", "ab"},
                      // Characters of several bytes are one character, forwards and backwards.
                      ReplaceCase{"(?<=xé+)\\w", "-", "xéé1 e2 xé3", "xéé- e2 xé-"},
                      ReplaceCase{"(?<=-[^a]{2,})b", "-", "-éxb ab -€€b", "-éx- ab -€€-"},
                      ReplaceCase{"(?<=\\W)(?:|x)+", "[$&]", "€x €", "€[x] []€[]"},
                      // A run that the step after it cannot continue is never given back;
                      // one that shares characters beyond ASCII with it is.
                      ReplaceCase{"(?<=\\.\\d*)5", "-", "1.25 .5 x5 9.05", "1.2- .- x5 9.0-"},
                      ReplaceCase{"(?<=é[^a]*)x", "-", "éb€x a€x", "éb€- a€x"}));

// A line that is not UTF-8 is read byte by byte, as the PCRE2 path reads it: a character of the
// pattern beyond ASCII stands for its bytes, a class holds single ASCII bytes and, negated, any
// other byte, and after an empty match the search goes on one byte further (\377 is the byte
// 0xff).
TEST(BacktrackMatcher, ReadsLinesThatAreNotUtf8ByteByByte) {
    const ReplaceCase cases[] = {
        {"(?<=-\\u00e9+)x", "-", "\377-\303\251\303\251x", "\377-\303\251\303\251-"},
        {"(?<=[^a]{2})b", "-", "\377\303\251b ab", "\377\303\251- ab"},
        {"(?<=(\\W))b", "[$1]", "\251b", "\251[\251]"},
        {"(?:|x)+", "-", "\377b", "-\377-b-"},
        {"(?:|x)+", "-", "\303\251b", "-\303\251-b-"}, // valid: é is one character
        // A lookbehind of a fixed number of characters but not of bytes, which PCRE2 matches on
        // UTF-8 lines and cannot compile to read bytes.
        {"(?<=(?:\u00e9|a)+)x", "-", "caf\351 ax \303\251x a\251x", "caf\351 a- \303\251- a\251x"},
    };
    for (const ReplaceCase& c : cases)
        EXPECT_EQ(filterLine(c.pattern, c.replaceWith, 1, c.line), c.expected) << c;
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
    matcher.setSubject(line, true, std::chrono::steady_clock::duration::max());
    EXPECT_EQ(matcher.find(0), BacktrackMatcher::Outcome::OutOfMemory);
    // The next search starts afresh.
    const std::string shortLine = "aab";
    matcher.setSubject(shortLine, true, std::chrono::steady_clock::duration::max());
    ASSERT_EQ(matcher.find(0), BacktrackMatcher::Outcome::Match);
    EXPECT_EQ(matcher.captures()[1], 3u);
}

// The starts of a pattern with one first byte are taken from masks that go forward from search
// to search; a search from further back still finds every start.
TEST(BacktrackMatcher, SearchesAgainFromFurtherBack) {
    BacktrackMatcher matcher(compileBacktrackProgram(parseEcmaPattern("(?<=\\.\\d*)5")));
    const std::string line = "1.5 2.5 " + std::string(100, '5') + ".5";
    matcher.setSubject(line, true, std::chrono::steady_clock::duration::max());
    for (const std::size_t from : {line.size() - 1, std::size_t{4}, std::size_t{0}}) {
        ASSERT_EQ(matcher.find(from), BacktrackMatcher::Outcome::Match) << from;
        EXPECT_EQ(matcher.captures()[0], from == 0 ? 2 : from == 4 ? 6 : line.size() - 1);
    }
}

} // namespace
