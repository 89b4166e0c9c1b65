#pragma once

#include <cstddef>
#include <string_view>

namespace morlevant {

// The offset of the first CR or LF in `text`, or its size when it holds neither.
std::size_t findCrOrLf(std::string_view text);

// Calls `line(text, end)` for each line of `text` and its own end: CR LF, LF, a lone CR, or
// nothing for text after the last end, which is a line too.
template <typename Line> void forEachLineWithEnd(std::string_view text, const Line& line) {
    while (!text.empty()) {
        const std::size_t end = findCrOrLf(text);
        const std::size_t endLength =
            end == text.size()                                                    ? 0
            : text[end] == '\r' && end + 1 < text.size() && text[end + 1] == '\n' ? 2
                                                                                  : 1;
        line(text.substr(0, end), text.substr(end, endLength));
        text.remove_prefix(end + endLength);
    }
}

// Calls `line` for each line of `text`, without its end.
template <typename Line> void forEachLine(std::string_view text, const Line& line) {
    forEachLineWithEnd(text, [&](std::string_view one, std::string_view) { line(one); });
}

// The line ends in a stretch of text: CR LF, LF and a lone CR each count once.
struct LineEndCount {
    std::size_t lines = 0;
    bool allCrLf = true; // every end is CR LF (also when there is none)
    bool loneCr = false; // some end is a CR without its LF
};
LineEndCount countLineEnds(std::string_view text);

// Copies `text` to `out` with every line end (CR LF, LF or a lone CR) made CR LF, and returns
// the end of what was written: at most twice the text. A CR that ends the text is taken for a
// lone one. Text after the last end is copied as it is, without an end.
char* copyWithCrLfEnds(std::string_view text, char* out);

} // namespace morlevant
