#include "engine/regex/BacktrackMatcher.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace morlevant {

namespace {

using Op = BacktrackStep::Op;

// How a search that has spent its time or its stack is abandoned.
struct TimeUp {};
struct StackFull {};

bool isContinuationByte(unsigned char byte) {
    return (byte & 0xC0) == 0x80;
}

std::size_t sequenceLength(unsigned char lead) {
    return lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
}

// The code point of a valid UTF-8 sequence of `length` bytes.
char32_t decode(const unsigned char* bytes, std::size_t length) {
    if (length == 1)
        return bytes[0];
    char32_t c = bytes[0] & (0x7F >> length);
    for (std::size_t i = 1; i < length; ++i)
        c = (c << 6) | (bytes[i] & 0x3F);
    return c;
}

bool isWordByte(unsigned char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_';
}

#ifdef MORLEVANT_X86_STEPS
// How many bytes of an ASCII set run from `pos` on, or end at `pos` read `backward`, at most
// `most`, sixteen at a time as far as whole steps go within `text`: byte by byte, the end of
// runs of varying length would be a branch the processor mispredicts at nearly every run.
// `ended` says whether the run's end, or `most`, was met.
__attribute__((target("ssse3"))) std::size_t asciiRunBy16(std::string_view text, std::size_t pos,
                                                          std::size_t most,
                                                          const AsciiSetTable& set, bool backward,
                                                          bool& ended) {
    const __m128i byLow = loaded(set.data());
    std::size_t done = 0;
    while (done < most) {
        if (backward ? pos - done < 16 : text.size() - pos - done < 16)
            return done;
        if (backward) {
            // The run goes back from the last of the sixteen bytes to the last one outside.
            const unsigned outside = outsideSet(loaded(text.data() + pos - done - 16), byLow);
            if (outside != 0) {
                done += static_cast<std::size_t>(std::countl_zero(outside)) - 16;
                break;
            }
        } else if (const unsigned outside = outsideSet(loaded(text.data() + pos + done), byLow);
                   outside != 0) {
            done += static_cast<std::size_t>(std::countr_zero(outside));
            break;
        }
        done += 16;
    }
    ended = true;
    return std::min(done, most);
}
#endif

} // namespace

BacktrackMatcher::BacktrackMatcher(BacktrackProgram program, std::size_t stackBytes)
    : program_(std::move(program)), stackLimit_(stackBytes / sizeof(StackEntry)),
      registers_(program_.registerCount, unset) {
    if (program_.startsWithKnownByte && program_.firstBytes.count() == 1)
        for (int byte = 0; byte < 0x80; ++byte)
            if (program_.firstBytes[static_cast<std::size_t>(byte)])
                onlyFirstByte_ = byte;
}

void BacktrackMatcher::setSubject(std::string_view subject, bool utf,
                                  std::chrono::steady_clock::duration budget) {
    subject_ = subject;
    if (onlyFirstByte_ >= 0)
        firstBytePositions_ = BytePositions(subject, static_cast<char>(onlyFirstByte_));
    firstBytesAsked_ = 0;
    utf_ = utf;
    budget_ = budget;
    clockRead_ = false;
    work_ = 0;
}

BacktrackMatcher::Outcome BacktrackMatcher::find(std::size_t start) {
    std::fill(registers_.begin(), registers_.end(), unset);
    try {
        for (std::size_t at = start; at <= subject_.size(); at = nextCharacter(at)) {
            if (program_.startsWithKnownByte && (at = nextPossibleStart(at)) == subject_.size())
                break;
            // A pattern that starts with a straight lookaround is not tried where that fails,
            // and is tried from after it where it holds.
            std::uint32_t from = 0;
            if (const BacktrackStep& first = program_.steps.front();
                first.op == Op::LookStart && first.straight) {
                charge(1);
                if (matchesStraight(1, first.target - 1, at) == first.negative)
                    continue;
                from = first.target;
            }
            // A failed attempt leaves the stack empty and every register as it found it.
            if (matchAt(at, from) == Outcome::Match)
                return Outcome::Match;
        }
    } catch (const TimeUp&) {
        stack_.clear();
        return Outcome::OutOfTime;
    } catch (const StackFull&) {
        stack_.clear();
        stack_.shrink_to_fit();
        return Outcome::OutOfMemory;
    }
    return Outcome::NoMatch;
}

