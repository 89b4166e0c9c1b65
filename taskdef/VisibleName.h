#pragma once

#include <string>
#include <string_view>

namespace morlevant {

// A file or task name as a message shows it. Characters that print as nothing, cut a message
// short, break its line or turn it around (NUL, line breaks and other control characters, the
// byte order mark, zero-width and bidirectional characters, no-break spaces) and blanks at
// either end are written as their names in brackets:
// "a.txt[space]", "[BOM]/in/a.txt", "x[LF]y.txt". Bytes that are not UTF-8 show as "[xFF]". A
// plain name is shown as it is.
std::string visibleName(std::string_view name);

} // namespace morlevant
