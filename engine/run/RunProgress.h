#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace morlevant {

// How far a run has come, read by another thread while the run lasts (the window's progress bar
// and status bar): the files done, and how much of each file at work has been read.
class RunProgress {
public:
    struct Snapshot {
        int done = 0;
        int total = 0;
        double files = 0; // the files done plus the share read of each file at work
        int working = -1; // list index of the first file at work; -1 when none is
        std::string path; // that file
    };
    Snapshot snapshot() const;

    // Called by the run: the files of the run and the threads that work them.
    void begin(int total, std::size_t workers);
    // `worker` starts on file `index`; the returned counter is to grow with the bytes read.
    std::atomic<std::uint64_t>* startFile(std::size_t worker, int index, const std::string& path);
    // `worker` has ended its file; `done` when the file's results are whole.
    void endFile(std::size_t worker, bool done);

private:
    struct Worker {
        std::atomic<std::uint64_t> bytesRead{0};
        std::uint64_t size = 0;
        int index = -1;
        std::string path;
    };
    mutable std::mutex mutex_;
    std::vector<std::unique_ptr<Worker>> workers_;
    int done_ = 0;
    int total_ = 0;
};

} // namespace morlevant
