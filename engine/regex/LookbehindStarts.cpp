#include "engine/regex/LookbehindStarts.h"

#include <algorithm>

namespace morlevant {

namespace {

using Kind = PatternNode::Kind;

// Whether all the subtree shows is whether it matches: no group gives a text out,
// and nothing in it looks around or refers back, so trying its alternatives in order finds
// a match wherever there is one.
bool onlyExistenceCounts(const PatternNode& n) {
    if (n.kind == Kind::BackReference || n.kind == Kind::Look ||
        (n.kind == Kind::Group && n.group > 0))
        return false;
    return std::all_of(n.children.begin(), n.children.end(), onlyExistenceCounts);
}

bool isEmptySequence(const PatternNode& n) {
    return n.kind == Kind::Sequence && n.children.empty();
}

// Shortens the repetition the matched text starts with, in every alternative. A repetition
// that may run no time at all is dropped, and so is what then starts the text.
void shortenStart(PatternNode& n) {
    switch (n.kind) {
    case Kind::Repeat:
        if (n.min == 0) {
            n = PatternNode{};
        } else if (n.min == 1) { // the repeated atom itself, as other matchers look for it
            PatternNode atom = std::move(n.children.front());
            n = std::move(atom);
        } else {
            n.max = n.min;
        }
        return;
    case Kind::Group:
    case Kind::Alternation:
        for (PatternNode& child : n.children)
            shortenStart(child);
        return;
    case Kind::Sequence:
        while (!n.children.empty()) {
            shortenStart(n.children.front());
            if (!isEmptySequence(n.children.front()))
                return;
            n.children.erase(n.children.begin());
        }
        return;
    default:
        return;
    }
}

} // namespace

void shortenLookbehindStarts(PatternNode& root) {
    if (root.kind == Kind::Look && root.behind && onlyExistenceCounts(root.children.front())) {
        shortenStart(root.children.front());
        return;
    }
    for (PatternNode& child : root.children)
        shortenLookbehindStarts(child);
}

} // namespace morlevant
