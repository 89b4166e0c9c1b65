#include "engine/run/OrderedMessages.h"

namespace morlevant {

OrderedMessages::OrderedMessages(std::size_t files, std::function<void(const std::string&)> show)
    : show_(std::move(show)), waiting_(files), whole_(files, 0) {}

void OrderedMessages::message(std::size_t file, const std::string& text) {
    std::unique_lock lock(mutex_);
    if (file != first_) {
        waiting_[file].push_back(text);
        return;
    }
    // Only the worker of the first file gets here, and the first file moves on only when that
    // worker ends it: its messages keep their order without the lock, which stays free while
    // the message is shown (the window waits for its OK).
    lock.unlock();
    if (show_)
        show_(text);
}

void OrderedMessages::finished(std::size_t file, bool whole) {
    const std::lock_guard lock(mutex_);
    whole_[file] = whole;
    // A file that did not finish whole holds back every later one for good.
    while (first_ < whole_.size() && whole_[first_]) {
        ++first_;
        if (first_ < waiting_.size()) {
            for (const std::string& text : waiting_[first_])
                if (show_)
                    show_(text);
            waiting_[first_].clear();
        }
    }
}

} // namespace morlevant
