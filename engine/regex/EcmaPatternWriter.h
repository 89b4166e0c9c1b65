#pragma once

#include "engine/regex/EcmaPatternTree.h"

#include <string>

namespace morlevant {

// The PCRE2 pattern in which every construct means what it means in JavaScript, with the
// same group numbers. `utf` false writes it for lines matched byte by byte: characters
// beyond ASCII then stand for their UTF-8 bytes, and classes match single bytes (a negated
// class any byte beyond ASCII).
//
// JavaScript starts the capturing groups of a repeated group afresh at each iteration; PCRE2
// keeps the value of an earlier one. An unset group and an empty one read the same in
// JavaScript (replacements and back-references give the empty text), so inside a repetition
// every path is made to set every group it skips, to the empty text: alternatives and optional
// parts become branch-reset groups whose other branch sets the same numbers.
std::string writePcrePattern(const ParsedPattern& pattern, bool utf);

} // namespace morlevant
