#pragma once

#include "engine/io/LineWriter.h"
#include "engine/pages/FilePage.h"
#include "engine/text/LineColumns.h"

#include <vector>

namespace morlevant {

// Insert a date and time text, a string or a text file (the insert actions of line 19) into
// F.modify.
// Whole text and ranges taken out append the insertion after the last row; row ranges worked
// in place put it before each insertion point and into the column ranges of the rows in range.
class InsertPage final : public FilePage {
public:
    InsertPage(const RunContext& context, InsertFilterAction action);
    void checkResults(const std::string& source) const override;
    void process(const std::string& source) override;
    std::string resultPlace(const std::string& source) const override {
        return modifiedPath(source);
    }

private:
    void appendInsertion(LineWriter& writer) const;
    std::string joinedInsertFile() const;
    void checkInsertFileIsNot(const std::string& result) const;

    const RunContext& context_;
    bool fromFile_ = false;
    std::vector<std::size_t> insertionColumns_;
    std::string text_; // line 20 or 21, or the joined insertion file for the in-place mode
    LineColumns columns_;
    std::string out_;
};

} // namespace morlevant
