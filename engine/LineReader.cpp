#include "LineReader.h"

#include "FilePath.h"
#include "TaskError.h"

#include <cerrno>
#include <cstring>

namespace morlevant {

namespace {

constexpr std::size_t blockSize = 1 << 16;

std::FILE* openForReading(const std::string& path) {
#ifdef _WIN32
    return _wfopen(toFsPath(path).c_str(), L"rb");
#else
    return std::fopen(path.c_str(), "rb");
#endif
}

} // namespace

LineReader::LineReader(const std::string& path)
    : path_(path), file_(openForReading(path), &std::fclose), buffer_(blockSize) {
    if (!file_)
        throw TaskError("Cannot open " + path + ": " + std::strerror(errno));
}

bool LineReader::fill() {
    if (eof_)
        return false;
    end_ = std::fread(buffer_.data(), 1, buffer_.size(), file_.get());
    begin_ = 0;
    if (end_ < buffer_.size()) {
        if (std::ferror(file_.get()))
            throw TaskError("Cannot read " + path_ + ": " + std::strerror(errno));
        eof_ = true;
    }
    if (skipLeadingLf_ && end_ > 0 && buffer_[0] == '\n')
        begin_ = 1;
    skipLeadingLf_ = false;
    return begin_ < end_;
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
        const char* start = buffer_.data() + begin_;
        const std::size_t available = end_ - begin_;
        const char* stop = nullptr;
        for (const char* p = start; p != start + available; ++p)
            if (*p == '\n' || *p == '\r') {
                stop = p;
                break;
            }
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
