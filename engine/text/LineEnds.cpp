#include "engine/text/LineEnds.h"

#include "engine/text/ByteSpread.h"
#include "engine/text/ProcessorFeatures.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

#ifdef __SSE2__
#include <emmintrin.h>
#endif
#ifdef MORLEVANT_X86_STEPS
#include <immintrin.h>
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

std::size_t findLastCrOrLf(std::string_view text, std::size_t from, std::size_t to) {
    std::size_t pos = to;
#ifdef __SSE2__
    const __m128i cr = _mm_set1_epi8('\r');
    const __m128i lf = _mm_set1_epi8('\n');
    for (; pos > from && pos >= 16; pos -= 16) {
        const std::size_t start = pos - 16;
        const __m128i bytes =
            _mm_loadu_si128(reinterpret_cast<const __m128i*>(text.data() + start));
        auto found = static_cast<unsigned>(
            _mm_movemask_epi8(_mm_or_si128(_mm_cmpeq_epi8(bytes, cr), _mm_cmpeq_epi8(bytes, lf))));
        if (start < from)
            found &= ~0U << (from - start);
        if (found != 0)
            return start + 31 - static_cast<std::size_t>(std::countl_zero(found));
    }
#endif
    for (; pos > from; --pos)
        if (text[pos - 1] == '\r' || text[pos - 1] == '\n')
            return pos - 1;
    return std::string_view::npos;
}

namespace {

#ifdef MORLEVANT_X86_STEPS

// Copies sixteen bytes at a time while they hold no CR, each LF made CR LF by a shuffle rather
// than by a branch per line: a text of short lines ends a line every few steps, at an unforeseen
// one. Stops before the first sixteen bytes that hold a CR, or fewer than sixteen left.
__attribute__((target("ssse3,popcnt"))) void copyLfLinesBy16(const char*& in, const char* end,
                                                             char*& out) {
    const __m128i cr = _mm_set1_epi8('\r');
    const __m128i lf = _mm_set1_epi8('\n');
    while (end - in >= 16) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(in));
        if (_mm_movemask_epi8(_mm_cmpeq_epi8(bytes, cr)) != 0)
            return;
        const auto lfs = static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(bytes, lf)));
        spreadEight(bytes, lfs & 0xff, 0, '\r', out);
        spreadEight(bytes, lfs >> 8, 8, '\r', out);
        in += 16;
    }
}

// The same thirty-two bytes at a time, where the processor expands bytes.
__attribute__((target("avx512f,avx512bw,avx512vl,avx512vbmi2,bmi2,popcnt"))) void
copyLfLinesBy32(const char*& in, const char* end, char*& out) {
    const __m256i cr = _mm256_set1_epi8('\r');
    const __m256i lf = _mm256_set1_epi8('\n');
    while (end - in >= 32) {
        const __m256i bytes = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(in));
        if (_mm256_cmpeq_epi8_mask(bytes, cr) != 0)
            return;
        spreadThirtyTwo(bytes, _mm256_cmpeq_epi8_mask(bytes, lf), '\r', out);
        in += 32;
    }
}

// Whether the shuffle pays for this text: its lines end in LF and are short, an end every few
// steps, as its first bytes show. Longer lines go faster by the plain steps, which store sixteen
// bytes without an end as they are.
bool shortLfLines(std::string_view text) {
    const std::string_view start = text.substr(0, 1024);
    return static_cast<std::size_t>(std::count(start.begin(), start.end(), '\n')) * 64 >=
           start.size();
}

#endif

#ifdef __SSE2__
// One step of copyWithCrLfEnds: stores sixteen bytes and moves past those before the first line
// end among them, and past that end, made CR LF; or past all sixteen when they hold none.
// Returns whether it met an LF alone.
inline bool crLfStep(const char*& in, const char* end, char*& out) {
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(in));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out), bytes);
    const int found = _mm_movemask_epi8(_mm_or_si128(_mm_cmpeq_epi8(bytes, _mm_set1_epi8('\r')),
                                                     _mm_cmpeq_epi8(bytes, _mm_set1_epi8('\n'))));
    if (found == 0) {
        in += 16;
        out += 16;
        return false;
    }
    const int before = std::countr_zero(static_cast<unsigned>(found));
    in += before;
    out += before;
    const bool lfAlone = in[0] == '\n';
    in += in[0] == '\r' && in + 1 < end && in[1] == '\n' ? 2 : 1;
    *out++ = '\r';
    *out++ = '\n';
    return lfAlone;
}
#endif

} // namespace

// Sixteen bytes are stored at once and the output moves on only past those before the first
// line end among them, so a line costs a few wide stores rather than a copy call of its own.
// Where the processor can shuffle bytes, short lines that end in LF alone go faster still; after
// a CR they are looked for again only past the next LF alone, so that CR LF text is not searched
// twice.
char* copyWithCrLfEnds(std::string_view text, char* out, SpreadSteps steps) {
    const char* in = text.data();
    const char* const end = in + text.size();
#ifdef MORLEVANT_X86_STEPS
    if (steps >= SpreadSteps::Shuffle && shortLfLines(text)) {
        while (end - in >= 16) {
            if (steps == SpreadSteps::Expansion)
                copyLfLinesBy32(in, end, out);
            copyLfLinesBy16(in, end, out);
            while (end - in >= 16 && !crLfStep(in, end, out)) {
            }
        }
    }
#endif
#ifdef __SSE2__
    while (end - in >= 16)
        crLfStep(in, end, out);
#endif
    while (in < end) {
        if (*in != '\r' && *in != '\n') {
            *out++ = *in++;
            continue;
        }
        in += in[0] == '\r' && in + 1 < end && in[1] == '\n' ? 2 : 1;
        *out++ = '\r';
        *out++ = '\n';
    }
    return out;
}

