#pragma once

#include "engine/ranges/ColumnRanges.h"
#include "engine/text/LineColumns.h"

#include <cstddef>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace morlevant {

// A page's routine on one text, a whole line or the text of one column range: replaces `out`.
// A failure (division by zero, a regular expression that exceeds its limits) throws
// TaskError; the runner adds the file and line to the message.
using TextRoutine = std::function<void(std::string_view text, std::string& out)>;
// A page's routine on a block of whole lines with their ends: gives the lines it would give one
// by one, their ends kept (or made CR LF, see RangedRoutine::setLinesRoutine), and returns true;
// or returns false when these lines must go one by one. A failure may be thrown as by the
// routine on one line.
using LinesRoutine = std::function<bool(std::string_view lines, std::string& out)>;
// Bytes `begin` to `end` of a block of lines: the text of one column range of one of its lines.
struct RangeSpan {
    std::size_t begin = 0;
    std::size_t end = 0;
};
// Where the column ranges of a block of lines lie.
struct RangeSpans {
    // The ranges' texts, in order and apart.
    std::vector<RangeSpan> listed;
    // For a single range that runs from a column past the end of every line, or blank ranges
    // (the whole line, `asciiStart` 0), `listed` is left empty and a line's range is looked for
    // only in the lines where a routine needs it: it starts `asciiStart` bytes into a line whose
    // first `asciiStart` bytes are ASCII, and `startInLine` bytes into any other line (npos when
    // the line ends before the range starts). Such a range starts where it did when the text of
    // the ranges has been changed.
    bool toLineEnds = false;
    std::size_t asciiStart = 0;
    std::function<std::size_t(std::string_view line)> startInLine;
};
// A page's routine on a block of whole lines with their ends, each line's column ranges worked in
// place: `spans` say where their texts lie, and every byte outside them is kept as it is. Gives
// the lines it would give one by one and returns true, or returns false when these lines must go
// one by one. It may change `spans`.
using RangesLinesRoutine =
    std::function<bool(std::string_view lines, RangeSpans& spans, std::string& out)>;
// A page's routine worked over a whole line where it lies, for a routine whose result is never
// longer than its text: returns the result's length, its bytes written over the text's first.
using OverwritingRoutine = std::function<std::size_t(std::span<char> text)>;
// Hands on the first part of a line's result, so that a long line's result need not be held
// whole beside the line.
using Spill = std::function<void(std::string_view part)>;
// A page's routine on a whole line that hands its result on in parts through `spill` as it
// goes, and leaves the rest in `out`.
using SpillingRoutine =
    std::function<void(std::string_view text, std::string& out, const Spill& spill)>;
// Makes a range's result up to the range's width, for a page whose results line up in columns.
using WidthFitting = std::function<void(std::string& result, std::size_t width)>;

// With the ranges taken out, what a range that runs past the end of the line gives.
enum class PastLineEnd { RestOfLine, Nothing };

// The per-line work of Calculate, Find and Replace and Filter, prepared once per run: the
// page's routine carried over the whole line, or over the column ranges of line 3 worked in
// place or taken out. Only the routine (and its width fitting) differs from page to page.
class RangedRoutine {
public:
    RangedRoutine(ColumnRanges columns, TextRoutine routine, WidthFitting fitToWidth = {},
                  PastLineEnd pastLineEnd = PastLineEnd::RestOfLine);

