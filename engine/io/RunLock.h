#pragma once

#include <memory>
#include <string>

namespace morlevant {

// A lock that one run of a task holds while it lasts, on a file of the program's task folder.
// The system lets it go when the process ends however it ends, so a run that was killed never
// leaves its task locked.
class RunLock {
public:
    // The lock at `path`, or nullptr when another run holds it now. A shared lock is held by
    // any number of runs at once, none of them beside the holder of the lock itself. Throws
    // TaskError when the lock file cannot be made.
    static std::unique_ptr<RunLock> tryTake(const std::string& path, bool shared = false);
    ~RunLock();
    RunLock(const RunLock&) = delete;
    RunLock& operator=(const RunLock&) = delete;

private:
#ifdef _WIN32
    explicit RunLock(void* handle) : handle_(handle) {}
    void* handle_; // the open lock file
#else
    explicit RunLock(int fd) : fd_(fd) {}
    int fd_; // the open lock file
#endif
};

} // namespace morlevant
