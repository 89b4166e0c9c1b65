#include "taskdef/InstallLayout.h"

#include <filesystem>

namespace morlevant {

std::string installedDataFolder(const std::string& executableFolder) {
    return (std::filesystem::path(executableFolder) / MORLEVANT_DATA_FROM_BIN)
        .lexically_normal()
        .string();
}

bool isInstalledProgram(const std::string& executableFolder) {
    std::error_code error;
    return !executableFolder.empty() &&
           std::filesystem::is_regular_file(
               std::filesystem::path(installedDataFolder(executableFolder)) / "help" / "index.html",
               error);
}

} // namespace morlevant
