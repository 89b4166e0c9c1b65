// Scans that pass over text several bytes at a time agree with reading it byte by byte, and so do
// the reader and writer of lines, which work files in blocks, and the split of a text read whole.
#include "engine/io/LineReader.h"
#include "engine/io/LineWriter.h"
#include "engine/io/WriteBehind.h"
#include "engine/text/ByteSpread.h"
#include "engine/text/LineEnds.h"
#include "engine/text/Utf8.h"
#include "taskdef/TaskError.h"
#include "taskdef/TextLines.h"
#include "tests/support/TempDir.h"

#include <algorithm>
#include <deque>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

using namespace morlevant;
using namespace morlevant::testing;

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

// The kinds of steps by which bytes are spread out that this processor has.
std::vector<SpreadSteps> stepsHere() {
    std::vector<SpreadSteps> steps{SpreadSteps::Plain};
    for (const SpreadSteps wider : {SpreadSteps::Shuffle, SpreadSteps::Expansion})
        if (wider <= widestSpreadSteps())
            steps.push_back(wider);
    return steps;
}

// Texts of CR, LF and other bytes whose lengths cross the sixteen- and thirty-two-byte steps and
// the points where the per-lane counts are summed, a CR LF split across two steps included;
// copying them with CR LF ends agrees too.
TEST(LineEnds, CountsAgreeWithReadingByteByByte) {
    std::mt19937 random(7);
    // 255 steps of sixteen bytes are 4080, of thirty-two 8160.
    const std::size_t lengths[] = {0,  1,  2,  15, 16,  17,   31,   32,
                                   33, 63, 64, 65, 129, 4081, 8169, 16370};
    // Short lines, and long ones, which the copy takes by other steps.
    const std::string alphabets[] = {"\r\nx", "\nxxxxxxx", "\r\n\r\n\r\nx",
                                     std::string(70, 'x') + "\r\n"};
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
                // The lines walked give the text back, each cut at its first end, a CR LF whole.
                std::string walked;
                std::size_t ends = 0;
                forEachLineWithEnd(text, [&](std::string_view line, std::string_view end) {
                    ASSERT_EQ(line.find_first_of("\r\n"), std::string_view::npos);
                    walked.append(line).append(end);
                    ends += end.empty() ? 0 : 1;
                    if (end == "\r" && walked.size() < text.size()) {
                        ASSERT_NE(text[walked.size()], '\n');
                    }
                });
                ASSERT_EQ(walked, text);
                ASSERT_EQ(ends, expected.lines);
                // As much room as the copy may need, and no more: a store past it is caught by
                // AddressSanitizer, which the tests are built with in CI. Every kind of steps
                // the processor has copies the same.
                for (const SpreadSteps steps : stepsHere()) {
                    std::string copied(length + expected.lines + crLfCopySpare, '?');
                    copied.resize(copyWithCrLfEnds(text, copied.data(), steps) - copied.data());
                    ASSERT_EQ(copied, withCrLfEnds(text)) << length;
                }
            }
        }
    }
}

// A byte made two, as find and replace makes "=" "==", by every kind of steps: the result's
// length crosses the sixteen- and thirty-two-byte steps with the byte nowhere, everywhere and
// anywhere between.
TEST(ByteSpread, EveryKindOfStepsMakesTheByteTwo) {
    std::mt19937 random(9);
    for (std::size_t length = 0; length <= 100; ++length) {
        for (const std::string alphabet : {"x", "=", "=x", "xxxxxx="}) {
            std::string text(length, 'x');
            for (char& c : text)
                c = alphabet[random() % alphabet.size()];
            std::string expected;
            for (const char c : text)
                expected += c == '=' ? std::string("<>") : std::string(1, c);
            for (const SpreadSteps steps : stepsHere()) {
                std::string made(expected.size() + 32, '?');
                made.resize(copyWithByteMadeTwo(text, '=', '<', '>', made.data(), steps) -
                            made.data());
                ASSERT_EQ(made, expected) << text;
            }
        }
    }
}

// An invalid byte is found wherever it falls among runs of ASCII, which are passed over in
// steps of eight bytes, and a valid character between such runs does not end the check.
TEST(Utf8, ValidityAtEveryPositionAmongAscii) {
    const std::string pieces[] = {"\x80", "\xc3", "\xe2\x82", "\xed\xa0\x80", "\xf5\x80\x80\x80"};
    for (std::size_t before = 0; before <= 17; ++before) {
        for (std::size_t after = 0; after <= 9; after += 9) {
            const std::string head(before, 'a');
            const std::string tail(after, 'b');
            for (const std::string& bad : pieces)
                EXPECT_FALSE(isValidUtf8(head + bad + tail)) << before << " " << after;
            EXPECT_TRUE(isValidUtf8(head + "\xc3\xa9" + tail + "\xf0\x9f\x98\x80" + head));
            EXPECT_FALSE(isValidUtf8(head + "\xc3\xa9" + tail + "\xff" + head));
        }
    }
    EXPECT_TRUE(isValidUtf8(""));
}

