#include "engine/routines/Replacement.h"

#include "engine/routines/RangedRoutine.h"
#include "engine/text/AppendBuffer.h"
#include "engine/text/BytePositions.h"
#include "engine/text/ByteSpread.h"
#include "engine/text/LineEnds.h"
#include "engine/text/ProcessorFeatures.h"
#include "engine/text/Utf8.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <optional>

#ifdef __SSE2__
#include <emmintrin.h>
#endif
#ifdef MORLEVANT_X86_STEPS
#include <immintrin.h>
#endif

namespace morlevant {

namespace {

// A buffer between two pairs larger than this is let go after its line, so that one long line
// does not keep its size for the rest of the run.
constexpr std::size_t shrinkAbove = std::size_t{1} << 20;

#ifdef MORLEVANT_X86_STEPS
// findFrom's search for a `find` of two bytes or more, thirty-two positions at a time from `at`
// as far as whole steps go: true with the occurrence in `at`, or false with `at` where the steps
// stopped.
__attribute__((target("avx2"))) bool findBy32(std::string_view text, std::string_view find,
                                              std::size_t& at) {
    const char* const data = text.data();
    const std::size_t lastStart = text.size() - find.size();
    const std::size_t lastOffset = find.size() - 1;
    const __m256i first = _mm256_set1_epi8(find.front());
    const __m256i last = _mm256_set1_epi8(find.back());
    for (; lastStart - at >= 32; at += 32) {
        const __m256i starts = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(data + at));
        const __m256i ends =
            _mm256_loadu_si256(reinterpret_cast<const __m256i*>(data + at + lastOffset));
        auto candidates = static_cast<unsigned>(_mm256_movemask_epi8(
            _mm256_and_si256(_mm256_cmpeq_epi8(starts, first), _mm256_cmpeq_epi8(ends, last))));
        for (; candidates != 0; candidates &= candidates - 1) {
            const std::size_t start = at + static_cast<std::size_t>(std::countr_zero(candidates));
            if (std::memcmp(data + start + 1, find.data() + 1, lastOffset - 1) == 0) {
                at = start;
                return true;
            }
        }
    }
    return false;
}
#endif

// The first occurrence of `find` (not empty) in `text` at or after `from`, or npos. Candidates
// must match both the first and the last byte of `find`, tested sixteen or thirty-two positions
// at a time, before the rest is compared: in text where either byte alone is common (a letter),
// few positions have both.
std::size_t findFrom(std::string_view text, std::string_view find, std::size_t from) {
    if (find.size() > text.size() || from > text.size() - find.size())
        return std::string_view::npos;
    const char* const data = text.data();
    const std::size_t lastStart = text.size() - find.size();
    if (find.size() == 1) {
        const void* hit = std::memchr(data + from, find.front(), lastStart - from + 1);
        return hit ? static_cast<std::size_t>(static_cast<const char*>(hit) - data)
                   : std::string_view::npos;
    }
    const std::size_t lastOffset = find.size() - 1;
    std::size_t at = from;
#ifdef MORLEVANT_X86_STEPS
    if (processorHasAvx2() && findBy32(text, find, at))
        return at;
#endif
#ifdef __SSE2__
    const __m128i first = _mm_set1_epi8(find.front());
    const __m128i last = _mm_set1_epi8(find.back());
    for (; lastStart - at >= 16; at += 16) {
        const __m128i starts = _mm_loadu_si128(reinterpret_cast<const __m128i*>(data + at));
        const __m128i ends =
            _mm_loadu_si128(reinterpret_cast<const __m128i*>(data + at + lastOffset));
        auto candidates = static_cast<unsigned>(_mm_movemask_epi8(
            _mm_and_si128(_mm_cmpeq_epi8(starts, first), _mm_cmpeq_epi8(ends, last))));
        for (; candidates != 0; candidates &= candidates - 1) {
            const std::size_t start = at + static_cast<std::size_t>(std::countr_zero(candidates));
            if (std::memcmp(data + start + 1, find.data() + 1, lastOffset - 1) == 0)
                return start;
        }
    }
#endif
    for (; at <= lastStart; ++at)
        if (data[at] == find.front() && data[at + lastOffset] == find.back() &&
            std::memcmp(data + at + 1, find.data() + 1, lastOffset - 1) == 0)
            return at;
    return std::string_view::npos;
}

// The occurrences of `byte` in `text`, sixteen bytes at a time: each step's matches are added
// up in sixteen byte-wide counters, which are summed before any could pass 255.
std::size_t countByte(std::string_view text, char byte) {
    std::size_t count = 0;
    std::size_t at = 0;
#ifdef __SSE2__
    const __m128i bytes = _mm_set1_epi8(byte);
    while (text.size() - at >= 16) {
        __m128i counters = _mm_setzero_si128();
        for (int step = 0; step < 255 && text.size() - at >= 16; ++step, at += 16)
            counters = _mm_sub_epi8(
                counters,
                _mm_cmpeq_epi8(_mm_loadu_si128(reinterpret_cast<const __m128i*>(text.data() + at)),
                               bytes));
        const __m128i sums = _mm_sad_epu8(counters, _mm_setzero_si128());
        count += static_cast<std::size_t>(_mm_cvtsi128_si32(sums)) +
                 static_cast<std::size_t>(_mm_extract_epi16(sums, 4));
    }
#endif
    for (; at < text.size(); ++at)
        count += text[at] == byte ? 1 : 0;
    return count;
}

// Calls `match(at)` for every occurrence of `find` (not empty) in `text`, left to right and
// without overlap, the first of them at `first`. The comparison is byte for byte, so it is exact
// and case-sensitive. A find text that is valid UTF-8 can only match whole characters; one that is
// not (a lone byte such as 0xAC) could match inside a character of the text, so then only
// occurrences that begin and end between characters count. Only bytes after the last occurrence
// reported are read again.
template <typename Match>
void forEachOccurrence(std::string_view text, std::string_view find, bool wholeCharacters,
                       std::size_t first, Match match) {
    std::size_t boundary = 0; // start of a character of the text, walked forward
    std::size_t at = first;
    while (at != std::string_view::npos) {
        if (!wholeCharacters) {
            while (boundary < at)
                boundary += utf8CharLength(text, boundary);
            std::size_t end = at;
            while (boundary == at && end < at + find.size())
                end += utf8CharLength(text, end);
            if (boundary != at || end != at + find.size()) {
                at = findFrom(text, find, at + 1);
                continue;
            }
        }
        match(at);
        boundary = at + find.size();
        at = findFrom(text, find, boundary);
    }
}

// Every occurrence of `find` in `text`, the first at `first`, replaced by `replaceWith`; `out`
// is replaced.
void replaceAll(std::string_view text, std::string_view find, std::string_view replaceWith,
                bool wholeCharacters, std::size_t first, std::string& out) {
    out.clear();
    // The result is built in one buffer of its final size at most: a line hundreds of
    // megabytes long must not be copied into a buffer grown by doubling.
    std::size_t size = text.size();
    if (find.size() == 1 && replaceWith.size() == 2 && wholeCharacters) {
        // One ASCII byte made two: every occurrence is one, and all are spread out in one pass.
        size += countByte(text.substr(first), find.front());
        out.resize(size + 32); // the pass stores up to 32 bytes past what it writes
        std::memcpy(out.data(), text.data(), first);
        copyWithByteMadeTwo(text.substr(first), find.front(), replaceWith[0], replaceWith[1],
                            out.data() + first);
        out.resize(size);
        return;
    }
    if (replaceWith.size() > find.size() && find.size() == 1)
        size += countByte(text.substr(first), find.front()) * (replaceWith.size() - 1);
    else if (replaceWith.size() > find.size())
        for (std::size_t at = first; at != std::string_view::npos;
             at = findFrom(text, find, at + find.size()))
            size += replaceWith.size() - find.size();
    out.reserve(size);
    std::size_t from = 0;
    forEachOccurrence(text, find, wholeCharacters, first, [&](std::size_t at) {
        out.append(text, from, at - from);
        out.append(replaceWith);
        from = at + find.size();
    });
    out.append(text, from);
}

// The listed spans of replaceInSpans, walked along with the occurrences and moved to where their
// text lies in the result.
class ListedSpans {
public:
    explicit ListedSpans(std::vector<RangeSpan>& spans) : spans_(spans) {}

