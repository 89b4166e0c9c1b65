#pragma once

#include <string>
#include <vector>

namespace morlevant {

// The "task" folder below the program folder, with a trailing separator.
std::string taskFolder(const std::string& programFolder);
// program folder + "task/" + task name + ".ttp" / ".edt".
std::string taskSettingsPath(const std::string& programFolder, const std::string& taskName);
std::string taskFileListPath(const std::string& programFolder, const std::string& taskName);
// program folder + "task/" + task name + ".lock": held by a run of the task while it lasts.
std::string taskLockPath(const std::string& programFolder, const std::string& taskName);
// program folder + "outcome/merge/", with a trailing separator.
std::string mergeFolder(const std::string& programFolder);

// The ".edt" list: one path per line, CR LF after each. A tag holding a NUL contributes the
// part after its first NUL, a tag without one is written whole.
void writeTaskFileList(const std::string& path, const std::vector<std::string>& childTags);
std::vector<std::string> readTaskFileList(const std::string& path);

// Whether the task's settings are complete (see hasCompleteTaskPageSettings), so that it can
// run; false also for a task name that cannot be a file name. Throws nothing.
bool isTaskEdited(const std::string& programFolder, const std::string& taskName);

enum class PrepareResult { Prepared, NoFiles };

// What "&Edit Task" does before the editor opens: NoFiles (the caller says "You didn't select
// files") when the task has no children; otherwise creates the "task" folder, writes the file
// list from the children's tags in tree order and empties the task's ".ttp". Throws TaskError
// when a file cannot be written or the task name cannot be a file name.
PrepareResult prepareTaskForEditing(const std::string& programFolder, const std::string& taskName,
                                    const std::vector<std::string>& childTags);

} // namespace morlevant
