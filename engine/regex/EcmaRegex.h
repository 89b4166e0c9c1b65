#pragma once

#include "engine/regex/ByteRunMatcher.h"

#define PCRE2_CODE_UNIT_WIDTH 8
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <pcre2.h>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace morlevant {

class BacktrackMatcher;

// The time all the searches of one subject may take together: a fixed part and a part per
// mebibyte of the subject. Patterns whose work grows with the line are done well within
// it; one whose work grows with the square of the line (a lookahead to the end tried at
// every position) would run for days on a long one, and is stopped.
struct MatchBudget {
    std::chrono::milliseconds fixed{10'000};
    std::chrono::milliseconds perMebibyte{2'000};
};

// A regular expression in ECMAScript syntax, as JavaScript reads a RegExp without flags,
// translated into an equivalent PCRE2 pattern, compiled once and matched against one subject
// at a time. Lines that are valid UTF-8 are matched character by character; other
// lines by a second compile of the same pattern in which every byte is a character, so that
// they can still be filtered. A pattern for which the two readings agree uses the second alone.
// The few patterns that PCRE2 cannot match the way JavaScript does (see EcmaPatternCheck), or
// does not compile, are matched by BacktrackMatcher instead, with the same readings of a line,
// and a run of one set of ASCII characters by ByteRunMatcher.
class EcmaRegex final {
public:
    // Which matcher a pattern takes: PCRE2 where it matches the JavaScript way, else the
    // backtracking matcher; or the backtracking matcher for every pattern, to compare the two.
    enum class Matcher { Fastest, Backtracking };

    // Throws TaskError naming the pattern, the position and the cause when JavaScript would
    // refuse it.
    explicit EcmaRegex(std::string_view pattern, MatchBudget budget = {},
                       Matcher matcher = Matcher::Fastest);
    ~EcmaRegex();
    EcmaRegex(const EcmaRegex&) = delete;
    EcmaRegex& operator=(const EcmaRegex&) = delete;

    // Capturing groups of the pattern, not counting the whole match.
    int groupCount() const { return groupCount_; }
    // Number of the group with this name, or 0 when the pattern has no such group.
    int groupNumber(std::string_view name) const;
    bool hasNamedGroups() const { return !groupNames_.empty(); }

    // Whether a search over many lines finds, within each line, what a search of that line
    // alone finds: no match reads or looks at a line end.
    bool staysWithinLine() const { return staysWithinLine_; }
    bool canMatchEmpty() const { return canMatchEmpty_; }
    // The byte matcher for a pattern that is a run of one set of ASCII characters, perhaps with
    // text after it (see ByteRunMatcher::matchesRunsAlone), or null.
    const ByteRunMatcher* byteRun() const { return byteRun_ ? &*byteRun_ : nullptr; }

    // Makes `subject` the text that find() searches; it must outlive the searches.
    void setSubject(std::string_view subject);
    // Makes whole lines with their ends the subject, for a pattern that stays within a line, or
    // returns false, changing nothing, when they are not all valid UTF-8: a line that is not is
    // matched byte by byte on its own. No line may be longer than a block of LineReader.
    bool setLines(std::string_view lines);
    // Looks for the next match that starts at or after byte `start`. Throws TaskError when the
    // match exceeds the engine's limits or the subject's budget.
    bool find(std::size_t start);
    // Byte offsets of the last match, and of its groups; an unset group is empty at npos.
    std::size_t matchStart() const { return ovector_[0]; }
    std::size_t matchEnd() const { return ovector_[1]; }
    std::string_view group(int n) const;
    // The offsets of the last match and its groups, two for each, npos for a group without a
    // value.
    const std::size_t* groups() const { return ovector_; }
    // Byte length of the character at `pos` of the subject, by the mode of the current subject.
    std::size_t characterLength(std::size_t pos) const;

private:
    // How a subject's bytes are read: ASCII and invalid UTF-8 by the byte compile.
    enum class Reading { Ascii, Utf8, Invalid };
    Reading readingOf(std::string_view subject) const;
    void use(std::string_view subject, Reading reading, bool budgeted);
    // The pattern compiled, or null when PCRE2 refuses it.
    static pcre2_code* compile(std::string_view pattern, bool utf);
    // Called by PCRE2 at every position a match is tried from: stops the search once the
    // subject's budget is spent.
    static int atStartPosition(pcre2_callout_block* block, void* self);
    // The time a search of `subject` may take.
    std::chrono::steady_clock::duration budgetFor(std::string_view subject) const;
    bool backtrackerFind(std::size_t start);
    [[noreturn]] void throwTakesTooLong() const;
    [[noreturn]] void throwTooComplex(const std::string& cause) const;

    std::string pattern_;
    pcre2_code* utfCode_ = nullptr;
    pcre2_code* byteCode_ = nullptr;        // null when the pattern cannot be read byte by byte
    pcre2_code* utfBudgetedCode_ = nullptr; // the same two, for long lines
    pcre2_code* byteBudgetedCode_ = nullptr;
    pcre2_match_data* matchData_ = nullptr;
    pcre2_match_context* matchContext_ = nullptr;
    pcre2_jit_stack* jitStack_ = nullptr;
    const PCRE2_SIZE* ovector_ = nullptr;
    int groupCount_ = 0;
    bool staysWithinLine_ = false;
    // Its matches are the same read byte by byte as read character by character: no subject
    // needs its encoding checked, and the faster byte compile matches every one.
    bool readsBytesAlike_ = false;
    bool canMatchEmpty_ = true;
    std::vector<std::pair<std::string, int>> groupNames_;
    // Set for a pattern that PCRE2 cannot match the JavaScript way or does not compile, and
    // then no compile is; or for the lines that are not valid UTF-8 when only the compile that
    // reads them fails.
    std::unique_ptr<BacktrackMatcher> backtracker_;
    // Set for a run of ASCII characters, and then no compile is either; its match is in
    // runMatch_.
    std::optional<ByteRunMatcher> byteRun_;
    PCRE2_SIZE runMatch_[4] = {0, 0, 0, 0};

    std::string_view subject_;
    bool subjectIsUtf_ = true;
    bool backtracking_ = false;        // the current subject goes to backtracker_
    const pcre2_code* code_ = nullptr; // the compile that matches the current subject
    bool jitCompiled_ = false;         // whether code_ has JIT code
    MatchBudget budget_;
    std::chrono::steady_clock::time_point deadline_;
    std::uint32_t attempts_ = 0;
};

} // namespace morlevant
