#pragma once

#include "engine/regex/EcmaPatternTree.h"

namespace morlevant {

// Shortens the repetitions at the start of every lookbehind that holds no group, back-reference
// or lookaround: `(?<=\d+\.)` becomes `(?<=\d\.)`. Such a lookbehind only asks whether some
// text ending where it stands matches it, and a repetition of `min` or more iterations at that
// text's start matches there exactly when `min` iterations do. The lookbehind may then take a
// fixed length, which lets PCRE2 match a pattern that otherwise only the backtracking matcher
// takes.
void shortenLookbehindStarts(PatternNode& root);

} // namespace morlevant
