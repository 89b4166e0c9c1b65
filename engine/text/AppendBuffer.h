#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>

namespace morlevant {

// Copies `text` to `out` and returns the end written: a few stores for text of a few bytes, where
// a copy call would cost more than the copy. `out` has room for the text.
inline char* copyShort(std::string_view text, char* out) {
    const char* from = text.data();
    const std::size_t size = text.size();
    if (size > 32) {
        std::memcpy(out, from, size);
    } else if (size >= 8) {
        for (std::size_t at = 0; at + 8 < size; at += 8)
            std::memcpy(out + at, from + at, 8);
        std::memcpy(out + size - 8, from + size - 8, 8);
    } else if (size >= 4) {
        std::memcpy(out, from, 4);
        std::memcpy(out + size - 4, from + size - 4, 4);
    } else if (size > 0) {
        out[0] = from[0];
        out[size / 2] = from[size / 2];
        out[size - 1] = from[size - 1];
    }
    return out + size;
}

// Copies `piece`, whose text goes on to `textEnd`, to `out` and returns the end written. Where
// 32 bytes can be read from the piece's start, 32 are copied whatever its length, and the rest of
// a longer piece after them: pieces of short lengths that vary then cost no guess at each length.
// `out` has room for the piece and 32 bytes more.
inline char* copyPart(std::string_view piece, const char* textEnd, char* out) {
    if (textEnd - piece.data() < 32)
        return copyShort(piece, out);
    std::memcpy(out, piece.data(), 32);
    if (piece.size() > 32)
        std::memcpy(out + 32, piece.data() + 32, piece.size() - 32);
    return out + piece.size();
}

// Appends to a string through a pointer, so that the pieces of many short lines cost a few
// stores each rather than a call: the string is grown ahead of what is written, doubling, and
// cut back to what was written when the buffer goes.
class AppendBuffer {
public:
    // `expected`: about how many bytes will be appended, made room for at once.
    AppendBuffer(std::string& out, std::size_t expected) : out_(out), size_(out.size()) {
        room(expected);
    }
    // The same, written from the string's start over what it holds: a string reused from call to
    // call is grown, and its new room zeroed, only where a result is longer than the last.
    struct Overwriting {};
    static constexpr Overwriting overwriting{};
    AppendBuffer(std::string& out, std::size_t expected, Overwriting) : out_(out), size_(0) {
        room(expected);
    }
    ~AppendBuffer() { out_.resize(size_); }
    AppendBuffer(const AppendBuffer&) = delete;
    AppendBuffer& operator=(const AppendBuffer&) = delete;

    void append(std::string_view piece) { size_ = copyShort(piece, room(piece.size())) - data(); }
    // The same for a piece of a text that goes on to `textEnd` (see copyPart).
    void append(std::string_view piece, const char* textEnd) {
        size_ = copyPart(piece, textEnd, room(piece.size() + 32)) - data();
    }
    // Room for `more` bytes at the end, which advance() then counts as written.
    char* room(std::size_t more) {
        if (out_.size() - size_ < more)
            out_.resize(std::max({2 * out_.size(), size_ + more, std::size_t{4096}}));
        return data() + size_;
    }
    void advance(std::size_t written) { size_ += written; }

private:
    char* data() { return out_.data(); }

    std::string& out_;
    std::size_t size_; // bytes of out_ written
};

} // namespace morlevant
