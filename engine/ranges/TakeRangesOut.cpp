#include "engine/ranges/TakeRangesOut.h"

namespace morlevant {

void TakeRangesOut(const ColumnRanges& columns, const LineColumns& line, std::string& out) {
    out.clear();
    appendRangesTakenOut(columns, line, out);
}

} // namespace morlevant
