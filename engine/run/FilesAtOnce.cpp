#include "engine/run/FilesAtOnce.h"

#include "engine/io/LineReader.h"
#include "engine/pages/FilePage.h"
#include "engine/run/FileSchedule.h"
#include "engine/run/OrderedMessages.h"
#include "engine/run/RunProgress.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <exception>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>

namespace morlevant {

namespace {

// One thread's share: its page, and what that page reports through.
struct Worker {
    explicit Worker(const RunAlerts& watched) : alerts(watched) {}
    RunCallbacks callbacks;
    RunAlerts alerts;
    std::optional<RunContext> context;
    std::unique_ptr<FilePage> page;
    std::size_t file = 0; // the file being worked
};

class FilesAtOnce {
public:
    FilesAtOnce(const RunContext& shared, const std::vector<std::string>& files,
                RunProgress* progress)
        : shared_(shared), files_(files), progress_(progress),
          messages_(files.size(), shared.callbacks.message), failures_(files.size()),
          noted_(files.size(), RunAlerts(false, false)) {}

    void run(const TaskCodes& codes, std::size_t jobs);

private:
    void addWorker(const TaskCodes& codes);
    void work(Worker& worker, std::size_t slot);
    void workFiles(Worker& worker, std::size_t slot);
    bool stopAsked() const {
        return shared_.request.stop && shared_.request.stop->load(std::memory_order_relaxed);
    }
    // Throws the first failure in list order, or RunStopped when a file did not finish; else
    // adds up the alerts and ends the pages.
    void conclude(std::exception_ptr startFailure);

    const RunContext& shared_;
    const std::vector<std::string>& files_;
    RunProgress* progress_;
    OrderedMessages messages_;
    std::vector<std::unique_ptr<Worker>> workers_;
    std::optional<FileSchedule> schedule_;

    std::mutex mutex_; // guards what follows
    std::condition_variable changed_;
    std::atomic<bool> halt_{false}; // read by every page at each block
    std::vector<std::exception_ptr> failures_;
    std::exception_ptr betweenFiles_; // telling of a file's end failed (its progress, messages)
    std::vector<RunAlerts> noted_;    // what each file finished whole noted, added up at the end
    std::optional<std::size_t> firstStopped_;
    std::size_t running_ = 0;
    int done_ = 0;
};

void FilesAtOnce::addWorker(const TaskCodes& codes) {
    auto worker =
        std::make_unique<Worker>(shared_.alerts ? *shared_.alerts : RunAlerts(false, false));
    Worker* const at = worker.get();
    worker->callbacks.message = [this, at](const std::string& text) {
        messages_.message(at->file, text);
    };
    worker->context.emplace(
        RunContext{shared_.settings, shared_.sources, shared_.mode, shared_.rows, shared_.columns,
                   shared_.request, worker->callbacks, shared_.alerts ? &worker->alerts : nullptr,
                   &halt_, nullptr});
    worker->page = makeFilePage(*worker->context, codes);
    workers_.push_back(std::move(worker));
}

void FilesAtOnce::run(const TaskCodes& codes, std::size_t jobs) {
    for (std::size_t i = 0; i < jobs; ++i)
        addWorker(codes);
    std::vector<std::string> places;
    std::vector<std::optional<FileIdentity>> identities;
    for (const std::string& file : files_) {
        places.push_back(workers_.front()->page->resultPlace(file));
        identities.push_back(fileIdentity(file));
    }
    schedule_.emplace(places, identities);

    std::vector<std::thread> threads;
    std::exception_ptr startFailure;
    std::unique_lock lock(mutex_);
    try {
        for (std::size_t slot = 0; slot < jobs; ++slot) {
            threads.emplace_back(&FilesAtOnce::work, this, std::ref(*workers_[slot]), slot);
            ++running_;
        }
    } catch (...) {
        // The system gave fewer threads than asked for: those started end at their next block.
        startFailure = std::current_exception();
        halt_ = true;
    }
    // The caller's stop is passed on to the pages while the threads work.
    while (running_ > 0) {
        changed_.wait_for(lock, std::chrono::milliseconds(50));
        if (stopAsked() && !halt_) {
            halt_ = true;
            changed_.notify_all();
        }
    }
    lock.unlock();
    for (std::thread& thread : threads)
        thread.join();
    conclude(startFailure);
}

void FilesAtOnce::work(Worker& worker, std::size_t slot) {
    try {
        workFiles(worker, slot);
    } catch (...) {
        // The run fails with it, as one at a time; nothing may leave the thread.
        const std::lock_guard lock(mutex_);
        if (!betweenFiles_)
            betweenFiles_ = std::current_exception();
        halt_ = true;
    }
    const std::lock_guard lock(mutex_);
    --running_;
    changed_.notify_all();
}

void FilesAtOnce::workFiles(Worker& worker, std::size_t slot) {
    std::unique_lock lock(mutex_);
    while (!halt_) {
        const std::optional<std::size_t> next = schedule_->take();
        if (!next) {
            if (schedule_->allTaken())
                break;
            changed_.wait(lock);
            continue;
        }
        worker.file = *next;
        lock.unlock();
        const std::string& file = files_[*next];
        std::exception_ptr failure;
        bool stopped = false;
        try {
            if (progress_)
                worker.context->bytesRead =
                    progress_->startFile(slot, static_cast<int>(*next), file);
            worker.page->process(file);
        } catch (const RunStopped&) {
            stopped = true;
        } catch (...) {
            failure = std::current_exception();
            halt_ = true;
        }
        const bool whole = !failure && !stopped;
        if (progress_)
            progress_->endFile(slot, whole);
        messages_.finished(*next, whole);
        lock.lock();
        schedule_->finish(*next);
        failures_[*next] = failure;
        if (stopped && (!firstStopped_ || *next < *firstStopped_))
            firstStopped_ = *next;
        if (whole) {
            ++done_;
            noted_[*next].take(worker.alerts);
            if (shared_.callbacks.progress)
                shared_.callbacks.progress(done_, *shared_.request.fileCount);
        }
        changed_.notify_all();
    }
}

void FilesAtOnce::conclude(std::exception_ptr startFailure) {
    for (const std::exception_ptr& failure : failures_)
        if (failure)
            std::rethrow_exception(failure);
    if (betweenFiles_)
        std::rethrow_exception(betweenFiles_);
    if (startFailure)
        std::rethrow_exception(startFailure);
    if (static_cast<std::size_t>(done_) < files_.size()) {
        RunStopped stopped;
        if (firstStopped_)
            stopped.unfinished = files_[*firstStopped_];
        stopped.done = done_;
        stopped.total = *shared_.request.fileCount;
        throw stopped;
    }
    if (shared_.alerts)
        for (RunAlerts& noted : noted_)
            shared_.alerts->take(noted);
    for (const std::unique_ptr<Worker>& worker : workers_)
        worker->page->finish();
}

} // namespace

void workFilesAtOnce(const RunContext& shared, const TaskCodes& codes,
                     const std::vector<std::string>& files, std::size_t jobs,
                     RunProgress* progress) {
    FilesAtOnce(shared, files, progress).run(codes, jobs);
}

} // namespace morlevant
