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
                      LineEndCase{"a\nb\nc\rd\r\ne\nf", {"a", "b", "c", "d", "e", "f"}},
                      LineEndCase{"\xff\xfe\r\n\x80", {"\xff\xfe", "\x80"}}));

TEST(Reader, LinesAcrossBlockBoundaries) {
    // Lines longer than a block, and a CR LF split between two blocks.
    TempDir dir;
    const std::string longLine(2 * LineReader::blockSize + 5, 'x');
    // Its CR ends the first block, its LF starts the next.
    const std::string shortLine(LineReader::blockSize - 1, 'y');
    morlevant::testing::writeBytes(dir.file("in.txt"), shortLine + "\r\n" + longLine + "\r\nend");
    EXPECT_EQ(readLines(dir.file("in.txt")), (Lines{shortLine, longLine, "end"}));
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
