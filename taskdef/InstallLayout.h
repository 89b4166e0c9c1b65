#pragma once

#include <string>

namespace morlevant {

// The folder of an installed Morlevant's shared files (help page, icons), found from the folder
// of its programs by the relative path the build fixed for the install.
std::string installedDataFolder(const std::string& executableFolder);

// An installed program is one whose shared files lie where the install puts them; it keeps its
// tasks in the per-user data folder, even when its own folder is writable (a ~/.local prefix).
bool isInstalledProgram(const std::string& executableFolder);

} // namespace morlevant
