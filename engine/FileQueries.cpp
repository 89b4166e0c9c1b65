#include "FileQueries.h"

#include "FilePath.h"
#include "LineReader.h"
#include "PathNames.h"
#include "TaskError.h"
#include "Utf8.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace morlevant {

std::size_t LongestLineLength(const std::string& path) {
    LineReader reader(path);
    std::size_t longest = 0;
    std::string_view line;
    while (reader.next(line)) {
        // A line cannot hold more characters than bytes: skip the count when it cannot win.
        if (line.size() > longest)
            longest = std::max(longest, utf8CharCount(line));
    }
    return longest;
}

bool FolderExists(const std::string& path) {
    std::error_code error;
    return std::filesystem::is_directory(toFsPath(path), error);
}

void createFolderWhenMissing(const std::string& path) {
    if (FolderExists(path))
        return;
    std::error_code error;
    std::filesystem::create_directory(toFsPath(path), error);
    if (error)
        throw TaskError("Cannot create the folder " + path + ": " + error.message());
    if (!FolderExists(path))
        throw TaskError("Cannot create the folder " + path + ": a file of that name is in the way");
}

std::string divideFolder(const std::string& path) {
    const std::string folder = GetFilePath(path) + GetMainName(path);
    return folder + static_cast<char>(std::filesystem::path::preferred_separator);
}

void removeFile(const std::string& path) {
    std::error_code error;
    std::filesystem::remove(toFsPath(path), error);
    if (error)
        throw TaskError("Cannot delete " + path + ": " + error.message());
}

} // namespace morlevant
