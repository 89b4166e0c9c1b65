#include "engine/LineReader.h"

#include "taskdef/FilePath.h"
#include "taskdef/TaskError.h"

#include <cerrno>
#include <cstring>

namespace morlevant {

namespace {

std::FILE* openForReading(const std::string& path) {
#ifdef _WIN32
    return _wfopen(toFsPath(path).c_str(), L"rb");
#else
    return std::fopen(path.c_str(), "rb");
#endif
}

} // namespace

LineReader::LineReader(const std::string& path)
    : path_(path), file_(openForReading(path), &std::fclose),
      buffer_(std::make_unique_for_overwrite<char[]>(blockSize)) {
    if (!file_)
        throw TaskError("Cannot open " + path + ": " + std::strerror(errno));
}

bool LineReader::fill() {
    if (eof_)
        return false;
    end_ = std::fread(buffer_.get(), 1, blockSize, file_.get());
    begin_ = 0;
    crKnown_ = false;
    if (end_ < blockSize) {
        if (std::ferror(file_.get()))
            throw TaskError("Cannot read " + path_ + ": " + std::strerror(errno));
        eof_ = true;
    }
    if (skipLeadingLf_ && end_ > 0 && buffer_[0] == '\n')
        begin_ = 1;
    skipLeadingLf_ = false;
    return begin_ < end_;
}

// The first LF or CR from begin_ on, or null when the block holds neither.
const char* LineReader::findLineEnd() {
    const char* data = buffer_.get();
    if (!crKnown_ || nextCr_ < begin_) {
        const void* cr = std::memchr(data + begin_, '\r', end_ - begin_);
        nextCr_ = cr ? static_cast<std::size_t>(static_cast<const char*>(cr) - data) : end_;
        crKnown_ = true;
    }
    // An LF can only end the line when it comes before the next CR.
    if (const void* lf = std::memchr(data + begin_, '\n', nextCr_ - begin_))
        return static_cast<const char*>(lf);
    return nextCr_ < end_ ? data + nextCr_ : nullptr;
}

bool LineReader::next(std::string_view& line) {
    longLine_.clear();
    bool gathering = false;
    while (true) {
        if (begin_ == end_ && !fill()) {
            if (!gathering)
                return false;
            line = longLine_;
            ++lineNumber_;
            return true;
        }
        const char* start = buffer_.get() + begin_;
        const std::size_t available = end_ - begin_;
        const char* stop = findLineEnd();
        if (!stop) {
            longLine_.append(start, available);
            gathering = true;
            begin_ = end_;
            continue;
        }
        const std::size_t length = static_cast<std::size_t>(stop - start);
        std::size_t consumed = length + 1;
        if (*stop == '\r') {
            if (begin_ + consumed < end_) {
                if (buffer_[begin_ + consumed] == '\n')
                    ++consumed;
            } else {
                skipLeadingLf_ = true;
            }
        }
        if (gathering) {
            longLine_.append(start, length);
            line = longLine_;
        } else {
            line = std::string_view(start, length);
        }
        begin_ += consumed;
        ++lineNumber_;
        return true;
    }
}

} // namespace morlevant
