#include "engine/text/LineColumns.h"

#include "engine/text/Utf8.h"

#include <cstdint>

namespace morlevant {

void LineColumns::assign(std::string_view line, std::size_t asciiScan) {
    line_ = line;
    // Characters beyond the scan are decoded as those beyond ASCII are, when asked for.
    asciiPrefix_ = asciiPrefixLength(line.substr(0, asciiScan));
    marks_.clear();
    decoded_ = 0;
    decodedEnd_ = asciiPrefix_;
    lengthKnown_ = asciiPrefix_ == line.size();
    length_ = line.size();
}

std::size_t LineColumns::length() const {
    if (!lengthKnown_) {
        length_ = asciiPrefix_ + decoded_ + utf8CharCount(line_.substr(decodedEnd_));
        lengthKnown_ = true;
    }
    return length_;
}

std::size_t LineColumns::offsetBeyondAscii(std::size_t index) const {
    const std::size_t wanted = index - asciiPrefix_;
    if (wanted < decoded_) {
        // Decoded before: walked again from the mark at or before it.
        std::size_t at = marks_[wanted / markEvery];
        for (std::size_t n = wanted % markEvery; n > 0; --n)
            at += utf8CharLength(line_, at);
        return at;
    }
    while (decoded_ < wanted && decodedEnd_ < line_.size()) {
        if (decoded_ % markEvery == 0)
            marks_.push_back(static_cast<std::uint32_t>(decodedEnd_));
        decodedEnd_ += utf8CharLength(line_, decodedEnd_);
        ++decoded_;
    }
    // The walk stops at the line's end, which is then the offset of any position beyond it.
    return decodedEnd_;
}

} // namespace morlevant
