#include "engine/regex/EcmaPatternTree.h"

#include <algorithm>

namespace morlevant {

namespace {

using Kind = PatternNode::Kind;

constexpr char32_t lastCodePoint = 0x10FFFF;

CharacterSet setOf(std::initializer_list<CodeRange> ranges) {
    CharacterSet set;
    for (const CodeRange& range : ranges)
        set.add(range.first, range.last);
    return set;
}

void collectGroups(const PatternNode& n, GroupSpan& span) {
    if (n.kind == Kind::Group && n.group > 0) {
        if (span.count == 0)
            span.first = n.group;
        ++span.count;
    }
    for (const PatternNode& child : n.children)
        collectGroups(child, span);
}

bool anyChild(const PatternNode& n, bool (*test)(const PatternNode&)) {
    return std::any_of(n.children.begin(), n.children.end(), test);
}

bool allChildren(const PatternNode& n, bool (*test)(const PatternNode&)) {
    return std::all_of(n.children.begin(), n.children.end(), test);
}

} // namespace

void CharacterSet::add(char32_t first, char32_t last) {
    // Merge into the sorted list: every range that overlaps or touches the new one joins it.
    auto at = std::lower_bound(ranges.begin(), ranges.end(), first,
                               [](const CodeRange& r, char32_t c) { return r.last + 1 < c; });
    auto end = at;
    while (end != ranges.end() && end->first <= last + 1) {
        first = std::min(first, end->first);
        last = std::max(last, end->last);
        ++end;
    }
    at = ranges.erase(at, end);
    ranges.insert(at, {first, last});
}

void CharacterSet::add(const CharacterSet& other) {
    if (!other.negated) {
        for (const CodeRange& range : other.ranges)
            add(range.first, range.last);
        return;
    }
    char32_t next = 0;
    for (const CodeRange& range : other.ranges) {
        if (range.first > next)
            add(next, range.first - 1);
        next = range.last + 1;
    }
    if (next <= lastCodePoint)
        add(next, lastCodePoint);
}

bool CharacterSet::matches(char32_t c) const {
    const auto at = std::lower_bound(ranges.begin(), ranges.end(), c,
                                     [](const CodeRange& r, char32_t c) { return r.last < c; });
    const bool listed = at != ranges.end() && at->first <= c;
    return listed != negated;
}

CharacterSet digitSet() {
    return setOf({{'0', '9'}});
}

CharacterSet wordSet() {
    return setOf({{'0', '9'}, {'A', 'Z'}, {'_', '_'}, {'a', 'z'}});
}

CharacterSet whiteSpaceSet() {
    // JavaScript's white space and line terminators: a fixed list, not the locale's blanks.
    return setOf({{0x09, 0x0D},
                  {0x20, 0x20},
                  {0xA0, 0xA0},
                  {0x1680, 0x1680},
                  {0x2000, 0x200A},
                  {0x2028, 0x2029},
                  {0x202F, 0x202F},
                  {0x205F, 0x205F},
                  {0x3000, 0x3000},
                  {0xFEFF, 0xFEFF}});
}

CharacterSet dotSet() {
    CharacterSet set = setOf({{0x0A, 0x0A}, {0x0D, 0x0D}, {0x2028, 0x2029}});
    set.negated = true;
    return set;
}

GroupSpan groupsOf(const PatternNode& n) {
    GroupSpan span;
    collectGroups(n, span);
    return span;
}

bool canMatchEmpty(const PatternNode& n) {
    switch (n.kind) {
    case Kind::Sequence:
        return allChildren(n, canMatchEmpty);
    case Kind::Alternation:
        return anyChild(n, canMatchEmpty);
    case Kind::Character:
    case Kind::Set:
        return false;
    case Kind::Repeat:
        return n.min == 0 || canMatchEmpty(n.children.front());
    case Kind::Group:
        return canMatchEmpty(n.children.front());
    default: // back-references, anchors, lookarounds
        return true;
    }
}

bool onlyMatchesEmpty(const PatternNode& n) {
    switch (n.kind) {
    case Kind::Sequence:
    case Kind::Alternation:
        return allChildren(n, onlyMatchesEmpty);
    case Kind::Anchor:
    case Kind::Look:
        return true;
    case Kind::Group:
        return onlyMatchesEmpty(n.children.front());
    case Kind::Repeat:
        return n.max == 0 || onlyMatchesEmpty(n.children.front());
    default:
        return false;
    }
}

bool staysWithinLine(const PatternNode& n) {
    const auto isLineEnd = [](char32_t c) { return c == '\r' || c == '\n'; };
    switch (n.kind) {
    case Kind::Character:
        return !isLineEnd(n.character);
    case Kind::Set:
        return !n.set.matches('\r') && !n.set.matches('\n');
    case Kind::Anchor:
        return n.anchor == PatternNode::Anchor::WordBoundary ||
               n.anchor == PatternNode::Anchor::NotWordBoundary;
    default:
        return allChildren(n, staysWithinLine);
    }
}

bool matchesOnlyAscii(const PatternNode& n) {
    switch (n.kind) {
    case Kind::Character:
        return n.character < 0x80;
    case Kind::Set:
        return !n.set.negated && (n.set.ranges.empty() || n.set.ranges.back().last < 0x80);
    default:
        return allChildren(n, matchesOnlyAscii);
    }
}

bool repeatsMoreThanOnce(const PatternNode& repeat) {
    return repeat.max == PatternNode::unbounded || repeat.max > 1;
}

} // namespace morlevant
