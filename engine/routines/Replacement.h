#pragma once

#include "engine/ranges/ColumnRanges.h"
#include "engine/routines/RangedRoutine.h"
#include "taskdef/TaskPageSettings.h"

#include <array>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace morlevant {

// The Find and Replace page: four plain find-and-replace pairs (lines 11 to 18), applied in
// order, each to the result of the one before.
class Replacement final {
public:
    // A line replaced a part at a time goes from one pair to the next, and on, in parts of about
    // `partSize` bytes.
    static constexpr std::size_t defaultPartSize = std::size_t{1} << 20;

    explicit Replacement(const TaskPageSettings& settings, std::size_t partSize = defaultPartSize);

    void ReplaceLine(std::string_view line, std::string& out);
    // The same, the result handed on through `spill` in parts as it is made and its rest left in
    // `out`: the line goes through the pairs a part at a time, so that neither the result nor
    // the text between two pairs is ever held whole.
    void ReplaceLineSpilling(std::string_view line, std::string& out, const Spill& spill);
    // The same within the text itself, for pairs that all shrink or keep it (see
    // neverLengthens); returns the result's length.
    std::size_t ReplaceWithin(std::span<char> text) const;
    bool neverLengthens() const;
    // The pairs applied within `spans` of `lines` only, each span worked as a text of its own
    // and every byte outside them kept, as RangesLinesRoutine says; for pairs that keep line
    // ends (see keepsLineEnds) and whose find texts are valid UTF-8.
    void ReplaceInSpans(std::string_view lines, RangeSpans& spans, std::string& out);
    bool replacesInSpans() const;
    // Whether no find or replace text holds a line end. Then no occurrence can cross one, none
    // is made or taken away, and many lines replaced at once give what each would give alone.
    bool keepsLineEnds() const;

private:
    struct Pair {
        std::string find;
        std::string replaceWith;
        bool wholeCharacters = true; // the find text is valid UTF-8
    };

    // A pair's share of a line replaced a part at a time.
    struct Stage {
        std::size_t pair = 0; // in pairs_
        // Text handed to the pair and not yet worked: no more than could hold the start of an
        // occurrence that goes on in text still to come, once it has been worked.
        std::string held;
        // For a find text that is not valid UTF-8: where the next character of the text starts,
        // counted from the start of `held`.
        std::size_t boundary = 0;
    };

    // Works the text handed to stage `stage`: the line itself for the first, its held text for
    // the others. Returns how many bytes of `text` it worked; unless `last` says no more text
    // follows, the rest waits for the next part.
    std::size_t work(std::size_t stage, std::string_view text, bool last);
    // Hands a piece of stage `stage`'s result on: to the next pair, or into `out_`, which goes to
    // `spill_` whenever a part is full.
    void handOn(std::size_t stage, std::string_view piece);

    std::size_t partSize_;
    std::array<Pair, 4> pairs_;
    std::string pass_; // the text between two pairs
    // The pairs that take part in replacing a line a part at a time, and where its result goes.
    std::array<Stage, 4> stages_;
    std::size_t stageCount_ = 0;
    std::string* out_ = nullptr;
    const Spill* spill_ = nullptr;
};

// The Find and Replace page's routine over the whole line or the column ranges that the run
// read from line 3 (blank in whole-text mode).
std::unique_ptr<RangedRoutine> makeReplacement(const TaskPageSettings& settings,
                                               ColumnRanges columns);

} // namespace morlevant
