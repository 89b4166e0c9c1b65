#include "engine/routines/Replacement.h"

#include "engine/ranges/TakeRangesOut.h"
#include "engine/text/LineColumns.h"
#include "engine/text/LineEnds.h"
#include "engine/text/Utf8.h"
#include "taskdef/RangePairs.h"
#include "tests/engine/RangedRoutineRun.h"

#include <array>
#include <gtest/gtest.h>
#include <random>
#include <vector>

using namespace morlevant;
using namespace morlevant::testing;

namespace {

struct ReplaceCase {
    std::array<std::string, 8> pairs; // find 1, replace 1, ... find 4, replace 4
    std::string columns;
    Mode mode;
    std::string line, expected;
};

std::array<std::string, 8> pair(const std::string& find, const std::string& replaceWith) {
    return {find, replaceWith, "", "", "", "", "", ""};
}

class ReplaceTable : public ::testing::TestWithParam<ReplaceCase> {};

TEST_P(ReplaceTable, ReplacesPlainTextInOrder) {
    const ReplaceCase& c = GetParam();
    TaskPageSettings settings;
    for (int i = 0; i < 8; ++i)
        settings.line(11 + i) = c.pairs[static_cast<std::size_t>(i)];
    settings.columnRange = c.columns;
    EXPECT_EQ(runLine(*made(makeReplacement, settings), c.mode, c.line), c.expected)
        << c.line << " with columns " << c.columns;
    EXPECT_EQ(morlevant::testing::runLongLine(*made(makeReplacement, settings), c.mode, c.line),
              c.expected)
        << c.line << " with columns " << c.columns << " as a long line";
}

INSTANTIATE_TEST_SUITE_P(
    Pairs, ReplaceTable,
    ::testing::Values(
        ReplaceCase{{"a", "b", "b", "c", "", "", "", ""}, "", Mode::Whole, "ab", "cc"},
        ReplaceCase{{"a", "aa", "", "", "", "", "aa", "b"}, "", Mode::Whole, "a", "b"},
        // Later pairs that shrink the text work on it where it lies: each still sees the
        // result of the one before, including bytes a shorter replacement moved.
        ReplaceCase{{"a", "bb", "bbb", "c", "bb", "", "\xac", "!"},
                    "",
                    Mode::Whole,
                    "aab\xe2\x82\xac\xac"
                    "aaa",
                    "c\xe2\x82\xac!cc"},
        ReplaceCase{pair("aa", "X"), "", Mode::Whole, "aaa", "Xa"},
        // Candidates that share the first, the last or no byte but the first with the find
        // text; a match that ends the line; a find text longer than the line.
        ReplaceCase{pair("aba", "X"), "", Mode::Whole, "aabaabab", "aXXb"},
        ReplaceCase{pair("axc", "Y"), "", Mode::Whole, "abcaxcax", "abcYax"},
        ReplaceCase{pair("ab", "X"), "", Mode::Whole, "aab", "aX"},
        ReplaceCase{pair("abcd", "X"), "", Mode::Whole, "abc", "abc"},
        ReplaceCase{pair("a", "aa"), "", Mode::Whole, "aa", "aaaa"}, // no rescanning
        ReplaceCase{pair("Abc", "X"), "", Mode::Whole, "abc", "abc"},
        ReplaceCase{pair("", "X"), "", Mode::Whole, "abc", "abc"},
        ReplaceCase{pair(".*", "$1"), "", Mode::Whole, "a.*b", "a$1b"}, // nothing special
        // Characters are compared: a lone byte never matches inside a multi-byte character.
        ReplaceCase{pair("\xac", "X"), "", Mode::Whole, "\xe2\x82\xac\xac", "\xe2\x82\xacX"},
        ReplaceCase{pair("\xe2\x82", "X"), "", Mode::Whole, "\xe2\x82\xac\xe2\x82",
                    "\xe2\x82\xacX"},

        ReplaceCase{pair("a", "X"), "1-3,5-6", Mode::Out, "abcdefaa", "Xbcef"},

        ReplaceCase{pair("a", "X"), "1-2,3-20", Mode::Out, "aaaaa", "XX"}, // past the end: dropped
        ReplaceCase{pair("cf", "X"), "2-3,6-7", Mode::Out, "abcdefgh", "bcfg"},
        ReplaceCase{pair("a", "X"), "", Mode::Out, "aba", "XbX"},
        // Ranges that are all empty select nothing; only a blank text means the whole line.
        ReplaceCase{pair("a", "X"), "3-2", Mode::Out, "abcdea", ""},
        ReplaceCase{pair("a", "X"), "1-3", Mode::InPlace, "aaaaa", "XXXaa"},
        ReplaceCase{pair("a", "XY"), "3-3,1-1", Mode::InPlace, "aaaa", "XYaXYa"},
        ReplaceCase{pair("a", "X"), "2-3,1-2", Mode::InPlace, "aaaaa", "XXaaa"},
        ReplaceCase{pair("\xc3\xa9", "e"), "2-2", Mode::InPlace, "\xc3\xa9\xc3\xa9",
                    "\xc3\xa9"
                    "e"}));

// A line replaced a part at a time, as a long line is, gives what it gives replaced whole,
// wherever the parts are cut: through occurrences, and between the bytes of a character, where a
// lone byte (0xA9, 0xC3, 0xF0) may match only as a character of its own.
TEST(Replacement, ALineInPartsGivesWhatItGivesWhole) {
    std::string line;
    for (int n = 0; n < 12; ++n)
        line += std::string(n % 4 == 1 ? "=ab\xc3x\xa9Q"
                                       : "ab=c\xc3\xa9"
                                         "cab =ab\xc3\xa9") +
                std::string(static_cast<std::size_t>(n), 'x') + "\xc3\xa9" + "b=b=\xa9" +
                (n % 3 == 0 ? "\xf0\x9f\x98\x80" : "\xe2\x82\xac\xf0");
    line += "=ab\xc3";
    const std::array<std::string, 8> pairSets[] = {
        {"ab", "XYZ", "=", "==", "\xc3\xa9", "e", "ca", ""},
        {"\xa9", "<A9>", "=ab\xc3", "#", "b=", "b==", "\xc3", "<C3>"},
        {"Q", "QQ", "\xa9", "<A9>", "\xf0", "<F0>", "xx", "y"},
        {"zz", "1", "ab", "abab", "bab", "-", "=", ""}};
    for (const auto& pairs : pairSets) {
        TaskPageSettings settings;
        for (int i = 0; i < 8; ++i)
            settings.line(11 + i) = pairs[static_cast<std::size_t>(i)];
        for (std::size_t partSize = 1; partSize <= 40; ++partSize) {
            Replacement replacement(settings, partSize);
            std::string whole, inParts, rest;
            replacement.ReplaceLine(line, whole);
            replacement.ReplaceLineSpilling(line, rest,
                                            [&](std::string_view part) { inParts += part; });
            EXPECT_EQ(inParts + rest, whole) << pairs[0] << " in parts of " << partSize;
        }
    }
}

// Occurrences are found wherever they fall across the steps of sixteen and thirty-two bytes in
// which candidates are tested, and a byte swapped for one or two bytes wherever it stands: the
// result is that of a search one position at a time.
TEST(Replacement, FindsWhatASearchByteByByteFinds) {
    const auto byteByByte = [](std::string text, const std::string& find, const std::string& to) {
        for (std::size_t at = text.find(find); at != std::string::npos;
             at = text.find(find, at + to.size()))
            text.replace(at, find.size(), to);
        return text;
    };
    std::mt19937 random(11);
    const std::string finds[] = {"=", "ab", "aba", "b=ab", "a=", "aab=b"};
    for (std::size_t length = 0; length < 200; length += 1 + length / 10) {
        for (int round = 0; round < 10; ++round) {
            std::string text(length, 'a');
            for (char& c : text)
                c = "aab="[random() % 4];
            for (const std::string& find : finds) {
                for (const std::string to : {"", "X", "ZW", "YYYYYY"}) {
                    TaskPageSettings settings;
                    settings.find1 = find;
                    settings.replace1 = to;
                    std::string out;
                    Replacement(settings).ReplaceLine(text, out);
                    ASSERT_EQ(out, byteByByte(text, find, to)) << text << " " << find;
                }
            }
        }
    }
    // A byte counted in a long run of it, past what a counter of one step holds.
    TaskPageSettings settings;
    settings.find1 = "=";
    settings.replace1 = "ZW";
    std::string out;
    Replacement(settings).ReplaceLine(std::string(4500, '='), out);
    EXPECT_EQ(out, byteByByte(std::string(4500, '='), "=", "ZW"));
}

// A block of lines with their column ranges worked in place at once gives what its lines give
// one by one: each range is a text of its own, which no occurrence crosses into or out of, and
// each pair sees the ranges' texts as the pairs before left them, among characters of several
// bytes and bytes that are not UTF-8.
TEST(Replacement, RangesInPlaceOverABlockGiveWhatEachLineGives) {
    std::mt19937 random(12);
    std::string lines;
    for (int n = 0; n < 300; ++n) {
        std::string line(random() % 24, ' ');
        for (char& c : line)
            c = "ab==a\xc3\xa9x\xa9"[random() % 9];
        lines += line + (n % 3 == 0 ? "\n" : n % 3 == 1 ? "\r\n" : "\r");
    }
    const std::array<std::string, 8> pairSets[] = {
        {"=", "==", "", "", "", "", "", ""},
        {"ab", "X", "a", "aa", "b=", "", "Xa", "ab"},
        {"\xc3\xa9", "e", "ea", "\xc3\xa9\xc3\xa9", "==", "=", "x", ""}};
    for (const std::string columns :
         {"10-99999999", "3-99999999", "1-2,4-6,7-9", "2-3,8-8,12-30", ""}) {
        for (const auto& pairs : pairSets) {
            TaskPageSettings settings;
            for (int i = 0; i < 8; ++i)
                settings.line(11 + i) = pairs[static_cast<std::size_t>(i)];
            settings.columnRange = columns;
            const auto routine = made(makeReplacement, settings);
            std::string expected;
            forEachLineWithEnd(lines, [&](std::string_view line, std::string_view end) {
                expected += runLine(*routine, Mode::InPlace, std::string(line));
                expected += end;
            });
            std::string out = "stale";
            ASSERT_TRUE(routine->takesManyLinesInPlace());
            ASSERT_TRUE(routine->manyLinesInPlace(lines, out));
            EXPECT_EQ(out, expected) << pairs[0] << " in columns " << columns;
        }
    }
}

// Column ranges taken out of a line, as the pages that take them out cut them.
struct TakeCase {
    std::string ranges, line, expected;
};

class TakeRangesOutTable : public ::testing::TestWithParam<TakeCase> {};

TEST_P(TakeRangesOutTable, CutsAndJoins) {
    LineColumns line;
    line.assign(GetParam().line);
    std::string out;
    TakeRangesOut(ColumnRanges(GetParam().ranges), line, out);
    EXPECT_EQ(out, GetParam().expected) << GetParam().ranges << " of " << GetParam().line;
}

INSTANTIATE_TEST_SUITE_P(
    Columns, TakeRangesOutTable,
    ::testing::Values(TakeCase{"2-3,6-7", "abcdefgh", "bcfg"},
                      TakeCase{"6-7,2-3", "abcdefgh", "fgbc"},   // written order, not sorted
                      TakeCase{"2-4,3-5", "abcdefgh", "bcdcde"}, // overlaps repeat
                      TakeCase{"9-12", "abcdefgh", ""},          // starts past the end
                      TakeCase{"", "abcdefgh", "abcdefgh"},      // blank: the whole line
                      TakeCase{"2-3", "äöüß", "öü"},             // characters, not bytes
                      TakeCase{"2-2",
                               "a\xff"
                               "b",
                               "\xff"},                        // an invalid byte is one character
                      TakeCase{"1-2", "\xe2\x82", "\xe2\x82"}, // a cut-off sequence is two
                      TakeCase{"0-2", "abc", "ab"},            // a zero bound does not crash
                      TakeCase{"3-1", "abc", ""},
                      // An ASCII start, then characters decoded as far as the ranges reach.
                      TakeCase{"8-9,5-6,1-2", "abcd\xc3\xa9\xe2\x82\xacxyz",
                               "yz\xc3\xa9\xe2\x82\xac"
                               "ab"},
                      TakeCase{"4-20", "abcd\xc3\xa9\xe2\x82\xacxyz", "d\xc3\xa9\xe2\x82\xacxyz"}));

// Positions beyond the ASCII start, asked for in any order, back and forth across the offsets
// kept, give what a walk from the line's start gives; those past the end give its size.
TEST(LineColumns, FindsPositionsInAnyOrder) {
    std::string text = "ab";
    for (int n = 0; n < 200; ++n)
        text += n % 7 == 0 ? "x" : n % 3 != 0 ? "\xc3\xa9" : "\xe2\x82\xac\xff";
    std::vector<std::size_t> starts; // of each character, counted from 0
    for (std::size_t at = 0; at < text.size(); at += utf8CharLength(text, at))
        starts.push_back(at);
    LineColumns line;
    line.assign(text);
    std::vector<std::size_t> positions = {150, 3, 149, 70, 66, 67, 2, 900, 68, 131, 0};
    for (std::size_t position = starts.size() + 2; position > 0; --position)
        positions.push_back(position);
    for (const std::size_t position : positions)
        EXPECT_EQ(line.byteOffset(position), position == 0               ? 0
                                             : position <= starts.size() ? starts[position - 1]
                                                                         : text.size())
            << "position " << position;
    EXPECT_EQ(line.length(), starts.size());
}

} // namespace
