#include "engine/RangedLineOperation.h"

#include "taskdef/RangePairs.h"

#include <algorithm>

namespace morlevant {

RangedLineOperation::RangedLineOperation(std::string_view columnRanges) {
    const RangePairs parsed = RangePairs::parse(columnRanges, "column ranges");
    blank_ = parsed.empty();
    for (const RangePair& pair : parsed.pairs()) {
        const ColumnRange range{std::max<std::size_t>(columnPosition(pair.low), 1),
                                columnPosition(pair.high)};
        if (range.first <= range.last)
            written_.push_back(range);
    }
    // In place, the ranges are worked in column order and a range that overlaps one before it
    // is skipped, so no character is worked twice and the rest of the line keeps its order.
    // A range that starts past the end of the line changes nothing; one that runs past the end
    // covers the rest of the line.
    inPlace_ = written_;
    std::stable_sort(inPlace_.begin(), inPlace_.end(),
                     [](const ColumnRange& a, const ColumnRange& b) { return a.first < b.first; });
    std::size_t covered = 0;
    std::erase_if(inPlace_, [&](const ColumnRange& range) {
        if (range.first <= covered)
            return true;
        covered = range.last;
        return false;
    });
}

void RangedLineOperation::fitToWidth(std::string&, std::size_t) const {}

void RangedLineOperation::workInPlace(const LineColumns& line, std::string& out) {
    if (!hasColumnRanges()) {
        applyTo(line.line(), out);
        return;
    }
    out.clear();
    const std::string_view text = line.line();
    out.reserve(text.size()); // the usual size of the result, without growing by doubling
    std::size_t copied = 0;   // bytes of the line already placed in `out`
    for (const ColumnRange& range : inPlace_) {
        if (line.endsBefore(range.first))
            break;
        const std::size_t begin = line.byteOffset(range.first);
        const std::size_t end = line.byteOffset(range.last + 1);
        out.append(text, copied, begin - copied);
        applyTo(text.substr(begin, end - begin), piece_);
        fitToWidth(piece_, range.width());
        out.append(piece_);
        copied = end;
    }
    out.append(text, copied);
}

void RangedLineOperation::takeOut(const LineColumns& line, std::string& out) {
    if (!hasColumnRanges()) {
        applyTo(line.line(), out);
        return;
    }
    out.clear();
    for (const ColumnRange& range : written_) {
        // Like the plain cutting of ranges: the rest of the line for a range that runs past its
        // end, nothing for one that starts past it.
        if (line.endsBefore(range.first))
            continue;
        applyTo(line.slice(range.first, range.last), piece_);
        fitToWidth(piece_, range.width());
        out.append(piece_);
    }
}

} // namespace morlevant
