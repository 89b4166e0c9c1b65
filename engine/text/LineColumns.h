#pragma once

#include <cstdint>
#include <limits>
#include <string_view>
#include <vector>

namespace morlevant {

// Character positions of one line, so that any number of column ranges can be cut from it.
// The ASCII start of a line needs no table: its positions are its bytes. Beyond it, characters
// are decoded only as far as a position asked for, and only every 64th one's offset is kept, so
// a long line costs a table of a small share of its size at most, and none when it is cut at its
// first columns. Keep one instance per run and reuse it for every line, so the table's storage
// is allocated once.
class LineColumns {
public:
    // `asciiScan`: how far the ASCII start is looked for, in bytes, when the positions to be asked
    // for are known to lie within it or past the line's end; any position is still answered.
    void assign(std::string_view line, std::size_t asciiScan = SIZE_MAX);

    std::string_view line() const { return line_; }
    // Length of the line in characters.
    std::size_t length() const;
    // Characters first to last, counted from 1 and inclusive, clipped to the line.
    std::string_view slice(std::size_t first, std::size_t last) const {
        if (first == 0)
            first = 1;
        if (first > last)
            return {};
        // A position past the end of the line starts at the line's size, which clips the slice.
        const std::size_t begin = byteOffset(first);
        const std::size_t end = last == SIZE_MAX ? line_.size() : byteOffset(last + 1);
        return line_.substr(begin, end - begin);
    }
    // Byte offset at which character `position` (counted from 1) starts; the line's size when
    // the position lies past its end. Inline for the ASCII start, where most ranges lie.
    std::size_t byteOffset(std::size_t position) const {
        const std::size_t index = position == 0 ? 0 : position - 1;
        if (index < asciiPrefix_)
            return index;
        // A line has no more characters than bytes: a range to "the end" (99999999) needs no walk.
        if (asciiPrefix_ == line_.size() || index >= line_.size())
            return line_.size();
        return offsetBeyondAscii(index);
    }
    // Whether the line ends before character `position`, as position > length() says, but
    // without counting the characters of a long line beyond it.
    bool endsBefore(std::size_t position) const {
        return position > 0 && byteOffset(position) == line_.size();
    }

private:
    std::size_t offsetBeyondAscii(std::size_t index) const;

    // Every this many characters beyond ASCII, the byte offset of one is kept: a position is
    // found from the one kept before it, so that a long line needs no offset of every character.
    static constexpr std::size_t markEvery = 64;

    std::string_view line_;
    std::size_t asciiPrefix_ = 0; // characters (and bytes) before the first one beyond ASCII
    // Filled as positions are asked for, which does not change what the line is. Characters are
    // counted here from the first one beyond ASCII.
    // Byte offset of characters 0, markEvery, 2 * markEvery ... among those decoded so far.
    mutable std::vector<std::uint32_t> marks_;
    mutable std::size_t decoded_ = 0;    // characters decoded so far
    mutable std::size_t decodedEnd_ = 0; // byte offset of the character after them
    mutable std::size_t length_ = 0;
    mutable bool lengthKnown_ = false;
};

// Column bound from a range text item: a position counted from 1, with zero, negative and
// fractional values made usable (the editor refuses them, the runner must not crash on them).
// Inline: the pages that cut ranges call it for every range of every line.
inline std::size_t columnPosition(double bound) {
    if (!(bound >= 1))
        return bound > 0 ? 1 : 0;
    if (bound >= static_cast<double>(std::numeric_limits<std::uint32_t>::max()))
        return std::numeric_limits<std::uint32_t>::max();
    // Truncation is the floor of a positive number, and far cheaper than std::floor where the
    // processor has no rounding instruction of its own (plain x86-64).
    return static_cast<std::size_t>(bound);
}

} // namespace morlevant
