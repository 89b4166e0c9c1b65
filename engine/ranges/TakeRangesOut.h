#pragma once

#include "engine/ranges/ColumnRanges.h"
#include "engine/text/LineColumns.h"

#include <string>

namespace morlevant {

// The column ranges of the line joined in their written order: a range that runs past the end
// of the line gives the rest of the line, one that starts past it gives nothing. With no column
// ranges the line comes back unchanged. `out` is replaced.
void TakeRangesOut(const ColumnRanges& columns, const LineColumns& line, std::string& out);
// The same appended to `out` (a string, or an AppendBuffer), for a caller that gathers the
// results of many lines.
template <typename Out>
void appendRangesTakenOut(const ColumnRanges& columns, const LineColumns& line, Out& out) {
    if (columns.blank()) {
        out.append(line.line());
        return;
    }
    for (const ColumnRanges::Range& range : columns.written())
        out.append(line.slice(range.first, range.last));
}

} // namespace morlevant
