#include "engine/regex/EcmaPatternParser.h"

#include "engine/regex/GroupNameCharacters.h"
#include "engine/text/Utf8.h"

#include <limits>
#include <optional>

namespace morlevant {

namespace {

using Node = PatternNode;
using Kind = PatternNode::Kind;

constexpr int unbounded = PatternNode::unbounded;
// Repeat counts beyond this are kept at it, as JavaScript keeps them at its largest integer.
constexpr int largestCount = std::numeric_limits<int>::max();

bool isDigit(char32_t c) {
    return c >= '0' && c <= '9';
}

bool isOctal(char32_t c) {
    return c >= '0' && c <= '7';
}

bool isAsciiLetter(char32_t c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

int hexValue(char32_t c) {
    if (isDigit(c))
        return static_cast<int>(c - '0');
    if (c >= 'a' && c <= 'f')
        return static_cast<int>(c - 'a' + 10);
    if (c >= 'A' && c <= 'F')
        return static_cast<int>(c - 'A' + 10);
    return -1;
}

std::vector<char32_t> decode(std::string_view pattern) {
    std::vector<char32_t> out;
    for (std::size_t pos = 0; pos < pattern.size();) {
        const std::size_t length = utf8CharLength(pattern, pos);
        const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(pattern[i]); };
        if (length == 1 && byte(pos) >= 0x80)
            throw PatternError{out.size(), "the pattern is not valid UTF-8"};
        char32_t c = length == 1   ? byte(pos)
                     : length == 2 ? byte(pos) & 0x1F
                     : length == 3 ? byte(pos) & 0x0F
                                   : byte(pos) & 0x07;
        for (std::size_t i = 1; i < length; ++i)
            c = (c << 6) | (byte(pos + i) & 0x3F);
        out.push_back(c);
        pos += length;
    }
    return out;
}

class Parser {
public:
    explicit Parser(std::string_view pattern) : text_(decode(pattern)) { prescanGroups(); }

    ParsedPattern parse() {
        result_.root = disjunction();
        if (pos_ < text_.size()) // only a ")" stops the top level early
            fail("unmatched \")\"");
        resolveNamedReferences(result_.root);
        return std::move(result_);
    }

private:
    static constexpr int maxNesting = 250;

    [[noreturn]] void fail(const std::string& cause) const { failAt(pos_, cause); }
    [[noreturn]] static void failAt(std::size_t position, const std::string& cause) {
        throw PatternError{position, cause};
    }

    bool atEnd() const { return pos_ >= text_.size(); }
    char32_t peek(std::size_t ahead = 0) const {
        return pos_ + ahead < text_.size() ? text_[pos_ + ahead] : 0;
    }
    bool lookingAt(std::u32string_view s) const {
        return std::u32string_view(text_.data() + pos_, text_.size() - pos_).starts_with(s);
    }

    // Back-references count every capturing group of the pattern, also those after them, and
    // \k is a named reference only when some group has a name; both are known before parsing.
    void prescanGroups() {
        bool inClass = false;
        for (std::size_t i = 0; i < text_.size(); ++i) {
            const char32_t c = text_[i];
            if (c == '\\') {
                ++i;
            } else if (inClass) {
                inClass = c != ']';
            } else if (c == '[') {
                inClass = true;
            } else if (c == '(' && i + 1 < text_.size() && text_[i + 1] != '?') {
                ++groupTotal_;
            } else if (c == '(' && i + 3 < text_.size() && text_[i + 1] == '?' &&
                       text_[i + 2] == '<' && text_[i + 3] != '=' && text_[i + 3] != '!') {
                ++groupTotal_;
                hasNames_ = true;
            }
        }
    }

    static Node node(Kind kind, std::size_t position) {
        Node n;
        n.kind = kind;
        n.position = position;
        return n;
    }

    Node disjunction() {
        Node first = alternative();
        if (peek() != '|')
            return first;
        Node alternation = node(Kind::Alternation, first.position);
        alternation.children.push_back(std::move(first));
        while (!atEnd() && peek() == '|') {
            ++pos_;
            alternation.children.push_back(alternative());
        }
        return alternation;
    }

    Node alternative() {
        Node sequence = node(Kind::Sequence, pos_);
        while (!atEnd() && peek() != '|' && peek() != ')') {
            term(sequence.children);
            joinSurrogatePair(sequence.children);
        }
        return sequence;
    }

