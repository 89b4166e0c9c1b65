#include "engine/regex/BacktrackProgram.h"

#include "engine/text/Utf8.h"

#include <algorithm>

namespace morlevant {

namespace {

using Node = PatternNode;
using Kind = PatternNode::Kind;
using Op = BacktrackStep::Op;

std::size_t countOf(int count) {
    return count == PatternNode::unbounded ? BacktrackStep::unbounded
                                           : static_cast<std::size_t>(count);
}

// The bytes a match of the subtree can start with, and whether it can match the empty text
// (then what follows it may start the match too).
struct FirstBytes {
    std::bitset<256> bytes;
    bool canBeEmpty = false;
};

FirstBytes firstBytesOf(const Node& n) {
    FirstBytes first;
    switch (n.kind) {
    case Kind::Sequence:
        first.canBeEmpty = true;
        for (const Node& child : n.children) {
            const FirstBytes next = firstBytesOf(child);
            first.bytes |= next.bytes;
            if (!next.canBeEmpty) {
                first.canBeEmpty = false;
                break;
            }
        }
        break;
    case Kind::Alternation:
        for (const Node& child : n.children) {
            const FirstBytes next = firstBytesOf(child);
            first.bytes |= next.bytes;
            first.canBeEmpty = first.canBeEmpty || next.canBeEmpty;
        }
        break;
    case Kind::Character:
        if (n.character < 0xD800 || n.character > 0xDFFF)
            first.bytes.set(static_cast<unsigned char>(utf8Of(n.character).front()));
        break;
    case Kind::Set:
        for (char32_t c = 0; c < 128; ++c)
            first.bytes[c] = n.set.matches(c);
        // Beyond ASCII: any lead byte, or any byte of a line read byte by byte.
        if (n.set.negated || (!n.set.ranges.empty() && n.set.ranges.back().last >= 0x80))
            for (int byte = 0x80; byte < 0x100; ++byte)
                first.bytes.set(byte);
        break;
    case Kind::BackReference: // the group's text, or nothing
        first.bytes.set();
        first.canBeEmpty = true;
        break;
    case Kind::Anchor:
    case Kind::Look:
        first.canBeEmpty = true;
        break;
    case Kind::Group:
        first = firstBytesOf(n.children.front());
        break;
    case Kind::Repeat:
        if (n.max == 0) {
            first.canBeEmpty = true;
            break;
        }
        first = firstBytesOf(n.children.front());
        first.canBeEmpty = first.canBeEmpty || n.min == 0;
        break;
    }
    return first;
}

class Compiler {
public:
    explicit Compiler(const ParsedPattern& pattern) {
        program_.groupCount = pattern.groupCount;
        program_.registerCount = 2 * static_cast<std::uint32_t>(pattern.groupCount + 1);
    }

    BacktrackProgram compile(const Node& root) {
        add(root, false);
        emit({.op = Op::Match});
        return std::move(program_);
    }

private:
    std::uint32_t emit(BacktrackStep step) {
        program_.steps.push_back(step);
        return static_cast<std::uint32_t>(program_.steps.size() - 1);
    }

    std::uint32_t here() const { return static_cast<std::uint32_t>(program_.steps.size()); }

    std::uint32_t registers(std::uint32_t count) {
        program_.registerCount += count;
        return program_.registerCount - count;
    }

    void add(const Node& n, bool backward) {
        switch (n.kind) {
        case Kind::Sequence:
            // Backwards, the last term is matched first: it is the one next to the position.
            if (backward)
                for (auto child = n.children.rbegin(); child != n.children.rend(); ++child)
                    add(*child, backward);
            else
                for (const Node& child : n.children)
                    add(child, backward);
            break;
        case Kind::Alternation:
            addAlternation(n, backward);
            break;
        case Kind::Character:
        case Kind::Set:
            addAtom(n, backward);
            break;
        case Kind::BackReference:
            emit({.op = Op::BackReference,
                  .backward = backward,
                  .index = static_cast<std::uint32_t>(n.group)});
            break;
        case Kind::Anchor:
            emit({.op = n.anchor == Node::Anchor::Start ? Op::Start
                        : n.anchor == Node::Anchor::End ? Op::End
                                                        : Op::WordBoundary,
                  .negative = n.anchor == Node::Anchor::NotWordBoundary});
            break;
        case Kind::Group:
            addGroup(n, backward);
            break;
        case Kind::Look:
            addLook(n);
            break;
        case Kind::Repeat:
            addRepeat(n, backward);
            break;
        }
    }

    void addAtom(const Node& n, bool backward) {
        BacktrackStep step{.op = n.kind == Kind::Set ? Op::Set : Op::Character,
                           .backward = backward};
        if (n.kind == Kind::Set) {
            SetTable table{{}, n.set};
            for (char32_t c = 0; c < 128; ++c)
                table.ascii[c] = n.set.matches(c);
            // No character beyond ASCII, read as UTF-8 or byte by byte, where a byte from 0x80
            // on is taken only by a negated set.
            table.asciiOnly =
                !n.set.negated && (n.set.ranges.empty() || n.set.ranges.back().last < 0x80);
            table.bytes = asciiSetTable(table.ascii);
            step.index = static_cast<std::uint32_t>(program_.sets.size());
            program_.sets.push_back(std::move(table));
        } else if (n.character < 0xD800 || n.character > 0xDFFF) {
            // Half of a UTF-16 pair is no character of a UTF-8 line: it keeps no bytes and
            // never matches.
            const std::string bytes = utf8Of(n.character);
            step.length = static_cast<std::uint8_t>(bytes.size());
            std::copy(bytes.begin(), bytes.end(), step.bytes);
        }
        emit(step);
    }

