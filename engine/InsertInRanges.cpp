#include "InsertInRanges.h"

#include <algorithm>

namespace morlevant {

void InsertInRanges(const RangePairs& columns, const LineColumns& line, std::string_view text,
                    std::string& out) {
    out.clear();
    const std::string_view whole = line.line();
    if (columns.empty()) {
        out.append(whole).append(text);
        return;
    }
    // Walk the insertion columns from left to right; each is visited once however many ranges
    // start there. The next column is the smallest start beyond the one just served.
    const std::size_t end = line.length() + 1;
    std::size_t copied = 0; // bytes of the row already in `out`
    std::size_t served = 0; // column served last
    while (true) {
        std::size_t next = 0;
        for (const RangePair& range : columns.pairs()) {
            const std::size_t start = std::clamp<std::size_t>(columnPosition(range.low), 1, end);
            if (start > served && (next == 0 || start < next))
                next = start;
        }
        if (next == 0)
            break;
        const std::size_t at = line.byteOffset(next);
        out.append(whole.substr(copied, at - copied)).append(text);
        copied = at;
        served = next;
    }
    out.append(whole.substr(copied));
}

} // namespace morlevant