    // "\uD83D\uDE00" is one character beyond the Basic Multilingual Plane, as JavaScript finds
    // it in text; a line holds it as one UTF-8 sequence.
    static void joinSurrogatePair(std::vector<Node>& terms) {
        const std::size_t n = terms.size();
        if (n < 2 || terms[n - 1].kind != Kind::Character || terms[n - 2].kind != Kind::Character)
            return;
        const char32_t high = terms[n - 2].character;
        const char32_t low = terms[n - 1].character;
        if (high < 0xD800 || high > 0xDBFF || low < 0xDC00 || low > 0xDFFF)
            return;
        terms[n - 2].character = 0x10000 + ((high - 0xD800) << 10) + (low - 0xDC00);
        terms.pop_back();
    }

    void term(std::vector<Node>& into) {
        const std::size_t start = pos_;
        const char32_t c = peek();
        bool quantifiable = true;
        Node atom;
        if (c == '^' || c == '$') {
            ++pos_;
            atom = anchor(c == '^' ? Node::Anchor::Start : Node::Anchor::End, start);
            quantifiable = false;
        } else if (c == '\\' && (peek(1) == 'b' || peek(1) == 'B')) {
            const bool boundary = peek(1) == 'b';
            pos_ += 2;
            atom = anchor(boundary ? Node::Anchor::WordBoundary : Node::Anchor::NotWordBoundary,
                          start);
            quantifiable = false;
        } else if (c == '(') {
            atom = group(quantifiable);
        } else if (c == '.') {
            ++pos_;
            atom = setNode(dotSet(), start);
        } else if (c == '[') {
            atom = characterClass();
        } else if (c == '\\') {
            atom = atomEscape();
        } else if (c == '*' || c == '+' || c == '?' || (c == '{' && quantifierAhead())) {
            fail("nothing to repeat");
        } else {
            ++pos_;
            atom = character(c, start);
        }
        if (quantifierAhead() || peek() == '*' || peek() == '+' || peek() == '?') {
            if (!quantifiable)
                fail("nothing to repeat");
            atom = quantified(std::move(atom));
            if (peek() == '*' || peek() == '+' || peek() == '?' || quantifierAhead())
                fail("nothing to repeat");
        }
        into.push_back(std::move(atom));
    }

    static Node anchor(Node::Anchor which, std::size_t position) {
        Node n = node(Kind::Anchor, position);
        n.anchor = which;
        return n;
    }
    static Node character(char32_t c, std::size_t position) {
        Node n = node(Kind::Character, position);
        n.character = c;
        return n;
    }
    static Node setNode(CharacterSet set, std::size_t position) {
        Node n = node(Kind::Set, position);
        n.set = std::move(set);
        return n;
    }

    // A decimal number at pos_, kept at largestCount when longer.
    std::optional<int> number() {
        if (!isDigit(peek()))
            return std::nullopt;
        long long value = 0;
        while (isDigit(peek())) {
            value = std::min<long long>(value * 10 + (peek() - '0'), largestCount);
            ++pos_;
        }
        return static_cast<int>(value);
    }

    // Whether "{" at pos_ opens {n}, {n,} or {n,m}; any other "{" is a plain character.
    bool quantifierAhead() {
        if (peek() != '{')
            return false;
        const std::size_t saved = pos_;
        ++pos_;
        bool valid = number().has_value();
        if (valid && peek() == ',') {
            ++pos_;
            number();
        }
        valid = valid && peek() == '}';
        pos_ = saved;
        return valid;
    }

    Node quantified(Node atom) {
        Node repeat = node(Kind::Repeat, pos_);
        const char32_t c = peek();
        ++pos_;
        if (c == '*' || c == '+' || c == '?') {
            repeat.min = c == '+' ? 1 : 0;
            repeat.max = c == '?' ? 1 : unbounded;
        } else {
            repeat.min = *number();
            repeat.max = repeat.min;
            if (peek() == ',') {
                ++pos_;
                const std::optional<int> max = number();
                repeat.max = max ? *max : unbounded;
            }
            ++pos_; // "}"
            if (repeat.max != unbounded && repeat.max < repeat.min)
                failAt(repeat.position, "numbers out of order in {} quantifier");
        }
        if (peek() == '?') {
            ++pos_;
            repeat.greedy = false;
        }
        repeat.children.push_back(std::move(atom));
        return repeat;
    }

