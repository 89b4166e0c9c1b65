#pragma once

#include "engine/regex/AsciiSetSteps.h"
#include "engine/regex/EcmaPatternTree.h"
#include "engine/text/BytePositions.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace morlevant {

// A pattern that is one set of ASCII characters repeated greedily once or more ([0-9]+, \w+,
// a+), perhaps captured as group 1 and followed by ASCII text that starts outside the set
// ((\w+)=, \d+%), matched without a regular-expression engine: its match from a position is the
// first run of bytes of the set there, whole, that the text follows. Instead of the text after
// it, the run may have a lookbehind of ASCII characters and sets before it, the last a character
// ((?<=\d\.)\d+, (?<=id=)\w+): its match is then the rest of the run from the first byte of
// the set there that the lookbehind's text ends before. Bytes of a character beyond
// ASCII are never in the set, so a run never starts or ends inside such a character, and a text
// that is not valid UTF-8 reads the same. A run of digits is the usual filter; the engine's cost
// per match dwarfs the scan.
class ByteRunMatcher {
public:
    // The matcher for the pattern when it has that form, or nothing.
    static std::optional<ByteRunMatcher> of(const PatternNode& root);

    // The first match in `subject` at or after `start`: its start and end in `match`, and those
    // of the run in the next two.
    bool find(std::string_view subject, std::size_t start, std::size_t (&match)[4]) const;
    // Calls `each(match)` for every match in `text` in order, each search going on where the
    // last match ended, as find() called from there would give them. The first byte of the
    // text after the run is found through masks of 64 bytes rather than a search per match.
    template <typename Each> void forEachMatch(std::string_view text, const Each& each) const;
    // Whether no text follows the run: then the matches are the runs of the set, which
    // copyWithoutRuns and copyRunsOfLine work on.
    bool matchesRunsAlone() const { return suffix_.empty() && behind_.empty(); }
    // Copies `text` without its runs, which is what deleting every match leaves: every byte of
    // the set goes. `out` has room for the text and 16 bytes more, or is the text's own start,
    // which it then overwrites. Returns the end written.
    char* copyWithoutRuns(std::string_view text, char* out) const;
    // Copies the runs of a line, each followed by a blank, which is what outputting every match
    // gives; a line without any is copied whole. `out` has room for the line, a byte more and 16
    // more. Returns the end written.
    char* copyRunsOfLine(std::string_view line, char* out) const;

private:
    // The matches of a run and its suffix from `start` on, in order, each search going on where
    // the last match ended, handed to `found(match)` until it returns false.
    template <typename Found>
    void suffixMatches(std::string_view text, std::size_t start, const Found& found) const;
    // The first run at or after `start`, in the first two of `match`.
    bool findRun(std::string_view subject, std::size_t start, std::size_t (&match)[4]) const;
    // The first match at or after `start` of a run with a lookbehind, the run's bounds in
    // `match` twice: the lookbehind's last byte is looked for, which the run must follow.
    // `lastBytes`, over the subject, goes on from call to call as `start` does.
    bool findAfterBehind(std::string_view subject, std::size_t start, BytePositions& lastBytes,
                         std::size_t (&match)[4]) const;
    // Takes `look` as the run's lookbehind when it has the form that find() works with.
    bool takeBehind(const PatternNode& look);

    std::array<bool, 256> inSet_{};
    std::string suffix_; // ASCII text that follows the run, its first byte not in the set
    // The bytes the lookbehind takes, each from a set, in order; the last is behindLast_ alone.
    std::vector<std::array<bool, 256>> behind_;
    char behindLast_ = 0;
    AsciiSetTable highBitsByLow_{}; // the set, sixteen bytes looked up at once
};

template <typename Each>
void ByteRunMatcher::forEachMatch(std::string_view text, const Each& each) const {
    if (!behind_.empty()) {
        BytePositions lastBytes(text, behindLast_);
        std::size_t match[4];
        for (std::size_t start = 0; findAfterBehind(text, start, lastBytes, match);
             start = match[1])
            each(match);
        return;
    }
    if (suffix_.empty()) {
        std::size_t match[4];
        for (std::size_t start = 0; find(text, start, match); start = match[1])
            each(match);
        return;
    }
    suffixMatches(text, 0, [&](const std::size_t(&match)[4]) {
        each(match);
        return true;
    });
}

template <typename Found>
void ByteRunMatcher::suffixMatches(std::string_view text, std::size_t start,
                                   const Found& found) const {
    // The first suffix with a byte of the set before it that lies at or after `start` ends the
    // first run it follows: the runs end in text order. The match starts at the start of that
    // run, or at `start` within it. The suffix's first byte is looked for rather than the runs,
    // which may be most of the text (words).
    const auto* bytes = reinterpret_cast<const unsigned char*>(text.data());
    BytePositions suffixStarts(text, suffix_.front());
    std::size_t match[4];
    for (std::size_t end = suffixStarts.next(start + 1); end < text.size();) {
        if (!inSet_[bytes[end - 1]] ||
            text.substr(end + 1, suffix_.size() - 1) != std::string_view(suffix_).substr(1)) {
            end = suffixStarts.next(end + 1);
            continue;
        }
        // The run's start, looked for eight bytes at a time without a branch on each: runs of
        // a few bytes (words) would make the loop's end a guess missed at every match.
        std::size_t begin = end - 1;
        bool runEnded = false;
        while (!runEnded && begin - start >= 8) {
            unsigned inRun = 0;
            for (unsigned back = 0; back < 8; ++back)
                inRun |= unsigned{inSet_[bytes[begin - 1 - back]]} << back;
            const auto length = static_cast<std::size_t>(std::countr_one(inRun));
            begin -= length;
            runEnded = length < 8;
        }
        while (!runEnded && begin > start && inSet_[bytes[begin - 1]])
            --begin;
        match[0] = match[2] = begin;
        match[1] = end + suffix_.size();
        match[3] = end;
        if (!found(match))
            return;
        start = match[1];
        end = suffixStarts.next(start + 1);
    }
}

} // namespace morlevant
