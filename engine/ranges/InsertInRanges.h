#pragma once

#include "engine/text/LineColumns.h"
#include "taskdef/RangePairs.h"

#include <string>
#include <string_view>
#include <vector>

namespace morlevant {

// The columns before which the text is inserted: the first column of each column range, in
// ascending order, each once. Worked out once per run.
std::vector<std::size_t> insertionColumns(const RangePairs& columns);

// Insertion within the column ranges of a row, the row ranges being worked in place: the text
// goes before each insertion column, so each range starts with it; a range that starts past the
// end of the row inserts at the end, and ranges that start at the same column insert once. With
// no column ranges (`atColumns` empty) the text is appended at the end of the row. `out` is
// replaced. Linear in the row and the number of ranges.
void InsertInRanges(const std::vector<std::size_t>& atColumns, const LineColumns& line,
                    std::string_view text, std::string& out);

} // namespace morlevant