    // `at` when the occurrence at `at`, `size` bytes long, lies within a span; otherwise where to
    // look for the next one, or npos when no span is left.
    std::size_t take(std::size_t at, std::size_t size) {
        // A span that ends before the occurrence does cannot hold a later one either.
        while (span_ < spans_.size() && spans_[span_].end < at + size)
            leaveSpan();
        if (span_ == spans_.size())
            return std::string_view::npos;
        return std::max(at, spans_[span_].begin);
    }
    void replaced(std::ptrdiff_t growth) { grown_ += growth; }
    void finish() {
        while (span_ < spans_.size())
            leaveSpan();
    }

private:
    // The occurrences of a span come before any of the next: once a span is done with, where it
    // lies in the result is known.
    void leaveSpan() {
        spans_[span_].begin += grownBeforeSpan_;
        spans_[span_].end += grown_;
        grownBeforeSpan_ = grown_;
        ++span_;
    }

    std::vector<RangeSpan>& spans_;
    std::size_t span_ = 0;
    std::ptrdiff_t grown_ = 0;           // how much longer the result is so far than the text
    std::ptrdiff_t grownBeforeSpan_ = 0; // the same where the current span starts
};

// The ranges of replaceInSpans that run from a column to the end of each line. A line's start is
// looked for back from an occurrence, no further than the one before, and where its range starts
// only in a line that holds an occurrence: most lines of a block cost nothing of their own. An
// occurrence holds no line end, so it lies within its line's range when it starts within it.
class SpansToLineEnds {
public:
    SpansToLineEnds(std::string_view text, const RangeSpans& spans) : text_(text), spans_(spans) {}

