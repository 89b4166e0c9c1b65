#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace morlevant {

// Length in bytes of the character that starts at `pos`: a whole UTF-8 sequence when the bytes
// there form a valid one, otherwise 1, so that an invalid byte counts as one character and is
// carried through unchanged.
std::size_t utf8CharLength(std::string_view text, std::size_t pos);

// Number of characters in the text, by the rule above.
std::size_t utf8CharCount(std::string_view text);

// Number of bytes before the first one above 0x7F: up to there, characters and bytes coincide.
std::size_t asciiPrefixLength(std::string_view text);

// Whether every byte belongs to a valid UTF-8 sequence.
bool isValidUtf8(std::string_view text);

// The UTF-8 bytes of a code point.
inline std::string utf8Of(char32_t c) {
    std::string out;
    if (c < 0x80) {
        out += static_cast<char>(c);
    } else if (c < 0x800) {
        out += static_cast<char>(0xC0 | (c >> 6));
        out += static_cast<char>(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        out += static_cast<char>(0xE0 | (c >> 12));
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (c & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (c >> 18));
        out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (c & 0x3F));
    }
    return out;
}

} // namespace morlevant
