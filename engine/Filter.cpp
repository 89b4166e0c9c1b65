#include "engine/Filter.h"

#include "engine/RangedRoutine.h"
#include "taskdef/TaskError.h"

namespace morlevant {

namespace {

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
    out.clear();
    // Deleting or outputting the matches usually gives no more than the line: one buffer of
    // that size, rather than one grown by doubling, keeps a long line's memory near twice its
    // size. A replacement may give more: its buffer is made twice the line's size (where pages
    // are given on first write only the part written costs memory), so that it is rarely moved.
    out.reserve(kind_ == 1 ? 2 * line.size() : line.size());
    regex_.setSubject(line);
    bool matched = false;
    std::size_t copied = 0; // bytes of the line placed in `out` (kinds 1 and 2)
    std::size_t start = 0;
    while (start <= line.size() && regex_.find(start)) {
        matched = true;
        const std::size_t first = regex_.matchStart();
        const std::size_t end = regex_.matchEnd();
        if (kind_ == 3) {
            out.append(line, first, end - first);
            out += ' ';
        } else {
            out.append(line, copied, first - copied);
            if (kind_ == 1)
                replaceWith_.expand(regex_, line, out);
            copied = end;
        }
        // After an empty match the search goes on one character further, as JavaScript's
        // global replace does; the character itself stays in the text between matches.
        start = end > first ? end : end + (end < line.size() ? regex_.characterLength(end) : 1);
    }
    if (kind_ != 3)
        out.append(line, copied);
    else if (!matched)
        out.assign(line);
}

std::unique_ptr<RangedRoutine> makeFilter(const TaskPageSettings& settings, int kind) {
    ColumnRanges columns(settings.columnRange);
    const auto filter = std::make_shared<Filter>(settings, kind);
    return std::make_unique<RangedRoutine>(
        std::move(columns),
        [filter](std::string_view line, std::string& out) { filter->FilterLine(line, out); });
}

} // namespace morlevant
