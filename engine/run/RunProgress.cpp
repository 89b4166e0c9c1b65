#include "engine/run/RunProgress.h"

#include "taskdef/FilePath.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace morlevant {

RunProgress::Snapshot RunProgress::snapshot() const {
    const std::lock_guard lock(mutex_);
    Snapshot now{done_, total_, static_cast<double>(done_), -1, {}};
    for (const std::unique_ptr<Worker>& worker : workers_) {
        if (worker->index < 0)
            continue;
        // A page that reads its file twice (a divide by column) reads more than its size.
        if (worker->size > 0)
            now.files += std::min(1.0, static_cast<double>(worker->bytesRead.load()) /
                                           static_cast<double>(worker->size));
        if (now.working < 0 || worker->index < now.working) {
            now.working = worker->index;
            now.path = worker->path;
        }
    }
    return now;
}

void RunProgress::begin(int total, std::size_t workers) {
    const std::lock_guard lock(mutex_);
    total_ = total;
    done_ = 0;
    workers_.clear();
    for (std::size_t i = 0; i < workers; ++i)
        workers_.push_back(std::make_unique<Worker>());
}

std::atomic<std::uint64_t>* RunProgress::startFile(std::size_t worker, int index,
                                                   const std::string& path) {
    std::error_code unknown;
    const std::uintmax_t size = std::filesystem::file_size(toFsPath(path), unknown);
    const std::lock_guard lock(mutex_);
    Worker& at = *workers_[worker];
    at.bytesRead = 0;
    at.size = unknown ? 0 : size;
    at.index = index;
    at.path = path;
    return &at.bytesRead;
}

void RunProgress::endFile(std::size_t worker, bool done) {
    const std::lock_guard lock(mutex_);
    workers_[worker]->index = -1;
    if (done)
        ++done_;
}

} // namespace morlevant