    Node group(bool& quantifiable) {
        const std::size_t start = pos_;
        Node n = node(Kind::Group, start);
        if (lookingAt(U"(?=") || lookingAt(U"(?!") || lookingAt(U"(?<=") || lookingAt(U"(?<!")) {
            n.kind = Kind::Look;
            n.behind = peek(2) == '<';
            n.negative = peek(n.behind ? 3 : 2) == '!';
            // Lookaheads may carry a quantifier, for compatibility; lookbehinds may not.
            quantifiable = !n.behind;
            pos_ += n.behind ? 4 : 3;
        } else if (lookingAt(U"(?:")) {
            pos_ += 3;
        } else if (lookingAt(U"(?<")) {
            pos_ += 3;
            n.group = newGroup(groupName());
        } else if (lookingAt(U"(?")) {
            fail("invalid group");
        } else {
            ++pos_;
            n.group = newGroup({});
        }
        // PCRE2 takes no deeper nesting, and reading it must not exhaust the stack.
        if (++depth_ > maxNesting)
            throw PatternError{
                pos_, "groups nested more than " + std::to_string(maxNesting) + " deep", true};
        n.children.push_back(disjunction());
        --depth_;
        if (peek() != ')')
            fail("missing closing parenthesis");
        if (n.group > 0)
            result_.groupEnds[n.group - 1] = pos_;
        ++pos_;
        return n;
    }

    int newGroup(std::string name) {
        if (!name.empty())
            for (const std::string& other : result_.groupNames)
                if (other == name)
                    fail("duplicate capture group name");
        result_.groupNames.push_back(std::move(name));
        result_.groupEnds.push_back(0);
        return ++result_.groupCount;
    }

    // A group name up to its ">", with \uXXXX and \u{...} escapes, as JavaScript reads it.
    std::string groupName() {
        const std::size_t start = pos_;
        std::string name;
        while (true) {
            if (atEnd())
                failAt(start, "invalid capture group name");
            char32_t c = peek();
            if (c == '>')
                break;
            ++pos_;
            if (c == '\\') {
                c = nameEscape();
                if (c >= 0xD800 && c <= 0xDBFF && lookingAt(U"\\u")) {
                    const std::size_t saved = pos_;
                    ++pos_;
                    const char32_t low = nameEscape();
                    if (low >= 0xDC00 && low <= 0xDFFF)
                        c = 0x10000 + ((c - 0xD800) << 10) + (low - 0xDC00);
                    else
                        pos_ = saved;
                }
            }
            if (!isNameCharacter(c, name.empty()))
                failAt(start, "invalid capture group name");
            name += utf8Of(c);
        }
        if (name.empty())
            failAt(start, "invalid capture group name");
        ++pos_;
        return name;
    }

    // After "\" in a group name: uXXXX or u{...}.
    char32_t nameEscape() {
        if (peek() != 'u')
            fail("invalid capture group name");
        ++pos_;
        char32_t value = 0;
        if (peek() == '{') {
            ++pos_;
            int digits = 0;
            while (hexValue(peek()) >= 0 && value <= 0x10FFFF) {
                value = value * 16 + hexValue(peek());
                ++pos_;
                ++digits;
            }
            if (digits == 0 || peek() != '}' || value > 0x10FFFF)
                fail("invalid capture group name");
            ++pos_;
            return value;
        }
        for (int i = 0; i < 4; ++i, ++pos_) {
            if (hexValue(peek()) < 0)
                fail("invalid capture group name");
            value = value * 16 + hexValue(peek());
        }
        return value;
    }

    // After "\" outside a class; pos_ is at the backslash.
    Node atomEscape() {
        const std::size_t start = pos_;
        ++pos_;
        if (atEnd())
            fail("\\ at end of pattern");
        const char32_t c = peek();
        if (std::optional<CharacterSet> set = classEscape()) {
            return setNode(std::move(*set), start);
        }
        if (c == 'k' && hasNames_) {
            ++pos_;
            if (peek() != '<')
                fail("invalid named reference");
            ++pos_;
            Node reference = node(Kind::BackReference, start);
            pendingNames_.push_back(groupName());
            reference.group = -static_cast<int>(pendingNames_.size());
            return reference;
        }
        if (c >= '1' && c <= '9') {
            const std::size_t digits = pos_;
            const int n = *number();
            if (n <= groupTotal_) {
                Node reference = node(Kind::BackReference, start);
                reference.group = n;
                return reference;
            }
            pos_ = digits; // no such group: an octal escape, or \8 and \9 as themselves
        }
        return character(characterEscape(), start);
    }

    // \d \D \s \S \w \W at pos_ (after the backslash), consumed when found.
    std::optional<CharacterSet> classEscape() {
        const char32_t c = peek();
        CharacterSet set;
        if (c == 'd' || c == 'D')
            set = digitSet();
        else if (c == 's' || c == 'S')
            set = whiteSpaceSet();
        else if (c == 'w' || c == 'W')
            set = wordSet();
        else
            return std::nullopt;
        set.negated = c == 'D' || c == 'S' || c == 'W';
        ++pos_;
        return set;
    }

