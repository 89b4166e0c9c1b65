#pragma once

#include "engine/regex/EcmaPatternTree.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

namespace morlevant {

// A pattern that is one set of ASCII characters repeated greedily once or more ([0-9]+, \w+,
// a+), matched without a regular-expression engine: its match from a position is the first run
// of bytes of the set there, whole. Bytes of a character beyond ASCII are never in the set, so
// a run never starts or ends inside such a character, and a text that is not valid UTF-8 reads
// the same. A run of digits is the usual filter; the engine's cost per match dwarfs the scan.
class ByteRunMatcher {
public:
    // The matcher for the pattern when it has that form, or nothing.
    static std::optional<ByteRunMatcher> of(const PatternNode& root);

    // The first run in `subject` at or after `start`: its start and end in `match`.
    bool find(std::string_view subject, std::size_t start, std::size_t (&match)[2]) const;

private:
    std::array<bool, 256> inSet_{};
};

} // namespace morlevant
