#pragma once

#include "engine/RangedLineOperation.h"
#include "taskdef/TaskPageSettings.h"

#include <array>
#include <string>

namespace morlevant {

// The Find and Replace page: four plain find-and-replace pairs (lines 11 to 18), applied in
// order, each to the result of the one before.
class Replacement final : public RangedLineOperation {
public:
    explicit Replacement(const TaskPageSettings& settings);

    void wholeLine(std::string_view line, std::string& out) override { ReplaceLine(line, out); }
    void inRanges(const LineColumns& line, std::string& out) override {
        ReplaceInRanges(line, out);
    }
    void rangesOut(const LineColumns& line, std::string& out) override {
        ReplaceRangesOut(line, out);
    }

    void ReplaceLine(std::string_view line, std::string& out);
    void ReplaceInRanges(const LineColumns& line, std::string& out) { workInPlace(line, out); }
    // Only ranges that lie wholly within the line take part: unlike the plain cutting of
    // ranges, a range that runs past the end of the line contributes nothing.
    void ReplaceRangesOut(const LineColumns& line, std::string& out);

protected:
    void applyTo(std::string_view text, std::string& out) override { ReplaceLine(text, out); }

private:
    struct Pair {
        std::string find;
        std::string replaceWith;
        bool wholeCharacters = true; // the find text is valid UTF-8
    };

    std::array<Pair, 4> pairs_;
    std::string pass_;  // the text between two pairs
    std::string piece_; // one range's result
};

} // namespace morlevant
