#include "engine/routines/Filter.h"

#include "engine/regex/EcmaRegex.h"
#include "engine/text/LineEnds.h"
#include "tests/engine/RangedRoutineRun.h"

#include <cstring>
#include <gtest/gtest.h>
#include <random>

using namespace morlevant;
using namespace morlevant::testing;

namespace {

TaskPageSettings filter(const std::string& pattern, const std::string& replaceWith = "",
                        const std::string& columns = "") {
    TaskPageSettings settings;
    settings.filterPattern = pattern;
    settings.filterReplacement = replaceWith;
    settings.columnRange = columns;
    return settings;
}

struct FilterCase {
    std::string pattern, replaceWith;
    int kind;
    std::string line, expected;
};

class FilterLineTable : public ::testing::TestWithParam<FilterCase> {};

TEST_P(FilterLineTable, ReplacesDeletesOrOutputsMatches) {
    const FilterCase& c = GetParam();
    EXPECT_EQ(
        runLine(*made(makeFilter, filter(c.pattern, c.replaceWith), c.kind), Mode::Whole, c.line),
        c.expected)
        << "/" << c.pattern << "/ kind " << c.kind << " on " << c.line;
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, FilterLineTable,
    // differential.js compares the kinds on UTF-8 lines with JavaScript; this pins the case.
    ::testing::Values(FilterCase{"abc", "", 2, "ABC abc", "ABC "},
                      // A line that is not UTF-8 is matched byte by byte (\377 is the byte 0xff)
                      // with the same meaning: a character of the pattern beyond ASCII stands
                      // for its UTF-8 bytes, a class for single ASCII bytes and, negated, for
                      // any other byte.
                      FilterCase{".", "", 3, "a\377b", "a \377 b "},
                      FilterCase{"x*", "-", 1, "\377b", "-\377-b-"},
                      FilterCase{"\\u00e9|\\s", "-", 1, "\377caf\303\251 \302\240",
                                 "\377caf--\302\240"},
                      FilterCase{"[^a-z]", "-", 1, "\377caf\303\251 \302\240", "-caf-----"}));

// Finds every match of `pattern` in each subject from every start, as the search the filter
// makes (the fastest matcher for the pattern) and as the backtracking matcher, which matches
// the pattern as it is written, and expects the same matches with the same groups.
void expectFoundAsBacktrackerFinds(const char* pattern, const std::vector<std::string>& subjects) {
    EcmaRegex fastest(pattern);
    EcmaRegex backtracked(pattern, {}, EcmaRegex::Matcher::Backtracking);
    for (const std::string& subject : subjects) {
        fastest.setSubject(subject);
        backtracked.setSubject(subject);
        for (std::size_t start = 0; start <= subject.size(); ++start) {
            const bool found = backtracked.find(start);
            ASSERT_EQ(fastest.find(start), found)
                << pattern << " in " << subject << " from " << start;
            for (int group = 0; found && group <= backtracked.groupCount(); ++group) {
                ASSERT_EQ(fastest.group(group).data(), backtracked.group(group).data())
                    << pattern << " in " << subject << " from " << start;
                ASSERT_EQ(fastest.group(group), backtracked.group(group)) << pattern;
            }
        }
    }
}

std::vector<std::string> randomSubjects(std::vector<std::string> subjects, const char* characters,
                                        unsigned seed) {
    std::mt19937 random(seed);
    const std::size_t count = std::strlen(characters);
    for (int i = 0; i < 40; ++i) {
        std::string subject(random() % 60, ' ');
        for (char& c : subject)
            c = characters[random() % count];
        subjects.push_back(subject);
    }
    return subjects;
}

// A run of one set of ASCII characters, perhaps captured and followed by ASCII text, is found by
// a scan of the bytes rather than by PCRE2: it finds what the backtracking matcher finds, groups
// included, among characters of several bytes and in lines that are not UTF-8, from every start.
TEST(Filter, RunsOfOneAsciiSetAreFoundAsAMatcherFindsThem) {
    const auto subjects = randomSubjects(
        {"12a\303\2513 45", "\377x1\342\202\254xx_", "", "abc_9 ", "1.25 x.5 12.9 .7"},
        "ab=x19 _.\xc3\xa9", 3);
    for (const char* pattern :
         {"[0-9]+", "\\w+", "(?:[a-c])+", "x+", "[]+", "[0-9]+?", "(\\w+)=", "[0-9]+ab",
          "(?:(x+))=x", "(?<k>[a-b]+)= ", "a+a", "(?<=\\d\\.)\\d+", "(?<=\\d+\\.)\\d+",
          "(?<=a=)(\\w+)", "(?<=[ab]x)[0-9]+", "(?<=a)a+", "(?<=.=)\\w+", "(?<=\\.)(?:\\d)+"})
        expectFoundAsBacktrackerFinds(pattern, subjects);
}

// A lookbehind that starts with a repetition is shortened to one of fixed length, which PCRE2
// matches, where that does not change what it accepts.
TEST(Filter, LookbehindsShortenedAtTheirStartAcceptWhatTheyDid) {
    const auto subjects =
        randomSubjects({"1.25 x.5 12.", "\377ab=\303\251b"}, "ab=x19. _\xc3\xa9", 4);
    for (const char* pattern :
         {"(?<=\\d+\\.)\\d+", "(?<!a*b)x", "(?<=(?:a+|=)b)\\w", "(?<=[a-c]{2,}|x*)=", "(?<=a*b*)x",
          "(?<=a{2,5}x)", "(?<!\\W+)a", "(?<=(?:a|b+)+=)1"})
        expectFoundAsBacktrackerFinds(pattern, subjects);
}

// Deleting such runs (kind 2) or outputting them (kind 3) goes through a line's bytes in one
// pass, sixteen at a time, with no search per run, and replacing them (kind 1) takes the text
// after a run from masks of 64 bytes: each gives what each match of the backtracking matcher
// gives, whatever bytes the line holds, over a long line worked where it lies, and over a block
// of lines what the lines give one by one.
TEST(Filter, RunsFilteredInOnePassAsTheirMatchesAre) {
    std::mt19937 random(5);
    // Replacements in the usual form (a reference between two literal texts) and in others.
    const char* const replacements[] = {"<$1$&>", "[$&]", "$1]", "$&"};
    std::size_t count = 0;
    for (const char* pattern :
         {"[0-9]+", "\\w+", "(?:[a-c])+", "x+", "[ -/:-@]+", "[\\x00-\\x09]+",
          "(\\w+)=", "(\\d+)ab", "(\\d+)a0", "(?<=\\d-)\\d+", "(?<=\\d+:)\\d+", "(?<=a=)(\\w+)",
          "(?<=[ab]:)[0-9]+", "(?<=a)a+"}) {
        const char* const replacement = replacements[count++ % 4];
        EcmaRegex backtracked(pattern, {}, EcmaRegex::Matcher::Backtracking);
        const EcmaReplacement replaceWith(replacement, backtracked);
        for (const int kind : {1, 2, 3}) {
            const auto routine = made(makeFilter, filter(pattern, replacement), kind);
            std::string lines;
            std::string linesExpected;
            for (std::size_t length = 0; length < 150; length += 7) {
                std::string subject(length, ' ');
                for (char& c : subject) {
                    c = static_cast<char>(random() % 4 != 0 ? "09azAZ_=-:ab\x80\xff"[random() % 15]
                                                            : random() % 256);
                    if (c == '\r' || c == '\n')
                        c = '0';
                }
                // Runs that start within the text after the last match's run, and a long one.
                if (length == 7)
                    subject = "9a09a0 x_1=2=3 00ab0ab 0a00a0 abcdefghij0123456789_=x=";
                std::string replaced;
                std::string deleted;
                std::string output;
                std::size_t copied = 0;
                backtracked.setSubject(subject);
                for (std::size_t at = 0; backtracked.find(at); at = backtracked.matchEnd()) {
                    replaced.append(subject, copied, backtracked.matchStart() - copied);
                    replaceWith.expand(backtracked, subject, replaced);
                    deleted.append(subject, copied, backtracked.matchStart() - copied);
                    output += std::string(backtracked.group(0)) + " ";
                    copied = backtracked.matchEnd();
                }
                replaced.append(subject, copied);
                deleted.append(subject, copied);
                const std::string expected = kind == 1        ? replaced
                                             : kind == 2      ? deleted
                                             : output.empty() ? subject
                                                              : output;
                // A long line the same, worked where it lies.
                for (const auto run : {runLine, morlevant::testing::runLongLine})
                    ASSERT_EQ(run(*routine, Mode::Whole, subject), expected) << pattern;
                const char* end = length % 3 == 0 ? "\n" : length % 3 == 1 ? "\r\n" : "\r";
                lines += subject + end;
                linesExpected += expected + end;
            }
            std::string out;
            ASSERT_TRUE(routine->manyLines(lines, out));
            EXPECT_EQ(out, linesExpected) << pattern << " kind " << kind;
        }
    }
}

// A lookaround that cannot match a line end fails at one, in a block of lines, as it fails at the
// edge of a line alone: such patterns work a block at once. One that can match a line end
// (\s, [^a]) would see the next line and goes line by line.
TEST(Filter, LookaroundsAtLineEdgesWorkABlockAsItsLines) {
    const std::string lines = "x1.5 ax\n1.25\r\nx\ra \nxb.\r\n\nx";
    for (const auto& [pattern, byBlock] : {std::pair{"(?<=\\d\\.)\\d+", true},
                                           {"(?<![a-z])x", true},
                                           {"\\w(?![\\w.])", true},
                                           {"(?<=a|b\\.?)\\b\\w", true},
                                           {"(?<!\\s)x", false},
                                           {"[a-z](?=[^a])", false}}) {
        for (const int kind : {1, 2, 3}) {
            const auto routine = made(makeFilter, filter(pattern, "<$&>"), kind);
            std::string lineByLine;
            forEachLineWithEnd(lines, [&](std::string_view line, std::string_view end) {
                lineByLine += runLine(*routine, Mode::Whole, std::string(line));
                lineByLine += end;
            });
            std::string out;
            ASSERT_EQ(routine->takesManyLines(), byBlock) << pattern << " kind " << kind;
            if (byBlock && routine->manyLines(lines, out)) {
                EXPECT_EQ(out, lineByLine) << pattern << " kind " << kind;
            }
        }
    }
}

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
        const std::string error = taskErrorOf(
            [&] { runLine(*made(makeFilter, filter(c.pattern), c.kind), Mode::Whole, c.line); });
        EXPECT_NE(error.find(c.named), std::string::npos) << error;
    }
}

