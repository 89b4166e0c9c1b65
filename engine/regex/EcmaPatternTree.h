#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace morlevant {

// Inclusive range of code points.
struct CodeRange {
    char32_t first = 0;
    char32_t last = 0;
};

// The characters one position of the text may hold: a class, ".", or a class escape.
struct CharacterSet {
    std::vector<CodeRange> ranges; // sorted, neither overlapping nor touching
    bool negated = false;

    void add(char32_t first, char32_t last);
    void add(const CharacterSet& other); // `other` as it matches, complemented when negated
    bool matches(char32_t c) const;
};

// A pattern read with JavaScript's grammar, every escape resolved to what it means there.
struct PatternNode {
    enum class Kind {
        Sequence,      // children one after the other
        Alternation,   // children tried in order
        Character,     // `character`
        Set,           // `set`
        BackReference, // `group`
        Anchor,        // `anchor`
        Group,         // capturing when `group` > 0
        Look,          // lookahead or lookbehind, `behind`, `negative`
        Repeat,        // one child, `min` to `max` times, `greedy`
    };
    enum class Anchor { Start, End, WordBoundary, NotWordBoundary };
    static constexpr int unbounded = -1; // `max` of a repeat without an upper limit

    Kind kind = Kind::Sequence;
    std::size_t position = 0; // character offset in the pattern, for messages
    char32_t character = 0;
    CharacterSet set;
    int group = 0;
    Anchor anchor = Anchor::Start;
    bool behind = false;
    bool negative = false;
    int min = 0;
    int max = 0;
    bool greedy = true;
    std::vector<PatternNode> children;
};

struct ParsedPattern {
    PatternNode root;
    int groupCount = 0;
    std::vector<std::string> groupNames; // by group number - 1, UTF-8; empty when unnamed
    std::vector<std::size_t> groupEnds;  // by group number - 1: offset of its ")"
};

// Where and why a pattern cannot be used. `unsupported` marks a pattern that JavaScript
// accepts but that PCRE2 cannot match the way JavaScript does.
struct PatternError {
    std::size_t position = 0;
    std::string cause;
    bool unsupported = false;
};

// Capturing groups of a subtree: their numbers are consecutive, as groups are numbered in
// the order of their opening parentheses.
struct GroupSpan {
    int first = 0;
    int count = 0;
    bool holds(int group) const { return group >= first && group < first + count; }
};
GroupSpan groupsOf(const PatternNode& n);

// Whether the subtree can match the empty text, and whether it can match nothing else.
bool canMatchEmpty(const PatternNode& n);
bool onlyMatchesEmpty(const PatternNode& n);
// Whether no match of the subtree can read, or look at, a CR or LF: no ^ or $, and no
// character it matches, or a lookaround looks for, is a line end. Then a search over many
// lines finds, within each line, what a search of the line alone finds. (\b and \B see a line
// end as the edge of the text: neither is a word character. A lookaround that reaches a line
// end fails there as it fails at the edge of the text, since it cannot match the end.)
bool staysWithinLine(const PatternNode& n);
// Whether every character the subtree can match, or look at, is ASCII. A match of such a pattern
// that is not empty starts and ends between characters, and is the same whether UTF-8 text is
// read character by character or byte by byte.
bool matchesOnlyAscii(const PatternNode& n);
// Whether a repeat may run its child more than once.
bool repeatsMoreThanOnce(const PatternNode& repeat);

// Characters as JavaScript's class escapes and "." see them.
CharacterSet digitSet();
CharacterSet wordSet();
CharacterSet whiteSpaceSet();
CharacterSet dotSet(); // any character but a line terminator

} // namespace morlevant
