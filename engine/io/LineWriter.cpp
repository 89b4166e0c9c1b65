#include "engine/io/LineWriter.h"

#include "engine/text/LineEnds.h"

#include <algorithm>

namespace morlevant {

LineWriter::LineWriter(const std::string& path, Mode mode)
    : file_(path, mode == Mode::Append ? ResultFile::Start::FromFinal : ResultFile::Start::Empty) {}

void LineWriter::writeLine(std::string_view line) {
    if (buffer_.size() + line.size() + 2 > bufferSize) {
        flush();
        // A line longer than the buffer goes out directly, without being copied first.
        if (line.size() + 2 > bufferSize) {
            write(line.data(), line.size());
            line = {};
        }
    }
    reserve(buffer_.size() + line.size() + 2);
    // An empty view may carry no buffer at all, which must not be copied from.
    if (!line.empty())
        buffer_.append(line);
    buffer_.append("\r\n", 2);
}

void LineWriter::writeLines(std::string_view lines, bool allCrLf) {
    if (allCrLf && !lines.empty() && lines.back() == '\n') {
        writeBytes(lines);
        return;
    }
    // Making every end CR LF at most doubles the lines (and ends the last one): when that fits
    // in the buffer, room is made once, and each line costs only its copy.
    const std::size_t most = 2 * lines.size() + 2;
    if (buffer_.size() + most > bufferSize)
        flush();
    const bool fits = most <= bufferSize;
    if (fits)
        reserve(buffer_.size() + most);
    while (!lines.empty()) {
        const std::size_t end = findCrOrLf(lines);
        if (fits) {
            buffer_.append(lines.data(), end);
            buffer_.append("\r\n", 2);
        } else {
            writeLine(lines.substr(0, end));
        }
        std::size_t next = end + 1;
        if (next < lines.size() && lines[end] == '\r' && lines[next] == '\n')
            ++next;
        lines.remove_prefix(std::min(next, lines.size()));
    }
}

void LineWriter::writeBytes(std::string_view bytes) {
    if (buffer_.size() + bytes.size() > bufferSize) {
        flush();
        if (bytes.size() > bufferSize) {
            write(bytes.data(), bytes.size());
            return;
        }
    }
    reserve(buffer_.size() + bytes.size());
    if (!bytes.empty())
        buffer_.append(bytes);
}

// The buffer grows by doubling up to its full size, so that a small result never allocates
// (and clears) the whole of it.
void LineWriter::reserve(std::size_t needed) {
    if (needed > buffer_.capacity())
        buffer_.reserve(std::min(bufferSize, std::max(needed, 2 * buffer_.capacity())));
}

void LineWriter::write(const char* data, std::size_t size) {
    file_.write(data, size);
}

void LineWriter::flush() {
    write(buffer_.data(), buffer_.size());
    buffer_.clear();
}

void LineWriter::close() {
    if (closed_)
        return;
    flush();
    closed_ = true;
    file_.commit();
}

} // namespace morlevant
