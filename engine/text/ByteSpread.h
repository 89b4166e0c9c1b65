#pragma once

#include "engine/text/ProcessorFeatures.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>

#ifdef MORLEVANT_X86_STEPS
#include <immintrin.h>
#endif

namespace morlevant {

// Copies `text` to `out` with every `byte` in it made the two bytes `first` and `second`, and
// returns the end of what was written. `out` has room for the result and 32 bytes more.
char* copyWithByteMadeTwo(std::string_view text, char byte, char first, char second, char* out,
                          SpreadSteps steps = widestSpreadSteps());

#ifdef MORLEVANT_X86_STEPS

// For each set of marked positions among eight bytes (bit j: byte j is marked), the byte
// shuffle that spreads the eight bytes out with a free byte before each marked one: an index
// with its high bit set, which the shuffle makes 0, stands for it.
inline constexpr auto slotBeforeMarked = [] {
    std::array<std::array<std::uint8_t, 16>, 256> table{};
    for (std::size_t mask = 0; mask < 256; ++mask) {
        std::size_t at = 0;
        for (std::uint8_t j = 0; j < 8; ++j) {
            if ((mask >> j) & 1)
                table[mask][at++] = 0x80;
            table[mask][at++] = j;
        }
        while (at < 16)
            table[mask][at++] = 0x80;
    }
    return table;
}();

// Stores the eight bytes of `bytes` from `offset` on (0 or 8), with `inserted` before each one
// that `marked` marks, and moves `out` past them. Sixteen bytes are stored whatever the count.
__attribute__((target("ssse3,popcnt"))) inline void
spreadEight(__m128i bytes, unsigned marked, std::uint8_t offset, char inserted, char*& out) {
    const __m128i order = _mm_add_epi8(
        _mm_loadu_si128(reinterpret_cast<const __m128i*>(slotBeforeMarked[marked].data())),
        _mm_set1_epi8(static_cast<char>(offset)));
    const __m128i slots =
        _mm_and_si128(_mm_cmplt_epi8(order, _mm_setzero_si128()), _mm_set1_epi8(inserted));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out),
                     _mm_or_si128(_mm_shuffle_epi8(bytes, order), slots));
    out += 8 + std::popcount(marked);
}

// The same for thirty-two bytes, where the processor expands bytes (processorHasByteExpansion):
// each byte takes one place of the result and a marked one two, and a mask of the places that
// take the bytes, in order, is made from the marks by depositing bits. Sixty-four bytes are
// stored whatever the count.
__attribute__((target("avx512f,avx512bw,avx512vl,avx512vbmi2,bmi2,popcnt"))) inline void
spreadThirtyTwo(__m256i bytes, std::uint32_t marked, char inserted, char*& out) {
    // Two places for each byte, its own at the odd one and the inserted byte's at the even one
    // before it; the places that a byte does not take are left out.
    constexpr std::uint64_t ownPlaces = 0xAAAAAAAAAAAAAAAAULL;
    const std::uint64_t taken = ownPlaces | _pdep_u64(marked, ~ownPlaces);
    const __mmask64 bytePlaces = _pext_u64(ownPlaces, taken);
    _mm512_storeu_si512(out, _mm512_mask_expand_epi8(_mm512_set1_epi8(inserted), bytePlaces,
                                                     _mm512_castsi256_si512(bytes)));
    out += 32 + std::popcount(marked);
}

#endif

} // namespace morlevant
