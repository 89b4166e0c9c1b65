#pragma once

#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

namespace morlevant {

// Writes lines to a result file, each ended by CR LF, through a large buffer.
class LineWriter {
public:
    enum class Mode { Truncate, Append };

    // Throws TaskError naming the file when it cannot be opened.
    LineWriter(const std::string& path, Mode mode);
    // A writer destroyed before close() was abandoned by a failure: a file it emptied is
    // removed, so that a failed file leaves no half result; appended lines stay.
    ~LineWriter();
    LineWriter(const LineWriter&) = delete;
    LineWriter& operator=(const LineWriter&) = delete;

    void writeLine(std::string_view line);
    // Flushes and closes; throws TaskError when the data could not be written (disk full).
    void close();
    const std::string& path() const { return path_; }

private:
    void fail();

    std::string path_;
    Mode mode_;
    std::FILE* file_ = nullptr;
};

} // namespace morlevant
