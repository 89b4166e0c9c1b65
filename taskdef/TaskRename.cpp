#include "taskdef/TaskRename.h"

#include "taskdef/FilePath.h"
#include "taskdef/PathNames.h"
#include "taskdef/TaskError.h"
#include "taskdef/TaskFiles.h"
#include "taskdef/VisibleName.h"

#include <array>
#include <filesystem>
#include <system_error>
#include <vector>

namespace morlevant {

namespace {

// The longest file a task has is NAME.lock; most file systems hold 255 bytes in a name.
constexpr std::size_t longestTaskName = 255 - std::string_view(".lock").size();

struct TaskFile {
    std::string from;
    std::string to;
};

} // namespace

std::string taskNameProblem(const std::string& newName) {
    if (newName.empty())
        return "The task name is empty: a task needs a name, which its files take";
    const std::string quoted = "The task name \"" + visibleName(newName) + "\"";
    if (const std::size_t bad = newName.find_first_of(fileNameBreakers); bad != std::string::npos)
        return quoted + " cannot be a file name: it holds " +
               (newName[bad] == '\0' ? "a NUL character" : "\"" + newName.substr(bad, 1) + "\"");
    // The workspace file keeps each caption on one line.
    if (newName.find_first_of("\r\n") != std::string::npos)
        return quoted + " holds a line break: a task's name is one line";
    if (newName.size() > longestTaskName)
        return quoted + " is too long for a file name: " + std::to_string(newName.size()) +
               " bytes, at most " + std::to_string(longestTaskName);
    return {};
}

void renameTaskFiles(const std::string& programFolder, const std::string& oldName,
                     const std::string& newName) {
    // A task whose name cannot be a file name never had files.
    if (oldName.empty() || oldName.find_first_of(fileNameBreakers) != std::string::npos)
        return;
    const std::array<TaskFile, 2> files = {{
        {taskSettingsPath(programFolder, oldName), taskSettingsPath(programFolder, newName)},
        {taskFileListPath(programFolder, oldName), taskFileListPath(programFolder, newName)},
    }};
    std::error_code error;
    for (const TaskFile& file : files) {
        // A name that differs only in case names the same files where case does not count.
        if (std::filesystem::exists(toFsPath(file.to), error) &&
            !std::filesystem::equivalent(toFsPath(file.from), toFsPath(file.to), error))
            throw TaskError("A task named \"" + visibleName(newName) +
                            "\" already has its files in the program folder (" + file.to +
                            "): choose another name");
    }
    std::vector<const TaskFile*> moved;
    for (const TaskFile& file : files) {
        if (!std::filesystem::exists(toFsPath(file.from), error))
            continue;
        std::filesystem::rename(toFsPath(file.from), toFsPath(file.to), error);
        if (!error) {
            moved.push_back(&file);
            continue;
        }
        const std::string cause = error.message();
        // Nothing half renamed: what moved before goes back.
        for (const TaskFile* back : moved)
            std::filesystem::rename(toFsPath(back->to), toFsPath(back->from), error);
        throw TaskError("Cannot rename " + file.from + " to " + file.to + ": " + cause);
    }
}

} // namespace morlevant
