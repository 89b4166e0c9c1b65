// Find and Replace over a file many blocks long: lines that are replaced a block at a time
// give what replacing each line alone gives, wherever the blocks of the file are cut.
#include "engine/io/LineReader.h"
#include "tests/support/RunnerFixture.h"

#include <gtest/gtest.h>
#include <vector>

using namespace morlevant;
using morlevant::testing::Lines;
using morlevant::testing::RunnerFixture;

namespace {

using Pairs = std::vector<std::pair<std::string, std::string>>;

// Each line alone, by the plain definition: every occurrence of a pair's find text, left to
// right, replaced in the result of the pair before; every line ended by CR LF.
std::string replacedLineByLine(const std::string& text, const Pairs& pairs) {
    std::string out;
    std::size_t begin = 0;
    while (begin < text.size()) {
        std::size_t end = text.find_first_of("\r\n", begin);
        if (end == std::string::npos)
            end = text.size();
        std::string line = text.substr(begin, end - begin);
        for (const auto& [find, replaceWith] : pairs)
            for (std::size_t at = line.find(find); at != std::string::npos;
                 at = line.find(find, at + replaceWith.size()))
                line.replace(at, find.size(), replaceWith);
        out += line + "\r\n";
        begin = end + 1;
        if (end + 1 < text.size() && text[end] == '\r' && text[end + 1] == '\n')
            ++begin;
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

TEST(RunnerReplaceBlocks, GivesWhatEachLineReplacedAloneGives) {
    expectEachLineReplacedAlone({{"ab", "X"}, {"=", "=="}, {"\xc3\xa9", "e"}, {"ca", ""}});
}

// Pairs that never lengthen a line replace a line longer than a block where the reader holds
// it.
TEST(RunnerReplaceBlocks, ShorteningPairsGiveTheSameOverALongLine) {
    expectEachLineReplacedAlone({{"ab", "X"}, {"=", ":"}, {"\xc3\xa9", "e"}, {"ca", ""}});
}

} // namespace
