#include "engine/io/LineWriter.h"

#include "engine/text/LineEnds.h"

#include <algorithm>
#include <cstring>

namespace morlevant {

LineWriter::LineWriter(const std::string& path, Mode mode, Writes writes)
    : file_(path, mode == Mode::Append ? ResultFile::Start::FromFinal : ResultFile::Start::Empty),
      size_(file_.size()), writes_(writes) {}

void LineWriter::emit(const char* data, std::size_t size, bool last) {
    // The last bytes of a result too small to have started the thread are written here.
    if (writes_ == Writes::OnCaller || (last && !behind_)) {
        file_.write(data, size);
    } else {
        if (!behind_)
            behind_ = std::make_unique<WriteBehind>(
                [this](const char* bytes, std::size_t length) { file_.write(bytes, length); },
                size_);
        behind_->write(data, size);
    }
    size_ += size;
}

void LineWriter::writeLine(std::string_view line) {
    if (line.size() + 2 > writeSize) {
        writeBytes(line);
        writeBytes("\r\n");
        return;
    }
    char* out = room(line.size() + 2);
    // An empty view may carry no buffer at all, which must not be copied from.
    if (!line.empty())
        std::memcpy(out, line.data(), line.size());
    out[line.size()] = '\r';
    out[line.size() + 1] = '\n';
    settle(line.size() + 2);
}

void LineWriter::writeLines(std::string_view lines, bool allCrLf) {
    if (allCrLf && !lines.empty() && lines.back() == '\n') {
        writeBytes(lines);
        return;
    }
    // Text after the last end is a line too.
    const bool unended = !lines.empty() && lines.back() != '\n' && lines.back() != '\r';
    // Making every end CR LF at most doubles the text: it goes in pieces of half a write, never
    // cut between the CR and the LF of one end.
    while (!lines.empty()) {
        std::size_t piece = std::min(lines.size(), writeSize / 2 - 1);
        if (piece < lines.size() && lines[piece - 1] == '\r')
            ++piece;
        char* out = room(2 * piece);
        settle(static_cast<std::size_t>(copyWithCrLfEnds(lines.substr(0, piece), out) - out));
        lines.remove_prefix(piece);
    }
    if (unended)
        writeBytes("\r\n");
}

void LineWriter::writeBytes(std::string_view bytes) {
    while (!bytes.empty()) {
        const std::size_t due = this->due();
        if (used_ == 0 && bytes.size() >= due) {
            // Whole writes go to the file directly, spared the copy.
            const std::size_t direct = due + (bytes.size() - due) / writeSize * writeSize;
            emit(bytes.data(), direct);
            bytes.remove_prefix(direct);
            continue;
        }
        const std::size_t piece = std::min(bytes.size(), due - used_);
        std::memcpy(room(piece), bytes.data(), piece);
        settle(piece);
        bytes.remove_prefix(piece);
    }
}

// The buffer grows by doubling up to its full size, so that a small result never allocates
// the whole of it.
char* LineWriter::room(std::size_t size) {
    if (used_ + size > capacity_) {
        const std::size_t capacity =
            std::min(bufferSize, std::max({used_ + size, 2 * capacity_, std::size_t{256}}));
        AlignedBlock larger = makeAlignedBlock(capacity);
        if (used_ > 0)
            std::memcpy(larger.get(), buffer_.get(), used_);
        buffer_ = std::move(larger);
        capacity_ = capacity;
    }
    return buffer_.get() + used_;
}

void LineWriter::settle(std::size_t size) {
    used_ += size;
    const std::size_t due = this->due();
    if (used_ < due)
        return;
    emit(buffer_.get(), due);
    used_ -= due;
    if (used_ > 0)
        std::memmove(buffer_.get(), buffer_.get() + due, used_);
}

void LineWriter::flush() {
    if (used_ > 0)
        emit(buffer_.get(), used_, true);
    used_ = 0;
}

void LineWriter::close() {
    if (closed_)
        return;
    flush();
    if (behind_)
        behind_->finish();
    closed_ = true;
    file_.commit();
}

} // namespace morlevant
