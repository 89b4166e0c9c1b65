#pragma once

namespace morlevant {

// Whether the code point may start (`first`) or continue a group name as JavaScript reads
// one: Unicode's identifier properties, asked of PCRE2's tables, plus "$" and "_" (and the two
// joiners inside a name).
bool isNameCharacter(char32_t c, bool first);

} // namespace morlevant