    std::size_t take(std::size_t at, std::size_t) {
        const std::size_t ascii = spans_.asciiStart;
        if (ascii == 0)
            return at;
        if (const std::size_t end = findLastCrOrLf(text_, lookedUpTo_, at);
            end != std::string_view::npos) {
            lineStart_ = end + 1;
            rangeStart_ = unknown;
        }
        lookedUpTo_ = at;
        // Every character takes a byte at least: the range cannot start before `ascii` bytes.
        if (at - lineStart_ < ascii)
            return at + 1;
        if (rangeStart_ == unknown)
            rangeStart_ = rangeStart();
        // The range starts within its line: an occurrence before it is passed over to there.
        return at >= rangeStart_                       ? at
               : rangeStart_ == std::string_view::npos ? at + 1
                                                       : rangeStart_;
    }
    void replaced(std::ptrdiff_t) {}
    void finish() {}

private:
    static constexpr std::size_t unknown = std::string_view::npos - 1;

    // Where the range of the line from lineStart_ starts, that line's first asciiStart bytes
    // being within it; npos when it has none.
    std::size_t rangeStart() const {
        const std::string_view rest = text_.substr(lineStart_);
        if (asciiPrefixLength(rest.substr(0, spans_.asciiStart)) == spans_.asciiStart)
            return lineStart_ + spans_.asciiStart;
        const std::size_t start = spans_.startInLine(rest.substr(0, findCrOrLf(rest)));
        return start == std::string_view::npos ? start : lineStart_ + start;
    }

