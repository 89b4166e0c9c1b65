#include "engine/io/WriteBehind.h"

#include <algorithm>
#include <cstring>

namespace morlevant {

namespace {

// Bytes are gathered in pieces of this size, handed over when full, and this many wait at most:
// a piece costs the threads a hand-over, and the system a write.
constexpr std::size_t pieceSize = std::size_t{1} << 19;
constexpr std::size_t mostWaiting = 4;

} // namespace

WriteBehind::WriteBehind(Write write, std::uint64_t length)
    : write_(std::move(write)), length_(length), thread_([this] { run(); }) {}

WriteBehind::~WriteBehind() {
    {
        const std::lock_guard lock(mutex_);
        closing_ = true;
        waiting_.clear();
    }
    changed_.notify_all();
    thread_.join();
}

void WriteBehind::throwFailure() {
    if (failure_)
        std::rethrow_exception(failure_);
}

void WriteBehind::write(const char* data, std::size_t size) {
    while (size > 0) {
        if (!filling_.bytes) {
            std::unique_lock lock(mutex_);
            changed_.wait(lock, [&] { return waiting_.size() < mostWaiting || failure_; });
            throwFailure();
            if (spare_.empty()) {
                filling_.bytes = makeAlignedBlock(pieceSize);
            } else {
                filling_.bytes = std::move(spare_.back());
                spare_.pop_back();
            }
            // A piece ends where the file's length is a multiple of pieceSize, and so of the
            // lengths its writer keeps its writes to.
            filling_.capacity = pieceSize - static_cast<std::size_t>(length_ % pieceSize);
        }
        const std::size_t part = std::min(size, filling_.capacity - filling_.size);
        std::memcpy(filling_.bytes.get() + filling_.size, data, part);
        filling_.size += part;
        length_ += part;
        data += part;
        size -= part;
        if (filling_.size == filling_.capacity)
            handOver();
    }
}

void WriteBehind::handOver() {
    {
        // After a failed write none is made: the caller learns of it at its next call.
        const std::lock_guard lock(mutex_);
        if (!failure_)
            waiting_.push_back(std::move(filling_));
    }
    filling_ = Piece();
    changed_.notify_all();
}

void WriteBehind::finish() {
    if (filling_.size > 0)
        handOver();
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [&] { return (waiting_.empty() && !writing_) || failure_; });
    throwFailure();
}

void WriteBehind::run() {
    std::unique_lock lock(mutex_);
    while (true) {
        changed_.wait(lock, [&] { return closing_ || !waiting_.empty(); });
        if (closing_)
            return;
        Piece piece = std::move(waiting_.front());
        waiting_.pop_front();
        writing_ = true;
        lock.unlock();
        std::exception_ptr failure;
        try {
            write_(piece.bytes.get(), piece.size);
        } catch (...) {
            failure = std::current_exception();
        }
        lock.lock();
        writing_ = false;
        if (failure && !failure_) {
            failure_ = failure;
            waiting_.clear(); // nothing after a failed write may be written
        }
        spare_.push_back(std::move(piece.bytes));
        changed_.notify_all();
    }
}

} // namespace morlevant