using Lines = std::vector<std::string>;

// Reading the file, or splitting its text read whole, gives the lines; copying them, in counts
// that stop at any line, gives each line ended by CR LF.
void expectLines(const std::string& bytes, const Lines& lines) {
    const std::vector<std::string_view> split = textLines(bytes);
    EXPECT_EQ(Lines(split.begin(), split.end()), lines);
    TempDir dir;
    writeBytes(dir.file("in.txt"), bytes);
    Lines read;
    LineReader reader(dir.file("in.txt"));
    for (std::string_view line; reader.next(line);)
        read.emplace_back(line);
    EXPECT_EQ(read, lines);

    // Taking whole blocks of lines where they can be, each block handed over and the oldest of
    // three handed back as a spare, as a page's threads do, gives the same lines; the reader
    // never writes to a block it handed over.
    Lines taken;
    LineReader blocks(dir.file("in.txt"));
    struct Held {
        AlignedBlock block;
        std::string_view lines; // where they lie in the block
        std::string copy;
    };
    std::deque<Held> held;
    while (true) {
        for (const Held& block : held)
            ASSERT_EQ(block.lines, block.copy);
        std::string_view some;
        if (bool allCrLf = false; blocks.nextLines(some, allCrLf)) {
            AlignedBlock spare;
            if (held.size() == 3) {
                spare = std::move(held.front().block);
                held.pop_front();
            }
            held.push_back({blocks.handOverBlock(std::move(spare)), some, std::string(some)});
            forEachLine(some, [&](std::string_view line) { taken.emplace_back(line); });
            continue;
        }
        if (!blocks.next(some))
            break;
        taken.emplace_back(some);
    }
    EXPECT_EQ(taken, lines);

    std::string eachLineWritten;
    for (const std::string& line : lines)
        eachLineWritten += line + "\r\n";
    for (const std::size_t count :
         {std::size_t{1}, std::size_t{2}, std::size_t{3}, std::size_t{1000}}) {
        LineReader copied(dir.file("in.txt"));
        LineWriter writer(dir.file("copy.txt"), LineWriter::Mode::Truncate);
        while (copied.copyLines(count, writer) == count)
            ;
        EXPECT_EQ(copied.lineNumber(), lines.size()) << count;
        writer.close();
        EXPECT_EQ(readBytes(dir.file("copy.txt")), eachLineWritten) << count;
    }
}

TEST(Reader, SplitsAtCrLfLfAndLoneCr) {
    const std::pair<std::string, Lines> cases[] = {
        {"", {}},
        {"a\r\nb\r\n", {"a", "b"}},
        {"a\rb\r", {"a", "b"}},
        {"\n\n", {"", ""}},
        {"a\n\rb", {"a", "", "b"}},
        {"a\r\r\n\nb", {"a", "", "", "b"}},
        {"a\nb\nc\rd\r\ne\nf", {"a", "b", "c", "d", "e", "f"}},
        {"\xff\xfe\r\n\x80", {"\xff\xfe", "\x80"}},
        // Ends before, at and after eight-byte steps of the search for them.
        {"abcdefgh\r\nabcdefghi\nabcdefghijklmno\rabcdefghijklmnop\r\nq",
         {"abcdefgh", "abcdefghi", "abcdefghijklmno", "abcdefghijklmnop", "q"}},
        {"abcdefg\n\rabcdefghij\r\nabcdefghijklmnopqrstuvw\nxyz\r",
         {"abcdefg", "", "abcdefghij", "abcdefghijklmnopqrstuvw", "xyz"}},
        {"abcdefghijkl\nmnopqrstuvwx\nabcdefghijklmnopq\rrs\n",
         {"abcdefghijkl", "mnopqrstuvwx", "abcdefghijklmnopq", "rs"}},
    };
    for (const auto& [bytes, expected] : cases) {
        SCOPED_TRACE(::testing::PrintToString(bytes));
        expectLines(bytes, expected);
    }
}

