#include "engine/io/Folders.h"

#include "taskdef/FilePath.h"
#include "taskdef/TaskError.h"
#include "taskdef/VisibleName.h"

#include <filesystem>
#include <system_error>

namespace morlevant {

bool FolderExists(const std::string& path) {
    std::error_code error;
    return std::filesystem::is_directory(toFsPath(path), error);
}

bool createFolderWhenMissing(const std::string& path) {
    if (FolderExists(path))
        return false;
    std::error_code error;
    std::filesystem::create_directory(toFsPath(path), error);
    if (error)
        throw TaskError("Cannot create the folder " + visibleName(path) + ": " + error.message());
    if (!FolderExists(path))
        throw TaskError("Cannot create the folder " + visibleName(path) +
                        ": a file of that name is in the way");
    return true;
}

void removeFolderIfEmpty(const std::string& path) {
    std::error_code ignored;
    std::filesystem::remove(toFsPath(path), ignored); // removes only an empty folder
}

} // namespace morlevant
