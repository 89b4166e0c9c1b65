#include "engine/text/Utf8.h"

#include <bit>
#include <cstdint>
#include <cstring>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace morlevant {

namespace {

bool isContinuation(unsigned char c) {
    return (c & 0xC0) == 0x80;
}

} // namespace

std::size_t utf8CharLength(std::string_view text, std::size_t pos) {
    const auto at = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char lead = at(pos);
    if (lead < 0x80)
        return 1;
    const std::size_t left = text.size() - pos;
    // Second-byte bounds exclude overlong forms, surrogates and code points above U+10FFFF.
    unsigned char secondLow = 0x80, secondHigh = 0xBF;
    std::size_t length = 0;
    if (lead >= 0xC2 && lead <= 0xDF) {
        length = 2;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        length = 3;
        if (lead == 0xE0)
            secondLow = 0xA0;
        else if (lead == 0xED)
            secondHigh = 0x9F;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        length = 4;
        if (lead == 0xF0)
            secondLow = 0x90;
        else if (lead == 0xF4)
            secondHigh = 0x8F;
    } else {
        return 1;
    }
    if (left < length || at(pos + 1) < secondLow || at(pos + 1) > secondHigh)
        return 1;
    for (std::size_t i = 2; i < length; ++i)
        if (!isContinuation(at(pos + i)))
            return 1;
    return length;
}

std::size_t asciiPrefixLength(std::string_view text) {
    std::size_t pos = 0;
    // Sixteen or eight bytes at a time: the high bit of any byte marks a character beyond ASCII.
#ifdef __SSE2__
    for (; text.size() - pos >= 16; pos += 16) {
        const int high =
            _mm_movemask_epi8(_mm_loadu_si128(reinterpret_cast<const __m128i*>(text.data() + pos)));
        if (high != 0)
            return pos + static_cast<std::size_t>(std::countr_zero(static_cast<unsigned>(high)));
    }
#endif
    for (; text.size() - pos >= 8; pos += 8) {
        std::uint64_t word;
        std::memcpy(&word, text.data() + pos, 8);
        if (word & 0x8080808080808080ULL)
            break;
    }
    while (pos < text.size() && static_cast<unsigned char>(text[pos]) < 0x80)
        ++pos;
    return pos;
}

std::size_t utf8CharCount(std::string_view text) {
    std::size_t count = asciiPrefixLength(text);
    for (std::size_t pos = count; pos < text.size(); pos += utf8CharLength(text, pos))
        ++count;
    return count;
}

bool isValidUtf8(std::string_view text) {
    for (std::size_t pos = 0; pos < text.size();) {
        // Runs of ASCII, the bulk of most text, are passed over many bytes at a time.
        pos += asciiPrefixLength(text.substr(pos));
        if (pos == text.size())
            break;
        const std::size_t length = utf8CharLength(text, pos);
        if (length == 1)
            return false;
        pos += length;
    }
    return true;
}

} // namespace morlevant
