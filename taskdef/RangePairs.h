#pragma once

#include <string_view>
#include <vector>

namespace morlevant {

// One inclusive range of rows or columns, counted from 1.
struct RangePair {
    double low = 0;
    double high = 0;
    bool operator==(const RangePair&) const = default;
};

// The items of a range text as written: split at every "," and "-" alike, so "1-3,5" gives
// "1", "3" and "5". A blank text gives one blank item.
std::vector<std::string_view> rangeItems(std::string_view text);

// A range text parsed as every reader of it parses it: each "-" counts as ",", the items are
// split at "," and taken in pairs from the first, each item by its leading number. The pairs
// keep the written order; nothing is sorted or merged.
class RangePairs {
public:
    RangePairs() = default;

    // Throws TaskError naming `what` ("row ranges", "column ranges") when the last item is
    // unpaired. A blank text gives no pairs.
    static RangePairs parse(std::string_view text, std::string_view what);

    bool empty() const { return pairs_.empty(); }
    const std::vector<RangePair>& pairs() const { return pairs_; }

    // Whether the row lies in one of the ranges (bounds inclusive). A search rather than a
    // walk over every range: a run asks once for every row.
    bool contains(double row) const;
    // Whether some range has both bounds equal to the row, as "7-7" does for row 7.
    bool isPoint(double row) const;

private:
    std::vector<RangePair> pairs_;
    std::vector<RangePair> covered_; // the rows the ranges cover, in order, none overlapping
    std::vector<double> points_;     // the rows of ranges such as "7-7", in order
};

} // namespace morlevant
