#pragma once

#include "engine/ranges/ColumnRanges.h"
#include "engine/text/LineColumns.h"

#include <string>

namespace morlevant {

// The column ranges of the line joined in their written order: a range that runs past the end
// of the line gives the rest of the line, one that starts past it gives nothing. With no column
// ranges the line comes back unchanged. `out` is replaced.
void TakeRangesOut(const ColumnRanges& columns, const LineColumns& line, std::string& out);
// The same appended to `out`, for a caller that gathers the results of many lines.
void appendRangesTakenOut(const ColumnRanges& columns, const LineColumns& line, std::string& out);

} // namespace morlevant