TEST(Reader, LinesAcrossBlockBoundaries) {
    // Every kind of line end just before, on and after the end of a block (a CR LF split
    // between two blocks among them), lines longer than a block, and no final line end.
    Lines lines;
    std::string bytes;
    const std::size_t block = LineReader::blockSize;
    for (const char* end : {"\r\n", "\n", "\r"}) {
        // Its end starts on the last but one, the last and the first byte of a block.
        for (const std::size_t at : {block - 2, block - 1, block}) {
            lines.emplace_back((at - bytes.size() % block + block) % block, 'x');
            bytes += lines.back() + end;
        }
        lines.emplace_back(2 * block + 5, 'y');
        bytes += lines.back() + end;
    }
    lines.push_back("last");
    bytes += "last";
    expectLines(bytes, lines);

    // Short lines over several blocks, whose starts at the ends of blocks are read again with
    // the next block: all with CR LF ends, then with ends of every kind.
    for (const Lines& ends : {Lines{"\r\n"}, Lines{"\r\n", "\n", "\r"}}) {
        std::mt19937 random(11);
        lines.clear();
        bytes.clear();
        while (bytes.size() < 3 * block) {
            // Not empty: a line after a lone CR would otherwise join it as CR LF.
            lines.emplace_back(1 + random() % 40, static_cast<char>('a' + random() % 26));
            bytes += lines.back() + ends[random() % ends.size()];
        }
        expectLines(bytes, lines);
    }
}

TEST(Writer, EndsEveryLineWithCrLfAroundAndBeyondItsBuffer) {
    // An empty line, a line that runs past the end of a write, one longer than the buffer and
    // one of megabytes; then an appending writer abandoned by a failure after writing past its
    // buffer leaves the file as it was, and one that closes appends, its writes starting within
    // a write's length. The same when the writes are made behind, on a thread of their own.
    for (const auto writes : {LineWriter::Writes::OnCaller, LineWriter::Writes::Behind}) {
        TempDir dir;
        const std::string path = dir.file("out.txt");
        const std::string half(LineWriter::writeSize / 2, 'h');
        const std::string whole(LineWriter::bufferSize + 3, 'w');
        const std::string huge(3'000'000, 'u');
        {
            LineWriter writer(path, LineWriter::Mode::Truncate, writes);
            for (const std::string& line : {std::string(), half, half, whole, huge, half})
                writer.writeLine(line);
            writer.close();
        }
        const std::string crlf = "\r\n";
        const std::string written =
            crlf + half + crlf + half + crlf + whole + crlf + huge + crlf + half + crlf;
        {
            LineWriter abandoned(path, LineWriter::Mode::Append, writes);
            abandoned.writeLine(huge);
            abandoned.writeLine("dropped");
        }
        EXPECT_EQ(readBytes(path), written);
        EXPECT_FALSE(std::filesystem::exists(ResultFile::temporaryPath(path)));
        LineWriter appending(path, LineWriter::Mode::Append, writes);
        appending.writeLine(whole);
        appending.writeLine("kept");
        appending.close();
        EXPECT_EQ(readBytes(path), written + whole + crlf + "kept" + crlf);
    }
}

// Bytes written behind go out in writes that end where the file's length is a multiple of a
// writer's write, whatever length it started from; a write that fails reaches the thread that
// hands the bytes over, by a later write or by finish(), and no write is made after it.
TEST(Writer, WritesBehindEndOnWholeWritesAndStopAtAFailure) {
    const std::string block(100'000, 'b');
    for (const int failAt : {0, 3}) {
        std::vector<std::size_t> ends; // the file's length after each write
        int writesAfterFailure = 0;
        bool failed = false;
        {
            WriteBehind behind(
                [&](const char*, std::size_t size) {
                    writesAfterFailure += failed ? 1 : 0;
                    if (static_cast<int>(ends.size()) + 1 == failAt) {
                        failed = true;
                        throw TaskError("disk full");
                    }
                    ends.push_back((ends.empty() ? 1000 : ends.back()) + size);
                },
                1000);
            const auto handOverAll = [&] {
                for (int i = 0; i < 100; ++i)
                    behind.write(block.data(), block.size());
                behind.finish();
            };
            if (failAt > 0)
                EXPECT_THROW(handOverAll(), TaskError);
            else
                handOverAll();
        }
        EXPECT_EQ(writesAfterFailure, 0);
        if (failAt == 0) {
            EXPECT_EQ(ends.back(), 1000 + 100 * block.size());
            for (std::size_t i = 0; i + 1 < ends.size(); ++i)
                EXPECT_EQ(ends[i] % LineWriter::writeSize, 0U) << i;
        }
    }
}

} // namespace
