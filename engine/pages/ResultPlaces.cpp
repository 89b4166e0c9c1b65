#include "engine/pages/ResultPlaces.h"

#include "engine/TaskSources.h"
#include "taskdef/FilePath.h"
#include "taskdef/PathNames.h"
#include "taskdef/TaskError.h"
#include "taskdef/VisibleName.h"

#include <filesystem>
#include <system_error>

namespace morlevant {

std::string divideFolder(const std::string& path) {
    const std::string folder = GetFilePath(path);
    const std::string fileName = path.substr(folder.size());
    std::string name = GetMainName(path);
    if (name == fileName || name.find_first_not_of('.') == std::string::npos)
        name = fileName + " pieces";
    return folder + name + pathSeparator;
}

void checkResultFile(const TaskSources& sources, const std::string& path, const std::string& what) {
    sources.refuseToOverwrite(path, what);
    if (FolderExists(path))
        throw TaskError("Cannot write " + what + " " + visibleName(path) +
                        ": a folder of that name is in the way");
}

void checkDivideFolder(const std::string& folder) {
    // Asked with its trailing separator, a file in the way would not be found at all.
    const std::filesystem::path named = toFsPath(folder).parent_path();
    std::error_code error;
    if (std::filesystem::exists(named, error) && !std::filesystem::is_directory(named, error))
        throw TaskError("Cannot create the folder " + visibleName(folder) +
                        " for the pieces: a file of that name is in the way");
}

} // namespace morlevant
