#pragma once

#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

namespace morlevant {

// Writes lines to a result file, each ended by CR LF. Lines are gathered in a buffer of its own
// and written in large blocks, so that a line costs a copy rather than calls into stdio.
class LineWriter {
public:
    static constexpr std::size_t bufferSize = std::size_t{1} << 18;

    enum class Mode { Truncate, Append };

    // Throws TaskError naming the file when it cannot be opened.
    LineWriter(const std::string& path, Mode mode);
    // A writer destroyed before close() was abandoned by a failure: a file it emptied is
    // removed, so that a failed file leaves no half result; appended lines stay, the buffered
    // ones included.
    ~LineWriter();
    LineWriter(const LineWriter&) = delete;
    LineWriter& operator=(const LineWriter&) = delete;

    void writeLine(std::string_view line);
    // Writes lines that end in CR LF, LF or a lone CR, each end made CR LF; text after the last
    // end is a line too. `allCrLf`: every end is CR LF already, which the caller often knows.
    void writeLines(std::string_view lines, bool allCrLf);
    // Writes bytes as they are: part of a line, or lines that already end in CR LF.
    void writeBytes(std::string_view bytes);
    // Flushes and closes; throws TaskError when the data could not be written (disk full).
    void close();
    const std::string& path() const { return path_; }

private:
    void reserve(std::size_t needed);
    void write(const char* data, std::size_t size);
    void flush();
    void fail();

    std::string path_;
    Mode mode_;
    std::FILE* file_ = nullptr;
    // Lines waiting to be written, at most bufferSize bytes. It grows with use, so that a small
    // result never allocates (and clears) the whole buffer.
    std::string buffer_;
};

} // namespace morlevant
