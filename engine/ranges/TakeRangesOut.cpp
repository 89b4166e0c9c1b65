#include "engine/ranges/TakeRangesOut.h"

namespace morlevant {

void TakeRangesOut(const RangePairs& columns, const LineColumns& line, std::string& out) {
    out.clear();
    appendRangesTakenOut(columns, line, out);
}

void appendRangesTakenOut(const RangePairs& columns, const LineColumns& line, std::string& out) {
    if (columns.empty()) {
        out.append(line.line());
        return;
    }
    for (const RangePair& range : columns.pairs())
        out.append(line.slice(columnPosition(range.low), columnPosition(range.high)));
}

} // namespace morlevant
