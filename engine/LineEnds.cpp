#include "engine/LineEnds.h"

#include <bit>
#include <cstdint>
#include <cstring>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace morlevant {

// One pass for both bytes, sixteen or eight at a time, where two searches would read a line that
// ends in CR LF twice. A word that holds either is then read byte by byte, so the answer is exact.
std::size_t findCrOrLf(std::string_view text) {
    std::size_t pos = 0;
#ifdef __SSE2__
    const __m128i cr = _mm_set1_epi8('\r');
    const __m128i lf = _mm_set1_epi8('\n');
    for (; text.size() - pos >= 16; pos += 16) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text.data() + pos));
        const int found =
            _mm_movemask_epi8(_mm_or_si128(_mm_cmpeq_epi8(bytes, cr), _mm_cmpeq_epi8(bytes, lf)));
        if (found != 0)
            return pos + static_cast<std::size_t>(std::countr_zero(static_cast<unsigned>(found)));
    }
#endif
    constexpr std::uint64_t ones = 0x0101010101010101ULL;
    constexpr std::uint64_t highBits = 0x8080808080808080ULL;
    const auto hasZeroByte = [](std::uint64_t v) { return (v - ones) & ~v & highBits; };
    for (; text.size() - pos >= 8; pos += 8) {
        std::uint64_t word;
        std::memcpy(&word, text.data() + pos, 8);
        if (hasZeroByte(word ^ (ones * '\r')) | hasZeroByte(word ^ (ones * '\n')))
            break;
    }
    while (pos < text.size() && text[pos] != '\r' && text[pos] != '\n')
        ++pos;
    return pos;
}

// The bytes are counted rather than searched, which the compiler does many at a time.
LineEndCount countLineEnds(std::string_view text) {
    std::uint32_t lf = 0;
    std::uint32_t cr = 0;
    std::uint32_t crlf = 0;
    const auto* bytes = reinterpret_cast<const unsigned char*>(text.data());
    for (std::size_t i = 0; i < text.size(); ++i) {
        lf += bytes[i] == '\n';
        cr += bytes[i] == '\r';
    }
    for (std::size_t i = 1; i < text.size(); ++i)
        crlf += (bytes[i - 1] == '\r') & (bytes[i] == '\n');
    return {std::size_t{lf} + cr - crlf, cr == lf && crlf == lf, cr != crlf};
}

} // namespace morlevant
