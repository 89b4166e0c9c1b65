#include "engine/text/BytePositions.h"

#include <algorithm>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace morlevant {

std::uint64_t bytesMask(const char* data, std::size_t size, char one, char other) {
    std::uint64_t mask = 0;
    std::size_t at = 0;
#ifdef __SSE2__
    if (size >= 64) {
        const __m128i ones = _mm_set1_epi8(one);
        const __m128i others = _mm_set1_epi8(other);
        for (; at < 64; at += 16) {
            const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(data + at));
            const auto found = static_cast<unsigned>(_mm_movemask_epi8(
                _mm_or_si128(_mm_cmpeq_epi8(bytes, ones), _mm_cmpeq_epi8(bytes, others))));
            mask |= std::uint64_t{found} << at;
        }
        return mask;
    }
#endif
    for (const std::size_t last = std::min<std::size_t>(size, 64); at < last; ++at)
        if (data[at] == one || data[at] == other)
            mask |= std::uint64_t{1} << at;
    return mask;
}

} // namespace morlevant
