#pragma once

#include "LineColumns.h"
#include "RangePairs.h"

#include <string>
#include <string_view>

namespace morlevant {

// Insertion within the column ranges of a row, the row ranges being worked in place: the text
// goes before the first column of each column range, so each range starts with it; a range that
// starts past the end of the row inserts at the end, and ranges that start at the same column
// insert once. With no column ranges the text is appended at the end of the row. `out` is
// replaced.
void InsertInRanges(const RangePairs& columns, const LineColumns& line, std::string_view text,
                    std::string& out);

} // namespace morlevant