    std::string_view text_;
    const RangeSpans& spans_;
    std::size_t lookedUpTo_ = 0; // no line end lies between lineStart_ and this
    std::size_t lineStart_ = 0;
    std::size_t rangeStart_ = unknown; // of the line from lineStart_
};

// Every occurrence of `find` (not empty) that lies wholly within a range of `spans` replaced by
// `replaceWith`, as if each range were a text of its own; written over `out`, the bytes outside
// the ranges as they are, and the spans told where their texts lie in the result. Returns false,
// with `out` untouched and the spans as they were, when no occurrence lies within them. A find
// text that is not valid UTF-8 is not taken: the characters it must begin and end between are
// those of each range, not of the text.
template <typename Spans>
bool replaceInSpans(std::string_view text, std::string_view find, std::string_view replaceWith,
                    Spans&& spans, std::string& out) {
    const auto growth = static_cast<std::ptrdiff_t>(replaceWith.size() - find.size());
    std::size_t copied = 0;              // bytes of the text placed in `out`
    std::optional<AppendBuffer> written; // from the first occurrence replaced
    // A byte such as "=" may stand every few bytes: its positions come from masks of 64 bytes
    // rather than a search call for each.
    BytePositions bytePositions(text, find.front());
    const auto search = [&](std::size_t from) {
        if (find.size() > 1)
            return findFrom(text, find, from);
        const std::size_t at = bytePositions.next(from);
        return at == text.size() ? std::string_view::npos : at;
    };
    std::size_t at = search(0);
    while (at != std::string_view::npos) {
        const std::size_t within = spans.take(at, find.size());
        if (within != at) {
            at = within == std::string_view::npos ? within : search(within);
            continue;
        }
        if (!written) // about the text's size, a little more where it grows
            written.emplace(out, text.size() + (growth > 0 ? text.size() / 8 : 0),
                            AppendBuffer::overwriting);
        written->append(text.substr(copied, at - copied), text.data() + text.size());
        written->append(replaceWith);
        copied = at + find.size();
        spans.replaced(growth);
        at = search(copied);
    }
    if (!written)
        return false;
    spans.finish();
    written->append(text.substr(copied));
    return true;
}

// Every `find` byte from `from` on made `replaceWith`, sixteen bytes at a time rather than one
// occurrence after another: a separator such as "=" may stand every few bytes.
void swapEveryByte(char* text, std::size_t size, std::size_t from, char find, char replaceWith) {
    std::size_t at = from;
#ifdef __SSE2__
    const __m128i finds = _mm_set1_epi8(find);
    const __m128i replacements = _mm_set1_epi8(replaceWith);
    for (; size - at >= 16; at += 16) {
        auto* bytes = reinterpret_cast<__m128i*>(text + at);
        const __m128i here = _mm_loadu_si128(bytes);
        const __m128i hits = _mm_cmpeq_epi8(here, finds);
        _mm_storeu_si128(
            bytes, _mm_or_si128(_mm_andnot_si128(hits, here), _mm_and_si128(hits, replacements)));
    }
#endif
    for (; at < size; ++at)
        if (text[at] == find)
            text[at] = replaceWith;
}

// The same within the `size` bytes of `text` itself, for a replacement no longer than what it
// replaces: the result is written over bytes already read, so no second buffer is needed.
// Returns the result's length.
std::size_t replaceAllInPlace(char* text, std::size_t size, std::string_view find,
                              std::string_view replaceWith, bool wholeCharacters,
                              std::size_t first) {
    // One ASCII byte for another: every occurrence is one, as no character holds that byte.
    if (find.size() == 1 && replaceWith.size() == 1 && wholeCharacters) {
        swapEveryByte(text, size, first, find.front(), replaceWith.front());
        return size;
    }
    std::size_t from = 0;    // first byte not yet moved
    std::size_t written = 0; // length of the result so far
    forEachOccurrence({text, size}, find, wholeCharacters, first, [&](std::size_t at) {
        // Until a replacement shorter than its find text, the bytes between stay where they are.
        if (written != from)
            std::memmove(text + written, text + from, at - from);
        written += at - from;
        std::memcpy(text + written, replaceWith.data(), replaceWith.size());
        written += replaceWith.size();
        from = at + find.size();
    });
    if (written != from)
        std::memmove(text + written, text + from, size - from);
    return written + size - from;
}

} // namespace

Replacement::Replacement(const TaskPageSettings& settings, std::size_t partSize)
    : partSize_(partSize), pairs_{{{settings.find1, settings.replace1},
                                   {settings.find2, settings.replace2},
                                   {settings.find3, settings.replace3},
                                   {settings.find4, settings.replace4}}} {
    for (Pair& pair : pairs_)
        pair.wholeCharacters = isValidUtf8(pair.find);
}

