#pragma once

#include <cstddef>
#include <string_view>

namespace morlevant {

// Length in bytes of the character that starts at `pos`: a whole UTF-8 sequence when the bytes
// there form a valid one, otherwise 1, so that an invalid byte counts as one character and is
// carried through unchanged.
std::size_t utf8CharLength(std::string_view text, std::size_t pos);

// Number of characters in the text, by the rule above.
std::size_t utf8CharCount(std::string_view text);

// Whether every byte is below 0x80, so that characters and bytes coincide.
bool isAscii(std::string_view text);

} // namespace morlevant
