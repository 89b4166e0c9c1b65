#include "ColumnDividePage.h"

#include "FileQueries.h"
#include "LineReader.h"
#include "LineWriter.h"
#include "PieceFiles.h"
#include "RowRanges.h"
#include "TakeRangesOut.h"

namespace morlevant {

ColumnDividePage::ColumnDividePage(const RunContext& context)
    : context_(context), names_(context.settings),
      width_(pieceSize(context.settings.divideByColumnValue, "number of columns per piece")) {}

void ColumnDividePage::process(const std::string& source) {
    if (context_.mode != RangeMode::RangesOut) {
        divide(source);
        return;
    }
    const std::string selected = writeSelectedText(source);
    divide(selected);
    removeFile(selected);
}

std::string ColumnDividePage::writeSelectedText(const std::string& source) {
    const std::string path = source + "modify";
    LineReader reader(source);
    LineWriter writer(path, LineWriter::Mode::Truncate);
    std::string_view line;
    while (reader.next(line)) {
        if (!rowSelected(context_.rows, static_cast<double>(reader.lineNumber())))
            continue;
        columns_.assign(line);
        TakeRangesOut(context_.columns, columns_, out_);
        writer.writeLine(out_);
    }
    writer.close();
    return path;
}

void ColumnDividePage::divide(const std::string& text) {
    // The folder is named after the file divided; for F + "modify" that is F's own folder
    // whenever F's name has an extension ("report.txtmodify" and "report.txt" give "report").
    const std::string folder = divideFolder(text);
    createFolderWhenMissing(folder);
    const std::uint64_t longest = LongestLineLength(text);
    const std::uint64_t pieces = longest == 0 ? 1 : (longest - 1) / width_ + 1;

    forEachPieceBatch(folder, names_, pieces, [&](PieceFiles& batch) {
        LineReader reader(text);
        std::string_view line;
        while (reader.next(line)) {
            columns_.assign(line);
            for (std::uint64_t v = batch.first(); v < batch.end(); ++v)
                batch.writeLine(v, ColumnPiece(columns_, v));
        }
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
