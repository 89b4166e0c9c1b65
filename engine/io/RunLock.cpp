#include "engine/io/RunLock.h"

#include "taskdef/FilePath.h"
#include "taskdef/TaskError.h"

#include <cerrno>
#include <cstring>

#ifdef _WIN32
#include <windows.h>
#else
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>
#endif

namespace morlevant {

#ifdef _WIN32

// Opened without sharing, the file cannot be opened again until its holder closes it or ends.
// Shared holders read it and let others read it; the lock itself lets no one else open it.
std::unique_ptr<RunLock> RunLock::tryTake(const std::string& path, bool shared) {
    const HANDLE file = CreateFileW(
        toFsPath(path).c_str(), shared ? GENERIC_READ : GENERIC_READ | GENERIC_WRITE,
        shared ? FILE_SHARE_READ : 0, nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file != INVALID_HANDLE_VALUE)
        return std::unique_ptr<RunLock>(new RunLock(file));
    if (GetLastError() == ERROR_SHARING_VIOLATION)
        return nullptr;
    throw TaskError("Cannot make the lock file " + path + " of the task (Windows error " +
                    std::to_string(GetLastError()) + ")");
}

RunLock::~RunLock() {
    CloseHandle(static_cast<HANDLE>(handle_));
}

#else

std::unique_ptr<RunLock> RunLock::tryTake(const std::string& path, bool shared) {
    const int fd =
        ::open(path.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0666);
    if (fd < 0)
        throw TaskError("Cannot make the lock file " + path +
                        " of the task: " + std::strerror(errno));
    if (::flock(fd, (shared ? LOCK_SH : LOCK_EX) | LOCK_NB) == 0)
        return std::unique_ptr<RunLock>(new RunLock(fd));
    const int reason = errno;
    ::close(fd);
    if (reason == EWOULDBLOCK)
        return nullptr;
    throw TaskError("Cannot lock the file " + path + " of the task: " + std::strerror(reason));
}

RunLock::~RunLock() {
    ::close(fd_);
}

#endif

} // namespace morlevant
