#include "engine/pages/RowDividePage.h"

#include "engine/io/LineReader.h"
#include "engine/pages/ResultPlaces.h"
#include "engine/ranges/RowRanges.h"
#include "engine/ranges/TakeRangesOut.h"
#include "taskdef/TaskError.h"

namespace morlevant {

RowDividePage::RowDividePage(const RunContext& context)
    : context_(context), names_(context.settings),
      rowsPerPiece_(pieceSize(context.settings.divideByRowValue, "number of rows per piece")) {}

void RowDividePage::checkResults(const std::string& source) const {
    checkDivideFolder(divideFolder(source));
}

void RowDividePage::process(const std::string& source) {
    folder_ = divideFolder(source);
    openPiece_.reset();
    counted_ = 0;
    inDivideFolder(folder_, [&] {
        try {
            divide(source);
        } catch (...) {
            // The pieces finished so far are kept; the one being written is dropped, which
            // leaves an older piece of its name as it was.
            writer_.reset();
            throw;
        }
    });
}

void RowDividePage::divide(const std::string& source) {
    LineReader reader(source, context_.stop, context_.bytesRead);
    if (context_.mode == RangeMode::WholeText)
        copyIntoPieces(reader);
    else
        divideRows(reader);
    if (writer_)
        writer_->close();
    writer_.reset();
}

// Whole text every row is copied unchanged, so the rows of a piece go over together.
void RowDividePage::copyIntoPieces(LineReader& reader) {
    while (!reader.atEnd()) {
        const std::uint64_t piece = counted_ / rowsPerPiece_;
        counted_ += reader.copyLines(rowsPerPiece_ - counted_ % rowsPerPiece_, pieceWriter(piece));
    }
}

void RowDividePage::divideRows(LineReader& reader) {
    std::string_view line;
    while (reader.next(line)) {
        const bool selected = rowSelected(context_.rows, static_cast<double>(reader.lineNumber()));
        if (context_.mode == RangeMode::InPlace) {
            DivideRowsInRanges(selected, line);
        } else if (selected) {
            // Pieces are numbered by the rows written, not by the rows of the source.
            columns_.assign(line);
            TakeRangesOut(context_.columnRanges, columns_, out_);
            writeToPiece(counted_++ / rowsPerPiece_, out_);
        }
    }
}

// Row ranges in place: only the rows in the ranges are counted into pieces of line 27's size;
// a row outside them stays in place, in the piece of the rows before it (the first piece for
// rows before the first range), unchanged. Every row of the source lands in exactly one piece.
void RowDividePage::DivideRowsInRanges(bool inRanges, std::string_view line) {
    if (inRanges)
        writeToPiece(counted_++ / rowsPerPiece_, line);
    else
        writeToPiece(openPiece_.value_or(0), line);
}

// A piece is emptied when its first row is due. It then stays open while the rows that follow
// belong to it: the bytes are those of opening it for appending once per row, without the cost.
// Pieces that share a name (a template without "*") are one file that receives every row, so
// a later piece does not empty what the earlier ones wrote.
void RowDividePage::writeToPiece(std::uint64_t piece, std::string_view line) {
    pieceWriter(piece).writeLine(line);
}

// A piece whose name cannot be made (its number too wide) ends the run where one piece ends:
// the piece before it is whole and keeps its name.
std::string RowDividePage::nextPieceName(std::uint64_t piece) {
    try {
        return names_.PieceNameByRow(piece * rowsPerPiece_ + 1, rowsPerPiece_);
    } catch (const TaskError&) {
        if (writer_)
            writer_->close();
        writer_.reset();
        throw;
    }
}

LineWriter& RowDividePage::pieceWriter(std::uint64_t piece) {
    if (openPiece_ != piece) {
        std::string name = nextPieceName(piece);
        if (!writer_ || name != openName_) {
            if (writer_)
                writer_->close();
            writer_.reset();
            context_.sources.refuseToOverwrite(folder_ + name, "a piece");
            writer_ = std::make_unique<LineWriter>(folder_ + name, LineWriter::Mode::Truncate);
            openName_ = std::move(name);
        }
        openPiece_ = piece;
    }
    return *writer_;
}

} // namespace morlevant
