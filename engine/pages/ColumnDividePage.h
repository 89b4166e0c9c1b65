#pragma once

#include "engine/io/FileIdentity.h"
#include "engine/pages/FilePage.h"
#include "engine/pages/PieceNames.h"
#include "engine/pages/ResultPlaces.h"
#include "engine/text/LineColumns.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace morlevant {

// Divide by column (line 26 "2"): piece v receives columns v × W + 1 to v × W + W of every row
// (W from line 28), one line per row, so every piece has as many lines as the text divided.
// With the ranges taken out the text divided is the selected rows with their column ranges
// taken out.
class ColumnDividePage final : public FilePage {
public:
    explicit ColumnDividePage(const RunContext& context);
    void checkResults(const std::string& source) const override;
    void process(const std::string& source) override;
    std::string resultPlace(const std::string& source) const override {
        return divideFolder(source);
    }

private:
    // The characters of piece v of the line. When the third piece (v = 2) is cut short by the
    // end of the line, the message callback shows the columns per piece first, once per line.
    std::string_view ColumnPiece(const LineColumns& line, std::uint64_t v) const;
    void divide(const std::string& source, const std::string& folder);
    // Calls `row` with each row that is divided, as the columns of the text divided.
    template <typename Row> void forEachRow(const std::string& source, Row row);

    const RunContext& context_;
    PieceNames names_;
    std::uint64_t width_;
    LineColumns columns_;
    std::string out_;
    std::optional<FileVersion> sourceVersion_; // every pass over a source reads this version
};

} // namespace morlevant
