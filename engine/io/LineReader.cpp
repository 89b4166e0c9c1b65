#include "engine/io/LineReader.h"

#include "engine/io/LineWriter.h"
#include "engine/text/LineEnds.h"
#include "taskdef/FilePath.h"
#include "taskdef/TaskError.h"
#include "taskdef/VisibleName.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <new>

#ifndef _WIN32
#include <fcntl.h>
#include <unistd.h>
#endif

namespace morlevant {

namespace {

// Opening a pipe for reading would wait for a writer: it is opened without waiting, and
// refused once open, by what the open file is rather than by what its name led to before.
std::FILE* openForReading(const std::string& path) {
#ifdef _WIN32
    return _wfopen(toFsPath(path).c_str(), L"rb");
#else
    const int fd = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0)
        return nullptr;
    ::fcntl(fd, F_SETFL, ::fcntl(fd, F_GETFL) & ~O_NONBLOCK);
    std::FILE* file = ::fdopen(fd, "rb");
    if (!file)
        ::close(fd);
    return file;
#endif
}

static_assert(LineReader::blockSize == LineWriter::writeSize);

// The least block: a file that tells no length (a file of the system's, say) is read in blocks
// of this length.
constexpr std::size_t leastBlock = 4096;

} // namespace

LineReader::LineReader(const std::string& path, const std::atomic<bool>* stop,
                       std::atomic<std::uint64_t>* bytesRead)
    : path_(path), file_(openForReading(path), &std::fclose), stop_(stop), bytesRead_(bytesRead) {
    if (!file_)
        throw TaskError("Cannot open " + visibleName(path) + ": " + std::strerror(errno));
    const std::optional<FileVersion> version = fileVersion(file_.get());
    if (!version)
        throw TaskError("Cannot read " + visibleName(path) + ": " + std::strerror(errno));
    if (!version->regular)
        throw TaskError(
            "Cannot read " + visibleName(path) + ": " +
            (version->folder ? "it is a folder, not a file" : "it is not a regular file"));
    opened_ = *version;
    block_ = static_cast<std::size_t>(
        std::clamp<std::uint64_t>(opened_.size + 1, leastBlock, blockSize));
    buffer_ = makeAlignedBlock(keptRoom + block_);
}

namespace {

[[noreturn]] void changedWhileRead(const std::string& path) {
    throw TaskError("The file " + visibleName(path) +
                    " changed while it was being read; run the task again when it is saved");
}

} // namespace

// A file written to while it was read, or replaced by another under its name, gave lines of
// two versions: no result may be made of them.
void LineReader::checkUnchanged() const {
    const std::optional<FileVersion> now = fileVersion(file_.get());
    if (now != opened_ || fileIdentity(path_) != opened_.identity)
        changedWhileRead(path_);
}

void LineReader::sameVersionAs(std::optional<FileVersion>& first) const {
    if (!first)
        first = opened_;
    else if (*first != opened_)
        changedWhileRead(path_);
}

bool LineReader::fill() {
    if (eof_)
        return false;
    if (stop_ && stop_->load(std::memory_order_relaxed))
        throw RunStopped();
    // The block is read after the room for a kept line start, which stays where it is.
    if (begin_ == end_)
        begin_ = keptRoom;
    end_ = keptRoom;
    const std::size_t blockEnd = keptRoom + block_;
    while (end_ < blockEnd) {
        const std::size_t step = std::min(readSize, blockEnd - end_);
        const std::size_t got = std::fread(buffer_.get() + end_, 1, step, file_.get());
        end_ += got;
        if (got < step)
            break;
    }
    if (bytesRead_)
        bytesRead_->fetch_add(end_ - keptRoom, std::memory_order_relaxed);
    crKnown_ = false;
    blockRefused_ = false;
    if (end_ < blockEnd) {
        if (std::ferror(file_.get()))
            throw TaskError("Cannot read " + visibleName(path_) + ": " + std::strerror(errno));
        eof_ = true;
        checkUnchanged();
    }
    if (skipLeadingLf_ && end_ > keptRoom && buffer_[keptRoom] == '\n')
        begin_ = keptRoom + 1;
    skipLeadingLf_ = false;
    return begin_ < end_;
}

// The first LF or CR from `from` on, or end_ when the rest of the block holds neither.
std::size_t LineReader::findLineEnd(std::size_t from) {
    const char* data = buffer_.get();
    if (!crKnown_ || nextCr_ < from) {
        const std::size_t stop = from + findCrOrLf({data + from, end_ - from});
        if (stop < end_ && data[stop] == '\n') {
            // Lines that end in LF follow, likely: the next CR is looked for once for them all.
            const void* cr = std::memchr(data + stop, '\r', end_ - stop);
            nextCr_ = cr ? static_cast<std::size_t>(static_cast<const char*>(cr) - data) : end_;
        } else {
            nextCr_ = stop;
        }
        crKnown_ = true;
        return stop;
    }
    // An LF can only end the line when it comes before the next CR.
    if (const void* lf = std::memchr(data + from, '\n', nextCr_ - from))
        return static_cast<std::size_t>(static_cast<const char*>(lf) - data);
    return nextCr_;
}

// Appends to the line being gathered, doubling the buffer's room when it is full.
void LineReader::gather(const char* data, std::size_t size) {
    const std::size_t needed = longSize_ + size;
    if (needed > longCapacity_) {
        const std::size_t capacity = std::max(needed, 2 * std::max(longCapacity_, blockSize));
        void* larger = std::realloc(longLine_.get(), capacity);
        if (larger == nullptr)
            throw std::bad_alloc();
        static_cast<void>(longLine_.release());
        longLine_.reset(static_cast<char*>(larger));
        longCapacity_ = capacity;
    }
    std::memcpy(longLine_.get() + longSize_, data, size);
    longSize_ = needed;
}

