#include "engine/regex/EcmaReplacement.h"

#include "engine/regex/EcmaRegex.h"

#include <algorithm>

namespace morlevant {

namespace {

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

} // namespace

EcmaReplacement::EcmaReplacement(std::string_view text, const EcmaRegex& regex) : text_(text) {
    const std::size_t n = text_.size();
    const int groups = regex.groupCount();
    std::size_t i = 0;
    while (i < n) {
        if (text_[i] != '$' || i + 1 == n) {
            addLiteral(i++, 1);
            continue;
        }
        const char c = text_[i + 1];
        if (c == '$') {
            addLiteral(i, 1);
            i += 2;
        } else if (c == '&' || c == '`' || c == '\'') {
            parts_.push_back({c == '&' ? Kind::Match : c == '`' ? Kind::Before : Kind::After});
            i += 2;
        } else if (isDigit(c)) {
            // Two digits name a group when there are that many groups; otherwise the first
            // digit alone does, and the second is literal text.
            std::size_t digits = i + 2 < n && isDigit(text_[i + 2]) ? 2 : 1;
            int index = c - '0';
            if (digits == 2 && index * 10 + (text_[i + 2] - '0') <= groups)
                index = index * 10 + (text_[i + 2] - '0');
            else
                digits = 1;
            if (index >= 1 && index <= groups)
                parts_.push_back({Kind::Group, 0, 0, index});
            else
                addLiteral(i, 1 + digits);
            i += 1 + digits;
        } else if (c == '<' && regex.hasNamedGroups() &&
                   text_.find('>', i + 2) != std::string::npos) {
            // With named groups in the expression, a name that is none of them gives the empty
            // text, as JavaScript does.
            const std::size_t close = text_.find('>', i + 2);
            const int group =
                regex.groupNumber(std::string_view(text_).substr(i + 2, close - i - 2));
            parts_.push_back({Kind::Group, 0, 0, group});
            i = close + 1;
        } else {
            addLiteral(i++, 1);
        }
    }
    for (const Part& part : parts_) {
        literalLength_ += part.length;
        references_ += part.kind == Kind::Group || part.kind == Kind::Match ? 1 : 0;
    }
    // A literal text, a reference to the match or a group that has a number, a literal text.
    std::size_t at = 0;
    const auto literalAt = [&](Part& literal) {
        if (at < parts_.size() && parts_[at].kind == Kind::Literal)
            literal = parts_[at++];
    };
    literalAt(before_);
    if (at == parts_.size() || !(parts_[at].kind == Kind::Match ||
                                 (parts_[at].kind == Kind::Group && parts_[at].group > 0)))
        return;
    const int reference = parts_[at].kind == Kind::Match ? 0 : parts_[at].group;
    ++at;
    literalAt(after_);
    if (at == parts_.size())
        aroundGroup_ = reference;
}

void EcmaReplacement::addLiteral(std::size_t offset, std::size_t length) {
    if (!parts_.empty() && parts_.back().kind == Kind::Literal &&
        parts_.back().offset + parts_.back().length == offset) {
        parts_.back().length += length;
        return;
    }
    parts_.push_back({Kind::Literal, offset, length, 0});
}

bool EcmaReplacement::readsAroundMatch() const {
    return std::any_of(parts_.begin(), parts_.end(), [](const Part& part) {
        return part.kind == Kind::Before || part.kind == Kind::After;
    });
}

void EcmaReplacement::expand(const EcmaRegex& regex, std::string_view subject,
                             std::string& out) const {
    forEachPiece(subject, regex.groups(), [&](std::string_view piece) { out.append(piece); });
}

} // namespace morlevant