    // The character an escape stands for, pos_ after the backslash. A "\c" without a control
    // letter is a backslash, the "c" read next as itself.
    char32_t characterEscape(bool inClass = false) {
        const char32_t c = peek();
        switch (c) {
        case 't':
            return ++pos_, 0x09;
        case 'n':
            return ++pos_, 0x0A;
        case 'v':
            return ++pos_, 0x0B;
        case 'f':
            return ++pos_, 0x0C;
        case 'r':
            return ++pos_, 0x0D;
        case 'c': {
            const char32_t letter = peek(1);
            if (isAsciiLetter(letter) || (inClass && (isDigit(letter) || letter == '_'))) {
                pos_ += 2;
                return letter % 32;
            }
            return '\\';
        }
        case 'x':
        case 'u': {
            const int length = c == 'x' ? 2 : 4;
            char32_t value = 0;
            for (int i = 1; i <= length; ++i) {
                const int digit = hexValue(peek(i));
                if (digit < 0)
                    return ++pos_, c; // not followed by hex digits: the letter itself
                value = value * 16 + digit;
            }
            pos_ += 1 + length;
            return value;
        }
        default:
            break;
        }
        if (isOctal(c)) {
            // Up to three octal digits, at most \377; "\0" alone is the NUL character.
            char32_t value = 0;
            const int most = c <= '3' ? 3 : 2;
            for (int i = 0; i < most && isOctal(peek()); ++i, ++pos_)
                value = value * 8 + (peek() - '0');
            return value;
        }
        if (c == 'k' && hasNames_)
            fail("invalid escape");
        return ++pos_, c;
    }

    Node characterClass() {
        const std::size_t start = pos_;
        ++pos_;
        CharacterSet set;
        if (peek() == '^') {
            set.negated = true;
            ++pos_;
        }
        while (true) {
            if (atEnd())
                failAt(start, "missing terminating ] for character class");
            if (peek() == ']')
                break;
            const std::size_t from = pos_;
            ClassAtom low = classAtom();
            if (peek() == '-' && peek(1) != ']' && peek(1) != 0) {
                ++pos_;
                const ClassAtom high = classAtom();
                if (low.set || high.set) {
                    // A class escape cannot bound a range: the "-" is a character of its own.
                    addAtom(set, low);
                    set.add('-', '-');
                    addAtom(set, high);
                } else if (low.character > high.character) {
                    failAt(from, "range out of order in character class");
                } else {
                    set.add(low.character, high.character);
                }
            } else {
                addAtom(set, low);
            }
        }
        ++pos_;
        return setNode(std::move(set), start);
    }

    struct ClassAtom {
        char32_t character = 0;
        std::optional<CharacterSet> set;
    };

    static void addAtom(CharacterSet& into, const ClassAtom& atom) {
        if (atom.set)
            into.add(*atom.set);
        else
            into.add(atom.character, atom.character);
    }

    ClassAtom classAtom() {
        const char32_t c = peek();
        if (atEnd())
            fail("missing terminating ] for character class");
        ++pos_;
        if (c != '\\')
            return {c, std::nullopt};
        if (atEnd())
            fail("\\ at end of pattern");
        if (std::optional<CharacterSet> set = classEscape())
            return {0, std::move(set)};
        switch (peek()) {
        case 'b':
            return ++pos_, ClassAtom{0x08, std::nullopt};
        case '-':
            return ++pos_, ClassAtom{'-', std::nullopt};
        default:
            return {characterEscape(true), std::nullopt};
        }
    }

    void resolveNamedReferences(Node& n) {
        if (n.kind == Kind::BackReference && n.group < 0) {
            const std::string& name = pendingNames_[-n.group - 1];
            n.group = 0;
            for (std::size_t i = 0; i < result_.groupNames.size(); ++i)
                if (result_.groupNames[i] == name)
                    n.group = static_cast<int>(i) + 1;
            if (n.group == 0)
                failAt(n.position, "invalid named capture referenced");
        }
        for (Node& child : n.children)
            resolveNamedReferences(child);
    }

    std::vector<char32_t> text_;
    std::size_t pos_ = 0;
    int depth_ = 0; // groups open around the current position
    int groupTotal_ = 0;
    bool hasNames_ = false;
    std::vector<std::string> pendingNames_;
    ParsedPattern result_;
};

} // namespace

ParsedPattern parseEcmaPattern(std::string_view pattern) {
    return Parser(pattern).parse();
}

} // namespace morlevant
