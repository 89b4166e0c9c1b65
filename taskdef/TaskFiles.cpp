#include "taskdef/TaskFiles.h"

#include "taskdef/FilePath.h"
#include "taskdef/PathNames.h"
#include "taskdef/TaskError.h"
#include "taskdef/TaskPageSettings.h"
#include "taskdef/TextLines.h"
#include "taskdef/VisibleName.h"
#include "taskdef/WholeFile.h"

#include <filesystem>
#include <system_error>

namespace morlevant {

namespace {

std::string withSeparator(const std::string& folder) {
    if (folder.empty() || pathSeparators.find(folder.back()) != std::string_view::npos)
        return folder;
    return folder + pathSeparator;
}

// The caption is used unaltered as a file name; one that holds a separator would write
// outside the "task" folder, so it is refused.
bool isStorableTaskName(std::string_view taskName) {
    return !taskName.empty() && taskName.find_first_of(fileNameBreakers) == std::string_view::npos;
}

const std::string& checkedTaskName(const std::string& taskName) {
    if (isStorableTaskName(taskName))
        return taskName;
    if (taskName.empty())
        throw TaskError("A task without a name cannot be stored: give the task a caption");
    const std::size_t bad = taskName.find_first_of(fileNameBreakers);
    const std::string shown =
        taskName[bad] == '\0' ? "a NUL character" : "\"" + taskName.substr(bad, 1) + "\"";
    throw TaskError("The task name \"" + visibleName(taskName) +
                    "\" cannot be a file name: it holds " + shown + "; rename the task");
}

std::string taskFile(const std::string& programFolder, const std::string& taskName,
                     const char* extension) {
    return taskFolder(programFolder) + checkedTaskName(taskName) + extension;
}

// The part of a node's tag that names its file: after the first NUL, or the whole tag.
std::string_view taggedPath(std::string_view tag) {
    const std::size_t nul = tag.find('\0');
    return nul == std::string_view::npos ? tag : tag.substr(nul + 1);
}

// Refuses, naming it, a child whose path the list could not keep.
void checkListable(const std::vector<std::string>& childTags) {
    for (const std::string& tag : childTags)
        if (!isListablePath(taggedPath(tag)))
            throw TaskError("The file \"" + visibleName(taggedPath(tag)) +
                            "\" cannot be a file of a task: its name holds a line break, and the "
                            "task file list keeps one name per line; rename the file");
}

// One level only: a missing program folder is an error, not something to build.
void createTaskFolder(const std::string& programFolder) {
    std::error_code error;
    std::filesystem::create_directory(toFsPath(taskFolder(programFolder)), error);
    if (error)
        throw TaskError("Cannot create the folder " + taskFolder(programFolder) + ": " +
                        error.message());
}

} // namespace

std::string taskFolder(const std::string& programFolder) {
    return withSeparator(programFolder) + "task" + pathSeparator;
}

std::string taskSettingsPath(const std::string& programFolder, const std::string& taskName) {
    return taskFile(programFolder, taskName, ".ttp");
}

std::string taskFileListPath(const std::string& programFolder, const std::string& taskName) {
    return taskFile(programFolder, taskName, ".edt");
}

std::string taskLockPath(const std::string& programFolder, const std::string& taskName) {
    return taskFile(programFolder, taskName, ".lock");
}

std::string mergeFolder(const std::string& programFolder) {
    return withSeparator(programFolder) + "outcome" + pathSeparator + "merge" + pathSeparator;
}

bool isListablePath(std::string_view path) {
    return path.find_first_of("\r\n") == std::string_view::npos;
}

void writeTaskFileList(const std::string& path, const std::vector<std::string>& childTags) {
    checkListable(childTags);
    std::string text;
    for (const std::string& tag : childTags)
        text.append(taggedPath(tag)).append("\r\n");
    writeWholeFile(path, text, "the task file list");
}

bool isTaskEdited(const std::string& programFolder, const std::string& taskName) {
    return isStorableTaskName(taskName) &&
           hasCompleteTaskPageSettings(taskSettingsPath(programFolder, taskName));
}

std::vector<std::string> parseFileList(std::string_view text, const std::string& name,
                                       const std::string& remedy) {
    // Blank lines name no file; they are passed over rather than reported as a missing file
    // with an empty name.
    std::vector<std::string> paths;
    const std::vector<std::string_view> lines = textLines(text);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (lines[i].empty())
            continue;
        if (!toFsPath(std::string(lines[i])).is_absolute())
            throw TaskError(name + " holds \"" + visibleName(lines[i]) + "\" on line " +
                            std::to_string(i + 1) + ", which is not a full path: " + remedy);
        paths.emplace_back(lines[i]);
    }
    return paths;
}

std::vector<std::string> readTaskFileList(const std::string& path) {
    return parseFileList(readWholeFile(path, "The task file list", "edit the task first"),
                         "The task file list " + path,
                         "every file of a task is listed with its full path; edit the task again");
}

PrepareResult prepareTaskForEditing(const std::string& programFolder, const std::string& taskName,
                                    const std::vector<std::string>& childTags) {
    if (childTags.empty())
        return PrepareResult::NoFiles;
    const std::string settingsPath = taskSettingsPath(programFolder, taskName);
    createTaskFolder(programFolder);
    writeTaskFileList(taskFileListPath(programFolder, taskName), childTags);
    // The settings are emptied until the editor confirms them, so a cancelled edit leaves a
    // task that must be edited again before it runs.
    writeWholeFile(settingsPath, "", "the task settings file");
    return PrepareResult::Prepared;
}

std::optional<TaskPageSettings> settingsForEditing(const std::string& programFolder,
                                                   const std::string& taskName,
                                                   const std::vector<std::string>& childTags) {
    const std::string settingsPath = taskSettingsPath(programFolder, taskName);
    createTaskFolder(programFolder);
    checkListable(childTags);
    if (!hasCompleteTaskPageSettings(settingsPath))
        return std::nullopt;
    return readTaskPageSettings(settingsPath);
}

} // namespace morlevant
