#include "engine/LineEnds.h"

#include <cstdint>
#include <cstring>

namespace morlevant {

// One pass for both bytes, eight at a time, where two searches would read a line that ends in
// CR LF twice. A word that holds either is then read byte by byte, so the answer is exact.
std::size_t findCrOrLf(std::string_view text) {
    constexpr std::uint64_t ones = 0x0101010101010101ULL;
    constexpr std::uint64_t highBits = 0x8080808080808080ULL;
    const auto hasZeroByte = [](std::uint64_t v) { return (v - ones) & ~v & highBits; };
    std::size_t pos = 0;
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
    return {std::size_t{lf} + cr - crlf, cr == lf && crlf == lf};
}

} // namespace morlevant
