#pragma once

#include <string>
#include <system_error>

namespace morlevant {

// What a program learns of its surroundings once, at start-up: its main fills it in from the
// environment and Qt, tests with fixed values.
struct ProgramSurroundings {
    std::string homeVariable;     // MORLEVANT_HOME, empty when unset
    std::string executableFolder; // the folder of the program
    std::string userDataFolder;   // the per-user data folder, the last resort
};

// The program folder, which holds "task/" and "outcome/merge/": the home variable when set;
// else the executable's folder when it is writable and not an installed one; else the per-user
// data folder.
std::string resolveProgramFolder(const ProgramSurroundings& surroundings);

// Creates the program folder's "outcome/merge/", and any folder above it that is missing: a
// merge writes there and does not create it. The error, when it cannot.
std::error_code createMergeFolder(const std::string& programFolder);

// The folder of an installed Morlevant's shared files (help page, icons), found from the folder
// of its programs by the relative path the build fixed for the install.
std::string installedDataFolder(const std::string& executableFolder);

// An installed program is one whose shared files lie where the install puts them; it keeps its
// tasks in the per-user data folder, even when its own folder is writable (a ~/.local prefix).
bool isInstalledProgram(const std::string& executableFolder);

} // namespace morlevant
