#include "engine/routines/Filter.h"

#include "engine/routines/RangedRoutine.h"
#include "engine/text/AppendBuffer.h"
#include "engine/text/LineEnds.h"
#include "taskdef/TaskError.h"

#include <algorithm>

namespace morlevant {

namespace {

// A result handed on in parts goes on once it holds this much.
constexpr std::size_t spillFrom = std::size_t{1} << 20;

int checkedKind(int kind) {
    if (kind < 1 || kind > 3)
        throw TaskError("Unknown filter kind " + std::to_string(kind) + "; expected 1, 2 or 3");
    return kind;
}

} // namespace

Filter::Filter(const TaskPageSettings& settings, int kind)
    : kind_(checkedKind(kind)), regex_(settings.filterPattern),
      replaceWith_(settings.filterReplacement, regex_) {}

void Filter::FilterLine(std::string_view line, std::string& out) {
    if (filterRuns(line, out))
        return;
    regex_.setSubject(line);
    filterSubject(line, out);
}

void Filter::FilterLineSpilling(std::string_view line, std::string& out, const Spill& spill) {
    regex_.setSubject(line);
    filterSubject(line, out, &spill);
}

bool Filter::takesManyLines() const {
    if (!regex_.staysWithinLine())
        return false;
    return kind_ == 2 ||
           (!regex_.canMatchEmpty() && (kind_ == 3 || !replaceWith_.readsAroundMatch()));
}

bool Filter::FilterLines(std::string_view lines, std::string& out) {
    if (replacesRunMatches()) {
        replaceRunMatches(lines, out);
        return true;
    }
    if (filterRuns(lines, out))
        return true;
    if (!regex_.setLines(lines))
        return false;
    if (kind_ == 3)
        outputMatchesOfLines(lines, out);
    else
        filterSubject(lines, out);
    return true;
}

bool Filter::replacesRunMatches() const {
    const ByteRunMatcher* runs = regex_.byteRun();
    return runs != nullptr && ((kind_ == 1 && !replaceWith_.readsAroundMatch()) ||
                               (kind_ == 2 && !runs->matchesRunsAlone()));
}

void Filter::replaceRunMatches(std::string_view lines, std::string& out) const {
    AppendBuffer result(out, lines.size() + lines.size() / 4, AppendBuffer::overwriting);
    std::size_t copied = 0; // bytes of `lines` placed in `out`
    regex_.byteRun()->forEachMatch(lines, [&](const std::size_t(&match)[4]) {
        result.append(lines.substr(copied, match[0] - copied), lines.data() + lines.size());
        copied = match[1];
        if (kind_ == 2) // deleted
            return;
        char* const start = result.room(replaceWith_.lengthAtMost(match[1] - match[0]) + 32);
        result.advance(static_cast<std::size_t>(replaceWith_.write(lines, match, start) - start));
    });
    result.append(lines.substr(copied));
}

bool Filter::deletesRuns() const {
    return kind_ == 2 && regex_.byteRun() && regex_.byteRun()->matchesRunsAlone();
}

std::size_t Filter::FilterWithin(std::span<char> text) const {
    return static_cast<std::size_t>(
        regex_.byteRun()->copyWithoutRuns({text.data(), text.size()}, text.data()) - text.data());
}

bool Filter::filterRuns(std::string_view text, std::string& out) const {
    const ByteRunMatcher* runs = regex_.byteRun();
    if (!runs || !runs->matchesRunsAlone() || kind_ == 1)
        return false;
    // Grown without being cleared first, so that a buffer reused for text of a like size is
    // not filled with zeros before every use. Each line gives at most one byte more than it
    // holds, and the passes store sixteen bytes at a time.
    const std::size_t room = text.size() + (kind_ == 3 ? countLineEnds(text).lines + 1 : 0) + 16;
    if (out.size() < room)
        out.resize(room);
    char* written = out.data();
    if (kind_ == 2) {
        written = runs->copyWithoutRuns(text, written);
    } else {
        forEachLineWithEnd(text, [&](std::string_view line, std::string_view end) {
            written = std::copy(end.begin(), end.end(), runs->copyRunsOfLine(line, written));
        });
    }
    out.resize(static_cast<std::size_t>(written - out.data()));
    return true;
}

void Filter::outputMatchesOfLines(std::string_view lines, std::string& out) {
    out.clear();
    out.reserve(lines.size());
    std::size_t copied = 0; // the lines before this byte are in `out`
    bool found = regex_.find(0);
    while (found) {
        // The lines before the match's have none and come as they are. A match holds no line
        // end, so its line is the text around it up to the nearest ones.
        std::size_t lineStart = regex_.matchStart();
        while (lineStart > copied && lines[lineStart - 1] != '\n' && lines[lineStart - 1] != '\r')
            --lineStart;
        out.append(lines, copied, lineStart - copied);
        const std::size_t lineEnd = regex_.matchEnd() + findCrOrLf(lines.substr(regex_.matchEnd()));
        do {
            out.append(lines, regex_.matchStart(), regex_.matchEnd() - regex_.matchStart());
            out += ' ';
            found = regex_.find(regex_.matchEnd());
        } while (found && regex_.matchStart() < lineEnd);
        // The line's end is kept as it is: CR LF, LF, or none after the last line.
        copied = lineEnd;
        if (copied < lines.size())
            copied += lines.compare(copied, 2, "\r\n") == 0 ? 2 : 1;
        out.append(lines, lineEnd, copied - lineEnd);
    }
    out.append(lines, copied);
}

void Filter::filterSubject(std::string_view text, std::string& out, const Spill* spill) {
    out.clear();
    // Deleting or outputting the matches usually gives no more than the text: one buffer of
    // that size, rather than one grown by doubling, keeps a long text's memory near twice its
    // size. A replacement may give more: its buffer is made twice the text's size (where pages
    // are given on first write only the part written costs memory), so that it is rarely moved.
    // A result handed on in parts needs room for a part only.
    const std::size_t room = kind_ == 1 ? 2 * text.size() : text.size();
    out.reserve(spill ? std::min(room, 2 * spillFrom) : room);
    bool matched = false;
    std::size_t copied = 0; // bytes of the text placed in `out` (kinds 1 and 2)
    std::size_t start = 0;
    while (start <= text.size() && regex_.find(start)) {
        matched = true;
        const std::size_t first = regex_.matchStart();
        const std::size_t end = regex_.matchEnd();
        if (kind_ == 3) {
            out.append(text, first, end - first);
            out += ' ';
        } else {
            // The text between matches is handed on from where it lies, not copied first.
            if (spill && first - copied >= spillFrom) {
                (*spill)(out);
                (*spill)(text.substr(copied, first - copied));
                out.clear();
            } else {
                out.append(text, copied, first - copied);
            }
            if (kind_ == 1)
                replaceWith_.expand(regex_, text, out);
            copied = end;
        }
        if (spill && out.size() >= spillFrom) {
            (*spill)(out);
            out.clear();
        }
        // After an empty match the search goes on one character further, as JavaScript's
        // global replace does; the character itself stays in the text between matches.
        start = end > first ? end : end + (end < text.size() ? regex_.characterLength(end) : 1);
    }
    if (kind_ == 3 && matched)
        return;
    const std::string_view rest = kind_ == 3 ? text : text.substr(copied);
    if (spill && rest.size() >= spillFrom) {
        (*spill)(out);
        (*spill)(rest);
        out.clear();
    } else {
        out.append(rest);
    }
}

std::unique_ptr<RangedRoutine> makeFilter(const TaskPageSettings& settings, ColumnRanges columns,
                                          int kind) {
    const auto filter = std::make_shared<Filter>(settings, kind);
    auto routine = std::make_unique<RangedRoutine>(
        std::move(columns),
        [filter](std::string_view line, std::string& out) { filter->FilterLine(line, out); });
    routine->setSpillingRoutine(
        [filter](std::string_view line, std::string& out, const Spill& spill) {
            filter->FilterLineSpilling(line, out, spill);
        });
    if (filter->deletesRuns())
        routine->setOverwritingRoutine(
            [filter](std::span<char> text) { return filter->FilterWithin(text); });
    if (filter->takesManyLines())
        routine->setLinesRoutine([filter](std::string_view lines, std::string& out) {
            return filter->FilterLines(lines, out);
        });
    return routine;
}

} // namespace morlevant
