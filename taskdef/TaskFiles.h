#pragma once

#include "taskdef/TaskPageSettings.h"

#include <optional>
#include <string>
#include <string_view>
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

// Whether a path can stand in the ".edt" list, which keeps one name per line: not when it
// holds a line feed or a carriage return, since the list would read it back as two names.
bool isListablePath(std::string_view path);

// The ".edt" list: one path per line, CR LF after each. A tag holding a NUL contributes the
// part after its first NUL, a tag without one is written whole. Throws TaskError, writing
// nothing, when a path is not listable (see isListablePath).
void writeTaskFileList(const std::string& path, const std::vector<std::string>& childTags);
// The paths of the list, blank lines passed over. Throws TaskError naming the entry when one is
// not a full path: the window lists every file with its full path, so a relative entry is the
// tail of a name that a line break cut in two, or was written by hand.
std::vector<std::string> readTaskFileList(const std::string& path);
// The full paths of a list of files, one a line (blank lines pass over). Throws TaskError naming
// the list (`name`), the line and `remedy` for a line that is not a full path.
std::vector<std::string> parseFileList(std::string_view text, const std::string& name,
                                       const std::string& remedy);

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

// What "&Edit Task" does before an editor that opens with the task's settings: creates the
// "task" folder and checks the task name and the children's paths as prepareTaskForEditing
// does, but writes nothing, so that a cancelled edit leaves the task as it was (the caller writes
// the file list once the editor confirmed). Returns the task's settings when they are complete,
// nothing when they are not (the editor then starts from its defaults).
std::optional<TaskPageSettings> settingsForEditing(const std::string& programFolder,
                                                   const std::string& taskName,
                                                   const std::vector<std::string>& childTags);

} // namespace morlevant
