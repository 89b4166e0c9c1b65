#pragma once

#include "engine/io/LineWriter.h"
#include "engine/pages/FilePage.h"
#include "engine/pages/PieceNames.h"
#include "engine/pages/ResultPlaces.h"
#include "engine/text/LineColumns.h"

#include <cstdint>
#include <memory>
#include <optional>

namespace morlevant {

class LineReader;

// Divide by row (line 26 "1"): pieces of a number of rows each (line 27) in the divide folder.
class RowDividePage final : public FilePage {
public:
    explicit RowDividePage(const RunContext& context);
    void checkResults(const std::string& source) const override;
    void process(const std::string& source) override;
    std::string resultPlace(const std::string& source) const override {
        return divideFolder(source);
    }

private:
    void divide(const std::string& source);
    void copyIntoPieces(LineReader& reader);
    // The rows in place or with their ranges taken out.
    void divideRows(LineReader& reader);
    void DivideRowsInRanges(bool inRanges, std::string_view line);
    void writeToPiece(std::uint64_t piece, std::string_view line);
    // The writer of the piece, opened (and emptied) when its first row is due.
    LineWriter& pieceWriter(std::uint64_t piece);
    std::string nextPieceName(std::uint64_t piece);

    const RunContext& context_;
    PieceNames names_;
    std::uint64_t rowsPerPiece_;
    std::string folder_;
    std::unique_ptr<LineWriter> writer_;
    std::optional<std::uint64_t> openPiece_;
    std::string openName_;
    std::uint64_t counted_ = 0; // rows counted for the piece numbers so far
    LineColumns columns_;
    std::string out_;
};

} // namespace morlevant
