#pragma once

#include "engine/text/AppendBuffer.h"

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
    // Calls `piece(text)` for each piece of the replacement for a match in `subject` whose group
    // n lies from groups[2n] to groups[2n + 1], a start of npos for one without a value.
    template <typename Piece>
    void forEachPiece(std::string_view subject, const std::size_t* groups,
                      const Piece& piece) const;
    // Writes those pieces at `out`, which has room for lengthAtMost() of the match and 32 bytes
    // more, for a replacement that does not read around the match; returns the end written.
    char* write(std::string_view subject, const std::size_t* groups, char* out) const;
    // Whether it holds $` or $': text of the subject outside the match.
    bool readsAroundMatch() const;
    // At most how long the replacement for a match of `matchLength` bytes is, when it does not
    // read around the match and the expression's groups lie within its match.
    std::size_t lengthAtMost(std::size_t matchLength) const {
        return literalLength_ + references_ * matchLength;
    }

private:
    enum class Kind { Literal, Group, Match, Before, After };
    struct Part {
        Kind kind = Kind::Literal;
        std::size_t offset = 0; // Literal: bytes of text_
        std::size_t length = 0;
        int group = 0; // Group: 0 stands for a named group that did not take part
    };

    void addLiteral(std::size_t offset, std::size_t length);
    std::string_view literal(const Part& part) const {
        return {text_.data() + part.offset, part.length};
    }

    std::string text_;
    std::vector<Part> parts_;
    std::size_t literalLength_ = 0; // of the literal parts together
    std::size_t references_ = 0;    // parts that stand for the match or a group
    // The usual form, one group or the match between two literal texts (either may be empty):
    // written without a walk over the parts. -1 for other forms, else the group (0: the match).
    int aroundGroup_ = -1;
    Part before_;
    Part after_;
};

template <typename Piece>
void EcmaReplacement::forEachPiece(std::string_view subject, const std::size_t* groups,
                                   const Piece& piece) const {
    const auto group = [&](int n) {
        const std::size_t begin = groups[2 * n];
        return begin == std::string_view::npos ? std::string_view()
                                               : subject.substr(begin, groups[2 * n + 1] - begin);
    };
    for (const Part& part : parts_) {
        switch (part.kind) {
        case Kind::Literal:
            piece(std::string_view(text_).substr(part.offset, part.length));
            break;
        case Kind::Group:
            if (part.group > 0)
                piece(group(part.group));
            break;
        case Kind::Match:
            piece(group(0));
            break;
        case Kind::Before:
            piece(subject.substr(0, groups[0]));
            break;
        case Kind::After:
            piece(subject.substr(groups[1]));
            break;
        }
    }
}

inline char* EcmaReplacement::write(std::string_view subject, const std::size_t* groups,
                                    char* out) const {
    if (aroundGroup_ < 0) {
        forEachPiece(subject, groups, [&](std::string_view piece) { out = copyShort(piece, out); });
        return out;
    }
    out = copyShort(literal(before_), out);
    const std::size_t begin = groups[2 * aroundGroup_];
    if (begin != std::string_view::npos)
        out = copyPart({subject.data() + begin, groups[2 * aroundGroup_ + 1] - begin},
                       subject.data() + subject.size(), out);
    return copyShort(literal(after_), out);
}

} // namespace morlevant
