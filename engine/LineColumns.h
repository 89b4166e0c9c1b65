#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace morlevant {

// Character positions of one line, decoded once so that any number of column ranges can be
// cut from it. An ASCII line needs no table: its positions are its bytes. Keep one instance
// per run and reuse it for every line, so the table's storage is allocated once.
class LineColumns {
public:
    void assign(std::string_view line);

    std::string_view line() const { return line_; }
    // Length of the line in characters.
    std::size_t length() const { return length_; }
    // Characters first to last, counted from 1 and inclusive, clipped to the line.
    std::string_view slice(std::size_t first, std::size_t last) const;
    // Byte offset at which character `position` (counted from 1) starts; the line's size when
    // the position lies past its end.
    std::size_t byteOffset(std::size_t position) const;

private:
    std::string_view line_;
    std::size_t length_ = 0;
    bool ascii_ = true;
    std::vector<std::uint32_t> starts_; // byte offset of each character, then the line's size
};

// Column bound from a range text item: a position counted from 1, with zero, negative and
// fractional values made usable (the editor refuses them, the runner must not crash on them).
std::size_t columnPosition(double bound);

} // namespace morlevant
