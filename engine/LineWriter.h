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
    std::FILE* file_ = nullptr;
};

} // namespace morlevant
