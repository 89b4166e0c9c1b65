#include "engine/ranges/InsertInRanges.h"

#include <algorithm>

namespace morlevant {

std::vector<std::size_t> insertionColumns(const RangePairs& columns) {
    std::vector<std::size_t> starts;
    starts.reserve(columns.pairs().size());
    for (const RangePair& range : columns.pairs())
        starts.push_back(std::max<std::size_t>(columnPosition(range.low), 1));
    std::sort(starts.begin(), starts.end());
    starts.erase(std::unique(starts.begin(), starts.end()), starts.end());
    return starts;
}

void InsertInRanges(const std::vector<std::size_t>& atColumns, const LineColumns& line,
                    std::string_view text, std::string& out) {
    out.clear();
    const std::string_view whole = line.line();
    if (atColumns.empty()) {
        out.append(whole).append(text);
        return;
    }
    // Columns past the end of the row all insert once, at the end.
    const std::size_t end = line.length() + 1;
    std::size_t copied = 0; // bytes of the row already in `out`
    for (const std::size_t column : atColumns) {
        const std::size_t at = line.byteOffset(std::min(column, end));
        out.append(whole.substr(copied, at - copied)).append(text);
        copied = at;
        if (column >= end)
            break;
    }
    out.append(whole.substr(copied));
}

} // namespace morlevant
