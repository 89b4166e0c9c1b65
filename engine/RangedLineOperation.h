#pragma once

#include "engine/LineOperation.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace morlevant {

// Carries a page's routine over the column ranges of a line (line 3 of the task), both in
// place and with the ranges taken out. A page supplies the routine for one text and, where
// its results are aligned in columns, how a result is fitted to a range's width.
class RangedLineOperation : public LineOperation {
protected:
    // Inclusive character positions, counted from 1.
    struct ColumnRange {
        std::size_t first = 0;
        std::size_t last = 0;
        std::size_t width() const { return last - first + 1; }
    };

    // Throws TaskError when the column range text ends with an unpaired number.
    explicit RangedLineOperation(std::string_view columnRanges);

    // The page's routine on one text, the whole line or the text of one range; replaces `out`.
    virtual void applyTo(std::string_view text, std::string& out) = 0;
    // Called with each range's result before it is placed; by default the result stays as it is.
    virtual void fitToWidth(std::string& result, std::size_t width) const;

    // Whether line 3 is not blank. Ranges that are all empty ("3-2") select no column: they
    // are not the blank text that means the whole line.
    bool hasColumnRanges() const { return !blank_; }
    // The ranges in the order written; a range whose end lies before its start is dropped.
    const std::vector<ColumnRange>& writtenRanges() const { return written_; }

    // Each range's text replaced by the routine's fitted result, the rest of the line kept.
    void workInPlace(const LineColumns& line, std::string& out);
    // The fitted results of the ranges joined in written order.
    void takeOut(const LineColumns& line, std::string& out);

private:
    bool blank_ = true;
    std::vector<ColumnRange> written_;
    std::vector<ColumnRange> inPlace_;
    std::string piece_;
};

} // namespace morlevant
