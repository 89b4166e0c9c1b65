#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace morlevant {

class EcmaRegex;

// A replace-with text read once, in ECMAScript's replacement forms, for one regular
// expression: $1..$99 (a group), $& (the match), $` and $' (the text before and after it), $$
// (a dollar sign) and $<name> (a named group). A form that names no group of the expression
// stays as literal text, as it does in JavaScript.
class EcmaReplacement final {
public:
    EcmaReplacement(std::string_view text, const EcmaRegex& regex);

    // Appends the replacement for the regex's last match in its subject.
    void expand(const EcmaRegex& regex, std::string_view subject, std::string& out) const;
    // Whether it holds $` or $': text of the subject outside the match.
    bool readsAroundMatch() const;

private:
    enum class Kind { Literal, Group, Match, Before, After };
    struct Part {
        Kind kind = Kind::Literal;
        std::size_t offset = 0; // Literal: bytes of text_
        std::size_t length = 0;
        int group = 0; // Group: 0 stands for a named group that did not take part
    };

    void addLiteral(std::size_t offset, std::size_t length);

    std::string text_;
    std::vector<Part> parts_;
};

} // namespace morlevant
