#pragma once

#include "engine/io/FileIdentity.h"
#include "engine/pages/FilePage.h"
#include "engine/pages/PieceNames.h"
#include "engine/pages/ResultPlaces.h"
#include "engine/text/LineColumns.h"

#include <cstdint>
#include <optional>

namespace morlevant {

class PieceFiles;

// Divide by range-row and by range-column (line 26 "3" and "4"), which exist only with the
// ranges taken out: one piece per range, numbered from line 30 in the order the ranges are
// written.
class RangeDividePage final : public FilePage {
public:
    RangeDividePage(const RunContext& context, bool byRows);
    void checkResults(const std::string& source) const override;
    void process(const std::string& source) override;
    std::string resultPlace(const std::string& source) const override {
        return divideFolder(source);
    }

private:
    void divide(const std::string& source, const std::string& folder, std::uint64_t pieces);
    void DivideByRowRanges(std::uint64_t row, PieceFiles& batch);
    void DivideByColumnRanges(PieceFiles& batch);

    const RunContext& context_;
    bool byRows_;
    PieceNames names_;
    LineColumns columns_;
    std::string out_;
    std::optional<FileVersion> sourceVersion_; // every pass over a source reads this version
};

} // namespace morlevant