std::size_t BacktrackMatcher::nextPossibleStart(std::size_t at) {
    if (onlyFirstByte_ >= 0) {
        // A search that starts again further back is given positions from there.
        if (at < firstBytesAsked_)
            firstBytePositions_ = BytePositions(subject_, static_cast<char>(onlyFirstByte_));
        firstBytesAsked_ = at;
        return firstBytePositions_.next(at);
    }
    const auto* text = reinterpret_cast<const unsigned char*>(subject_.data());
    // Read as UTF-8, a character never starts with a continuation byte.
    while (at < subject_.size() &&
           !(program_.firstBytes[text[at]] && !(utf_ && isContinuationByte(text[at]))))
        ++at;
    return at;
}

BacktrackMatcher::Outcome BacktrackMatcher::matchAt(std::size_t start, std::uint32_t pc) {
    stack_.clear();
    std::size_t pos = start;
    for (;;) {
        charge(1);
        if (program_.steps[pc].op == Op::Match) {
            registers_[0] = start;
            registers_[1] = pos;
            return Outcome::Match;
        }
        if (!step(pc, pos) && !backtrack(pc, pos))
            return Outcome::NoMatch;
    }
}

void BacktrackMatcher::readClock() {
    work_ = 0;
    const auto now = std::chrono::steady_clock::now();
    if (!clockRead_) {
        clockRead_ = true;
        deadline_ = budget_ >= std::chrono::steady_clock::time_point::max() - now
                        ? std::chrono::steady_clock::time_point::max()
                        : now + budget_;
    } else if (now > deadline_) {
        throw TimeUp{};
    }
}

void BacktrackMatcher::stackFull() {
    throw StackFull{};
}

// Carries out the instruction at `pc`; false when it fails.
bool BacktrackMatcher::step(std::uint32_t& pc, std::size_t& pos) {
    const BacktrackStep& s = program_.steps[pc];
    switch (s.op) {
    case Op::Character:
    case Op::Set: {
        const std::size_t next = matchAtom(s, pos);
        if (next == unset)
            return false;
        pos = next;
        ++pc;
        return true;
    }
    case Op::BackReference: {
        const std::size_t next = matchBackReference(s, pos);
        if (next == unset)
            return false;
        pos = next;
        ++pc;
        return true;
    }
    case Op::Start:
        ++pc;
        return pos == 0;
    case Op::End:
        ++pc;
        return pos == subject_.size();
    case Op::WordBoundary:
        ++pc;
        return (isWordAt(pos - 1) != isWordAt(pos)) != s.negative;
    case Op::Split:
        push(Entry::Choice, s.target, pos);
        ++pc;
        return true;
    case Op::Jump:
        pc = s.target;
        return true;
    case Op::GroupOpen:
        set(s.reg, pos);
        ++pc;
        return true;
    case Op::GroupClose: {
        // Backwards the group was entered at its end.
        const std::size_t opened = registers_[s.reg];
        set(2 * s.index, s.backward ? pos : opened);
        set(2 * s.index + 1, s.backward ? opened : pos);
        ++pc;
        return true;
    }
    case Op::RepeatInit:
        set(s.reg, 0);
        ++pc;
        return true;
    case Op::RepeatHead: {
        const std::size_t done = registers_[s.reg];
        if (done >= s.max) {
            pc = s.target;
        } else if (done < s.min) {
            ++pc;
        } else if (s.greedy) {
            push(Entry::Choice, s.target, pos);
            ++pc;
        } else {
            push(Entry::Choice, pc + 1, pos);
            pc = s.target;
        }
        return true;
    }
    case Op::RepeatIterate:
        // Each iteration starts with the groups of the repeated atom unset.
        for (int group = s.groups.first; group < s.groups.first + s.groups.count; ++group) {
            set(2 * group, unset);
            set(2 * group + 1, unset);
        }
        set(s.reg + 1, pos);
        ++pc;
        return true;
    case Op::RepeatEnd: {
        const std::size_t done = registers_[s.reg];
        // An iteration beyond the required ones must not match the empty text.
        if (done >= s.min && pos == registers_[s.reg + 1])
            return false;
        // Without an upper limit only the required iterations need counting.
        if (done < s.min || s.max != BacktrackStep::unbounded)
            set(s.reg, done + 1);
        pc = s.target;
        return true;
    }
    case Op::SimpleRepeat: {
        const BacktrackStep& atom = program_.steps[pc + 1];
        std::size_t done = takeRun(atom, pos, s.min);
        if (done < s.min)
            return false;
        if (s.greedy) {
            const std::size_t least = pos;
            done += takeRun(atom, pos, s.max - done);
            if (pos != least && !s.possessive) {
                set(s.reg, least);
                push(Entry::Greedy, pc, pos);
            }
        } else if (done < s.max) {
            set(s.reg + 1, done);
            push(Entry::Lazy, pc, pos);
        }
        charge(done);
        pc += 2;
        return true;
    }
    case Op::LookStart:
        if (s.straight) {
            if (matchesStraight(pc + 1, s.target - 1, pos) == s.negative)
                return false;
            pc = s.target;
            return true;
        }
        push(Entry::Look, pc, pos);
        set(s.reg, stack_.size() - 1);
        ++pc;
        return true;
    case Op::LookEnd:
        lookEnd(s, pc, pos);
        return !s.negative;
    case Op::Match:
        break;
    }
    return false;
}