    void addAlternation(const Node& n, bool backward) {
        std::vector<std::uint32_t> toEnd;
        for (std::size_t i = 0; i + 1 < n.children.size(); ++i) {
            const std::uint32_t split = emit({.op = Op::Split});
            add(n.children[i], backward);
            toEnd.push_back(emit({.op = Op::Jump}));
            program_.steps[split].target = here();
        }
        add(n.children.back(), backward);
        for (const std::uint32_t jump : toEnd)
            program_.steps[jump].target = here();
    }

    void addGroup(const Node& n, bool backward) {
        if (n.group == 0) {
            add(n.children.front(), backward);
            return;
        }
        const std::uint32_t open = registers(1);
        emit({.op = Op::GroupOpen, .reg = open});
        add(n.children.front(), backward);
        emit({.op = Op::GroupClose,
              .backward = backward,
              .index = static_cast<std::uint32_t>(n.group),
              .reg = open});
    }

    void addLook(const Node& n) {
        const std::uint32_t marker = registers(1);
        const std::uint32_t start =
            emit({.op = Op::LookStart, .negative = n.negative, .reg = marker});
        add(n.children.front(), n.behind);
        emit({.op = Op::LookEnd, .negative = n.negative, .reg = marker});
        program_.steps[start].target = here();
    }

    void addRepeat(const Node& n, bool backward) {
        if (n.max == 0)
            return; // never entered: its groups stay unset
        const Node& atom = n.children.front();
        const BacktrackStep counts{.backward = backward,
                                   .greedy = n.greedy,
                                   .reg = registers(2),
                                   .min = countOf(n.min),
                                   .max = countOf(n.max)};
        if (atom.kind == Kind::Character || atom.kind == Kind::Set) {
            // One character a time: no groups to clear, no empty iteration, and one entry on
            // the backtracking stack for the whole run of characters.
            BacktrackStep simple = counts;
            simple.op = Op::SimpleRepeat;
            emit(simple);
            addAtom(atom, backward);
            return;
        }
        BacktrackStep step = counts;
        step.op = Op::RepeatInit;
        emit(step);
        step.op = Op::RepeatHead;
        const std::uint32_t head = emit(step);
        step.op = Op::RepeatIterate;
        step.groups = groupsOf(atom);
        emit(step);
        add(atom, backward);
        step.op = Op::RepeatEnd;
        step.target = head;
        emit(step);
        program_.steps[head].target = here();
    }

    BacktrackProgram program_;
};

// The ASCII characters a Character or Set step takes, and whether it takes no others.
struct AsciiTaken {
    std::bitset<128> ascii;
    bool only = false;
};

AsciiTaken asciiTaken(const BacktrackStep& step, const std::vector<SetTable>& sets) {
    AsciiTaken taken;
    if (step.op == Op::Set) {
        const SetTable& table = sets[step.index];
        taken.ascii = table.ascii;
        taken.only = table.asciiOnly;
    } else if (step.length == 1 && static_cast<unsigned char>(step.bytes[0]) < 0x80) {
        taken.ascii.set(static_cast<unsigned char>(step.bytes[0]));
        taken.only = true;
    }
    return taken;
}

// Marks the greedy simple repeats whose atom and the step after it take no character in
// common, where one of them takes ASCII characters only (which settles it from the ASCII
// tables): \d+\. or, in a lookbehind read backwards, \.\d*. A run of such an atom given back
// a character at a time only meets that character again where the next step fails.
void markPossessiveRepeats(BacktrackProgram& program) {
    std::vector<BacktrackStep>& steps = program.steps;
    const auto atom = [](const BacktrackStep& step) {
        return step.op == Op::Character || step.op == Op::Set;
    };
    for (std::size_t pc = 0; pc + 2 < steps.size(); ++pc) {
        BacktrackStep& repeat = steps[pc];
        const BacktrackStep& next = steps[pc + 2];
        if (repeat.op != Op::SimpleRepeat || !repeat.greedy || !atom(next) ||
            next.backward != repeat.backward)
            continue;
        const AsciiTaken run = asciiTaken(steps[pc + 1], program.sets);
        const AsciiTaken after = asciiTaken(next, program.sets);
        repeat.possessive = (run.only || after.only) && (run.ascii & after.ascii).none();
    }
}

// Marks the lookarounds whose bodies are characters, classes and simple repeats that are never
// given back: those of a fixed count, those marked possessive, and a greedy one that ends the
// body, as a lookaround matches once and is never gone back into.
void markStraightLookarounds(BacktrackProgram& program) {
    std::vector<BacktrackStep>& steps = program.steps;
    for (BacktrackStep& look : steps) {
        if (look.op != Op::LookStart)
            continue;
        const std::size_t bodyEnd = look.target - 1; // its LookEnd
        bool straight = true;
        for (std::size_t pc = static_cast<std::size_t>(&look - steps.data()) + 1;
             straight && pc < bodyEnd; ++pc) {
            const BacktrackStep& step = steps[pc];
            if (step.op == Op::SimpleRepeat) {
                straight =
                    step.min == step.max || step.possessive || (step.greedy && pc + 2 == bodyEnd);
                ++pc; // its atom
            } else {
                straight = step.op == Op::Character || step.op == Op::Set;
            }
        }
        look.straight = straight;
    }
}

} // namespace

BacktrackProgram compileBacktrackProgram(const ParsedPattern& pattern) {
    BacktrackProgram program = Compiler(pattern).compile(pattern.root);
    markPossessiveRepeats(program);
    markStraightLookarounds(program);
    const FirstBytes first = firstBytesOf(pattern.root);
    program.startsWithKnownByte = !first.canBeEmpty;
    program.firstBytes = first.bytes;
    return program;
}

} // namespace morlevant
