#pragma once

#include <cstddef>
#include <string_view>

namespace morlevant {

// The offset of the first CR or LF in `text`, or its size when it holds neither.
std::size_t findCrOrLf(std::string_view text);

// The line ends in a stretch of text: CR LF, LF and a lone CR each count once.
struct LineEndCount {
    std::size_t lines = 0;
    bool allCrLf = true; // every end is CR LF (also when there is none)
    bool loneCr = false; // some end is a CR without its LF
};
LineEndCount countLineEnds(std::string_view text);

} // namespace morlevant
