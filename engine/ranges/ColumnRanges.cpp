#include "engine/ranges/ColumnRanges.h"

#include "engine/text/LineColumns.h"
#include "taskdef/RangePairs.h"

#include <algorithm>

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
}

} // namespace morlevant
