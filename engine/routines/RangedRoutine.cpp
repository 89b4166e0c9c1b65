#include "engine/routines/RangedRoutine.h"

#include "engine/text/LineEnds.h"

#include <algorithm>

namespace morlevant {

namespace {

// A range's result held for a long line is let go after it, so that one long line does not
// keep its size for the rest of the run.
constexpr std::size_t shrinkAbove = std::size_t{1} << 20;

} // namespace

RangedRoutine::RangedRoutine(ColumnRanges columns, TextRoutine routine, WidthFitting fitToWidth,
                             PastLineEnd pastLineEnd)
    : columns_(std::move(columns)), routine_(std::move(routine)),
      fitToWidth_(std::move(fitToWidth)), pastLineEnd_(pastLineEnd) {}

void RangedRoutine::applyToRange(std::string_view text, std::size_t width) {
    routine_(text, piece_);
    if (fitToWidth_)
        fitToWidth_(piece_, width);
}

void RangedRoutine::inPlace(const LineColumns& line, std::string& out) {
    if (columns_.blank()) {
        routine_(line.line(), piece_);
        out.append(piece_);
        return;
    }
    const std::string_view text = line.line();
    std::size_t copied = 0; // bytes of the line already placed in `out`
    for (const ColumnRanges::Range& range : columns_.inColumnOrder()) {
        if (line.endsBefore(range.first))
            break;
        const std::size_t begin = line.byteOffset(range.first);
        const std::size_t end = line.byteOffset(range.last + 1);
        out.append(text, copied, begin - copied);
        applyToRange(text.substr(begin, end - begin), range.width());
        out.append(piece_);
        copied = end;
    }
    out.append(text, copied);
}

bool RangedRoutine::manyLinesInPlace(std::string_view lines, std::string& out) {
    spans_.listed.clear();
    // Blank ranges, or one range that runs past the end of every line, as most do: a line's
    // range is found only where the routine needs it.
    const std::vector<ColumnRanges::Range>& ranges = columns_.inColumnOrder();
    spans_.toLineEnds =
        columns_.blank() || (ranges.size() == 1 && ranges.front().last >= lines.size());
    if (spans_.toLineEnds) {
        const std::size_t first =
            columns_.blank() ? 1 : std::max<std::size_t>(ranges.front().first, 1);
        spans_.asciiStart = first - 1;
        spans_.startInLine = [this, first](std::string_view line) {
            assignColumns(spannedLine_, line);
            return spannedLine_.endsBefore(first) ? std::string_view::npos
                                                  : spannedLine_.byteOffset(first);
        };
        return rangesLinesRoutine_(lines, spans_, out);
    }
    // The ranges as inPlace cuts them.
    forEachLineWithEnd(lines, [&](std::string_view line, std::string_view) {
        const auto offset = static_cast<std::size_t>(line.data() - lines.data());
        assignColumns(spannedLine_, line);
        for (const ColumnRanges::Range& range : ranges) {
            if (spannedLine_.endsBefore(range.first))
                break;
            const std::size_t begin = spannedLine_.byteOffset(range.first);
            const std::size_t end = spannedLine_.byteOffset(range.last + 1);
            if (begin < end)
                spans_.listed.push_back({offset + begin, offset + end});
        }
    });
    return rangesLinesRoutine_(lines, spans_, out);
}

bool RangedRoutine::takesNothing(const LineColumns& line, const ColumnRanges::Range& range) const {
    return pastLineEnd_ == PastLineEnd::Nothing ? range.last > line.length()
                                                : line.endsBefore(range.first);
}

void RangedRoutine::rangesOut(const LineColumns& line, std::string& out) {
    if (columns_.blank()) {
        routine_(line.line(), piece_);
        out.append(piece_);
        return;
    }
    for (const ColumnRanges::Range& range : columns_.written()) {
        if (takesNothing(line, range))
            continue;
        applyToRange(line.slice(range.first, range.last), range.width());
        out.append(piece_);
    }
}

void RangedRoutine::spillResult(std::string_view text, std::span<char> writable, std::size_t width,
                                const Spill& spill) {
    if (!fitToWidth_ || width == 0) {
        if (!writable.empty() && overwritingRoutine_) {
            spill({writable.data(), overwritingRoutine_(writable)});
            return;
        }
        if (spillingRoutine_) {
            spillingRoutine_(text, piece_, spill);
            spill(piece_);
            return;
        }
    }
    routine_(text, piece_);
    if (fitToWidth_ && width != 0)
        fitToWidth_(piece_, width);
    spill(piece_);
}

void RangedRoutine::inPlaceSpilling(const LineColumns& line, std::span<char> text, std::string& out,
                                    const Spill& spill) {
    out.clear();
    const std::string_view whole = line.line();
    if (columns_.blank()) {
        spillResult(whole, text, 0, spill);
    } else {
        std::size_t copied = 0; // bytes of the line already handed on
        for (const ColumnRanges::Range& range : columns_.inColumnOrder()) {
            if (line.endsBefore(range.first))
                break;
            // The ranges come in column order without overlap, and `line` has decoded the
            // characters up to each range's end before its bytes are worked, so it never reads
            // bytes overwritten.
            const std::size_t begin = line.byteOffset(range.first);
            const std::size_t end = line.byteOffset(range.last + 1);
            spill(whole.substr(copied, begin - copied));
            spillResult(whole.substr(begin, end - begin), text.subspan(begin, end - begin),
                        range.width(), spill);
            copied = end;
        }
        spill(whole.substr(copied));
    }
    if (piece_.capacity() > shrinkAbove)
        std::string().swap(piece_);
}

void RangedRoutine::rangesOutSpilling(const LineColumns& line, std::string& out,
                                      const Spill& spill) {
    out.clear();
    if (columns_.blank()) {
        spillResult(line.line(), {}, 0, spill);
    } else {
        for (const ColumnRanges::Range& range : columns_.written()) {
            if (!takesNothing(line, range))
                spillResult(line.slice(range.first, range.last), {}, range.width(), spill);
        }
    }
    if (piece_.capacity() > shrinkAbove)
        std::string().swap(piece_);
}

} // namespace morlevant
