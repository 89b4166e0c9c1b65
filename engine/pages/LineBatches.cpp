#include "engine/pages/LineBatches.h"

namespace morlevant {

LineBatches::LineBatches(std::size_t lanes, Work work, Deliver deliver)
    : work_(std::move(work)), deliver_(std::move(deliver)), ahead_(2 * lanes),
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
    batch->lines.clear();
    batch->allCrLf = true;
    batch->result.clear();
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

void LineBatches::submit() {
    {
        const std::lock_guard lock(mutex_);
        passedOn_.push_back(std::move(filling_));
    }
    toWork_.notify_one();
    filling_ = emptyBatch();
    deliverWorked(false);
}

void LineBatches::finish() {
    if (!filling_->lines.empty())
        submit();
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
        deliver_(*front);
        spare_.push_back(std::move(front));
    }
}

} // namespace morlevant
