#include "engine/text/LineColumns.h"

#include "engine/text/Utf8.h"

#include <cstdint>

namespace morlevant {

void LineColumns::assign(std::string_view line) {
    line_ = line;
    asciiPrefix_ = asciiPrefixLength(line);
    starts_.clear();
    decodedEnd_ = asciiPrefix_;
    lengthKnown_ = asciiPrefix_ == line.size();
    length_ = line.size();
}

std::size_t LineColumns::length() const {
    if (!lengthKnown_) {
        length_ = asciiPrefix_ + starts_.size() + utf8CharCount(line_.substr(decodedEnd_));
        lengthKnown_ = true;
    }
    return length_;
}

std::size_t LineColumns::byteOffset(std::size_t position) const {
    const std::size_t index = position == 0 ? 0 : position - 1;
    if (index < asciiPrefix_)
        return index;
    const std::size_t wanted = index - asciiPrefix_;
    while (starts_.size() <= wanted && decodedEnd_ < line_.size()) {
        starts_.push_back(static_cast<std::uint32_t>(decodedEnd_));
        decodedEnd_ += utf8CharLength(line_, decodedEnd_);
    }
    return wanted < starts_.size() ? starts_[wanted] : line_.size();
}

std::string_view LineColumns::slice(std::size_t first, std::size_t last) const {
    if (first == 0)
        first = 1;
    if (first > last)
        return {};
    // A position past the end of the line starts at the line's size, which clips the slice.
    const std::size_t begin = byteOffset(first);
    const std::size_t end = last == SIZE_MAX ? line_.size() : byteOffset(last + 1);
    return line_.substr(begin, end - begin);
}

} // namespace morlevant
