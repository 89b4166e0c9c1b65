#pragma once

#include "engine/text/BytePositions.h"
#include "engine/text/ProcessorFeatures.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace morlevant {

// The offset of the first CR or LF in `text`, or its size when it holds neither.
std::size_t findCrOrLf(std::string_view text);
// The offset of the last CR or LF among bytes `from` to `to` of `text`, or npos when they hold
// neither. The bytes are read backwards sixteen at a time, reaching before `from` into `text`
// where it has them, so that the few bytes between two nearby finds cost one step.
std::size_t findLastCrOrLf(std::string_view text, std::size_t from, std::size_t to);

// Calls `line(text, end)` for each line of `text` and its own end: CR LF, LF, a lone CR, or
// nothing for text after the last end, which is a line too. The ends are found 64 bytes at a
// time and taken from a mask one by one: lines of a few dozen bytes, of lengths that vary, would
// otherwise cost a search of their own each and a mispredicted branch where it stops.
template <typename Line> void forEachLineWithEnd(std::string_view text, const Line& line) {
    const char* const data = text.data();
    const std::size_t size = text.size();
    std::size_t start = 0;  // of the line not yet handed on
    std::size_t window = 0; // of the 64 bytes that `ends` covers
    std::uint64_t ends = size == 0 ? 0 : bytesMask(data, size, '\r', '\n');
    while (true) {
        while (ends == 0) {
            window += 64;
            if (window >= size) {
                if (start < size)
                    line(text.substr(start), std::string_view());
                return;
            }
            // The LF of a CR LF that ended the last window is no line end of its own.
            ends = bytesMask(data + window, size - window, '\r', '\n') &
                   (~std::uint64_t{0} << (start - std::min(start, window)));
        }
        const std::size_t end = window + static_cast<std::size_t>(std::countr_zero(ends));
        ends &= ends - 1;
        std::size_t endLength = 1;
        if (data[end] == '\r' && end + 1 < size && data[end + 1] == '\n') {
            endLength = 2;
            if (end + 1 < window + 64)
                ends &= ends - 1; // the LF's own bit, the next one
        }
        line(text.substr(start, end - start), text.substr(end, endLength));
        start = end + endLength;
    }
}

// Calls `line` for each line of `text`, without its end.
template <typename Line> void forEachLine(std::string_view text, const Line& line) {
    forEachLineWithEnd(text, [&](std::string_view one, std::string_view) { line(one); });
}

// The line ends in a stretch of text: CR LF, LF and a lone CR each count once.
struct LineEndCount {
    std::size_t lines = 0;
    bool allCrLf = true; // every end is CR LF (also when there is none)
    bool loneCr = false; // some end is a CR without its LF
};
LineEndCount countLineEnds(std::string_view text);

// Copies `text` to `out` with every line end (CR LF, LF or a lone CR) made CR LF, and returns
// the end of what was written: at most one byte more than the text for each of its ends. A CR
// that ends the text is taken for a lone one. Text after the last end is copied as it is,
// without an end. `out` has room for twice the text, or for that most and crLfCopySpare bytes
// more: the copy stores many bytes at once.
inline constexpr std::size_t crLfCopySpare = 32;
char* copyWithCrLfEnds(std::string_view text, char* out, SpreadSteps steps = widestSpreadSteps());

} // namespace morlevant
