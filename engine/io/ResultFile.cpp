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

#ifdef _WIN32
#include <share.h>
#else
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
    // A temporary left by a killed run goes; one that another run has open cannot be removed,
    // nor opened below.
    std::error_code error;
    std::filesystem::remove(toFsPath(temporary_), error);
    if (start == Start::FromFinal) {
        std::filesystem::copy_file(toFsPath(path_), toFsPath(temporary_), error);
        if (error && error != std::errc::no_such_file_or_directory)
            throw TaskError("Cannot write " + visibleName(path_) + ": " + error.message());
        if (!error)
            size_ = std::filesystem::file_size(toFsPath(temporary_), error);
        if (error)
            size_ = 0;
    }
    // No other run or program may open the temporary while it is written.
    file_ = _wfsopen(toFsPath(temporary_).c_str(), start == Start::FromFinal ? L"ab" : L"wb",
                     _SH_DENYRW);
    if (!file_)
        fail("");
}

void ResultFile::write(const char* data, std::size_t size) {
    if (std::fwrite(data, 1, size, static_cast<std::FILE*>(file_)) != size)
        fail("");
    size_ += size;
}

void ResultFile::commit() {
    std::FILE* file = static_cast<std::FILE*>(file_);
    file_ = nullptr;
    std::error_code error;
    if (std::fclose(file) == 0)
        std::filesystem::rename(toFsPath(temporary_), toFsPath(path_), error);
    else
        error = std::error_code(errno, std::generic_category());
    if (error) {
        std::error_code ignored;
        std::filesystem::remove(toFsPath(temporary_), ignored);
        throw TaskError("Cannot write " + visibleName(path_) + ": " + error.message());
    }
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

// Whether the open file is still the one under `path`, not renamed away or replaced.
bool stillAt(int fd, const std::string& path) {
    struct stat open {};
    struct stat named {};
    return ::fstat(fd, &open) == 0 && ::lstat(path.c_str(), &named) == 0 &&
           open.st_dev == named.st_dev && open.st_ino == named.st_ino;
}

} // namespace

ResultFile::ResultFile(const std::string& path, Start start)
    : path_(path), temporary_(temporaryPath(path)) {
    try {
        makeTemporary();
        if (start == Start::FromFinal)
            copyFinal();
    } catch (...) {
        abandon();
        throw;
    }
}

// The temporary is always a new file of this run's own, locked while it is written. What
// already stands under its name is either being written by another run now, which its lock
// tells and which is left alone, or anything else: a temporary left by a run that was killed,
// a link, a pipe. That name is removed, never written through or emptied, so no other file is
// changed by way of it.
void ResultFile::makeTemporary() {
    for (int attempt = 0; attempt < 8; ++attempt) {
        fd_ =
            ::open(temporary_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666);
        if (fd_ >= 0) {
            // Another run that took this new file for a leftover has it, or has removed it.
            if (::flock(fd_, LOCK_EX | LOCK_NB) == 0 && stillAt(fd_, temporary_))
                return;
            ::close(fd_); // the name is the other run's now: it is not removed
            fd_ = -1;
            refuseBusy();
        }
        if (errno != EEXIST)
            fail(" (through " + visibleName(temporary_) + ")");
        removeLeftover();
    }
    refuseBusy();
}

void ResultFile::removeLeftover() {
    const int fd = ::open(temporary_.c_str(), O_WRONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0) {
        // A link or a pipe under the name: the name goes, whatever it leads to stays.
        if ((errno == ELOOP || errno == ENXIO) && ::unlink(temporary_.c_str()) == 0)
            return;
        if (errno == ENOENT) // gone meanwhile
            return;
        fail(" (through " + visibleName(temporary_) + ")");
    }
    struct stat status {};
    const bool regular = ::fstat(fd, &status) == 0 && S_ISREG(status.st_mode);
    if (regular && ::flock(fd, LOCK_EX | LOCK_NB) != 0) {
        ::close(fd);
        refuseBusy();
    }
    if (!regular || stillAt(fd, temporary_))
        ::unlink(temporary_.c_str());
    ::close(fd);
}

void ResultFile::refuseBusy() {
    throw TaskError("Cannot write " + visibleName(path_) +
                    ": another run is writing it at this moment; try again when it has "
                    "finished");
}

// A merge that goes on after its result was made whole starts from that result.
void ResultFile::copyFinal() {
    const int final = ::open(path_.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (final < 0) {
        if (errno == ENOENT)
            return; // nothing to go on from
        fail("");
    }
    struct stat status {};
    if (::fstat(final, &status) != 0 || !S_ISREG(status.st_mode)) {
        ::close(final);
        throw TaskError("Cannot write " + visibleName(path_) + ": it is not a regular file");
    }
    const std::unique_ptr<char[]> block = std::make_unique_for_overwrite<char[]>(1 << 16);
    while (true) {
        const ssize_t got = ::read(final, block.get(), 1 << 16);
        if (got == 0)
            break;
        if ((got < 0 && errno != EINTR) ||
            (got > 0 && !writeAll(fd_, block.get(), static_cast<std::size_t>(got)))) {
            const int reason = errno;
            ::close(final);
            errno = reason;
            fail("");
        }
        if (got > 0)
            size_ += static_cast<std::uint64_t>(got);
    }
    ::close(final);
}

void ResultFile::write(const char* data, std::size_t size) {
    if (!writeAll(fd_, data, size))
        fail("");
    size_ += size;
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
