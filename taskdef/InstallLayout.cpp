#include "taskdef/InstallLayout.h"

#include "taskdef/FilePath.h"
#include "taskdef/TaskFiles.h"

#include <filesystem>
#include <fstream>

namespace morlevant {

namespace {

bool isWritableFolder(const std::string& folder) {
    std::error_code error;
    if (!std::filesystem::is_directory(toFsPath(folder), error))
        return false;
    // Permission bits do not tell what the current user may do; a probe file does.
    const std::filesystem::path probe = toFsPath(folder) / ".morlevant-write-probe";
    {
        std::ofstream out(probe, std::ios::binary | std::ios::trunc);
        if (!out)
            return false;
    }
    std::filesystem::remove(probe, error);
    return true;
}

} // namespace

std::string resolveProgramFolder(const ProgramSurroundings& surroundings) {
    if (!surroundings.homeVariable.empty())
        return surroundings.homeVariable;
    // An installed program's folder is not even probed: it may be /usr/bin, writable by root.
    if (!isInstalledProgram(surroundings.executableFolder) &&
        isWritableFolder(surroundings.executableFolder))
        return surroundings.executableFolder;
    return surroundings.userDataFolder;
}

std::error_code createMergeFolder(const std::string& programFolder) {
    std::error_code error;
    std::filesystem::create_directories(toFsPath(mergeFolder(programFolder)), error);
    return error;
}

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
