#pragma once

#include <string_view>
#include <vector>

namespace morlevant {

// The lines of a text read whole (a task's settings and file list, a workspace file), without
// their line ends. A line ends at CR LF, LF or a lone CR, as in the files the engine reads line
// by line; the last line needs no line end, and a line end at the very end starts no further
// line. Blank lines are kept, so a line's index + 1 is its number; the views point into `text`.
std::vector<std::string_view> textLines(std::string_view text);

} // namespace morlevant
