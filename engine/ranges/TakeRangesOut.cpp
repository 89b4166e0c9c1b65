#include "engine/ranges/TakeRangesOut.h"

namespace morlevant {

void TakeRangesOut(const ColumnRanges& columns, const LineColumns& line, std::string& out) {
    out.clear();
    appendRangesTakenOut(columns, line, out);
}

void appendRangesTakenOut(const ColumnRanges& columns, const LineColumns& line, std::string& out) {
    if (columns.blank()) {
        out.append(line.line());
        return;
    }
    for (const ColumnRanges::Range& range : columns.written())
        out.append(line.slice(range.first, range.last));
}

} // namespace morlevant
