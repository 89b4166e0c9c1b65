#include "engine/regex/EcmaPatternCheck.h"

#include <algorithm>
#include <cstdint>
#include <optional>

namespace morlevant {

namespace {

using Node = PatternNode;
using Kind = PatternNode::Kind;

constexpr int unbounded = PatternNode::unbounded;
constexpr int largestPcreCount = 65535;

// Whether every way of matching the empty text is tried after every way of matching more.
// Then PCRE2, which accepts an empty iteration and stops repeating, ends where JavaScript,
// which rejects it, ends too.
bool triesEmptyLast(const Node& n) {
    if (!canMatchEmpty(n))
        return true;
    switch (n.kind) {
    case Kind::Sequence:
        return std::all_of(n.children.begin(), n.children.end(), triesEmptyLast);
    case Kind::Alternation: {
        bool emptySeen = false;
        for (const Node& alternative : n.children) {
            if (emptySeen && !onlyMatchesEmpty(alternative))
                return false;
            if (!triesEmptyLast(alternative))
                return false;
            emptySeen = emptySeen || canMatchEmpty(alternative);
        }
        return true;
    }
    case Kind::Group:
        return triesEmptyLast(n.children.front());
    case Kind::Repeat:
        if (!n.greedy && n.min == 0 && n.max != 0 && !onlyMatchesEmpty(n.children.front()))
            return false;
        return triesEmptyLast(n.children.front());
    default:
        return true;
    }
}

bool holdsLookaround(const Node& n) {
    return n.kind == Kind::Look ||
           std::any_of(n.children.begin(), n.children.end(), holdsLookaround);
}

// A length no lookbehind can have (PCRE2 takes at most 65535 characters) counts as no fixed
// length; it also keeps the sums below from overflowing.
std::optional<int> within(std::int64_t length) {
    if (length > 65535)
        return std::nullopt;
    return static_cast<int>(length);
}

std::optional<int> fixedLength(const Node& n) {
    switch (n.kind) {
    case Kind::Character:
    case Kind::Set:
        return 1;
    case Kind::Anchor:
    case Kind::Look:
        return 0;
    case Kind::BackReference:
        return std::nullopt;
    case Kind::Group:
        return fixedLength(n.children.front());
    case Kind::Repeat: {
        const std::optional<int> one = fixedLength(n.children.front());
        if (!one || n.min != n.max)
            return std::nullopt;
        return within(std::int64_t{*one} * n.min);
    }
    case Kind::Sequence: {
        std::int64_t total = 0;
        for (const Node& child : n.children) {
            const std::optional<int> length = fixedLength(child);
            if (!length || !within(total += *length))
                return std::nullopt;
        }
        return static_cast<int>(total);
    }
    case Kind::Alternation: {
        std::optional<int> common;
        for (const Node& child : n.children) {
            const std::optional<int> length = fixedLength(child);
            if (!length || (common && *common != *length))
                return std::nullopt;
            common = length;
        }
        return common;
    }
    }
    return std::nullopt;
}

class Checker {
public:
    explicit Checker(const ParsedPattern& pattern) : pattern_(pattern) {}

    void check(const Node& n) {
        switch (n.kind) {
        case Kind::Repeat:
            checkRepeat(n);
            return;
        case Kind::BackReference:
            checkBackReference(n);
            return;
        case Kind::Look:
            checkLook(n);
            return;
        default:
            for (const Node& child : n.children)
                check(child);
        }
    }

private:
    [[noreturn]] static void unsupported(const Node& n, const std::string& what) {
        throw PatternError{n.position, what, true};
    }

    void checkRepeat(const Node& n) {
        const Node& atom = n.children.front();
        if (n.min > largestPcreCount || n.max > largestPcreCount)
            unsupported(n, "a repeat count above 65535");
        const GroupSpan groups = groupsOf(atom);
        if (behind_ && groups.count > 0)
            unsupported(atom, "a capturing group repeated inside a lookbehind (JavaScript "
                              "matches a lookbehind from right to left)");
        const bool optionalIterations = n.max == unbounded || n.max > n.min;
        if (optionalIterations && !onlyMatchesEmpty(atom) && canMatchEmpty(atom)) {
            // JavaScript rejects an optional iteration that matches the empty text and looks
            // for a longer one; PCRE2 accepts it and stops repeating.
            if (!triesEmptyLast(atom))
                unsupported(atom, "a repeated group that can match the empty text before "
                                  "trying longer texts");
            if (groups.count > 0 && (repeatsMoreThanOnce(n) || holdsLookaround(atom)))
                unsupported(atom, "a repeated group that can match the empty text and holds a "
                                  "capturing group");
        }
        if (repeatsMoreThanOnce(n) && groups.count > 0) {
            loops_.push_back(groups);
            check(atom);
            loops_.pop_back();
        } else {
            check(atom);
        }
    }

    void checkBackReference(const Node& n) {
        // Inside a repetition JavaScript starts the group afresh at each iteration: a
        // reference that comes before the group closes sees it unset, PCRE2 sees the value of
        // the iteration before.
        for (const GroupSpan& loop : loops_)
            if (loop.holds(n.group) && pattern_.groupEnds[n.group - 1] > n.position)
                unsupported(n, "a back-reference inside a repeated group to a group of it that "
                               "is not closed before the reference");
    }

    void checkLook(const Node& n) {
        const Node& body = n.children.front();
        if (n.behind) {
            const bool fixed =
                body.kind == Kind::Alternation
                    ? std::all_of(body.children.begin(), body.children.end(),
                                  [](const Node& a) { return fixedLength(a).has_value(); })
                    : fixedLength(body).has_value();
            if (!fixed)
                unsupported(n, "a lookbehind whose text has no fixed length");
        }
        const bool saved = behind_;
        behind_ = n.behind;
        check(body);
        behind_ = saved;
    }

    const ParsedPattern& pattern_;
    std::vector<GroupSpan> loops_; // groups of the repetitions around the node
    bool behind_ = false;
};

} // namespace

void checkPcreMatchesLikeJavaScript(const ParsedPattern& pattern) {
    Checker(pattern).check(pattern.root);
}

} // namespace morlevant
