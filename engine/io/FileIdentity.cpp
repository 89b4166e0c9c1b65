#include "engine/io/FileIdentity.h"

#ifdef _WIN32
#include "taskdef/FilePath.h"

#include <io.h>
#include <sys/stat.h>
#include <windows.h>
#else
#include <sys/stat.h>
#endif

namespace morlevant {

#ifdef _WIN32

std::optional<FileIdentity> fileIdentity(const std::string& path) {
    const HANDLE file = CreateFileW(toFsPath(path).c_str(), 0,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return std::nullopt;
    BY_HANDLE_FILE_INFORMATION info{};
    const bool known = GetFileInformationByHandle(file, &info) != 0;
    CloseHandle(file);
    if (!known)
        return std::nullopt;
    return FileIdentity{info.dwVolumeSerialNumber,
                        (std::uint64_t{info.nFileIndexHigh} << 32) | info.nFileIndexLow};
}

std::optional<FileVersion> fileVersion(std::FILE* file) {
    struct _stat64 status {};
    if (_fstat64(_fileno(file), &status) != 0)
        return std::nullopt;
    FileVersion version;
    version.regular = (status.st_mode & _S_IFMT) == _S_IFREG;
    version.folder = (status.st_mode & _S_IFMT) == _S_IFDIR;
    version.size = static_cast<std::uint64_t>(status.st_size);
    // The handle's times count in 100 ns, where the C library's count in seconds.
    BY_HANDLE_FILE_INFORMATION info{};
    if (GetFileInformationByHandle(reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(file))),
                                   &info)) {
        version.identity = {info.dwVolumeSerialNumber,
                            (std::uint64_t{info.nFileIndexHigh} << 32) | info.nFileIndexLow};
        const auto ticks = [](FILETIME time) {
            return static_cast<std::int64_t>((std::uint64_t{time.dwHighDateTime} << 32) |
                                             time.dwLowDateTime);
        };
        version.modified = ticks(info.ftLastWriteTime) * 100;
        version.changed = version.modified;
    }
    return version;
}

#else

std::optional<FileVersion> fileVersion(std::FILE* file) {
    struct stat status {};
    if (::fstat(::fileno(file), &status) != 0)
        return std::nullopt;
    constexpr std::int64_t second = 1'000'000'000;
    FileVersion version;
    version.identity = {static_cast<std::uint64_t>(status.st_dev),
                        static_cast<std::uint64_t>(status.st_ino)};
    version.regular = S_ISREG(status.st_mode);
    version.folder = S_ISDIR(status.st_mode);
    version.size = static_cast<std::uint64_t>(status.st_size);
    version.modified = status.st_mtim.tv_sec * second + status.st_mtim.tv_nsec;
    version.changed = status.st_ctim.tv_sec * second + status.st_ctim.tv_nsec;
    return version;
}

std::optional<FileIdentity> fileIdentity(const std::string& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0)
        return std::nullopt;
    return FileIdentity{static_cast<std::uint64_t>(status.st_dev),
                        static_cast<std::uint64_t>(status.st_ino)};
}

#endif

} // namespace morlevant
