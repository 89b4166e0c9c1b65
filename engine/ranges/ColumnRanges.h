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
    // How far a line of `lineBytes` bytes needs its ASCII start known, in bytes, for the
    // positions these ranges ask for (LineColumns::assign): a range to "the end" of a line of a
    // few dozen bytes needs its start alone.
    std::size_t asciiScanFor(std::size_t lineBytes) const;

private:
    bool blank_ = true;
    std::vector<Range> written_;
    std::vector<Range> inColumnOrder_;
    std::vector<std::size_t> bounds_; // every position a range starts at or ends before, sorted
};

} // namespace morlevant
