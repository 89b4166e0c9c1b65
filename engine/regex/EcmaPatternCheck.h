#pragma once

#include "engine/regex/EcmaPatternTree.h"

namespace morlevant {

// Throws PatternError (unsupported) for the constructs that PCRE2 10.42 cannot match the way
// JavaScript does: a lookbehind of varying length (a back-reference has none fixed) or holding
// a repeated capturing group, a repetition of a group that can match the empty text where
// JavaScript's rejection of empty iterations would show, a back-reference inside a repetition to a
// group that the same iteration has not closed yet, and repeat counts above 65535.
// EcmaRegex gives these patterns to BacktrackMatcher.
void checkPcreMatchesLikeJavaScript(const ParsedPattern& pattern);

} // namespace morlevant