bool Replacement::keepsLineEnds() const {
    const auto holdsLineEnd = [](std::string_view text) {
        return text.find_first_of("\r\n") != std::string_view::npos;
    };
    for (const Pair& pair : pairs_)
        if (holdsLineEnd(pair.find) || holdsLineEnd(pair.replaceWith))
            return false;
    return true;
}

bool Replacement::neverLengthens() const {
    for (const Pair& pair : pairs_)
        if (!pair.find.empty() && pair.replaceWith.size() > pair.find.size())
            return false;
    return true;
}

std::size_t Replacement::ReplaceWithin(std::span<char> text) const {
    std::size_t size = text.size();
    for (const Pair& pair : pairs_) {
        if (pair.find.empty())
            continue;
        const std::size_t first = findFrom({text.data(), size}, pair.find, 0);
        if (first != std::string_view::npos)
            size = replaceAllInPlace(text.data(), size, pair.find, pair.replaceWith,
                                     pair.wholeCharacters, first);
    }
    return size;
}

bool Replacement::replacesInSpans() const {
    return keepsLineEnds() && std::all_of(pairs_.begin(), pairs_.end(),
                                          [](const Pair& pair) { return pair.wholeCharacters; });
}

void Replacement::ReplaceInSpans(std::string_view lines, RangeSpans& spans, std::string& out) {
    std::string_view current = lines;
    bool replaced = false; // `out` holds the text so far
    for (const Pair& pair : pairs_) {
        if (pair.find.empty())
            continue;
        if (!(spans.toLineEnds ? replaceInSpans(current, pair.find, pair.replaceWith,
                                                SpansToLineEnds(current, spans), pass_)
                               : replaceInSpans(current, pair.find, pair.replaceWith,
                                                ListedSpans(spans.listed), pass_)))
            continue;
        out.swap(pass_);
        current = out;
        replaced = true;
    }
    if (!replaced)
        out.assign(lines);
}

void Replacement::ReplaceLine(std::string_view line, std::string& out) {
    // Each pair works on the result of the one before; the first reads the line itself, so a
    // line is copied only when some pair changes it. A pair whose replacement is no longer than
    // its find text works within that copy.
    std::string_view current = line;
    bool copied = false; // `out` holds the text so far
    for (const Pair& pair : pairs_) {
        // An empty find text leaves the line as it is.
        if (pair.find.empty())
            continue;
        const std::size_t first = findFrom(current, pair.find, 0);
        if (first == std::string_view::npos)
            continue;
        if (pair.replaceWith.size() <= pair.find.size()) {
            if (!copied)
                out.assign(line);
            out.resize(replaceAllInPlace(out.data(), out.size(), pair.find, pair.replaceWith,
                                         pair.wholeCharacters, first));
        } else {
            replaceAll(current, pair.find, pair.replaceWith, pair.wholeCharacters, first, pass_);
            out.swap(pass_);
        }
        copied = true;
        current = out;
    }
    if (!copied)
        out.assign(line);
    // What the earlier passes held is not needed until the next line.
    if (pass_.capacity() > shrinkAbove)
        std::string().swap(pass_);
}

void Replacement::ReplaceLineSpilling(std::string_view line, std::string& out, const Spill& spill) {
    out.clear();
    // Pairs with an empty find text leave the text as it is, and so do those before the first
    // that occurs in the line.
    stageCount_ = 0;
    for (std::size_t pair = 0; pair < pairs_.size(); ++pair) {
        const std::string& find = pairs_[pair].find;
        if (find.empty() || (stageCount_ == 0 && findFrom(line, find, 0) == std::string_view::npos))
            continue;
        Stage& stage = stages_[stageCount_++];
        stage.pair = pair;
        stage.held.clear();
        stage.boundary = 0;
    }
    if (stageCount_ == 0) {
        spill(line);
        return;
    }
    out_ = &out;
    spill_ = &spill;
    work(0, line, true);
    // Each pair then works the rest of what the one before handed it.
    for (std::size_t stage = 1; stage < stageCount_; ++stage) {
        work(stage, stages_[stage].held, true);
        stages_[stage].held.clear();
    }
    for (Stage& stage : stages_)
        if (stage.held.capacity() > shrinkAbove)
            std::string().swap(stage.held);
}

