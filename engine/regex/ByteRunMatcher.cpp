#include "engine/regex/ByteRunMatcher.h"

namespace morlevant {

namespace {

using Kind = PatternNode::Kind;

// The node a pattern comes down to through sequences and alternations of one branch and groups
// that do not capture.
const PatternNode& unwrapped(const PatternNode& n) {
    const bool passThrough = (n.kind == Kind::Sequence || n.kind == Kind::Alternation ||
                              (n.kind == Kind::Group && n.group == 0)) &&
                             n.children.size() == 1;
    return passThrough ? unwrapped(n.children.front()) : n;
}

} // namespace

std::optional<ByteRunMatcher> ByteRunMatcher::of(const PatternNode& root) {
    const PatternNode& repeat = unwrapped(root);
    if (repeat.kind != Kind::Repeat || repeat.min != 1 || repeat.max != PatternNode::unbounded ||
        !repeat.greedy)
        return std::nullopt;
    const PatternNode& atom = unwrapped(repeat.children.front());
    ByteRunMatcher matcher;
    if (atom.kind == Kind::Character && atom.character < 0x80) {
        matcher.inSet_[atom.character] = true;
    } else if (atom.kind == Kind::Set && !atom.set.negated &&
               (atom.set.ranges.empty() || atom.set.ranges.back().last < 0x80)) {
        for (const CodeRange& range : atom.set.ranges)
            for (char32_t c = range.first; c <= range.last; ++c)
                matcher.inSet_[c] = true;
    } else {
        return std::nullopt;
    }
    return matcher;
}

bool ByteRunMatcher::find(std::string_view subject, std::size_t start,
                          std::size_t (&match)[2]) const {
    const auto* bytes = reinterpret_cast<const unsigned char*>(subject.data());
    const std::size_t size = subject.size();
    std::size_t at = start;
    while (at < size && !inSet_[bytes[at]])
        ++at;
    if (at >= size)
        return false;
    std::size_t end = at + 1;
    while (end < size && inSet_[bytes[end]])
        ++end;
    match[0] = at;
    match[1] = end;
    return true;
}

} // namespace morlevant
