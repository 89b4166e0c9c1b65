#pragma once

#include "taskdef/TaskPageSettings.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace morlevant {

// The file names of divide pieces: every "*" of the template (line 29) is replaced by the piece
// number, padded with "0" to the width of the first piece number (line 30, e.g. "00001").
class PieceNames {
public:
    // Throws TaskError for a blank template, one that names another folder, or a first piece
    // number that is not a whole number.
    explicit PieceNames(const TaskPageSettings& settings);

    // Whether the template holds "*"; without one every piece has the same name.
    bool numbered() const { return nameTemplate_.find('*') != std::string::npos; }

    // Piece of row `row` (from 1) when each piece holds `rowsPerPiece` rows.
    std::string PieceNameByRow(std::uint64_t row, std::uint64_t rowsPerPiece) const;
    // Piece `index` counted from 0: column pieces, and one piece per range.
    std::string PieceNameByColumn(std::uint64_t index) const;

private:
    std::string nameFor(std::uint64_t number) const;

    std::string nameTemplate_;
    std::uint64_t first_ = 0;
    std::size_t width_ = 0;
};

// A count of a divide setting (rows per piece, columns per piece): a whole number of at least 1.
// Throws TaskError naming `what` and the text otherwise.
std::uint64_t pieceSize(const std::string& text, std::string_view what);

} // namespace morlevant