std::size_t BacktrackMatcher::takeRun(const BacktrackStep& atom, std::size_t& pos,
                                      std::size_t most) const {
    std::size_t done = 0;
#ifdef MORLEVANT_X86_STEPS
    if (atom.op == Op::Set && program_.sets[atom.index].asciiOnly && processorHasByteShuffle()) {
        bool ended = false;
        done = asciiRunBy16(subject_, pos, most, program_.sets[atom.index].bytes, atom.backward,
                            ended);
        pos = atom.backward ? pos - done : pos + done;
        if (ended)
            return done;
    }
#endif
    for (std::size_t next = 0; done < most && (next = matchAtom(atom, pos)) != unset; ++done)
        pos = next;
    return done;
}

bool BacktrackMatcher::matchesStraight(std::uint32_t pc, std::uint32_t end, std::size_t pos) {
    while (pc < end) {
        const BacktrackStep& s = program_.steps[pc];
        if (s.op != Op::SimpleRepeat) {
            if ((pos = matchAtom(s, pos)) == unset)
                return false;
            ++pc;
            continue;
        }
        const std::size_t done = takeRun(program_.steps[pc + 1], pos, s.max);
        charge(done);
        if (done < s.min)
            return false;
        pc += 2;
    }
    return true;
}

void BacktrackMatcher::lookEnd(const BacktrackStep& s, std::uint32_t& pc, std::size_t& pos) {
    const std::size_t marker = registers_[s.reg];
    if (s.negative) {
        // The body matched, so the lookaround fails: everything the body did is undone.
        while (stack_.size() > marker) {
            const StackEntry entry = stack_.back();
            stack_.pop_back();
            if (entry.kind == Entry::Undo)
                registers_[entry.index] = entry.value;
        }
        return;
    }
    // A lookaround matches once: its open choices go, the groups it set stay (their old values
    // kept for when the match backtracks past it), and the position is where it started.
    pos = stack_[marker].value;
    std::size_t kept = marker;
    for (std::size_t i = marker + 1; i < stack_.size(); ++i)
        if (stack_[i].kind == Entry::Undo)
            stack_[kept++] = stack_[i];
    stack_.resize(kept);
    ++pc;
}

bool BacktrackMatcher::backtrack(std::uint32_t& pc, std::size_t& pos) {
    while (!stack_.empty()) {
        const StackEntry entry = stack_.back();
        stack_.pop_back();
        switch (entry.kind) {
        case Entry::Undo:
            registers_[entry.index] = entry.value;
            break;
        case Entry::Choice:
            pc = entry.index;
            pos = entry.value;
            return true;
        case Entry::Greedy: {
            // One character fewer for the greedy run, down to the fewest it may take.
            const BacktrackStep& s = program_.steps[entry.index];
            pos = giveBack(program_.steps[entry.index + 1], entry.value);
            if (pos != registers_[s.reg])
                push(Entry::Greedy, entry.index, pos);
            pc = entry.index + 2;
            return true;
        }
        case Entry::Lazy: {
            // One character more for the lazy run, up to the most it may take.
            const BacktrackStep& s = program_.steps[entry.index];
            const std::size_t next = matchAtom(program_.steps[entry.index + 1], entry.value);
            if (next == unset)
                break;
            const std::size_t done = registers_[s.reg + 1] + 1;
            set(s.reg + 1, done);
            if (done < s.max)
                push(Entry::Lazy, entry.index, next);
            pc = entry.index + 2;
            pos = next;
            return true;
        }
        case Entry::Look: {
            // The body of the lookaround found no match: a negative one goes on after it.
            const BacktrackStep& s = program_.steps[entry.index];
            if (s.negative) {
                pc = s.target;
                pos = entry.value;
                return true;
            }
            break;
        }
        }
        charge(1);
    }
    return false;
}

