#include "Replacement.h"

namespace morlevant {

namespace {

// Every occurrence of `find` (not empty) in `text`, left to right and without overlap, replaced
// by `replaceWith`; `out` is replaced. The comparison is byte for byte, so it is exact and
// case-sensitive.
void replaceAll(std::string_view text, std::string_view find, std::string_view replaceWith,
                std::string& out) {
    out.clear();
    std::size_t from = 0;
    for (std::size_t at = text.find(find); at != std::string_view::npos;
         at = text.find(find, from)) {
        out.append(text, from, at - from);
        out.append(replaceWith);
        from = at + find.size();
    }
    out.append(text, from);
}

} // namespace

Replacement::Replacement(const TaskPageSettings& settings)
    : RangedLineOperation(settings.columnRange), pairs_{{{settings.find1, settings.replace1},
                                                         {settings.find2, settings.replace2},
                                                         {settings.find3, settings.replace3},
                                                         {settings.find4, settings.replace4}}} {}

void Replacement::ReplaceLine(std::string_view line, std::string& out) {
    out.assign(line);
    for (const Pair& pair : pairs_) {
        // An empty find text leaves the line as it is.
        if (pair.find.empty() || out.find(pair.find) == std::string::npos)
            continue;
        replaceAll(out, pair.find, pair.replaceWith, pass_);
        out.swap(pass_);
    }
}

void Replacement::ReplaceRangesOut(const LineColumns& line, std::string& out) {
    if (!hasColumnRanges()) {
        ReplaceLine(line.line(), out);
        return;
    }
    out.clear();
    for (const ColumnRange& range : writtenRanges()) {
        if (range.last > line.length())
            continue;
        ReplaceLine(line.slice(range.first, range.last), piece_);
        out.append(piece_);
    }
}

std::unique_ptr<LineOperation> makeReplacement(const TaskPageSettings& settings) {
    return std::make_unique<Replacement>(settings);
}

} // namespace morlevant
