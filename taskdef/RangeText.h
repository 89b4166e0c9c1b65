#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace morlevant {

// The two range boxes of the task editor: rows (line 2 of a task) and columns (line 3).
enum class RangeBox { Row, Column };

// What a key typed into a range box does.
struct RangeKey {
    bool keep = false;           // the box receives the key
    bool focusToColumns = false; // the focus moves on to the column box first
};

// Digits, "-", "," and Backspace are kept; every other key is discarded. Enter in the row box
// moves the focus to the column box (and is discarded there too).
RangeKey rangeKeyFilter(RangeBox box, int keyCode);

// The range text after the box's normalisation and the ordering check's message, if it failed.
struct RangeCheck {
    std::string text;
    std::optional<std::string> error;
};

// Tidies a range text as the box does when it loses the focus: runs of separators become one,
// a separator next to the other kind becomes ",", leading and trailing separators go, a leading
// "0" becomes "1", and control characters from pasted text are removed. Each step rewrites the
// result of the one before, in a fixed order, so some mixed separators survive deliberately.
std::string normaliseRangeText(std::string_view text);

// The first pair of bounds out of order, as "row range error:10 was bigger than 5", or nothing.
// A range may end one below its start ("5-4"), and ranges may touch but not overlap.
std::optional<std::string> rangeOrderError(std::string_view text, RangeBox box);

// Both, as the box does them on losing the focus: the normalised text and its check.
RangeCheck checkRangeText(std::string_view text, RangeBox box);

} // namespace morlevant
