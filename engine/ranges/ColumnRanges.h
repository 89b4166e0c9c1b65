#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace morlevant {

class RangePairs;

// The column ranges of line 3 as the per-line pages carry their routine over them, worked out
// once per run.
class ColumnRanges {
public:
    // Inclusive character positions, counted from 1.
    struct Range {
        std::size_t first = 0;
        std::size_t last = 0;
        std::size_t width() const { return last - first + 1; }
    };

    explicit ColumnRanges(const RangePairs& pairs);
    // Throws TaskError when the text ends with an unpaired number.
    explicit ColumnRanges(std::string_view text);

    // Whether line 3 is blank, which means the whole line. Ranges that are all empty ("3-2")
    // select no column, but they are not blank.
    bool blank() const { return blank_; }
    // The ranges in the order written; a range whose end lies before its start is dropped.
    const std::vector<Range>& written() const { return written_; }
    // The ranges in column order, each one that overlaps one before it left out, so that no
    // character is worked twice and the rest of the line keeps its order.
    const std::vector<Range>& inColumnOrder() const { return inColumnOrder_; }

private:
    bool blank_ = true;
    std::vector<Range> written_;
    std::vector<Range> inColumnOrder_;
};

} // namespace morlevant
