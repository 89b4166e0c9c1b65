#pragma once

#include <cstddef>
#include <string>

namespace morlevant {

// Length in characters of the longest line of a text file; 0 for a file without lines.
std::size_t LongestLineLength(const std::string& path);

bool FolderExists(const std::string& path);

// Creates the folder (one level) when it does not exist. Throws TaskError naming the folder
// when it cannot be made, for example because a file of that name is in the way.
void createFolderWhenMissing(const std::string& path);

// The folder that receives the pieces of a divide of `path`: its folder followed by its name
// without the extension ("/in/report.txt" gives "/in/report"), with a trailing separator.
std::string divideFolder(const std::string& path);

// Removes a file the run made for itself; throws TaskError when it cannot.
void removeFile(const std::string& path);

} // namespace morlevant
