#pragma once

#include <cstddef>
#include <string>

namespace morlevant {

bool FolderExists(const std::string& path);

// Creates the folder (one level) when it does not exist; true when it made it. Throws
// TaskError naming the folder when it cannot be made, for example because a file of that name
// is in the way.
bool createFolderWhenMissing(const std::string& path);

// Removes a folder the run made when nothing is in it; never fails.
void removeFolderIfEmpty(const std::string& path);

} // namespace morlevant
