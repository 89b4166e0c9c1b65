#include "engine/text/ByteSpread.h"

namespace morlevant {

namespace {

#ifdef MORLEVANT_X86_STEPS
// Sixteen bytes at a time by a shuffle, however often the byte comes: a separator such as "="
// may stand every few bytes, where a copy call per occurrence would cost more than the bytes.
__attribute__((target("ssse3,popcnt"))) void spreadBy16(const char*& in, const char* end, char byte,
                                                        char first, char second, char*& out) {
    const __m128i bytes = _mm_set1_epi8(byte);
    const __m128i seconds = _mm_set1_epi8(second);
    for (; end - in >= 16; in += 16) {
        const __m128i here = _mm_loadu_si128(reinterpret_cast<const __m128i*>(in));
        const __m128i hits = _mm_cmpeq_epi8(here, bytes);
        const auto marked = static_cast<unsigned>(_mm_movemask_epi8(hits));
        const __m128i made =
            _mm_or_si128(_mm_andnot_si128(hits, here), _mm_and_si128(hits, seconds));
        spreadEight(made, marked & 0xff, 0, first, out);
        spreadEight(made, marked >> 8, 8, first, out);
    }
}

// The same thirty-two bytes at a time, where the processor expands bytes.
__attribute__((target("avx512f,avx512bw,avx512vl,avx512vbmi2,bmi2,popcnt"))) void
spreadBy32(const char*& in, const char* end, char byte, char first, char second, char*& out) {
    const __m256i bytes = _mm256_set1_epi8(byte);
    const __m256i seconds = _mm256_set1_epi8(second);
    for (; end - in >= 32; in += 32) {
        const __m256i here = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(in));
        const __mmask32 marked = _mm256_cmpeq_epi8_mask(here, bytes);
        spreadThirtyTwo(_mm256_mask_mov_epi8(here, marked, seconds), marked, first, out);
    }
}
#endif

} // namespace

char* copyWithByteMadeTwo(std::string_view text, char byte, char first, char second, char* out,
                          SpreadSteps steps) {
    const char* in = text.data();
    const char* const end = in + text.size();
#ifdef MORLEVANT_X86_STEPS
    if (steps >= SpreadSteps::Expansion)
        spreadBy32(in, end, byte, first, second, out);
    if (steps >= SpreadSteps::Shuffle)
        spreadBy16(in, end, byte, first, second, out);
#endif
    for (; in < end; ++in) {
        if (*in == byte) {
            *out++ = first;
            *out++ = second;
        } else {
            *out++ = *in;
        }
    }
    return out;
}

} // namespace morlevant