// Work that grows with the square of the line (a lookaround at every position that reads to the
// line's end or start) or runaway backtracking stops at the line's budget, whichever matcher
// takes the pattern: PCRE2 the first, the backtracking matcher the others.
TEST(Filter, WorkThatWouldRunAwayStopsAtTheLinesBudget) {
    std::string pairs;
    for (int i = 0; i < 100'000; ++i)
        pairs += "ab";
    const std::pair<std::string, std::string> cases[] = {
        {"(?=(a|b)*c)", pairs},
        {"(?<=^a*)a(?!a)", std::string(400'000, 'a')},
        {"^(?:|a|aa)+$", std::string(60, 'a') + "b"},
    };
    for (const auto& [pattern, line] : cases) {
        EcmaRegex regex(pattern, {std::chrono::milliseconds(50), {}});
        regex.setSubject(line);
        const std::string error = taskErrorOf([&] { regex.find(0); });
        EXPECT_NE(error.find("\"" + pattern + "\" takes too long on this line"), std::string::npos)
            << error;
    }
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
        const std::string error = taskErrorOf([&] { made(makeFilter, filter(c.pattern), 1); });
        EXPECT_NE(error.find("\"" + c.pattern + "\" "), std::string::npos) << error;
        EXPECT_NE(error.find(c.message), std::string::npos) << error;
    }
}

// Groups nested deeper than JavaScript's own parser needs are refused rather than read by a
// parser whose stack they would exhaust (found by fuzzing, with thousands of them).
TEST(FilterSyntax, RefusesGroupsNestedTooDeep) {
    const std::string pattern = std::string(5000, '(') + std::string(5000, ')');
    const std::string error = taskErrorOf([&] { made(makeFilter, filter(pattern), 1); });
    EXPECT_NE(error.find("cannot be matched as JavaScript matches it: groups nested more than "
                         "250 deep"),
              std::string::npos)
        << error;
}

} // namespace
