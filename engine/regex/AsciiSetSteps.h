#pragma once

#include "engine/text/ProcessorFeatures.h"

#include <array>
#include <cstddef>
#include <cstdint>

#ifdef MORLEVANT_X86_STEPS
#include <immintrin.h>
#endif

namespace morlevant {

// A set of ASCII bytes by the low four bits of a byte: bit n of entry l is set when the byte
// 16n + l is in it, so that sixteen bytes are looked up at once by two byte shuffles.
using AsciiSetTable = std::array<std::uint8_t, 16>;

// The table of the bytes below 0x80 that `inSet[byte]` holds.
template <typename InSet> AsciiSetTable asciiSetTable(const InSet& inSet) {
    AsciiSetTable table{};
    for (std::size_t byte = 0; byte < 0x80; ++byte)
        if (inSet[byte])
            table[byte & 0xf] |= static_cast<std::uint8_t>(1u << (byte >> 4));
    return table;
}

#ifdef MORLEVANT_X86_STEPS

inline __m128i loaded(const void* bytes) {
    return _mm_loadu_si128(static_cast<const __m128i*>(bytes));
}

// For each of the sixteen bytes of `bytes`, 0 when it is not in the set and a bit of its own
// when it is, each looked up by its low four bits and its high four at once. `byLow` holds the
// set's AsciiSetTable.
__attribute__((target("ssse3"))) inline __m128i setBits(__m128i bytes, __m128i byLow) {
    // Bytes from 0x80 on have no bit: they are never in the set.
    const __m128i bitOfHigh =
        _mm_setr_epi8(1, 2, 4, 8, 16, 32, 64, static_cast<char>(0x80), 0, 0, 0, 0, 0, 0, 0, 0);
    const __m128i lowFour = _mm_set1_epi8(0x0f);
    const __m128i low = _mm_and_si128(bytes, lowFour);
    const __m128i high = _mm_and_si128(_mm_srli_epi16(bytes, 4), lowFour);
    return _mm_and_si128(_mm_shuffle_epi8(byLow, low), _mm_shuffle_epi8(bitOfHigh, high));
}

// Which of the sixteen bytes are not in the set: bit j for byte j.
__attribute__((target("ssse3"))) inline unsigned outsideSet(__m128i bytes, __m128i byLow) {
    return static_cast<unsigned>(
        _mm_movemask_epi8(_mm_cmpeq_epi8(setBits(bytes, byLow), _mm_setzero_si128())));
}

#endif

} // namespace morlevant
