#include "engine/pages/RangeDividePage.h"

#include "engine/io/LineReader.h"
#include "engine/pages/PieceFiles.h"
#include "engine/pages/ResultPlaces.h"
#include "engine/ranges/RowRanges.h"
#include "engine/ranges/TakeRangesOut.h"

#include <algorithm>

namespace morlevant {

RangeDividePage::RangeDividePage(const RunContext& context, bool byRows)
    : context_(context), byRows_(byRows), names_(context.settings) {}

// Each piece is cut from the source rows themselves rather than from the joined text, so that a
// range that runs past the end of a short row cannot shift the text of the ranges after it.
// Blank ranges count as one range that holds everything: the piece then has every selected row.
void RangeDividePage::checkResults(const std::string& source) const {
    checkDivideFolder(divideFolder(source));
}

void RangeDividePage::process(const std::string& source) {
    const std::string folder = divideFolder(source);
    const RangePairs& ranges = byRows_ ? context_.rows : context_.columns;
    const std::uint64_t pieces = std::max<std::uint64_t>(1, ranges.pairs().size());

    sourceVersion_.reset();
    inDivideFolder(folder, [&] { divide(source, folder, pieces); });
}

void RangeDividePage::divide(const std::string& source, const std::string& folder,
                             std::uint64_t pieces) {
    forEachPieceBatch(context_.sources, folder, names_, pieces, [&](PieceFiles& batch) {
        LineReader reader(source, context_.stop, context_.bytesRead);
        reader.sameVersionAs(sourceVersion_);
        std::string_view line;
        while (reader.next(line)) {
            const auto row = static_cast<std::uint64_t>(reader.lineNumber());
            if (!rowSelected(context_.rows, static_cast<double>(row)))
                continue;
            columns_.assign(line);
            if (byRows_)
                DivideByRowRanges(row, batch);
            else
                DivideByColumnRanges(batch);
        }
    });
}

// A row goes, with its column ranges taken out, to the piece of every row range that holds it.
void RangeDividePage::DivideByRowRanges(std::uint64_t row, PieceFiles& batch) {
    TakeRangesOut(context_.columnRanges, columns_, out_);
    if (context_.rows.empty()) {
        batch.writeLine(0, out_);
        return;
    }
    const auto& ranges = context_.rows.pairs();
    for (std::uint64_t k = batch.first(); k < batch.end(); ++k) {
        const RangePair& range = ranges[k];
        if (range.low <= static_cast<double>(row) && static_cast<double>(row) <= range.high)
            batch.writeLine(k, out_);
    }
}

// Piece k receives the text of column range k of every selected row, one line per row.
void RangeDividePage::DivideByColumnRanges(PieceFiles& batch) {
    if (context_.columns.empty()) {
        batch.writeLine(0, columns_.line());
        return;
    }
    const auto& ranges = context_.columns.pairs();
    for (std::uint64_t k = batch.first(); k < batch.end(); ++k)
        batch.writeLine(
            k, columns_.slice(columnPosition(ranges[k].low), columnPosition(ranges[k].high)));
}

} // namespace morlevant
