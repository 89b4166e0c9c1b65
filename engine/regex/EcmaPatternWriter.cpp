#include "engine/regex/EcmaPatternWriter.h"

#include "engine/text/Utf8.h"

#include <algorithm>
#include <cstdio>

namespace morlevant {

namespace {

using Node = PatternNode;
using Kind = PatternNode::Kind;

constexpr int unbounded = PatternNode::unbounded;

bool isSurrogate(char32_t c) {
    return c >= 0xD800 && c <= 0xDFFF;
}

class Writer {
public:
    explicit Writer(bool utf) : utf_(utf) {}

    void write(const Node& n, bool setAll) {
        switch (n.kind) {
        case Kind::Sequence:
            for (const Node& child : n.children)
                write(child, setAll);
            break;
        case Kind::Alternation:
            writeAlternation(n, setAll);
            break;
        case Kind::Character:
            writeCharacter(n.character);
            break;
        case Kind::Set:
            writeSet(n.set);
            break;
        case Kind::BackReference:
            out_ += "\\g{" + std::to_string(n.group) + "}";
            break;
        case Kind::Anchor:
            out_ += n.anchor == Node::Anchor::Start          ? "\\A"
                    : n.anchor == Node::Anchor::End          ? "\\z"
                    : n.anchor == Node::Anchor::WordBoundary ? "\\b"
                                                             : "\\B";
            break;
        case Kind::Group:
            out_ += n.group > 0 ? "(" : "(?:";
            write(n.children.front(), setAll);
            out_ += ')';
            break;
        case Kind::Look: {
            const std::string open =
                n.behind ? (n.negative ? "(?<!" : "(?<=") : (n.negative ? "(?!" : "(?=");
            const Node& body = n.children.front();
            const bool outerBehind = behind_;
            behind_ = n.behind;
            // A negative lookaround never sets its groups, so they need no empty value. A
            // lookbehind whose alternatives are padded becomes one lookbehind per alternative:
            // PCRE2 needs its alternatives at the top to have a fixed length each.
            if (n.behind && !n.negative && setAll && body.kind == Kind::Alternation &&
                groupsOf(body).count > 0) {
                writeAlternation(body, true, open);
            } else {
                out_ += open;
                write(body, setAll && !n.negative);
                out_ += ')';
            }
            behind_ = outerBehind;
            break;
        }
        case Kind::Repeat:
            writeRepeat(n, setAll);
            break;
        }
    }

    std::string take() { return std::move(out_); }

private:
    void writeEmptyGroups(int count) {
        for (int i = 0; i < count; ++i)
            out_ += "()";
    }

    // With `setAll`, a branch-reset group whose branches set every group of the others to the
    // empty text; each branch inside `wrap` ... ")" when given.
    void writeAlternation(const Node& n, bool setAll, const std::string& wrap = {}) {
        const GroupSpan all = groupsOf(n);
        const bool reset = setAll && all.count > 0;
        if (reset)
            out_ += "(?|";
        int next = all.first; // first group number of the alternative being written
        for (std::size_t i = 0; i < n.children.size(); ++i) {
            if (i > 0)
                out_ += '|';
            out_ += wrap;
            const int own = groupsOf(n.children[i]).count;
            if (reset)
                writeEmptyGroups(next - all.first);
            write(n.children[i], setAll);
            if (reset)
                writeEmptyGroups(all.first + all.count - next - own);
            if (!wrap.empty())
                out_ += ')';
            next += own;
        }
        if (reset)
            out_ += ')';
    }

    void writeRepeat(const Node& n, bool setAll) {
        const Node& atom = n.children.front();
        if (n.max == 0 || (n.min == 0 && onlyMatchesEmpty(atom))) {
            // The atom never takes part and its groups stay unset: JavaScript rejects every
            // optional iteration that matches the empty text. Outside lookbehinds (which need
            // {0} to keep a fixed length) it sits behind a branch that always fails rather than
            // under {0}, with which PCRE2 10.42 misses matches when the atom holds a lookahead.
            out_ += behind_ ? "(?:" : "(?:(?!)";
            write(atom, setAll);
            out_ += behind_ ? "){0}" : "|)";
            return;
        }
        if (onlyMatchesEmpty(atom)) {
            // Only the required iterations count, and they all match the same empty text.
            write(atom, setAll);
            return;
        }
        const GroupSpan groups = groupsOf(atom);
        const bool atomSetsAll = setAll || repeatsMoreThanOnce(n);
        if (setAll && n.min == 0 && n.max != 0 && groups.count > 0) {
            // Skipped, the groups still need their empty value: a branch that sets them.
            out_ += "(?|";
            if (!n.greedy) {
                writeEmptyGroups(groups.count);
                out_ += '|';
            }
            writeQuantified(atom, 1, n.max, n.greedy, atomSetsAll);
            if (n.greedy) {
                out_ += '|';
                writeEmptyGroups(groups.count);
            }
            out_ += ')';
            return;
        }
        writeQuantified(atom, n.min, n.max, n.greedy, atomSetsAll);
    }

