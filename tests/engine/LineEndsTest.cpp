#include "engine/text/LineEnds.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <string>

using namespace morlevant;

namespace {

LineEndCount countOneByOne(const std::string& text) {
    LineEndCount count;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\r' && text[i] != '\n')
            continue;
        const bool crLf = text.compare(i, 2, "\r\n") == 0;
        ++count.lines;
        count.allCrLf = count.allCrLf && crLf;
        count.loneCr = count.loneCr || (text[i] == '\r' && !crLf);
        i += crLf ? 1 : 0;
    }
    return count;
}

std::string withCrLfEnds(const std::string& text) {
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\r' && text[i] != '\n') {
            out += text[i];
            continue;
        }
        out += "\r\n";
        i += text.compare(i, 2, "\r\n") == 0 ? 1 : 0;
    }
    return out;
}

// Texts of CR, LF and other bytes whose lengths cross the sixteen- and thirty-two-byte steps and
// the points where the per-lane counts are summed, a CR LF split across two steps included;
// copying them with CR LF ends agrees too.
TEST(LineEnds, CountsAgreeWithReadingByteByByte) {
    std::mt19937 random(7);
    // 255 steps of sixteen bytes are 4080, of thirty-two 8160.
    const std::size_t lengths[] = {0, 1, 2, 15, 16, 17, 31, 32, 33, 64, 65, 98, 4081, 8169, 16370};
    const std::string alphabets[] = {"\r\nx", "\nxxxxxxx", "\r\n\r\n\r\nx"};
    for (const std::string& alphabet : alphabets) {
        for (const std::size_t length : lengths) {
            for (int round = 0; round < 20; ++round) {
                std::string text(length, 'x');
                for (char& c : text)
                    c = alphabet[random() % alphabet.size()];
                const LineEndCount expected = countOneByOne(text);
                const LineEndCount counted = countLineEnds(text);
                ASSERT_EQ(counted.lines, expected.lines) << length;
                ASSERT_EQ(counted.allCrLf, expected.allCrLf) << length;
                ASSERT_EQ(counted.loneCr, expected.loneCr) << length;
                ASSERT_EQ(findCrOrLf(text), std::min(text.find_first_of("\r\n"), text.size()));
                std::string copied(2 * length, '?');
                copied.resize(copyWithCrLfEnds(text, copied.data()) - copied.data());
                ASSERT_EQ(copied, withCrLfEnds(text)) << length;
            }
        }
    }
}

} // namespace
