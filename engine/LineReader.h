#pragma once

#include <cstdio>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace morlevant {

// Reads a text file line by line in large blocks. A line ends at CR LF, LF or a lone CR; the
// last line needs no line end. Memory grows with the longest line, never with the file.
class LineReader {
public:
    // Throws TaskError naming the file when it cannot be opened.
    explicit LineReader(const std::string& path);

    // The next line without its line end, valid until the next call; false at the end.
    bool next(std::string_view& line);
    // Number of the line returned last, counted from 1.
    std::size_t lineNumber() const { return lineNumber_; }
    const std::string& path() const { return path_; }

private:
    bool fill();

    std::string path_;
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> file_;
    std::vector<char> buffer_;
    std::size_t begin_ = 0; // first unread byte in buffer_
    std::size_t end_ = 0;   // one past the last valid byte in buffer_
    bool eof_ = false;
    bool skipLeadingLf_ = false; // the previous block ended in CR: a following LF belongs to it
    std::string longLine_;       // a line that spans blocks is gathered here
    std::size_t lineNumber_ = 0;
};

} // namespace morlevant