namespace {

#ifdef MORLEVANT_X86_STEPS

__attribute__((target("avx2"))) std::size_t laneSum(__m256i counts) {
    const __m256i sums = _mm256_sad_epu8(counts, _mm256_setzero_si256()); // four lane sums
    const __m128i pairs =
        _mm_add_epi64(_mm256_castsi256_si128(sums), _mm256_extracti128_si256(sums, 1));
    return static_cast<std::size_t>(_mm_cvtsi128_si64(pairs) +
                                    _mm_cvtsi128_si64(_mm_unpackhi_epi64(pairs, pairs)));
}

// countLineEnds' count of the bytes from `i` on, 32 at a time, as far as whole steps go; `i` is
// at least 1 and moves past what was counted.
__attribute__((target("avx2"))) void countBy32(const unsigned char* bytes, std::size_t size,
                                               std::size_t& i, std::size_t& lf, std::size_t& cr,
                                               std::size_t& crlf) {
    const __m256i crs = _mm256_set1_epi8('\r');
    const __m256i lfs = _mm256_set1_epi8('\n');
    while (size - i >= 32) {
        __m256i lfCounts = _mm256_setzero_si256();
        __m256i crCounts = _mm256_setzero_si256();
        __m256i crlfCounts = _mm256_setzero_si256();
        const std::size_t rounds = std::min<std::size_t>((size - i) / 32, 255);
        for (std::size_t round = 0; round < rounds; ++round, i += 32) {
            const __m256i here = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(bytes + i));
            const __m256i before =
                _mm256_loadu_si256(reinterpret_cast<const __m256i*>(bytes + i - 1));
            const __m256i isLf = _mm256_cmpeq_epi8(here, lfs);
            lfCounts = _mm256_sub_epi8(lfCounts, isLf);
            crCounts = _mm256_sub_epi8(crCounts, _mm256_cmpeq_epi8(here, crs));
            crlfCounts =
                _mm256_sub_epi8(crlfCounts, _mm256_and_si256(isLf, _mm256_cmpeq_epi8(before, crs)));
        }
        lf += laneSum(lfCounts);
        cr += laneSum(crCounts);
        crlf += laneSum(crlfCounts);
    }
}

#endif

} // namespace

LineEndCount countLineEnds(std::string_view text) {
    std::size_t lf = 0;
    std::size_t cr = 0;
    std::size_t crlf = 0;
    const auto* bytes = reinterpret_cast<const unsigned char*>(text.data());
    std::size_t i = 0;
    if (!text.empty()) {
        lf += bytes[0] == '\n';
        cr += bytes[0] == '\r';
        i = 1;
    }
#ifdef MORLEVANT_X86_STEPS
    if (processorHasAvx2())
        countBy32(bytes, text.size(), i, lf, cr, crlf);
#endif
#ifdef __SSE2__
    // Sixteen bytes at a time, one count per byte lane (a match compares as -1 and is subtracted),
    // the lanes summed before a count can pass 255. A CR LF is an LF whose byte before is a CR.
    const __m128i crs = _mm_set1_epi8('\r');
    const __m128i lfs = _mm_set1_epi8('\n');
    const __m128i zero = _mm_setzero_si128();
    const auto sum = [&](__m128i counts) {
        const __m128i sums = _mm_sad_epu8(counts, zero); // two lane sums, each below 2^16
        return static_cast<std::size_t>(_mm_cvtsi128_si32(sums) +
                                        _mm_cvtsi128_si32(_mm_srli_si128(sums, 8)));
    };
    while (text.size() - i >= 16) {
        __m128i lfCounts = zero;
        __m128i crCounts = zero;
        __m128i crlfCounts = zero;
        const std::size_t rounds = std::min<std::size_t>((text.size() - i) / 16, 255);
        for (std::size_t round = 0; round < rounds; ++round, i += 16) {
            const __m128i here = _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes + i));
            const __m128i before = _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes + i - 1));
            const __m128i isLf = _mm_cmpeq_epi8(here, lfs);
            lfCounts = _mm_sub_epi8(lfCounts, isLf);
            crCounts = _mm_sub_epi8(crCounts, _mm_cmpeq_epi8(here, crs));
            crlfCounts = _mm_sub_epi8(crlfCounts, _mm_and_si128(isLf, _mm_cmpeq_epi8(before, crs)));
        }
        lf += sum(lfCounts);
        cr += sum(crCounts);
        crlf += sum(crlfCounts);
    }
#endif
    for (; i < text.size(); ++i) {
        lf += bytes[i] == '\n';
        cr += bytes[i] == '\r';
        crlf += (bytes[i - 1] == '\r') & (bytes[i] == '\n');
    }
    return {lf + cr - crlf, cr == lf && crlf == lf, cr != crlf};
}

} // namespace morlevant