std::size_t Replacement::work(std::size_t stage, std::string_view text, bool last) {
    const Pair& pair = pairs_[stages_[stage].pair];
    const std::size_t size = pair.find.size();
    // An occurrence that starts before `decided` lies wholly within the text, and so do the bytes
    // that tell whether it begins and ends between characters (a character that starts at its
    // last byte may take three more): the text up to there is worked as in the whole line.
    const std::size_t reach = pair.wholeCharacters ? size - 1 : size + 2;
    const std::size_t decided =
        last ? text.size() + 1 : (text.size() > reach ? text.size() - reach : 0);
    std::size_t boundary = stages_[stage].boundary;
    std::size_t from = 0; // first byte not yet handed on
    std::size_t at = findFrom(text, pair.find, 0);
    // As forEachOccurrence, but for occurrences that start before `decided`.
    while (at != std::string_view::npos && at < decided) {
        if (!pair.wholeCharacters) {
            while (boundary < at)
                boundary += utf8CharLength(text, boundary);
            std::size_t end = at;
            while (boundary == at && end < at + size)
                end += utf8CharLength(text, end);
            if (boundary != at || end != at + size) {
                at = findFrom(text, pair.find, at + 1);
                continue;
            }
        }
        handOn(stage, text.substr(from, at - from));
        handOn(stage, pair.replaceWith);
        from = at + size;
        boundary = from;
        at = findFrom(text, pair.find, from);
    }
    // No occurrence starts between `from` and `decided`: the bytes up to there are done with.
    const std::size_t worked = last ? text.size() : std::max(from, decided);
    handOn(stage, text.substr(from, worked - from));
    if (!pair.wholeCharacters)
        while (boundary < worked)
            boundary += utf8CharLength(text, boundary);
    stages_[stage].boundary = pair.wholeCharacters ? 0 : boundary - worked;
    return worked;
}

void Replacement::handOn(std::size_t stage, std::string_view piece) {
    if (stage + 1 == stageCount_) {
        // A long piece goes on from where it lies rather than through `out_`.
        if (piece.size() >= partSize_) {
            (*spill_)(*out_);
            (*spill_)(piece);
            out_->clear();
            return;
        }
        out_->append(piece);
        if (out_->size() >= partSize_) {
            (*spill_)(*out_);
            out_->clear();
        }
        return;
    }
    // The next pair works what it holds whenever that makes a part, so it never holds much more.
    Stage& next = stages_[stage + 1];
    while (!piece.empty()) {
        const std::size_t size = std::min(piece.size(), partSize_);
        next.held.append(piece.substr(0, size));
        piece.remove_prefix(size);
        if (next.held.size() >= partSize_)
            next.held.erase(0, work(stage + 1, next.held, false));
    }
}

std::unique_ptr<RangedRoutine> makeReplacement(const TaskPageSettings& settings,
                                               ColumnRanges columns) {
    const auto replacement = std::make_shared<Replacement>(settings);
    // Unlike the plain cutting of ranges on the Insert, Divide and Merge pages, the ranges
    // taken out for replacing take part only when they lie wholly within the line.
    auto routine = std::make_unique<RangedRoutine>(
        std::move(columns),
        [replacement](std::string_view line, std::string& out) {
            replacement->ReplaceLine(line, out);
        },
        WidthFitting(), PastLineEnd::Nothing);
    routine->setSpillingRoutine(
        [replacement](std::string_view line, std::string& out, const Spill& spill) {
            replacement->ReplaceLineSpilling(line, out, spill);
        });
    if (replacement->neverLengthens())
        routine->setOverwritingRoutine(
            [replacement](std::span<char> text) { return replacement->ReplaceWithin(text); });
    if (replacement->replacesInSpans())
        routine->setRangesLinesRoutine(
            [replacement](std::string_view lines, RangeSpans& spans, std::string& out) {
                replacement->ReplaceInSpans(lines, spans, out);
                return true;
            });
    if (replacement->keepsLineEnds())
        routine->setLinesRoutine([replacement](std::string_view lines, std::string& out) {
            replacement->ReplaceLine(lines, out);
            return true;
        });
    return routine;
}

} // namespace morlevant
