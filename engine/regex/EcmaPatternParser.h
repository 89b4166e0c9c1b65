#pragma once

#include "engine/regex/EcmaPatternTree.h"

#include <string_view>

namespace morlevant {

// Reads a UTF-8 pattern with JavaScript's grammar for a RegExp without flags, including the
// forms web browsers accept for compatibility (identity escapes such as \G, octal escapes, \8,
// "]" and "{" as plain characters, quantified lookaheads). Throws PatternError where
// JavaScript throws its SyntaxError.
ParsedPattern parseEcmaPattern(std::string_view pattern);

} // namespace morlevant
