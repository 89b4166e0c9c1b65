// Find and Replace, and Filter, over a file many blocks long: lines worked a block at a time
// give what working each line alone gives, wherever the blocks of the file are cut; where a
// pattern or replacement could tell the difference, the lines go one by one.
#include "engine/io/LineReader.h"
#include "engine/routines/Filter.h"
#include "taskdef/TextLines.h"
#include "tests/support/RunnerFixture.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <vector>

using namespace morlevant;
using namespace morlevant::testing;

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
    {"b", 1, "[$`]"}, {".", 1, "<$&>"},       {"[0-9]+", 3},    {"ab|7", 3},       {"b*", 3},
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

using Pairs = std::vector<std::pair<std::string, std::string>>;

// Each line alone, by the plain definition: every occurrence of a pair's find text, left to
// right, replaced in the result of the pair before; every line ended by CR LF.
std::string replacedLineByLine(const std::string& text, const Pairs& pairs) {
    std::string out;
    for (const std::string_view source : textLines(text)) {
        std::string line(source);
        for (const auto& [find, replaceWith] : pairs)
            for (std::size_t at = line.find(find); at != std::string::npos;
                 at = line.find(find, at + replaceWith.size()))
                line.replace(at, find.size(), replaceWith);
        out += line + "\r\n";
    }
    return out;
}

// Lines of text with matches, ending in turn in CR LF, LF and a lone CR, up to `size` bytes
// less the `ending` that then takes the text to exactly `size`.
void fillUpTo(std::string& text, std::size_t size, const std::string& ending) {
    static const char* const ends[] = {"\r\n", "\n", "\r"};
    const std::string words = "ab=c\xc3\xa9"
                              "cab ==abab c";
    for (std::size_t n = 0; text.size() + ending.size() + 40 < size; ++n)
        text += words.substr(n % 7, n % 23) + ends[n % 3];
    text.append(size - text.size() - ending.size(), 'a');
    text += ending;
}

void expectEachLineReplacedAlone(const Pairs& pairs) {
    constexpr std::size_t block = LineReader::blockSize;
    // A line emptied by the pairs after a lone CR: its LF must not join the CR as one end.
    std::string input = "x\rca\n";
    fillUpTo(input, block + 1, "ab\r\n"); // a CR LF cut by the end of the first block
    fillUpTo(input, 2 * block, "ab\r");   // a lone CR at a block's end
    input += "ab=";
    fillUpTo(input, 3 * block, "\n"); // an LF at a block's end
    input += std::string(block + 100, 'c') + "ab\xc3\xa9" + std::string(100, 'a') + "\r\n";
    input += std::string(block - 1 - input.size() % block, 'x') + "ab"; // "ab" cut by a block end
    input += "\n\n\r\r\n=ab"; // empty lines, then a last line without an end

    RunnerFixture fixture;
    fixture.set({{5, "4"}});
    int line = 11;
    for (const auto& [find, replaceWith] : pairs) {
        fixture.set({{line, find}, {line + 1, replaceWith}});
        line += 2;
    }
    fixture.writeSource("in.txt", input);
    fixture.run({"in.txt"});
    EXPECT_TRUE(fixture.messages.empty());
    EXPECT_EQ(fixture.result("in.txt.modify"), replacedLineByLine(input, pairs));
}

// Pairs that lengthen a line, then pairs that never do: those replace a line longer than a block
// where the reader holds it.
TEST(RunnerReplaceBlocks, GivesWhatEachLineReplacedAloneGives) {
    for (const std::string equals : {"==", ":"})
        expectEachLineReplacedAlone({{"ab", "X"}, {"=", equals}, {"\xc3\xa9", "e"}, {"ca", ""}});
}

} // namespace
