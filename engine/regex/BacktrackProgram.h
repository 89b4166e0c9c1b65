#pragma once

#include "engine/regex/AsciiSetSteps.h"
#include "engine/regex/EcmaPatternTree.h"

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace morlevant {

// A class as the matcher tests it: ASCII by a table, the rest by the ranges.
struct SetTable {
    std::bitset<128> ascii;
    CharacterSet set;
    // Whether it takes ASCII characters only, and its ASCII table for sixteen bytes at once,
    // which then tests every byte.
    bool asciiOnly = false;
    AsciiSetTable bytes{};
};

// One instruction of a pattern compiled for BacktrackMatcher. Each reads the text forwards, or
// backwards inside a lookbehind, from the current position.
struct BacktrackStep {
    enum class Op : std::uint8_t {
        Character,     // `bytes` (a code point's UTF-8); never matches when `length` is 0
        Set,           // one character of sets[`index`]
        BackReference, // the text of group `index`
        Start,         // start of the text
        End,           // end of the text
        WordBoundary,  // `negative`: \B
        Split,         // goes on at the next instruction, coming back to `target` on failure
        Jump,          // goes on at `target`
        GroupOpen,     // register `reg` = position
        GroupClose,    // group `index` = the text between register `reg` and the position
        RepeatInit,    // register `reg` (iterations done) = 0
        RepeatHead,    // another iteration or `target`, as `min`, `max` and `greedy` say
        RepeatIterate, // clears the groups `groups`, register `reg` + 1 = position
        RepeatEnd,     // refuses an optional iteration that matched the empty text
        SimpleRepeat,  // the next instruction (a character or set) `min` to `max` times
        LookStart,     // a lookaround whose body follows; `target` is after its LookEnd
        LookEnd,       // the body matched: `negative` fails, a lookaround else goes on
        Match,         // the whole pattern matched
    };
    static constexpr std::size_t unbounded = static_cast<std::size_t>(-1);

    Op op = Op::Match;
    bool backward = false;
    bool greedy = true;
    bool negative = false;
    // SimpleRepeat: the step after the atom takes no character the atom takes, as their ASCII
    // tables show (see markPossessiveRepeats), so a run given back would only fail there; the
    // run is never given back.
    bool possessive = false;
    // LookStart: the body leaves no choice to come back to (see markStraightLookarounds), so it
    // is matched step after step without the stack.
    bool straight = false;
    std::uint8_t length = 0;
    char bytes[4] = {};
    std::uint32_t index = 0;
    std::uint32_t target = 0;
    std::uint32_t reg = 0;
    std::size_t min = 0;
    std::size_t max = 0;
    GroupSpan groups{};
};

// A pattern as instructions of a backtracking matcher that follows JavaScript's own matching
// rules, where PCRE2 cannot. Registers: first the start and end of every group, group 0 the
// whole match, then the ones the instructions name.
struct BacktrackProgram {
    std::vector<BacktrackStep> steps;
    std::vector<SetTable> sets;
    int groupCount = 0;
    std::uint32_t registerCount = 0;
    // For a pattern that never matches the empty text, the bytes a match can start with, read
    // as UTF-8 or byte by byte: the search skips the positions where no match can start.
    bool startsWithKnownByte = false;
    std::bitset<256> firstBytes;
};

BacktrackProgram compileBacktrackProgram(const ParsedPattern& pattern);

} // namespace morlevant
