#pragma once

#include <string>

namespace morlevant {

// Why newName cannot be a task's name, as a message for the user; empty when it can be. A task's
// name is the name of its files in the program folder's "task" folder and a line of the
// workspace file, so it must be a file name (not empty, no separator or NUL, short enough) and
// hold no line break.
std::string taskNameProblem(const std::string& newName);

// Gives the task's settings file and file list (those it has) the new name. The task's lock file
// stays: it holds nothing, and a run makes the lock of its name when missing. Throws TaskError,
// having moved nothing, when a file of the new name is already there (another task's), or when
// a move fails.
void renameTaskFiles(const std::string& programFolder, const std::string& oldName,
                     const std::string& newName);

} // namespace morlevant
