#include "engine/routines/Filter.h"
#include "tests/engine/RangedRoutineRun.h"

#include <gtest/gtest.h>

using namespace morlevant;
using morlevant::testing::made;
using morlevant::testing::Mode;
using morlevant::testing::runLine;
using morlevant::testing::taskErrorOf;

namespace {

std::unique_ptr<RangedRoutine> filter(const std::string& pattern, const std::string& replaceWith) {
    TaskPageSettings settings;
    settings.filterPattern = pattern;
    settings.filterReplacement = replaceWith;
    return made(makeFilter, settings, 1);
}

// Where JavaScript throws a SyntaxError the filter stops before any file is written, naming
// the cause and the position.
TEST(FilterSyntax, RefusesWhatJavaScriptRefuses) {
    const struct {
        std::string pattern, message;
    } cases[] = {
        {"(?i)a", "is not valid: invalid group at position 0"},
        {"a++", "nothing to repeat at position 2"},
        {"(?<=a)*", "nothing to repeat at position 6"},
        {"^*", "nothing to repeat at position 1"},
        {"{1}", "nothing to repeat at position 0"},
        {"a{2,1}", "numbers out of order in {} quantifier at position 1"},
        {"[z-a]", "range out of order in character class at position 1"},
        {"[a", "missing terminating ] for character class at position 0"},
        {"a)", "unmatched \")\" at position 1"},
        {"a(b", "missing closing parenthesis at position 3"},
        {"a\\", "\\ at end of pattern at position 2"},
        {"(?<a>x)(?<a>y)", "duplicate capture group name at position 12"},
        {"(?<1a>x)", "invalid capture group name at position 3"},
        {"(?<a>x)\\k<b>", "invalid named capture referenced at position 7"},
        {"(?<a>x)\\k", "invalid named reference at position 9"},
        {"(?<a>x)[\\k]", "invalid escape at position 9"},
    };
    for (const auto& c : cases) {
        const std::string error = taskErrorOf([&] { filter(c.pattern, ""); });
        EXPECT_NE(error.find("\"" + c.pattern + "\" "), std::string::npos) << error;
        EXPECT_NE(error.find(c.message), std::string::npos) << error;
    }
}

// Groups nested deeper than JavaScript's own parser needs are refused rather than read by a
// parser whose stack they would exhaust (found by fuzzing, with thousands of them).
TEST(FilterSyntax, RefusesGroupsNestedTooDeep) {
    const std::string pattern = std::string(5000, '(') + std::string(5000, ')');
    const std::string error = taskErrorOf([&] { filter(pattern, ""); });
    EXPECT_NE(error.find("cannot be matched as JavaScript matches it: groups nested more than "
                         "250 deep"),
              std::string::npos)
        << error;
}

// What PCRE2 cannot match the JavaScript way is matched by the backtracking matcher
// (BacktrackMatcherTest has its cases): no pattern JavaScript accepts is refused for it.
TEST(FilterSyntax, AcceptsWhatPcre2CannotMatchTheJavaScriptWay) {
    for (const std::string pattern : {"(?<=a+)b", "(?<=\\1(a))b", "(?<=(\\w){2})c", "(a*)+",
                                      "(?:|a)+", "(?:\\1(a))+", "x{65536}"})
        EXPECT_EQ(taskErrorOf([&] { filter(pattern, ""); }), "no error") << pattern;
}

// A line that is not UTF-8 is matched byte by byte with the same meaning: a character of the
// pattern beyond ASCII stands for its UTF-8 bytes, a class for single ASCII bytes and, negated,
// for any other byte.
TEST(FilterSyntax, MatchesLinesThatAreNotUtf8ByteByByte) {
    const std::string line = "\xff"
                             "caf\xc3\xa9 \xc2\xa0";
    EXPECT_EQ(runLine(*filter("\\u00e9|\\s", "-"), Mode::Whole, line), "\xff"
                                                                       "caf--\xc2\xa0");
    EXPECT_EQ(runLine(*filter("[^a-z]", "-"), Mode::Whole, line), "-caf-----");
}

} // namespace
