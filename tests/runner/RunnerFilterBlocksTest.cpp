// Filter over a file many blocks long: where the lines are filtered a block at a time, the
// result is what filtering each line alone gives; where a pattern or replacement could tell
// the difference, the lines go one by one.
#include "engine/io/LineReader.h"
#include "engine/routines/Filter.h"
#include "taskdef/TextLines.h"
#include "tests/support/RunnerFixture.h"

#include <algorithm>
#include <gtest/gtest.h>

using namespace morlevant;
using morlevant::testing::RunnerFixture;

namespace {

struct FilterCase {
    const char* pattern;
    int kind;
    const char* replaceWith = "";
};

// Patterns that stay within a line (taken a block at a time) and patterns that would see a line
// end, match emptily where a CR LF's LF stands, read the text around the match, or read a line
// that is not valid UTF-8 differently, were a block taken at once.
const FilterCase cases[] = {
    {"[0-9]+", 2},    {"(\\w+)=", 1, "[$1]"}, {"a*", 2},        {"a*", 1, "<$&>"}, {"\\s+", 2},
    {"[^a]+", 2},     {"^a|b$", 2},           {"(?<=\\s)b", 2}, {"b(?=\\s)", 2},   {"\\bab\\b", 2},
    {"b", 1, "[$`]"}, {".", 1, "<$&>"},       {"[0-9]+", 3},
};

std::string filteredLineByLine(const FilterCase& filterCase, const std::string& text) {
    TaskPageSettings settings;
    settings.filterPattern = filterCase.pattern;
    settings.filterReplacement = filterCase.replaceWith;
    Filter filter(settings, filterCase.kind);
    std::string out;
    std::string line;
    for (const std::string_view source : textLines(text)) {
        filter.FilterLine(source, line);
        out += line + "\r\n";
    }
    return out;
}

// Blocks of lines ending in CR LF and in LF; a lone CR and a line that is not valid UTF-8 each
// keep their block from going at once. Then a line of megabytes, whose result is written in
// parts, with a long stretch before its first match and many matches after; and a last line
// without an end.
std::string manyBlocks() {
    const std::string words[] = {"ab=12 ", "b a",   "b\xc3\xa9", "aab", "",
                                 "x=1 b",  "ab ab", "b\tab",     "7"};
    std::string text;
    for (std::size_t n = 0; text.size() < 3 * LineReader::blockSize; ++n) {
        text += words[n % 9] + words[n % 7] + (n % 3 == 0 ? "\n" : "\r\n");
        if (n == 2000)
            text += "b\r";
        if (n == 12000)
            text += "\xff b a\n";
    }
    text += std::string(1'200'000, ' ') + "b 12";
    for (int n = 0; n < 150'000; ++n)
        text += "12 x=3 ";
    return text + "\r\nab=";
}

TEST(RunnerFilterBlocks, GivesWhatEachLineFilteredAloneGives) {
    const std::string input = manyBlocks();
    for (const FilterCase& filterCase : cases) {
        SCOPED_TRACE(std::string(filterCase.pattern) + " kind " + std::to_string(filterCase.kind));
        RunnerFixture fixture;
        fixture.set({{5, "5"},
                     {19, std::to_string(filterCase.kind + 3)},
                     {23, filterCase.replaceWith},
                     {24, filterCase.pattern}});
        fixture.writeSource("in.txt", input);
        fixture.run({"in.txt"});
        // Compared without printing both: they are several blocks long.
        const std::string result = fixture.result("in.txt.modify");
        const std::string expected = filteredLineByLine(filterCase, input);
        const std::size_t same = static_cast<std::size_t>(
            std::mismatch(result.begin(), result.end(), expected.begin(), expected.end()).first -
            result.begin());
        EXPECT_TRUE(result == expected)
            << "they differ from byte " << same << ": \"" << result.substr(same, 30)
            << "\" against \"" << expected.substr(same, 30) << "\"";
    }
}

// A search that exceeds the engine's limits in a block is met again line by line: the error
// names the line where it happens.
TEST(RunnerFilterBlocks, ALimitExceededNamesItsLine) {
    RunnerFixture fixture;
    fixture.set({{5, "5"}, {19, "5"}, {24, "(a|aa)+b"}});
    std::string input;
    for (int line = 1; line < 40; ++line)
        input += line == 33 ? std::string(60, 'a') + "cb\n" : "aab\n";
    fixture.writeSource("in.txt", input);
    const std::string failure = fixture.failure({"in.txt"});
    EXPECT_NE(failure.find("in.txt, line 33: "), std::string::npos) << failure;
}

} // namespace
