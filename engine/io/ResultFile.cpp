#include "engine/io/ResultFile.h"

#include "taskdef/FilePath.h"
#include "taskdef/TaskError.h"
#include "taskdef/VisibleName.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#include <system_error>

#ifndef _WIN32
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace morlevant {

void ResultFile::fail(const std::string& doing) const {
    throw TaskError("Cannot write " + visibleName(path_) + doing + ": " + std::strerror(errno));
}

#ifdef _WIN32

ResultFile::ResultFile(const std::string& path, Start start)
    : path_(path), temporary_(temporaryPath(path)) {
    std::error_code error;
    if (start == Start::FromFinal)
        std::filesystem::copy_file(toFsPath(path_), toFsPath(temporary_),
                                   std::filesystem::copy_options::overwrite_existing, error);
    file_ = _wfopen(toFsPath(temporary_).c_str(), start == Start::FromFinal ? L"ab" : L"wb");
    if (!file_)
        fail("");
}

void ResultFile::write(const char* data, std::size_t size) {
    if (std::fwrite(data, 1, size, static_cast<std::FILE*>(file_)) != size)
        fail("");
}

void ResultFile::commit() {
    std::FILE* file = static_cast<std::FILE*>(file_);
    file_ = nullptr;
    if (std::fclose(file) != 0)
        fail("");
    std::error_code error;
    std::filesystem::rename(toFsPath(temporary_), toFsPath(path_), error);
    if (error)
        throw TaskError("Cannot write " + visibleName(path_) + ": " + error.message());
}

void ResultFile::abandon() noexcept {
    if (!file_)
        return;
    std::fclose(static_cast<std::FILE*>(file_));
    file_ = nullptr;
    std::error_code ignored;
    std::filesystem::remove(toFsPath(temporary_), ignored);
}

#else

namespace {

bool writeAll(int fd, const char* data, std::size_t size) {
    while (size > 0) {
        const ssize_t written = ::write(fd, data, size);
        if (written < 0) {
            if (errno == EINTR)
                continue;
            return false;
        }
        data += written;
        size -= static_cast<std::size_t>(written);
    }
    return true;
}

} // namespace

ResultFile::ResultFile(const std::string& path, Start start)
    : path_(path), temporary_(temporaryPath(path)) {
    // Never through a link, and never waiting on a pipe that holds the name.
    fd_ =
        ::open(temporary_.c_str(), O_WRONLY | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0666);
    if (fd_ < 0)
        fail(" (through " + visibleName(temporary_) + ")");
    // The lock tells a temporary left by a run that was killed, which is taken over, from one
    // that another run is writing now, which is not touched.
    if (::flock(fd_, LOCK_EX | LOCK_NB) != 0) {
        const bool busy = errno == EWOULDBLOCK;
        ::close(fd_);
        fd_ = -1;
        if (busy)
            throw TaskError("Cannot write " + visibleName(path_) +
                            ": another run is writing it at this moment; run the task again "
                            "when that run has finished");
        fail("");
    }
    struct stat status {};
    if (::fstat(fd_, &status) != 0 || !S_ISREG(status.st_mode)) {
        ::close(fd_);
        fd_ = -1;
        throw TaskError("Cannot write " + visibleName(path_) + ": " + visibleName(temporary_) +
                        " is in the way and is not a regular file");
    }
    if (status.st_size > 0 && ::ftruncate(fd_, 0) != 0) // a temporary left by a killed run
        fail("");
    if (start == Start::FromFinal)
        copyFinal();
}

// A merge that goes on after its result was made whole starts from that result.
void ResultFile::copyFinal() {
    const int final = ::open(path_.c_str(), O_RDONLY | O_CLOEXEC);
    if (final < 0)
        return; // nothing to go on from
    const std::unique_ptr<char[]> block = std::make_unique_for_overwrite<char[]>(1 << 16);
    ssize_t got = 0;
    while ((got = ::read(final, block.get(), 1 << 16)) > 0 || (got < 0 && errno == EINTR))
        if (got > 0 && !writeAll(fd_, block.get(), static_cast<std::size_t>(got))) {
            ::close(final);
            fail("");
        }
    ::close(final);
}

void ResultFile::write(const char* data, std::size_t size) {
    if (!writeAll(fd_, data, size))
        fail("");
}

// The rename comes before the close, while the lock still keeps any other run off the
// temporary. The data is not forced to the disk first: results can always be made again from
// the sources, which a run never changes, and forcing them would make every run wait on the
// disk; on ext4, Debian's default, a rename over an older file orders the data before it.
void ResultFile::commit() {
    if (::rename(temporary_.c_str(), path_.c_str()) != 0)
        fail("");
    const int fd = fd_;
    fd_ = -1;
    if (::close(fd) != 0)
        fail("");
}

void ResultFile::abandon() noexcept {
    if (fd_ < 0)
        return;
    ::unlink(temporary_.c_str());
    ::close(fd_);
    fd_ = -1;
}

#endif

ResultFile::~ResultFile() {
    abandon();
}

} // namespace morlevant
