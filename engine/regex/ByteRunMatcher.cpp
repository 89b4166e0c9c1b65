#include "engine/regex/ByteRunMatcher.h"

#include "engine/text/ProcessorFeatures.h"

#include <bit>

#ifdef MORLEVANT_X86_STEPS
#include <immintrin.h>
#endif

namespace morlevant {

namespace {

using Kind = PatternNode::Kind;

#ifdef MORLEVANT_X86_STEPS
// For each set of kept positions among eight bytes (bit j: byte j is kept), the byte shuffle
// that packs the kept ones to the front.
constexpr auto packKept = [] {
    std::array<std::array<std::uint8_t, 16>, 256> table{};
    for (std::size_t mask = 0; mask < 256; ++mask) {
        std::size_t at = 0;
        for (std::uint8_t j = 0; j < 8; ++j)
            if ((mask >> j) & 1)
                table[mask][at++] = j;
        while (at < 16)
            table[mask][at++] = 0x80;
    }
    return table;
}();

// Stores the bytes among the eight of `bytes` from `offset` on (0 or 8) that `kept` marks, and
// moves `out` past them. Sixteen bytes are stored whatever the count.
__attribute__((target("ssse3,popcnt"))) inline void packEight(__m128i bytes, unsigned kept,
                                                              std::uint8_t offset, char*& out) {
    const __m128i order =
        _mm_add_epi8(_mm_loadu_si128(reinterpret_cast<const __m128i*>(packKept[kept].data())),
                     _mm_set1_epi8(static_cast<char>(offset)));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out), _mm_shuffle_epi8(bytes, order));
    out += std::popcount(kept);
}

// copyWithoutRuns sixteen bytes at a time, as far as whole steps go: each byte is looked up in
// the set by its low four bits and its high four at once.
__attribute__((target("ssse3,popcnt"))) void
copyWithoutBy16(const char*& in, const char* end, const std::array<std::uint8_t, 16>& highBitsByLow,
                char*& out) {
    const __m128i byLow = _mm_loadu_si128(reinterpret_cast<const __m128i*>(highBitsByLow.data()));
    // Bytes from 0x80 on have no bit: they are never in the set.
    const __m128i bitOfHigh =
        _mm_setr_epi8(1, 2, 4, 8, 16, 32, 64, static_cast<char>(0x80), 0, 0, 0, 0, 0, 0, 0, 0);
    const __m128i lowFour = _mm_set1_epi8(0x0f);
    for (; end - in >= 16; in += 16) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(in));
        const __m128i low = _mm_and_si128(bytes, lowFour);
        const __m128i high = _mm_and_si128(_mm_srli_epi16(bytes, 4), lowFour);
        const __m128i inSet =
            _mm_and_si128(_mm_shuffle_epi8(byLow, low), _mm_shuffle_epi8(bitOfHigh, high));
        const auto kept =
            static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(inSet, _mm_setzero_si128())));
        packEight(bytes, kept & 0xff, 0, out);
        packEight(bytes, kept >> 8, 8, out);
    }
}
#endif

// The node a pattern comes down to through sequences and alternations of one branch and groups
// that do not capture.
const PatternNode& unwrapped(const PatternNode& n) {
    const bool passThrough = (n.kind == Kind::Sequence || n.kind == Kind::Alternation ||
                              (n.kind == Kind::Group && n.group == 0)) &&
                             n.children.size() == 1;
    return passThrough ? unwrapped(n.children.front()) : n;
}

} // namespace

std::optional<ByteRunMatcher> ByteRunMatcher::of(const PatternNode& root) {
    const PatternNode& repeat = unwrapped(root);
    if (repeat.kind != Kind::Repeat || repeat.min != 1 || repeat.max != PatternNode::unbounded ||
        !repeat.greedy)
        return std::nullopt;
    const PatternNode& atom = unwrapped(repeat.children.front());
    ByteRunMatcher matcher;
    if (atom.kind == Kind::Character && atom.character < 0x80) {
        matcher.inSet_[atom.character] = true;
    } else if (atom.kind == Kind::Set && !atom.set.negated &&
               (atom.set.ranges.empty() || atom.set.ranges.back().last < 0x80)) {
        for (const CodeRange& range : atom.set.ranges)
            for (char32_t c = range.first; c <= range.last; ++c)
                matcher.inSet_[c] = true;
    } else {
        return std::nullopt;
    }
    for (std::size_t byte = 0; byte < 0x80; ++byte)
        if (matcher.inSet_[byte])
            matcher.highBitsByLow_[byte & 0xf] |= static_cast<std::uint8_t>(1u << (byte >> 4));
    return matcher;
}

bool ByteRunMatcher::find(std::string_view subject, std::size_t start,
                          std::size_t (&match)[2]) const {
    const auto* bytes = reinterpret_cast<const unsigned char*>(subject.data());
    const std::size_t size = subject.size();
    std::size_t at = start;
    while (at < size && !inSet_[bytes[at]])
        ++at;
    if (at >= size)
        return false;
    std::size_t end = at + 1;
    while (end < size && inSet_[bytes[end]])
        ++end;
    match[0] = at;
    match[1] = end;
    return true;
}

char* ByteRunMatcher::copyWithoutRuns(std::string_view text, char* out) const {
    const char* in = text.data();
    const char* const end = in + text.size();
#ifdef MORLEVANT_X86_STEPS
    if (processorHasByteShuffle())
        copyWithoutBy16(in, end, highBitsByLow_, out);
#endif
    for (; in < end; ++in)
        if (!inSet_[static_cast<unsigned char>(*in)])
            *out++ = *in;
    return out;
}

} // namespace morlevant
