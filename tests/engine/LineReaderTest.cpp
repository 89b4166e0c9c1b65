#include "engine/LineReader.h"

#include "engine/LineWriter.h"
#include "tests/engine/RangedRoutineRun.h"
#include "tests/support/TempDir.h"

#include <gtest/gtest.h>
#include <vector>

using namespace morlevant;
using morlevant::testing::TempDir;

namespace {

std::vector<std::string> readLines(const std::string& path) {
    LineReader reader(path);
    std::vector<std::string> lines;
    std::string_view line;
    while (reader.next(line))
        lines.emplace_back(line);
    return lines;
}

using Lines = std::vector<std::string>;

struct LineEndCase {
    std::string bytes;
    Lines expected;
};

class LineEnds : public ::testing::TestWithParam<LineEndCase> {};

TEST_P(LineEnds, SplitsAtCrLfLfAndLoneCr) {
    TempDir dir;
    morlevant::testing::writeBytes(dir.file("in.txt"), GetParam().bytes);
    EXPECT_EQ(readLines(dir.file("in.txt")), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Reader, LineEnds,
    ::testing::Values(LineEndCase{"", {}}, LineEndCase{"a", {"a"}},
                      LineEndCase{"a\r\nb\r\n", {"a", "b"}}, LineEndCase{"a\nb", {"a", "b"}},
                      LineEndCase{"a\rb\r", {"a", "b"}}, LineEndCase{"\n\n", {"", ""}},
                      LineEndCase{"a\r\rb", {"a", "", "b"}}, LineEndCase{"a\n\rb", {"a", "", "b"}},
                      LineEndCase{"a\r\r\n\nb", {"a", "", "", "b"}},
                      LineEndCase{"a\nb\nc\rd\r\ne\nf", {"a", "b", "c", "d", "e", "f"}},
                      LineEndCase{"\xff\xfe\r\n\x80", {"\xff\xfe", "\x80"}},
                      // Ends before, at and after eight-byte steps of the search for them.
                      LineEndCase{
                          "abcdefgh\r\nabcdefghi\nabcdefghijklmno\rabcdefghijklmnop\r\nq",
                          {"abcdefgh", "abcdefghi", "abcdefghijklmno", "abcdefghijklmnop", "q"}},
                      LineEndCase{"abcdefg\n\rabcdefghij\r\nabcdefghijklmnopqrstuvw\nxyz\r",
                                  {"abcdefg", "", "abcdefghij", "abcdefghijklmnopqrstuvw", "xyz"}},
                      LineEndCase{"abcdefghijkl\nmnopqrstuvwx\nabcdefghijklmnopq\rrs\n",
                                  {"abcdefghijkl", "mnopqrstuvwx", "abcdefghijklmnopq", "rs"}}));

// Copying lines gives the bytes of writing each line read, in counts that stop at any line.
std::string copiedInCounts(const std::string& path, std::size_t count, std::size_t& lines) {
    TempDir out;
    {
        LineReader reader(path);
        LineWriter writer(out.file("copy.txt"), LineWriter::Mode::Truncate);
        while (reader.copyLines(count, writer) == count)
            ;
        lines = reader.lineNumber();
        writer.close();
    }
    return morlevant::testing::readBytes(out.file("copy.txt"));
}

std::string eachLineWritten(const Lines& lines) {
    std::string bytes;
    for (const std::string& line : lines)
        bytes += line + "\r\n";
    return bytes;
}

TEST_P(LineEnds, CopiedLinesEndInCrLf) {
    TempDir dir;
    morlevant::testing::writeBytes(dir.file("in.txt"), GetParam().bytes);
    for (const std::size_t count : {std::size_t{1}, std::size_t{2}, std::size_t{1000}}) {
        std::size_t lines = 0;
        EXPECT_EQ(copiedInCounts(dir.file("in.txt"), count, lines),
                  eachLineWritten(GetParam().expected))
            << count;
        EXPECT_EQ(lines, GetParam().expected.size());
    }
}

TEST(Reader, LinesAcrossBlockBoundaries) {
    // Lines longer than a block, and a CR LF split between two blocks.
    TempDir dir;
    const std::string longLine(2 * LineReader::blockSize + 5, 'x');
    // Its CR ends the first block, its LF starts the next.
    const std::string shortLine(LineReader::blockSize - 1, 'y');
    morlevant::testing::writeBytes(dir.file("in.txt"), shortLine + "\r\n" + longLine + "\r\nend");
    EXPECT_EQ(readLines(dir.file("in.txt")), (Lines{shortLine, longLine, "end"}));
}

TEST(Reader, CopiesLinesAcrossBlockBoundaries) {
    // Every kind of line end just before, on and after the end of a block, a line longer than
    // a block, and a file without a final line end.
    TempDir dir;
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
    morlevant::testing::writeBytes(dir.file("in.txt"), bytes);
    for (const std::size_t count : {std::size_t{1}, std::size_t{3}, std::size_t{100}}) {
        std::size_t copied = 0;
        EXPECT_EQ(copiedInCounts(dir.file("in.txt"), count, copied), eachLineWritten(lines));
        EXPECT_EQ(copied, lines.size());
    }
}

TEST(Reader, ReadsOnWhereTheCopyStopped) {
    TempDir dir;
    morlevant::testing::writeBytes(dir.file("in.txt"), "a\r\nb\nc\rd");
    LineReader reader(dir.file("in.txt"));
    LineWriter writer(dir.file("out.txt"), LineWriter::Mode::Truncate);
    EXPECT_EQ(reader.copyLines(2, writer), 2U);
    std::string_view line;
    ASSERT_TRUE(reader.next(line));
    EXPECT_EQ(line, "c");
    EXPECT_EQ(reader.lineNumber(), 3U);
    EXPECT_FALSE(reader.atEnd());
    EXPECT_EQ(reader.copyLines(5, writer), 1U);
    EXPECT_TRUE(reader.atEnd());
    writer.close();
    EXPECT_EQ(morlevant::testing::readBytes(dir.file("out.txt")), "a\r\nb\r\nd\r\n");
}

TEST(Reader, MissingFileNamesThePath) {
    EXPECT_NE(morlevant::testing::taskErrorOf([] {
                  LineReader("/nonexistent/folder/file.txt");
              }).find("/nonexistent/folder/file.txt"),
              std::string::npos);
}

TEST(Writer, EndsEveryLineWithCrLfAroundAndBeyondItsBuffer) {
    // An empty line, a line whose end does not fit what is left of the buffer, one longer than
    // the buffer, and a line left in the buffer of an appending writer abandoned by a failure.
    TempDir dir;
    const std::string path = dir.file("out.txt");
    const std::string half(LineWriter::bufferSize / 2, 'h');
    const std::string whole(LineWriter::bufferSize + 3, 'w');
    {
        LineWriter writer(path, LineWriter::Mode::Truncate);
        for (const std::string& line : {std::string(), half, half, whole, half})
            writer.writeLine(line);
        writer.close();
    }
    {
        LineWriter abandoned(path, LineWriter::Mode::Append);
        abandoned.writeLine("kept");
    }
    const std::string crlf = "\r\n";
    EXPECT_EQ(morlevant::testing::readBytes(path),
              crlf + half + crlf + half + crlf + whole + crlf + half + crlf + "kept" + crlf);
}

} // namespace
