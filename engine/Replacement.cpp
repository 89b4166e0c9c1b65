#include "Replacement.h"

#include "Utf8.h"

namespace morlevant {

namespace {

// A buffer between two pairs larger than this is let go after its line, so that one long line
// does not keep its size for the rest of the run.
constexpr std::size_t shrinkAbove = std::size_t{1} << 20;

// Every occurrence of `find` (not empty) in `text`, left to right and without overlap, replaced
// by `replaceWith`; `out` is replaced. The comparison is byte for byte, so it is exact and
// case-sensitive. A find text that is valid UTF-8 can only match whole characters; one that is
// not (a lone byte such as 0xAC) could match inside a character of the text, so then only
// matches that begin and end between characters count.
void replaceAll(std::string_view text, std::string_view find, std::string_view replaceWith,
                bool wholeCharacters, std::string& out) {
    out.clear();
    // The result is built in place of one buffer of its final size at most: a line hundreds of
    // megabytes long must not be copied into a buffer grown by doubling.
    std::size_t size = text.size();
    if (replaceWith.size() > find.size())
        for (std::size_t at = text.find(find); at != std::string_view::npos;
             at = text.find(find, at + find.size()))
            size += replaceWith.size() - find.size();
    out.reserve(size);
    std::size_t from = 0;
    std::size_t boundary = 0; // start of a character of the text, walked forward
    std::size_t at = text.find(find);
    while (at != std::string_view::npos) {
        if (!wholeCharacters) {
            while (boundary < at)
                boundary += utf8CharLength(text, boundary);
            std::size_t end = at;
            while (boundary == at && end < at + find.size())
                end += utf8CharLength(text, end);
            if (boundary != at || end != at + find.size()) {
                at = text.find(find, at + 1);
                continue;
            }
        }
        out.append(text, from, at - from);
        out.append(replaceWith);
        from = boundary = at + find.size();
        at = text.find(find, from);
    }
    out.append(text, from);
}

} // namespace

Replacement::Replacement(const TaskPageSettings& settings)
    : RangedLineOperation(settings.columnRange), pairs_{{{settings.find1, settings.replace1},
                                                         {settings.find2, settings.replace2},
                                                         {settings.find3, settings.replace3},
                                                         {settings.find4, settings.replace4}}} {
    for (Pair& pair : pairs_)
        pair.wholeCharacters = isValidUtf8(pair.find);
}

void Replacement::ReplaceLine(std::string_view line, std::string& out) {
    // Each pair works on the result of the one before; the first reads the line itself, so a
    // line is copied only by the pairs that change it.
    std::string_view current = line;
    bool replaced = false;
    for (const Pair& pair : pairs_) {
        // An empty find text leaves the line as it is.
        if (pair.find.empty() || current.find(pair.find) == std::string_view::npos)
            continue;
        replaceAll(current, pair.find, pair.replaceWith, pair.wholeCharacters, pass_);
        out.swap(pass_);
        current = out;
        replaced = true;
    }
    if (!replaced)
        out.assign(line);
    // What the earlier passes held is not needed until the next line.
    if (pass_.capacity() > shrinkAbove)
        std::string().swap(pass_);
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
