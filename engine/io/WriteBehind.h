#pragma once

#include "engine/io/AlignedBlock.h"

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <exception>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace morlevant {

// Writes handed over by one thread, made on a thread of its own in the order handed over, so
// that the first thread goes on (reads the next block of a file) while the system writes the
// last. The bytes are copied, so the caller may reuse its buffer at once; at most a few pieces
// wait, so memory stays small whatever is written.
class WriteBehind {
public:
    // `write` writes bytes to the file; what it throws ends the writing and is thrown to the
    // caller by the next write() or by finish().
    using Write = std::function<void(const char* data, std::size_t size)>;

    // `length`: the file's length before the first byte handed over.
    explicit WriteBehind(Write write, std::uint64_t length = 0);
    // Drops what is not written yet: a writer destroyed before finish() was abandoned.
    ~WriteBehind();
    WriteBehind(const WriteBehind&) = delete;
    WriteBehind& operator=(const WriteBehind&) = delete;

    // Copies the bytes to be written, waiting while too many wait already. They are written
    // once a piece is full, or on finish().
    void write(const char* data, std::size_t size);
    // Waits until every byte handed over is written.
    void finish();

private:
    struct Piece {
        AlignedBlock bytes;
        std::size_t size = 0;
        std::size_t capacity = 0; // bytes it takes before it is handed over
    };
    // Passes the piece being filled on to the writing thread.
    void handOver();
    void run();
    // Throws what a write threw; called with the mutex held.
    void throwFailure();

    Write write_;
    Piece filling_;        // of the caller's thread, as is the length
    std::uint64_t length_; // the file's length once every byte handed over is written
    std::mutex mutex_;     // guards what follows
    std::condition_variable changed_;
    std::deque<Piece> waiting_;
    std::vector<AlignedBlock> spare_;
    bool writing_ = false; // a piece taken from waiting_ is being written
    bool closing_ = false;
    std::exception_ptr failure_;
    std::thread thread_;
};

} // namespace morlevant
