#include "LineColumns.h"

#include "Utf8.h"

#include <cmath>
#include <limits>

namespace morlevant {

void LineColumns::assign(std::string_view line) {
    line_ = line;
    ascii_ = isAscii(line);
    if (ascii_) {
        length_ = line.size();
        return;
    }
    starts_.clear();
    for (std::size_t pos = 0; pos < line.size(); pos += utf8CharLength(line, pos))
        starts_.push_back(static_cast<std::uint32_t>(pos));
    length_ = starts_.size();
    starts_.push_back(static_cast<std::uint32_t>(line.size()));
}

std::size_t LineColumns::byteOffset(std::size_t position) const {
    const std::size_t index = position == 0 ? 0 : position - 1;
    if (index >= length_)
        return line_.size();
    return ascii_ ? index : starts_[index];
}

std::string_view LineColumns::slice(std::size_t first, std::size_t last) const {
    if (first == 0)
        first = 1;
    if (last > length_)
        last = length_;
    if (first > last)
        return {};
    const std::size_t begin = byteOffset(first);
    const std::size_t end = last == length_ ? line_.size() : byteOffset(last + 1);
    return line_.substr(begin, end - begin);
}

std::size_t columnPosition(double bound) {
    if (!(bound >= 1))
        return bound > 0 ? 1 : 0;
    if (bound >= static_cast<double>(std::numeric_limits<std::uint32_t>::max()))
        return std::numeric_limits<std::uint32_t>::max();
    return static_cast<std::size_t>(std::floor(bound));
}

} // namespace morlevant
