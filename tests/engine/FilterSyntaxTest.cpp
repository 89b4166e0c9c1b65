#include "tests/engine/RangedRoutineRun.h"

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

std::unique_ptr<RangedRoutine> filter(const std::string& pattern, const std::string& replaceWith) {
    TaskPageSettings settings;
    settings.filterPattern = pattern;
    settings.filterReplacement = replaceWith;
    return makeFilter(settings, 1);
}

// Characters beyond ASCII are written as \u escapes, which the compiler stores as UTF-8.
const SyntaxCase syntaxCases[] = {
    // White space of \s and \S, also in classes.
    {"\\s", "", "a\u00a0b\u3000c\ufeffd\u2003e", "abcde"},
    {"[\\s]+", "_", "a \u1680\u2028b", "a_b"},
    {"[^\\S]", "-", "a\u202fb", "a-b"},
    {"\\S+", "<$&>", "x\u00a0y", "<x>\u00a0<y>"},
    // Control escapes.
    {"\\v", "-", "a\fb\vc", "a\fb-c"},
    {"\\cA\\cz", "-", "\001\032", "-"},
    {"\\c1", "-", "\\c1", "-"},
    {"[\\c1\\c_]", "-", "\021\037", "--"},
    // Empty classes.
    {"[]?\\d", "<$&>", "a1", "a<1>"},
    {"[]{0}", "-", "ab", "-a-b-"},
    {"a[^]*c", "-", "abxc", "-"},
    {"[^]", ".", "a\u2028", ".."},
    {".", "-", "a\u2028b", "-\u2028-"},
    // Back-references.
    {"(c)?\\1+y", "<$&>", "y", "<y>"},
    {"(c)?\\1{2,}y", "<$&>", "y", "<y>"},
    {"\\1(a)", "-", "aa", "--"},
    {"(a)\\2", "-", "a\002", "-"},
    {"(?<n>.)\\k<n>", "[$<n>]", "xxyz", "[x]yz"},
    {"(a)\\10", "-", "aa0", "aa0"},
    // Legacy escapes.
    {"\\u{41}", "-", std::string(41, 'u') + "A", "-A"},
    {"\\G", "-", "aGc", "a-c"},
    {"\\A\\Z\\h\\e\\R\\K\\Q", "-", "AZheRKQ", "-"},
    {"\\p{L}", "-", "p{L}", "-"},
    {"\\8\\9\\o\\y", "-", "89oy", "-"},
    {"\\18", "-", "\0018", "-"},
    {"\\377\\400", "-", "\u00ff 0", "-"},
    {"\\x4g\\x41", "-", "x4gA", "-"},
    {"a{,2}]}", "-", "a{,2}]}", "-"},
    // Two escaped halves of a UTF-16 pair are the one character they make.
    {"\\uD83D\\uDE00", "-", "a\U0001F600", "a-"},
    // Classes.
    {"[\\d-z]", "-", "5-za", "---a"},
    {"[a-\\d]", "-", "a-5b", "---b"},
    {"[[:digit:]]", "-", "5d:]", "5d-"},
    {"[\\b]", "-", "\b", "-"},
    {"[\\c]", "-", "\\c", "--"},
    {"[\\1\\8]", "-", "\0018", "--"},
    // Group names.
    {"(?<$a>x)", "[$<$a>]", "x", "[x]"},
    {"(?<\\u0061b>x)", "[$<ab>]", "x", "[x]"},
    {"(?<\u00e9>x)", "[$<\u00e9>]", "x", "[x]"},
    // Repeated groups.
    {"(?:(a)|b)+", "[$1]", "ab", "[]"},
    {"(?:(a)|(b))+", "[$1|$2]", "abba", "[a|]"},
    {"(?:a(b)?)+", "[$1]", "aba", "[]"},
    {"(?:(x)?y)+", "[$1]", "xyy", "[]"},
    {"(?:(a)|b\\1)+", "[$1]", "ab", "[]"},
    {"(|)*", "[$1]", "a", "[]a[]"},
    {"()+", "[$1]", "a", "[]a[]"},
    {"(?:a|)+", "[$&]", "aa", "[aa][]"},
    {"(?:(a)b*?)+", "[$1]", "aab", "[a]b"},
    // Lookarounds.
    {"(?=a)*b", "-", "ab", "a-"},
    {"(?=(a))+", "[$1]", "a", "[a]a"},
    {"(?=(a))?a", "[$1]", "a", "[]"},
    {"(?<=a|bc)x", "-", "bcx", "bc-"},
    {"(?<=(\\w)\\w)c", "[$1]", "abc", "ab[a]"},
    // Never repeated, an atom with a lookahead matches the empty text everywhere.
    {"(?:x|(?=b)){0}", "-", "dba", "-d-b-a-"},
    {"(?<=a{0}b)c", "-", "bc", "b-"},
    {"(?:(?<=a|(b)c)x)+", "[$1]", "bcxax", "bc[b]a[]"},
};

TEST(FilterSyntax, MeansWhatJavaScriptMeans) {
    for (const SyntaxCase& c : syntaxCases)
        EXPECT_EQ(runLine(*filter(c.pattern, c.replaceWith), Mode::Whole, c.line), c.replaced)
            << "/" << c.pattern << "/ with " << c.replaceWith;
}

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
        // Found by fuzzing: lengths too large to add up once overflowed, and thousands of nested
        // groups exhausted the parser's stack.
        {"(?<=a{40000}a{40000}.{2147483647})b", "no fixed length"},
        {std::string(5000, '(') + std::string(5000, ')'), "groups nested more than 250 deep"},
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