bool LineReader::next(std::string_view& line) {
    longSize_ = 0;
    gathering_ = false;
    while (true) {
        if (begin_ == end_ && !fill()) {
            if (!gathering_)
                return false;
            line = {longLine_.get(), longSize_};
            ++lineNumber_;
            return true;
        }
        const char* start = buffer_.get() + begin_;
        const std::size_t available = end_ - begin_;
        const std::size_t stopAt = findLineEnd(begin_);
        if (stopAt == end_) {
            gather(start, available);
            gathering_ = true;
            begin_ = end_;
            continue;
        }
        const std::size_t length = stopAt - begin_;
        std::size_t consumed = length + 1;
        if (buffer_[stopAt] == '\r') {
            if (begin_ + consumed < end_) {
                if (buffer_[begin_ + consumed] == '\n')
                    ++consumed;
            } else {
                skipLeadingLf_ = true;
            }
        }
        if (gathering_) {
            gather(start, length);
            line = {longLine_.get(), longSize_};
        } else {
            line = std::string_view(start, length);
        }
        begin_ += consumed;
        ++lineNumber_;
        return true;
    }
}

// Just past the last line end in the rest of the block, or begin_ when it holds none. A CR that
// ends the block is left out before the file's end: its LF, if any, starts the next block.
std::size_t LineReader::lastLineEnd() const {
    const char* data = buffer_.get();
    std::size_t stop = end_ - (!eof_ && end_ > begin_ && data[end_ - 1] == '\r' ? 1 : 0);
    while (stop > begin_ && data[stop - 1] != '\n' && data[stop - 1] != '\r')
        --stop;
    return stop;
}

bool LineReader::nextLines(std::string_view& lines, bool& allCrLf) {
    if ((begin_ == end_ && !fill()) || blockRefused_)
        return false;
    std::size_t stop = lastLineEnd();
    if (stop == begin_ && begin_ >= keptRoom && end_ - begin_ <= keptRoom && !eof_) {
        // The start of a line ends the block: it is kept before the next one, so that the
        // lines handed out are whole.
        const std::size_t kept = end_ - begin_;
        std::memmove(buffer_.get() + keptRoom - kept, buffer_.get() + begin_, kept);
        begin_ = keptRoom - kept;
        end_ = keptRoom;
        fill();
        stop = lastLineEnd();
    }
    if (stop == begin_)
        return false;
    const std::string_view found(buffer_.get() + begin_, stop - begin_);
    const LineEndCount ends = countLineEnds(found);
    if (ends.loneCr) {
        blockRefused_ = true;
        return false;
    }
    lines = found;
    lineNumber_ += ends.lines;
    allCrLf = ends.allCrLf;
    begin_ = stop;
    return true;
}

AlignedBlock LineReader::handOverBlock(AlignedBlock spare) {
    if (!spare)
        spare = makeAlignedBlock(keptRoom + block_);
    // The rest of the block, not yet read, stays at its offsets in the buffer read on in.
    std::memcpy(spare.get() + begin_, buffer_.get() + begin_, end_ - begin_);
    std::swap(spare, buffer_);
    return spare;
}

std::size_t LineReader::copyLines(std::size_t maxLines, LineWriter& writer) {
    std::size_t copied = 0;
    bool inLine = false; // part of an unfinished line has been written
    while (copied < maxLines) {
        if (begin_ == end_ && !fill()) {
            if (inLine) {
                writer.writeBytes("\r\n");
                ++copied;
            }
            break;
        }
        const char* data = buffer_.get();
        // The rest of the block goes out as it is when its ends are all CR LF, the start of the
        // line it ends in included when that line is one of those to copy; but for a CR that
        // ends the block, whose LF, if any, starts the next one. Its whole lines go out in one
        // piece too when some end in LF alone, each end made CR LF on the way.
        if (!blockRefused_) {
            std::size_t stop = end_ - (data[end_ - 1] == '\r' ? 1 : 0);
            const std::string_view rest(data + begin_, stop - begin_);
            const LineEndCount ends = countLineEnds(rest);
            if (!ends.loneCr && ends.lines <= maxLines - copied) {
                if (ends.lines == maxLines - copied || !ends.allCrLf)
                    stop = begin_ + rest.rfind('\n') + 1;
                if (ends.allCrLf)
                    writer.writeBytes({data + begin_, stop - begin_});
                else
                    writer.writeLines({data + begin_, stop - begin_}, false);
                copied += ends.lines;
                if (stop > begin_)
                    inLine = data[stop - 1] != '\n';
                begin_ = stop;
            } else {
                blockRefused_ = true;
            }
        }
        std::size_t unwritten = begin_; // lines that end in CR LF are written together
        while (copied < maxLines && begin_ < end_) {
            const std::size_t stop = findLineEnd(begin_);
            if (stop == end_) { // the line goes on in the next block
                inLine = true;
                begin_ = end_;
                break;
            }
            std::size_t next = stop + 1;
            if (data[stop] == '\n') {
                writer.writeLine({data + unwritten, stop - unwritten});
                unwritten = next;
            } else if (next < end_ && data[next] == '\n') {
                ++next; // already CR LF
            } else {
                // A lone CR, or one that ends the block: an LF that starts the next belongs to it.
                skipLeadingLf_ = next == end_;
                writer.writeBytes({data + unwritten, next - unwritten});
                writer.writeBytes("\n");
                unwritten = next;
            }
            begin_ = next;
            inLine = false;
            ++copied;
        }
        writer.writeBytes({data + unwritten, begin_ - unwritten});
    }
    lineNumber_ += copied;
    return copied;
}

} // namespace morlevant