    void writeQuantified(const Node& atom, int min, int max, bool greedy, bool setAll) {
        if (min == 1 && max == 1) {
            write(atom, setAll);
            return;
        }
        // A back-reference is grouped: PCRE2 10.42 fails a repeated reference to an unset group
        // instead of matching it empty.
        const bool single = atom.kind == Kind::Group || atom.kind == Kind::Set ||
                            (atom.kind == Kind::Character && writesOneCharacter(atom.character));
        if (!single)
            out_ += "(?:";
        write(atom, setAll);
        if (!single)
            out_ += ')';
        if (min == 0 && max == unbounded)
            out_ += '*';
        else if (min == 1 && max == unbounded)
            out_ += '+';
        else if (min == 0 && max == 1)
            out_ += '?';
        else if (min == max)
            out_ += '{' + std::to_string(min) + '}';
        else
            out_ += '{' + std::to_string(min) + ',' +
                    (max == unbounded ? std::string() : std::to_string(max)) + '}';
        if (!greedy)
            out_ += '?';
    }

    void writeCodeUnit(char32_t c) {
        char buffer[16];
        std::snprintf(buffer, sizeof buffer, "\\x{%x}", static_cast<unsigned>(c));
        out_ += buffer;
    }

    bool writesOneCharacter(char32_t c) const { return utf_ || c < 0x80 || isSurrogate(c); }

    void writeNever() { out_ += utf_ ? "[^\\x{0}-\\x{10ffff}]" : "[^\\x{0}-\\x{ff}]"; }

    void writeCharacter(char32_t c) {
        if ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9')) {
            out_ += static_cast<char>(c);
        } else if (isSurrogate(c)) {
            writeNever(); // half of a UTF-16 pair: no character of a UTF-8 line
        } else if (utf_ || c < 0x80) {
            writeCodeUnit(c);
        } else {
            // Beyond ASCII, in a line read byte by byte: the character's UTF-8 bytes.
            for (const char byte : utf8Of(c))
                writeCodeUnit(static_cast<unsigned char>(byte));
        }
    }

    void writeSet(const CharacterSet& set) {
        // Read byte by byte, a class matches single bytes: its members beyond ASCII, which are
        // several bytes in UTF-8, drop out.
        const char32_t top = utf_ ? 0x10FFFF : 0x7F;
        std::vector<CodeRange> ranges;
        for (const CodeRange& range : set.ranges) {
            // Surrogates are no characters of UTF-8 text, and PCRE2 refuses them in a class.
            const auto keep = [&](char32_t first, char32_t last) {
                last = std::min(last, top);
                if (first <= last)
                    ranges.push_back({first, last});
            };
            if (utf_ && range.first <= 0xDFFF && range.last >= 0xD800) {
                if (range.first < 0xD800)
                    keep(range.first, 0xD7FF);
                if (range.last > 0xDFFF)
                    keep(0xE000, range.last);
            } else {
                keep(range.first, range.last);
            }
        }
        if (ranges.empty()) {
            if (set.negated)
                out_ += utf_ ? "[\\x{0}-\\x{10ffff}]" : "[\\x{0}-\\x{ff}]";
            else
                writeNever();
            return;
        }
        out_ += set.negated ? "[^" : "[";
        for (const CodeRange& range : ranges) {
            writeCodeUnit(range.first);
            if (range.last != range.first) {
                out_ += '-';
                writeCodeUnit(range.last);
            }
        }
        out_ += ']';
    }

    bool utf_;
    bool behind_ = false; // inside a lookbehind
    std::string out_;
};

} // namespace

std::string writePcrePattern(const ParsedPattern& pattern, bool utf) {
    Writer writer(utf);
    writer.write(pattern.root, false);
    return writer.take();
}

} // namespace morlevant