    // Makes `columns` the positions of `line`, looking for its ASCII start only as far as the
    // ranges need.
    void assignColumns(LineColumns& columns, std::string_view line) const {
        columns.assign(line, columns_.asciiScanFor(line.size()));
    }
    void wholeLine(std::string_view line, std::string& out) { routine_(line, out); }
    // Whether a block of whole lines can be worked at once, and the routine that does it.
    bool takesManyLines() const { return static_cast<bool>(linesRoutine_); }
    bool manyLines(std::string_view lines, std::string& out) { return linesRoutine_(lines, out); }
    // `endsMadeCrLf`: the routine ends every line it gives by CR LF, as the result file does,
    // which then spares the page a pass over the lines that makes them so.
    void setLinesRoutine(LinesRoutine routine, bool endsMadeCrLf = false) {
        linesRoutine_ = std::move(routine);
        linesEndInCrLf_ = endsMadeCrLf;
    }
    bool linesEndInCrLf() const { return linesEndInCrLf_; }
    // The same for the column ranges worked in place, for a routine whose results need no
    // fitting to the ranges' widths and that gives nothing for an empty text: empty ranges are
    // left out of the spans.
    bool takesManyLinesInPlace() const { return static_cast<bool>(rangesLinesRoutine_); }
    bool manyLinesInPlace(std::string_view lines, std::string& out);
    void setRangesLinesRoutine(RangesLinesRoutine routine) {
        rangesLinesRoutine_ = std::move(routine);
    }
    // Whether a whole line can be worked where it lies, and the routine that does it: a long
    // line is then held once rather than beside its result.
    bool overwritesLine() const { return static_cast<bool>(overwritingRoutine_); }
    std::size_t wholeLineOver(std::span<char> line) { return overwritingRoutine_(line); }
    void setOverwritingRoutine(OverwritingRoutine routine) {
        overwritingRoutine_ = std::move(routine);
    }
    // Whether a whole line's result can be handed on in parts, and the routine that does it.
    bool spillsLine() const { return static_cast<bool>(spillingRoutine_); }
    void wholeLineSpilling(std::string_view line, std::string& out, const Spill& spill) {
        spillingRoutine_(line, out, spill);
    }
    void setSpillingRoutine(SpillingRoutine routine) { spillingRoutine_ = std::move(routine); }
    // Each range's text replaced by its fitted result, the rest of the line kept, appended to
    // `out`. A range that starts past the end of the line changes nothing; one that runs past
    // the end covers the rest of the line.
    void inPlace(const LineColumns& line, std::string& out);
    // The fitted results of the ranges joined in written order, appended to `out`; a range that
    // starts past the end of the line gives nothing.
    void rangesOut(const LineColumns& line, std::string& out);
    // The same two for a long line, whose result goes to `spill` in parts and leaves `out`
    // empty, so that it is never held whole beside the line. The parts of the line that no range
    // covers go on from where they lie; a range is worked where it lies, or its result made in
    // parts, where the routine can. inPlaceSpilling may overwrite `text`, the line's own bytes.
    void inPlaceSpilling(const LineColumns& line, std::span<char> text, std::string& out,
                         const Spill& spill);
    void rangesOutSpilling(const LineColumns& line, std::string& out, const Spill& spill);

private:
    // With the ranges taken out, whether `range` gives nothing on this line.
    bool takesNothing(const LineColumns& line, const ColumnRanges::Range& range) const;
    void applyToRange(std::string_view text, std::size_t width);
    // Hands the result for `text` to `spill`, fitted to `width` unless that is 0. `writable`,
    // when not empty, holds the same bytes as `text`, which nothing reads again.
    void spillResult(std::string_view text, std::span<char> writable, std::size_t width,
                     const Spill& spill);

    ColumnRanges columns_;
    TextRoutine routine_;
    WidthFitting fitToWidth_;
    PastLineEnd pastLineEnd_;
    LinesRoutine linesRoutine_; // empty when lines go one by one
    bool linesEndInCrLf_ = false;
    RangesLinesRoutine rangesLinesRoutine_; // empty when ranges in place go line by line
    LineColumns spannedLine_;               // of manyLinesInPlace, reused from block to block
    RangeSpans spans_;
    OverwritingRoutine overwritingRoutine_; // empty when the result may be longer
    SpillingRoutine spillingRoutine_;       // empty when the result is held whole
    std::string piece_;                     // one range's result
};

} // namespace morlevant
