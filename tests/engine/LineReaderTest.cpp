#include "engine/io/LineReader.h"

#include "engine/io/LineWriter.h"
#include "tests/support/TempDir.h"

#include <gtest/gtest.h>
#include <vector>

using namespace morlevant;
using morlevant::testing::TempDir;

namespace {

using Lines = std::vector<std::string>;

// Reading the file gives the lines; copying them, in counts that stop at any line, gives each
// line ended by CR LF.
void expectLines(const std::string& bytes, const Lines& lines) {
    TempDir dir;
    morlevant::testing::writeBytes(dir.file("in.txt"), bytes);
    Lines read;
    LineReader reader(dir.file("in.txt"));
    for (std::string_view line; reader.next(line);)
        read.emplace_back(line);
    EXPECT_EQ(read, lines);

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
        EXPECT_EQ(morlevant::testing::readBytes(dir.file("copy.txt")), eachLineWritten) << count;
    }
}

TEST(Reader, SplitsAtCrLfLfAndLoneCr) {
    const struct {
        std::string bytes;
        Lines expected;
    } cases[] = {
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
    for (const auto& c : cases) {
        SCOPED_TRACE(::testing::PrintToString(c.bytes));
        expectLines(c.bytes, c.expected);
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
}

TEST(Writer, EndsEveryLineWithCrLfAroundAndBeyondItsBuffer) {
    // An empty line, a line that runs past the end of a write, one longer than the buffer; then
    // an appending writer abandoned by a failure after writing past its buffer leaves the file
    // as it was, and one that closes appends, its writes starting within a write's length.
    TempDir dir;
    const std::string path = dir.file("out.txt");
    const std::string half(LineWriter::writeSize / 2, 'h');
    const std::string whole(LineWriter::bufferSize + 3, 'w');
    {
        LineWriter writer(path, LineWriter::Mode::Truncate);
        for (const std::string& line : {std::string(), half, half, whole, half})
            writer.writeLine(line);
        writer.close();
    }
    const std::string crlf = "\r\n";
    const std::string written = crlf + half + crlf + half + crlf + whole + crlf + half + crlf;
    {
        LineWriter abandoned(path, LineWriter::Mode::Append);
        abandoned.writeLine(whole);
        abandoned.writeLine("dropped");
    }
    EXPECT_EQ(morlevant::testing::readBytes(path), written);
    EXPECT_FALSE(std::filesystem::exists(ResultFile::temporaryPath(path)));
    LineWriter appending(path, LineWriter::Mode::Append);
    appending.writeLine(whole);
    appending.writeLine("kept");
    appending.close();
    EXPECT_EQ(morlevant::testing::readBytes(path), written + whole + crlf + "kept" + crlf);
}

} // namespace
