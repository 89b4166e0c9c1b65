#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace morlevant {

// The bytes among the 64 from `data` (or the `size` there are, when fewer) that are `one` or
// `other`: bit n set for such a byte at data[n].
std::uint64_t bytesMask(const char* data, std::size_t size, char one, char other);

// The positions of a byte in a text, found 64 bytes at a time and taken from a mask one by one:
// where the byte stands every few bytes (a separator such as "="), a search call for each would
// cost more than the scan itself.
class BytePositions {
public:
    BytePositions(std::string_view text, char byte) : text_(text), byte_(byte) {}

    // The first position at or after `from` that holds the byte, or the text's size. `from`
    // never goes back from one call to the next.
    std::size_t next(std::size_t from) {
        while (from < text_.size()) {
            if (from >= window_ + 64 || !loaded_) {
                window_ = from;
                mask_ = bytesMask(text_.data() + from, text_.size() - from, byte_, byte_);
                loaded_ = true;
            } else if (from > window_) {
                // The mask may already lie past `from`, where a search for the last one went on.
                mask_ &= ~std::uint64_t{0} << (from - window_);
            }
            if (mask_ != 0)
                return window_ + static_cast<std::size_t>(std::countr_zero(mask_));
            from = window_ + 64;
        }
        return text_.size();
    }

private:
    std::string_view text_;
    char byte_;
    std::size_t window_ = 0; // where the 64 bytes that `mask_` covers start
    std::uint64_t mask_ = 0;
    bool loaded_ = false;
};

} // namespace morlevant
