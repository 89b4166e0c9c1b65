#pragma once

#include "engine/pages/FilePage.h"
#include "engine/routines/RangedRoutine.h"
#include "engine/text/LineColumns.h"

#include <span>

namespace morlevant {

class LineWriter;

// Calculate, Find and Replace and Filter: one line of F.modify for each line of the source
// (for each selected row when the ranges are taken out).
class LinePage final : public FilePage {
public:
    LinePage(const RunContext& context, std::unique_ptr<RangedRoutine> routine);
    void checkResults(const std::string& source) const override;
    void process(const std::string& source) override;
    std::string resultPlace(const std::string& source) const override {
        return modifiedPath(source);
    }

private:
    // Works a block of whole lines at once; false when they must go one by one.
    bool applyToLines(std::string_view lines);
    void applyOneByOne(const std::string& source, std::size_t lastLineNumber,
                       std::string_view lines, LineWriter& writer);
    // The routine's result for one line, for `writer`. `gathered`, when not empty, is a long
    // line in a buffer of the reader's: the routine may overwrite it and leave its result
    // there, or hand the first part of its result to `writer` itself.
    std::string_view apply(const std::string& source, std::size_t lineNumber, std::string_view line,
                           LineWriter& writer, std::span<char> gathered = {});

    const RunContext& context_;
    std::unique_ptr<RangedRoutine> routine_;
    LineColumns columns_;
    std::string out_;
};

} // namespace morlevant
