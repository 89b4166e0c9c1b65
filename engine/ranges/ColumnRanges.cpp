#include "engine/ranges/ColumnRanges.h"

#include "engine/text/LineColumns.h"
#include "taskdef/RangePairs.h"

#include <algorithm>
#include <cstdint>

namespace morlevant {

ColumnRanges::ColumnRanges(std::string_view text)
    : ColumnRanges(RangePairs::parse(text, "column ranges")) {}

ColumnRanges::ColumnRanges(const RangePairs& parsed) {
    blank_ = parsed.empty();
    for (const RangePair& pair : parsed.pairs()) {
        const Range range{std::max<std::size_t>(columnPosition(pair.low), 1),
                          columnPosition(pair.high)};
        if (range.first <= range.last)
            written_.push_back(range);
    }
    inColumnOrder_ = written_;
    std::stable_sort(inColumnOrder_.begin(), inColumnOrder_.end(),
                     [](const Range& a, const Range& b) { return a.first < b.first; });
    std::size_t covered = 0;
    std::erase_if(inColumnOrder_, [&](const Range& range) {
        if (range.first <= covered)
            return true;
        covered = range.last;
        return false;
    });
    for (const Range& range : written_) {
        bounds_.push_back(range.first);
        if (range.last != SIZE_MAX)
            bounds_.push_back(range.last + 1);
    }
    std::sort(bounds_.begin(), bounds_.end());
}

std::size_t ColumnRanges::asciiScanFor(std::size_t lineBytes) const {
    // Position p starts at byte p - 1 of an ASCII start; a position past the line's bytes lies
    // past its end whatever the line holds.
    // Searched from the largest, which most lines reach or none does: a line's own length
    // decides few branches.
    for (auto bound = bounds_.rbegin(); bound != bounds_.rend(); ++bound)
        if (*bound <= lineBytes)
            return *bound;
    return 0;
}

} // namespace morlevant
