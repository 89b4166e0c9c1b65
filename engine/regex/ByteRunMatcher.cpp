#include "engine/regex/ByteRunMatcher.h"

#include <algorithm>
#include <bit>
#include <span>

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
// moves `out` past them. Eight bytes are stored whatever the count: never past where those eight
// were read from, so the text may be packed where it lies.
__attribute__((target("ssse3,popcnt"))) inline void packEight(__m128i bytes, unsigned kept,
                                                              std::uint8_t offset, char*& out) {
    const __m128i order =
        _mm_add_epi8(_mm_loadu_si128(reinterpret_cast<const __m128i*>(packKept[kept].data())),
                     _mm_set1_epi8(static_cast<char>(offset)));
    _mm_storel_epi64(reinterpret_cast<__m128i*>(out), _mm_shuffle_epi8(bytes, order));
    out += std::popcount(kept);
}

// copyWithoutRuns sixteen bytes at a time, as far as whole steps go.
__attribute__((target("ssse3,popcnt"))) void
copyWithoutBy16(const char*& in, const char* end, const AsciiSetTable& highBitsByLow, char*& out) {
    const __m128i byLow = loaded(highBitsByLow.data());
    for (; end - in >= 16; in += 16) {
        const __m128i bytes = loaded(in);
        const unsigned kept = outsideSet(bytes, byLow);
        packEight(bytes, kept & 0xff, 0, out);
        packEight(bytes, kept >> 8, 8, out);
    }
}

// copyRunsOfLine sixteen bytes at a time: the bytes of the set are kept, and so is the byte
// after each run, made a blank. The last step takes the bytes left made up to sixteen with a byte
// never in the set, which gives a run at the end of the line its blank.
__attribute__((target("ssse3,popcnt"))) void
copyRunsBy16(std::string_view line, const AsciiSetTable& highBitsByLow, char*& out) {
    const __m128i byLow = loaded(highBitsByLow.data());
    const __m128i ones = _mm_set1_epi8(-1);
    const __m128i blanks = _mm_set1_epi8(' ');
    __m128i previous = _mm_setzero_si128(); // 0xff for a byte of the previous step in the set
    std::array<char, 16> rest{};
    for (const char* in = line.data(), *end = in + line.size();; in += 16) {
        const bool whole = end - in >= 16;
        if (!whole) {
            rest.fill(static_cast<char>(0x80));
            std::copy(in, end, rest.data());
        }
        const __m128i bytes = loaded(whole ? in : rest.data());
        const __m128i outside = _mm_cmpeq_epi8(setBits(bytes, byLow), _mm_setzero_si128());
        const __m128i members = _mm_xor_si128(outside, ones);
        // Whether the byte before each is in the set: the last of the previous step for the first.
        const __m128i afterRun = _mm_and_si128(outside, _mm_alignr_epi8(members, previous, 15));
        const __m128i made =
            _mm_or_si128(_mm_andnot_si128(afterRun, bytes), _mm_and_si128(afterRun, blanks));
        const auto kept = static_cast<unsigned>(_mm_movemask_epi8(_mm_or_si128(members, afterRun)));
        packEight(made, kept & 0xff, 0, out);
        packEight(made, kept >> 8, 8, out);
        if (!whole)
            return;
        previous = members;
    }
}