// Inlined where the steps are carried out: an atom is matched at nearly every step.
[[gnu::always_inline]] inline std::size_t BacktrackMatcher::matchAtom(const BacktrackStep& s,
                                                                      std::size_t pos) const {
    if (s.op == Op::Set)
        return matchSet(program_.sets[s.index], pos, s.backward);
    const std::size_t length = s.length;
    if (length == 0)
        return unset;
    // The first byte is compared before a call compares the rest: most characters tried differ.
    const auto matchesAt = [&](std::size_t at) {
        return subject_[at] == s.bytes[0] &&
               (length == 1 || std::memcmp(subject_.data() + at + 1, s.bytes + 1, length - 1) == 0);
    };
    if (s.backward)
        return pos >= length && matchesAt(pos - length) ? pos - length : unset;
    return subject_.size() - pos >= length && matchesAt(pos) ? pos + length : unset;
}

[[gnu::always_inline]] inline std::size_t
BacktrackMatcher::matchSet(const SetTable& set, std::size_t pos, bool backward) const {
    if (backward ? pos == 0 : pos == subject_.size())
        return unset;
    const std::size_t at = backward ? pos - 1 : pos;
    const auto byte = static_cast<unsigned char>(subject_[at]);
    if (byte < 0x80)
        return set.ascii[byte] ? (backward ? at : at + 1) : unset;
    return matchSetBeyondAscii(set, pos, backward);
}

std::size_t BacktrackMatcher::matchSetBeyondAscii(const SetTable& set, std::size_t pos,
                                                  bool backward) const {
    const std::size_t at = backward ? pos - 1 : pos;
    if (!utf_) // beyond ASCII a byte is in a class only by being outside a negated one
        return set.set.negated ? (backward ? at : at + 1) : unset;
    const auto* text = reinterpret_cast<const unsigned char*>(subject_.data());
    const std::size_t first = backward ? previousCharacter(pos) : pos;
    const std::size_t length = sequenceLength(text[first]);
    if (!set.set.matches(decode(text + first, length)))
        return unset;
    return backward ? first : first + length;
}

std::size_t BacktrackMatcher::matchBackReference(const BacktrackStep& s, std::size_t pos) const {
    const std::size_t first = registers_[2 * s.index];
    if (first == unset) // a group without a value matches the empty text
        return pos;
    const std::size_t length = registers_[2 * s.index + 1] - first;
    const char* text = subject_.data();
    if (s.backward) {
        if (pos < length || std::memcmp(text + first, text + pos - length, length) != 0)
            return unset;
        return pos - length;
    }
    if (subject_.size() - pos < length || std::memcmp(text + first, text + pos, length) != 0)
        return unset;
    return pos + length;
}

std::size_t BacktrackMatcher::giveBack(const BacktrackStep& s, std::size_t pos) const {
    if (s.op == Op::Character)
        return s.backward ? pos + s.length : pos - s.length;
    return s.backward ? nextCharacter(pos) : previousCharacter(pos);
}

std::size_t BacktrackMatcher::nextCharacter(std::size_t pos) const {
    if (!utf_ || pos >= subject_.size())
        return pos + 1;
    return pos + sequenceLength(static_cast<unsigned char>(subject_[pos]));
}

std::size_t BacktrackMatcher::previousCharacter(std::size_t pos) const {
    if (!utf_)
        return pos - 1;
    do
        --pos;
    while (pos > 0 && isContinuationByte(static_cast<unsigned char>(subject_[pos])));
    return pos;
}

bool BacktrackMatcher::isWordAt(std::size_t pos) const {
    // Word characters are ASCII: a byte tells, whether the text is read by bytes or not.
    return pos < subject_.size() && isWordByte(static_cast<unsigned char>(subject_[pos]));
}

} // namespace morlevant
