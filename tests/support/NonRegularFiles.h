#pragma once

// Files that are not regular files, for the tests of what refuses them (POSIX only).
#include <string>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace morlevant::testing {

// A named pipe that no one writes to: reading it would wait for ever.
inline bool makeFifo(const std::string& path) {
    return ::mkfifo(path.c_str(), 0600) == 0;
}

// A listening Unix socket bound to path; closed (and the path left behind) when it goes.
class UnixSocket {
public:
    explicit UnixSocket(const std::string& path) : fd_(::socket(AF_UNIX, SOCK_STREAM, 0)) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        path.copy(address.sun_path, sizeof(address.sun_path) - 1);
        bound_ = fd_ >= 0 &&
                 ::bind(fd_, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0;
    }
    ~UnixSocket() {
        if (fd_ >= 0)
            ::close(fd_);
    }
    UnixSocket(const UnixSocket&) = delete;
    UnixSocket& operator=(const UnixSocket&) = delete;

    bool bound() const { return bound_; }

private:
    int fd_;
    bool bound_ = false;
};

} // namespace morlevant::testing
