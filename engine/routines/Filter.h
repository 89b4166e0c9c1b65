#pragma once

#include "engine/ranges/ColumnRanges.h"
#include "engine/regex/EcmaRegex.h"
#include "engine/regex/EcmaReplacement.h"
#include "engine/routines/RangedRoutine.h"
#include "taskdef/TaskPageSettings.h"

#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace morlevant {

// The filter half of the Insert Or Filter page: the regular expression of line 24 matched
// globally against a line, and each match replaced by line 23 (kind 1), deleted (kind 2), or
// output alone followed by a blank (kind 3).
class Filter final {
public:
    // Throws TaskError when the pattern does not compile or the kind is not 1, 2 or 3.
    Filter(const TaskPageSettings& settings, int kind);

    // Throws TaskError when a match exceeds the regular-expression engine's limits.
    void FilterLine(std::string_view line, std::string& out);
    // The same, the result handed on through `spill` in parts as it grows; its rest is left in
    // `out`.
    void FilterLineSpilling(std::string_view line, std::string& out, const Spill& spill);
    // Whether FilterLines can work many lines at once: the matches never read or look at a line
    // end, and, where a replacement is put in or the matches are output, are never empty (an
    // empty match at the LF of a CR LF end is one that the line alone does not have).
    bool takesManyLines() const;
    // Whether FilterWithin can work a line where it lies: kind 2 for a run of one set of ASCII
    // characters, whose result is never longer than the line.
    bool deletesRuns() const;
    // Kind 2 for such runs within the text itself; returns the result's length.
    std::size_t FilterWithin(std::span<char> text) const;
    // Whole lines with their ends filtered at once, as FilterLine gives them one by one, their
    // ends kept; false, with nothing done, when they must go one by one.
    bool FilterLines(std::string_view lines, std::string& out);

private:
    // Kinds 2 and 3 for a run of one set of ASCII characters, in one pass over the text without
    // a search per match: every byte of the set deleted, which is what deleting each run leaves,
    // or the runs of each line output. False, with nothing done, for other filters.
    bool filterRuns(std::string_view text, std::string& out) const;
    // Whether the byte matcher takes the pattern, for kind 1 with a replacement that reads no
    // text around the match or kind 2 with matches that are more than runs (filterRuns deletes
    // those); replaceRunMatches then works whole lines without the engine's search and its
    // appends, which cost far more than the match itself.
    bool replacesRunMatches() const;
    void replaceRunMatches(std::string_view lines, std::string& out) const;
    // Filters the regex's current subject; `spill`, when given, takes the result in parts.
    void filterSubject(std::string_view text, std::string& out, const Spill* spill = nullptr);
    // Kind 3 over whole lines, the subject: each line with matches gives them, each followed by
    // a blank, and its end; a line without comes as it is.
    void outputMatchesOfLines(std::string_view lines, std::string& out);

    int kind_;
    EcmaRegex regex_;
    EcmaReplacement replaceWith_;
};

// The filter's routine over the whole line or the column ranges that the run read from line 3
// (blank in whole-text mode): kind 1 replaces with line 23, kind 2 deletes, kind 3 outputs the
// matches. Throws TaskError for a pattern that does not compile, before any file is written.
std::unique_ptr<RangedRoutine> makeFilter(const TaskPageSettings& settings, ColumnRanges columns,
                                          int kind);

} // namespace morlevant
