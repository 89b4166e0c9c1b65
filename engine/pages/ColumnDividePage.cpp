#include "engine/pages/ColumnDividePage.h"

#include "engine/io/LineReader.h"
#include "engine/pages/PieceFiles.h"
#include "engine/pages/ResultPlaces.h"
#include "engine/ranges/RowRanges.h"
#include "engine/ranges/TakeRangesOut.h"

#include <algorithm>

namespace morlevant {

ColumnDividePage::ColumnDividePage(const RunContext& context)
    : context_(context), names_(context.settings),
      width_(pieceSize(context.settings.divideByColumnValue, "number of columns per piece")) {}

void ColumnDividePage::checkResults(const std::string& source) const {
    checkDivideFolder(divideFolder(source));
}

void ColumnDividePage::process(const std::string& source) {
    sourceVersion_.reset();
    const std::string folder = divideFolder(source);
    inDivideFolder(folder, [&] { divide(source, folder); });
}

// With the ranges taken out, what is divided is the selected rows with their column ranges
// taken out: it is worked out afresh on every pass over the source rather than kept in a file
// of its own, so nothing is written beside the source but the pieces.
template <typename Row> void ColumnDividePage::forEachRow(const std::string& source, Row row) {
    LineReader reader(source, context_.stop, context_.bytesRead);
    reader.sameVersionAs(sourceVersion_);
    std::string_view line;
    while (reader.next(line)) {
        if (context_.mode == RangeMode::RangesOut) {
            if (!rowSelected(context_.rows, static_cast<double>(reader.lineNumber())))
                continue;
            columns_.assign(line);
            TakeRangesOut(context_.columnRanges, columns_, out_);
            line = out_;
        }
        columns_.assign(line);
        row(columns_);
    }
}

void ColumnDividePage::divide(const std::string& source, const std::string& folder) {
    std::uint64_t longest = 0;
    forEachRow(source, [&](const LineColumns& row) {
        longest = std::max<std::uint64_t>(longest, row.length());
    });
    const std::uint64_t pieces = longest == 0 ? 1 : (longest - 1) / width_ + 1;

    forEachPieceBatch(context_.sources, folder, names_, pieces, [&](PieceFiles& batch) {
        forEachRow(source, [&](const LineColumns& row) {
            for (std::uint64_t v = batch.first(); v < batch.end(); ++v)
                batch.writeLine(v, ColumnPiece(row, v));
        });
    });
}

std::string_view ColumnDividePage::ColumnPiece(const LineColumns& line, std::uint64_t v) const {
    const std::uint64_t first = v * width_ + 1;
    const std::uint64_t last = v * width_ + width_;
    const std::uint64_t length = line.length();
    // Long-standing behaviour, kept: a row that ends inside the third piece is announced with
    // the number of columns per piece, once for each such row.
    if (v == 2 && length >= first && length < last && context_.callbacks.message)
        context_.callbacks.message(context_.settings.divideByColumnValue);
    return line.slice(first, last);
}

} // namespace morlevant
