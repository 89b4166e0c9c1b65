#include "engine/pages/LineBatches.h"

#include "engine/io/LineReader.h"

namespace morlevant {

namespace {

// Lines read one by one are passed to the threads in batches of about this many bytes; those
// read a block at a time go a block to a batch.
constexpr std::size_t batchSize = std::size_t{1} << 17;

} // namespace

bool worthBatching(const LineReader& reader, std::size_t lineJobs) {
    return lineJobs > 1 && reader.size() >= std::uint64_t{1} << 20;
}

LineBatches::LineBatches(std::size_t lanes, Work work, Deliver deliver)
    : work_(std::move(work)), deliver_(std::move(deliver)), ahead_(4 * lanes),
      filling_(emptyBatch()) {
    threads_.reserve(lanes);
    try {
        for (std::size_t i = 0; i < lanes; ++i)
            threads_.emplace_back([this, i] { lane(i); });
    } catch (...) {
        stopLanes();
        throw;
    }
}

LineBatches::~LineBatches() {
    stopLanes();
}

void LineBatches::stopLanes() {
    {
        const std::lock_guard lock(mutex_);
        closing_ = true;
    }
    toWork_.notify_all();
    for (std::thread& thread : threads_)
        if (thread.joinable())
            thread.join();
}

std::unique_ptr<LineBatch> LineBatches::emptyBatch() {
    if (spare_.empty())
        return std::make_unique<LineBatch>();
    std::unique_ptr<LineBatch> batch = std::move(spare_.back());
    spare_.pop_back();
    batch->lines = {};
    batch->gathered.clear();
    batch->allCrLf = true;
    batch->failure = nullptr;
    batch->worked = false;
    return batch;
}

void LineBatches::lane(std::size_t index) {
    while (true) {
        LineBatch* batch = nullptr;
        {
            std::unique_lock lock(mutex_);
            toWork_.wait(lock, [&] { return closing_ || nextToWork_ < passedOn_.size(); });
            if (closing_)
                return;
            batch = passedOn_[nextToWork_++].get();
        }
        try {
            work_(index, *batch);
        } catch (...) {
            batch->failure = std::current_exception();
        }
        {
            const std::lock_guard lock(mutex_);
            batch->worked = true;
        }
        worked_.notify_all();
    }
}

void LineBatches::workAll(LineReader& reader,
                          const std::function<void(std::string_view line)>& longLine) {
    std::string_view lines;
    while (true) {
        const std::size_t firstLine = reader.lineNumber() + 1;
        if (bool allCrLf = false; reader.nextLines(lines, allCrLf)) {
            // A block's lines make a batch of their own, worked where the reader read them.
            submitGathered();
            LineBatch& batch = *filling_;
            batch.block = reader.handOverBlock(std::move(batch.block));
            batch.lines = lines;
            batch.allCrLf = allCrLf;
            batch.firstLine = firstLine;
            submit();
            continue;
        }
        if (!reader.next(lines))
            break;
        if (lines.size() >= LineReader::blockSize) {
            finish();
            longLine(lines);
            continue;
        }
        LineBatch& batch = *filling_;
        if (batch.gathered.empty())
            batch.firstLine = firstLine;
        batch.gathered.append(lines);
        batch.gathered.append("\r\n");
        if (batch.gathered.size() >= batchSize)
            submitGathered();
    }
    finish();
}

void LineBatches::submit() {
    {
        const std::lock_guard lock(mutex_);
        passedOn_.push_back(std::move(filling_));
    }
    toWork_.notify_one();
    filling_ = emptyBatch();
    deliverWorked(false);
}

void LineBatches::submitGathered() {
    if (filling_->gathered.empty())
        return;
    filling_->lines = filling_->gathered;
    submit();
}

void LineBatches::finish() {
    submitGathered();
    deliverWorked(true);
}

void LineBatches::deliverWorked(bool all) {
    while (true) {
        std::unique_ptr<LineBatch> front;
        {
            std::unique_lock lock(mutex_);
            if (passedOn_.empty())
                return;
            if (!passedOn_.front()->worked) {
                if (!all && passedOn_.size() < ahead_)
                    return;
                worked_.wait(lock, [&] { return passedOn_.front()->worked; });
            }
            front = std::move(passedOn_.front());
            passedOn_.pop_front();
            --nextToWork_;
        }
        if (front->failure)
            std::rethrow_exception(front->failure);
        deliver_(*front);
        spare_.push_back(std::move(front));
    }
}

} // namespace morlevant
