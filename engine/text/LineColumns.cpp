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

std::size_t LineColumns::offsetBeyondAscii(std::size_t index) const {
    const std::size_t wanted = index - asciiPrefix_;
    while (starts_.size() <= wanted && decodedEnd_ < line_.size()) {
        starts_.push_back(static_cast<std::uint32_t>(decodedEnd_));
        decodedEnd_ += utf8CharLength(line_, decodedEnd_);
    }
    return wanted < starts_.size() ? starts_[wanted] : line_.size();
}

} // namespace morlevant
