#pragma once

#include "taskdef/RangePairs.h"

namespace morlevant {

// The row tests of the runner work on the row ranges parsed once per run (line 2), not on the
// text, so that a long file does not parse the ranges once per line.

// Whether the row lies in one of the row ranges, bounds inclusive.
inline bool RowInRanges(const RangePairs& rows, double row) {
    return rows.contains(row);
}

// Whether a range has both bounds equal to the row ("7-7" makes row 7 an insertion point).
inline bool RowIsInsertPoint(const RangePairs& rows, double row) {
    return rows.isPoint(row);
}

// Whether a ranges task works on the row: blank row ranges select every row.
inline bool rowSelected(const RangePairs& rows, double row) {
    return rows.empty() || RowInRanges(rows, row);
}

} // namespace morlevant
