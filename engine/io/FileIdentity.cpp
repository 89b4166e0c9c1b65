#include "engine/io/FileIdentity.h"

#ifdef _WIN32
#include "taskdef/FilePath.h"

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

#else

std::optional<FileIdentity> fileIdentity(const std::string& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0)
        return std::nullopt;
    return FileIdentity{static_cast<std::uint64_t>(status.st_dev),
                        static_cast<std::uint64_t>(status.st_ino)};
}

#endif

} // namespace morlevant
