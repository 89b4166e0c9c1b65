#pragma once

#include "engine/regex/BacktrackProgram.h"
#include "engine/text/BytePositions.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace morlevant {

// Matches a BacktrackProgram the way JavaScript matches a RegExp, by trying the alternatives
// of each choice in order and going back to the last open choice on failure. Choices and the
// values they restore wait on a stack of its own, never the call stack, so a line of any
// length is matched in bounded call depth; the stack's size is bounded too.
class BacktrackMatcher final {
public:
    enum class Outcome { Match, NoMatch, OutOfTime, OutOfMemory };
    static constexpr std::size_t unset = static_cast<std::size_t>(-1);
    static constexpr std::size_t defaultStackBytes = std::size_t{1} << 30;

    explicit BacktrackMatcher(BacktrackProgram program, std::size_t stackBytes = defaultStackBytes);

    // Makes `subject` the text find() searches, read character by character as UTF-8 (`utf`,
    // which the subject must be) or byte by byte; searching it ends once `budget` has passed.
    // The clock is first read after some work, so that a short line never reads it: the budget
    // counts from there.
    void setSubject(std::string_view subject, bool utf, std::chrono::steady_clock::duration budget);
    // Looks for the first match that starts at or after byte `start`, a character boundary.
    Outcome find(std::size_t start);
    // The start and end of each group, group 0 the match, `unset` for a group without a value.
    const std::size_t* captures() const { return registers_.data(); }

private:
    enum class Entry : std::uint32_t { Undo, Choice, Greedy, Lazy, Look };
    struct StackEntry {
        Entry kind;
        std::uint32_t index; // Undo: a register; else an instruction
        std::size_t value;   // Undo: the register's value before; else a position
    };

    // The first position from `at` whose byte can start a match, or the end of the subject.
    std::size_t nextPossibleStart(std::size_t at);
    // The match attempt at `start`, from the instruction `pc` on.
    Outcome matchAt(std::size_t start, std::uint32_t pc);
    bool backtrack(std::uint32_t& pc, std::size_t& pos);
    bool step(std::uint32_t& pc, std::size_t& pos);
    // These three come at nearly every step: the rare work of each is a call of its own.
    void push(Entry kind, std::uint32_t index, std::size_t value) {
        if (stack_.size() >= stackLimit_)
            stackFull();
        stack_.push_back({kind, index, value});
    }
    void set(std::uint32_t reg, std::size_t value) {
        if (registers_[reg] == value)
            return;
        push(Entry::Undo, reg, registers_[reg]);
        registers_[reg] = value;
    }
    void charge(std::size_t work) {
        work_ += work;
        if (work_ >= workBetweenClockReadings)
            readClock();
    }
    [[noreturn, gnu::noinline]] static void stackFull();
    // Starts the budget's clock, or ends the search once the budget has passed.
    [[gnu::noinline]] void readClock();
    void lookEnd(const BacktrackStep& s, std::uint32_t& pc, std::size_t& pos);
    // Takes as many characters of the repeated `atom` as follow `pos` (or come before it, for
    // an atom read backwards), at most `most`: returns how many and moves `pos` past them.
    std::size_t takeRun(const BacktrackStep& atom, std::size_t& pos, std::size_t most) const;
    // Whether the straight body of a lookaround, steps `pc` to `end`, matches at `pos`.
    bool matchesStraight(std::uint32_t pc, std::uint32_t end, std::size_t pos);

    // Where one character or set at `pos` ends, read forwards or backwards, or `unset`.
    // Both are inlined where the steps are carried out.
    inline std::size_t matchAtom(const BacktrackStep& s, std::size_t pos) const;
    inline std::size_t matchSet(const SetTable& set, std::size_t pos, bool backward) const;
    // The same for a character beyond ASCII.
    std::size_t matchSetBeyondAscii(const SetTable& set, std::size_t pos, bool backward) const;
    std::size_t matchBackReference(const BacktrackStep& s, std::size_t pos) const;
    // The position one match of the atom `s` back towards where its run started.
    std::size_t giveBack(const BacktrackStep& s, std::size_t pos) const;
    std::size_t nextCharacter(std::size_t pos) const;
    std::size_t previousCharacter(std::size_t pos) const;
    bool isWordAt(std::size_t pos) const;

    // Steps between two readings of the clock: a step costs far less than reading it.
    static constexpr std::uint64_t workBetweenClockReadings = 1 << 16;

    BacktrackProgram program_;
    // The one byte every match starts with when there is one and it is ASCII (never a
    // continuation byte), or -1: then a search call finds the next start.
    int onlyFirstByte_ = -1;
    // Where that byte stands in the subject: it may start every few bytes, where a search call
    // for each would cost more than the scan.
    BytePositions firstBytePositions_{{}, 0};
    std::size_t firstBytesAsked_ = 0; // the last position asked from
    std::size_t stackLimit_;
    std::vector<std::size_t> registers_;
    std::vector<StackEntry> stack_;
    std::string_view subject_;
    bool utf_ = true;
    std::chrono::steady_clock::duration budget_{};
    std::chrono::steady_clock::time_point deadline_; // once the clock was read for the subject
    bool clockRead_ = false;
    std::uint64_t work_ = 0; // steps taken since the clock was last read
};

} // namespace morlevant
