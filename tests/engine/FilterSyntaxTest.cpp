#include "LineOperationRun.h"

#include <gtest/gtest.h>

using namespace morlevant;
using morlevant::testing::Mode;
using morlevant::testing::runLine;
using morlevant::testing::taskErrorOf;

namespace {

// Each pattern means what it means in JavaScript: the expected texts are those of
// line.replace(new RegExp(pattern, "g"), replaceWith), grouped by construct.
struct SyntaxCase {
    std::string pattern, replaceWith, line, replaced;
};

std::unique_ptr<LineOperation> filter(const std::string& pattern, const std::string& replaceWith) {
    TaskPageSettings settings;
    settings.filterPattern = pattern;
    settings.filterReplacement = replaceWith;
    return makeFilter(settings, 1);
}

class MeansWhatJavaScriptMeans : public ::testing::TestWithParam<SyntaxCase> {};

TEST_P(MeansWhatJavaScriptMeans, Replaces) {
    const SyntaxCase& c = GetParam();
    EXPECT_EQ(runLine(*filter(c.pattern, c.replaceWith), Mode::Whole, c.line), c.replaced)
        << "/" << c.pattern << "/ with " << c.replaceWith;
}

INSTANTIATE_TEST_SUITE_P(WhiteSpace, MeansWhatJavaScriptMeans,
                         ::testing::Values(SyntaxCase{"\\s", "",
                                                      "a\xc2\xa0"
                                                      "b\xe3\x80\x80"
                                                      "c\xef\xbb\xbf"
                                                      "d\xe2\x80\x83"
                                                      "e",
                                                      "abcde"},
                                           SyntaxCase{"[\\s]+", "_",
                                                      "a \xe1\x9a\x80\xe2\x80\xa8"
                                                      "b",
                                                      "a_b"},
                                           SyntaxCase{"[^\\S]", "-",
                                                      "a\xe2\x80\xaf"
                                                      "b",
                                                      "a-b"},
                                           SyntaxCase{"\\S+", "<$&>", "x\xc2\xa0y",
                                                      "<x>\xc2\xa0<y>"}));

INSTANTIATE_TEST_SUITE_P(ControlEscapes, MeansWhatJavaScriptMeans,
                         ::testing::Values(SyntaxCase{"\\v", "-",
                                                      "a\x0c"
                                                      "b\x0b"
                                                      "c",
                                                      "a\x0c"
                                                      "b-c"},
                                           SyntaxCase{"\\cA\\cz", "-", "\x01\x1a", "-"},
                                           SyntaxCase{"\\c1", "-", "\\c1", "-"},
                                           SyntaxCase{"[\\c1\\c_]", "-", "\x11\x1f", "--"}));

INSTANTIATE_TEST_SUITE_P(EmptyClasses, MeansWhatJavaScriptMeans,
                         ::testing::Values(SyntaxCase{"[]?\\d", "<$&>", "a1", "a<1>"},
                                           SyntaxCase{"[]{0}", "-", "ab", "-a-b-"},
                                           SyntaxCase{"a[^]*c", "-", "abxc", "-"},
                                           SyntaxCase{"[^]", ".", "a\xe2\x80\xa8", ".."},
                                           SyntaxCase{".", "-",
                                                      "a\xe2\x80\xa8"
                                                      "b",
                                                      "-\xe2\x80\xa8-"}));

INSTANTIATE_TEST_SUITE_P(BackReferences, MeansWhatJavaScriptMeans,
                         ::testing::Values(SyntaxCase{"(c)?\\1+y", "<$&>", "y", "<y>"},
                                           SyntaxCase{"(c)?\\1{2,}y", "<$&>", "y", "<y>"},
                                           SyntaxCase{"\\1(a)", "-", "aa", "--"},
                                           SyntaxCase{"(a)\\2", "-", "a\x02", "-"},
                                           SyntaxCase{"(?<n>.)\\k<n>", "[$<n>]", "xxyz", "[x]yz"},
                                           SyntaxCase{"(a)\\10", "-", "aa0", "aa0"}));

INSTANTIATE_TEST_SUITE_P(
    LegacyEscapes, MeansWhatJavaScriptMeans,
    ::testing::Values(
        SyntaxCase{"\\u{41}", "-", "uuuuuuuuuuuuuuuuuuuuuuuuuuuuuuuuuuuuuuuuuA", "-A"},
        SyntaxCase{"\\G", "-", "aGc", "a-c"},
        SyntaxCase{"\\A\\Z\\h\\e\\R\\K\\Q", "-", "AZheRKQ", "-"},
        SyntaxCase{"\\p{L}", "-", "p{L}", "-"}, SyntaxCase{"\\8\\9\\o\\y", "-", "89oy", "-"},
        SyntaxCase{"\\18", "-",
                   "\x01"
                   "8",
                   "-"},
        SyntaxCase{"\\377\\400", "-", "\xc3\xbf 0", "-"},
        SyntaxCase{"\\x4g\\x41", "-", "x4gA", "-"}, SyntaxCase{"a{,2}]}", "-", "a{,2}]}", "-"},
        // Two escaped halves of a UTF-16 pair are the one character they make.
        SyntaxCase{"\\uD83D\\uDE00", "-", "a\xf0\x9f\x98\x80", "a-"}));

INSTANTIATE_TEST_SUITE_P(Classes, MeansWhatJavaScriptMeans,
                         ::testing::Values(SyntaxCase{"[\\d-z]", "-", "5-za", "---a"},
                                           SyntaxCase{"[a-\\d]", "-", "a-5b", "---b"},
                                           SyntaxCase{"[[:digit:]]", "-", "5d:]", "5d-"},
                                           SyntaxCase{"[\\b]", "-", "\x08", "-"},
                                           SyntaxCase{"[\\c]", "-", "\\c", "--"},
                                           SyntaxCase{"[\\1\\8]", "-",
                                                      "\x01"
                                                      "8",
                                                      "--"}));

INSTANTIATE_TEST_SUITE_P(GroupNames, MeansWhatJavaScriptMeans,
                         ::testing::Values(SyntaxCase{"(?<$a>x)", "[$<$a>]", "x", "[x]"},
                                           SyntaxCase{"(?<\\u0061b>x)", "[$<ab>]", "x", "[x]"},
                                           SyntaxCase{"(?<\xc3\xa9>x)", "[$<\xc3\xa9>]", "x",
                                                      "[x]"}));

INSTANTIATE_TEST_SUITE_P(RepeatedGroups, MeansWhatJavaScriptMeans,
                         ::testing::Values(SyntaxCase{"(?:(a)|b)+", "[$1]", "ab", "[]"},
                                           SyntaxCase{"(?:(a)|(b))+", "[$1|$2]", "abba", "[a|]"},
                                           SyntaxCase{"(?:a(b)?)+", "[$1]", "aba", "[]"},
                                           SyntaxCase{"(?:(x)?y)+", "[$1]", "xyy", "[]"},
                                           SyntaxCase{"(?:(a)|b\\1)+", "[$1]", "ab", "[]"},
                                           SyntaxCase{"(|)*", "[$1]", "a", "[]a[]"},
                                           SyntaxCase{"()+", "[$1]", "a", "[]a[]"},
                                           SyntaxCase{"(?:a|)+", "[$&]", "aa", "[aa][]"},
                                           SyntaxCase{"(?:(a)b*?)+", "[$1]", "aab", "[a]b"}));

INSTANTIATE_TEST_SUITE_P(
    Lookarounds, MeansWhatJavaScriptMeans,
    ::testing::Values(SyntaxCase{"(?=a)*b", "-", "ab", "a-"},
                      SyntaxCase{"(?=(a))+", "[$1]", "a", "[a]a"},
                      SyntaxCase{"(?=(a))?a", "[$1]", "a", "[]"},
                      SyntaxCase{"(?<=a|bc)x", "-", "bcx", "bc-"},
                      SyntaxCase{"(?<=(\\w)\\w)c", "[$1]", "abc", "ab[a]"},
                      // Never repeated, an atom with a lookahead matches the empty text everywhere.
                      SyntaxCase{"(?:x|(?=b)){0}", "-", "dba", "-d-b-a-"},
                      SyntaxCase{"(?<=a{0}b)c", "-", "bc", "b-"},
                      SyntaxCase{"(?:(?<=a|(b)c)x)+", "[$1]", "bcxax", "bc[b]a[]"}));

// Where JavaScript throws a SyntaxError the filter stops before any file is written, naming
// the cause and the position; constructs PCRE2 cannot match the JavaScript way are refused too,
// never matched differently.
TEST(FilterSyntax, RefusesWhatJavaScriptRefuses) {
    const struct {
        std::string pattern, message;
    } cases[] = {
        {"(?i)a", "is not valid: invalid group at position 0"},
        {"a++", "nothing to repeat at position 2"},
        {"a{1}??", "nothing to repeat at position 5"},
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

TEST(FilterSyntax, RefusesWhatPcre2CannotMatchTheJavaScriptWay) {
    const struct {
        std::string pattern, construct;
    } cases[] = {
        {"(?<=a+)b", "a lookbehind whose text has no fixed length at position 0"},
        {"(?<=\\1(a))b", "no fixed length"},
        {"(?<=(\\w){2})c", "a capturing group repeated inside a lookbehind"},
        {"(a*)+", "can match the empty text and holds a capturing group at position 0"},
        {"(?:|a)+", "can match the empty text before trying longer texts"},
        {"(?:a?"
         "?)*",
         "can match the empty text before trying longer texts"},
        {"(?:\\1(a))+", "a back-reference inside a repeated group to a group of it"},
        {"(a\\1)*", "a back-reference inside a repeated group to a group of it"},
        {"x{65536}", "a repeat count above 65535"},
    };
    for (const auto& c : cases) {
        const std::string error = taskErrorOf([&] { filter(c.pattern, ""); });
        EXPECT_NE(error.find("cannot be matched as JavaScript matches it: "), std::string::npos)
            << error;
        EXPECT_NE(error.find(c.construct), std::string::npos) << error;
    }
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