// The first byte from `at` that is in the set (`inSet`) or not, sixteen bytes at a time as far
// as whole steps go; where the steps stopped when there is none.
__attribute__((target("ssse3"))) std::size_t skipBy16(const unsigned char* bytes, std::size_t at,
                                                      std::size_t size,
                                                      const AsciiSetTable& highBitsByLow,
                                                      bool inSet) {
    const __m128i byLow = loaded(highBitsByLow.data());
    for (; size - at >= 16; at += 16) {
        const unsigned outside = outsideSet(loaded(bytes + at), byLow);
        const unsigned wanted = inSet ? ~outside & 0xffff : outside;
        if (wanted != 0)
            return at + static_cast<std::size_t>(std::countr_zero(wanted));
    }
    return at;
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

bool ByteRunMatcher::takeBehind(const PatternNode& look) {
    if (look.kind != Kind::Look || !look.behind || look.negative)
        return false;
    const PatternNode& body = unwrapped(look.children.front());
    const std::span<const PatternNode> parts =
        body.kind == Kind::Sequence ? std::span(body.children) : std::span(&body, 1);
    for (const PatternNode& part : parts) {
        const PatternNode& atom = unwrapped(part);
        std::array<bool, 256>& set = behind_.emplace_back();
        if (atom.kind == Kind::Character && atom.character < 0x80) {
            set[atom.character] = true;
        } else if (atom.kind == Kind::Set && !atom.set.negated &&
                   (atom.set.ranges.empty() || atom.set.ranges.back().last < 0x80)) {
            for (const CodeRange& range : atom.set.ranges)
                for (char32_t c = range.first; c <= range.last; ++c)
                    set[c] = true;
        } else {
            return false;
        }
    }
    if (parts.empty() || unwrapped(parts.back()).kind != Kind::Character)
        return false;
    behindLast_ = static_cast<char>(unwrapped(parts.back()).character);
    return true;
}

std::optional<ByteRunMatcher> ByteRunMatcher::of(const PatternNode& root) {
    // The run alone, or a sequence of the run, captured or not, and ASCII characters, or of a
    // lookbehind and the run.
    const PatternNode& whole = unwrapped(root);
    ByteRunMatcher matcher;
    const bool behind = whole.kind == Kind::Sequence && whole.children.size() == 2 &&
                        unwrapped(whole.children.front()).kind == Kind::Look;
    if (behind && !matcher.takeBehind(unwrapped(whole.children.front())))
        return std::nullopt;
    const bool withSuffix = !behind && whole.kind == Kind::Sequence && whole.children.size() > 1;
    const PatternNode& first = behind       ? unwrapped(whole.children.back())
                               : withSuffix ? unwrapped(whole.children.front())
                                            : whole;
    const bool captured =
        first.kind == Kind::Group && first.group == 1 && first.children.size() == 1;
    const PatternNode& repeat = captured ? unwrapped(first.children.front()) : first;
    if (repeat.kind != Kind::Repeat || repeat.min != 1 || repeat.max != PatternNode::unbounded ||
        !repeat.greedy)
        return std::nullopt;
    const PatternNode& atom = unwrapped(repeat.children.front());
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
    if (withSuffix) {
        for (std::size_t i = 1; i < whole.children.size(); ++i) {
            const PatternNode& character = whole.children[i];
            if (character.kind != Kind::Character || character.character >= 0x80)
                return std::nullopt;
            matcher.suffix_ += static_cast<char>(character.character);
        }
        // A suffix that starts outside the set can only follow a run whole: giving back any of
        // the run leaves a byte of the set where the suffix would start.
        if (matcher.inSet_[static_cast<unsigned char>(matcher.suffix_.front())])
            return std::nullopt;
    }
    matcher.highBitsByLow_ = asciiSetTable(matcher.inSet_);
    return matcher;
}

bool ByteRunMatcher::find(std::string_view subject, std::size_t start,
                          std::size_t (&match)[4]) const {
    if (suffix_.empty()) {
        BytePositions lastBytes(subject, behindLast_);
        if (!(behind_.empty() ? findRun(subject, start, match)
                              : findAfterBehind(subject, start, lastBytes, match)))
            return false;
        match[2] = match[0];
        match[3] = match[1];
        return true;
    }
    bool found = false;
    suffixMatches(subject, start, [&](const std::size_t(&first)[4]) {
        std::copy(first, first + 4, match);
        found = true;
        return false;
    });
    return found;
}

bool ByteRunMatcher::findRun(std::string_view subject, std::size_t start,
                             std::size_t (&match)[4]) const {
    const auto* bytes = reinterpret_cast<const unsigned char*>(subject.data());
    const std::size_t size = subject.size();
    // Sixteen bytes at a time where the processor can look them up so, then one at a time.
    std::size_t at = start;
#ifdef MORLEVANT_X86_STEPS
    const bool bySixteen = processorHasByteShuffle();
    if (bySixteen && at < size)
        at = skipBy16(bytes, at, size, highBitsByLow_, true);
#endif
    while (at < size && !inSet_[bytes[at]])
        ++at;
    if (at >= size)
        return false;
    std::size_t end = at + 1;
#ifdef MORLEVANT_X86_STEPS
    if (bySixteen)
        end = skipBy16(bytes, end, size, highBitsByLow_, false);
#endif
    while (end < size && inSet_[bytes[end]])
        ++end;
    match[0] = at;
    match[1] = end;
    return true;
}

bool ByteRunMatcher::findAfterBehind(std::string_view subject, std::size_t start,
                                     BytePositions& lastBytes, std::size_t (&match)[4]) const {
    const auto* bytes = reinterpret_cast<const unsigned char*>(subject.data());
    const std::size_t size = subject.size();
    const std::size_t length = behind_.size();
    // The lookbehind reads the text before `start` too, never before the subject's start.
    for (std::size_t last = lastBytes.next(std::max(start, length) - 1); last + 1 < size;
         last = lastBytes.next(last + 1)) {
        const std::size_t at = last + 1;
        if (!inSet_[bytes[at]])
            continue;
        const unsigned char* const text = bytes + at - length;
        bool follows = true;
        for (std::size_t i = 0; i + 1 < length && follows; ++i)
            follows = behind_[i][text[i]];
        if (!follows)
            continue;
        std::size_t end = at + 1;
        while (end < size && inSet_[bytes[end]])
            ++end;
        match[0] = match[2] = at;
        match[1] = match[3] = end;
        return true;
    }
    return false;
}

char* ByteRunMatcher::copyRunsOfLine(std::string_view line, char* out) const {
    char* const start = out;
#ifdef MORLEVANT_X86_STEPS
    if (processorHasByteShuffle()) {
        copyRunsBy16(line, highBitsByLow_, out);
    } else
#endif
    {
        bool inRun = false;
        for (const char byte : line) {
            const bool member = inSet_[static_cast<unsigned char>(byte)];
            if (member)
                *out++ = byte;
            else if (inRun)
                *out++ = ' ';
            inRun = member;
        }
        if (inRun)
            *out++ = ' ';
    }
    // Nothing written: the line has no run, and comes as it is.
    return out == start ? std::copy(line.begin(), line.end(), out) : out;
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
