#pragma once

#include "engine/ranges/ColumnRanges.h"
#include "taskdef/TaskPageSettings.h"

#include <array>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace morlevant {

class RangedRoutine;

// The Find and Replace page: four plain find-and-replace pairs (lines 11 to 18), applied in
// order, each to the result of the one before.
class Replacement final {
public:
    explicit Replacement(const TaskPageSettings& settings);

    void ReplaceLine(std::string_view line, std::string& out);
    // The same within the text itself, for pairs that all shrink or keep it (see
    // neverLengthens); returns the result's length.
    std::size_t ReplaceWithin(std::span<char> text) const;
    bool neverLengthens() const;
    // Whether no find or replace text holds a line end. Then no occurrence can cross one, none
    // is made or taken away, and many lines replaced at once give what each would give alone.
    bool keepsLineEnds() const;

private:
    struct Pair {
        std::string find;
        std::string replaceWith;
        bool wholeCharacters = true; // the find text is valid UTF-8
    };

    std::array<Pair, 4> pairs_;
    std::string pass_; // the text between two pairs
};

// The Find and Replace page's routine over the whole line or the column ranges that the run
// read from line 3 (blank in whole-text mode).
std::unique_ptr<RangedRoutine> makeReplacement(const TaskPageSettings& settings,
                                               ColumnRanges columns);

} // namespace morlevant
