#include "engine/routines/RangedRoutine.h"

namespace morlevant {

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
        routine_(line.line(), out);
        return;
    }
    out.clear();
    const std::string_view text = line.line();
    out.reserve(text.size()); // the usual size of the result, without growing by doubling
    std::size_t copied = 0;   // bytes of the line already placed in `out`
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

void RangedRoutine::rangesOut(const LineColumns& line, std::string& out) {
    if (columns_.blank()) {
        routine_(line.line(), out);
        return;
    }
    out.clear();
    for (const ColumnRanges::Range& range : columns_.written()) {
        const bool skipped = pastLineEnd_ == PastLineEnd::Nothing ? range.last > line.length()
                                                                  : line.endsBefore(range.first);
        if (skipped)
            continue;
        applyToRange(line.slice(range.first, range.last), range.width());
        out.append(piece_);
    }
}

} // namespace morlevant
