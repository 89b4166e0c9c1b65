#include "engine/TaskSources.h"

#include "engine/io/ResultFile.h"
#include "taskdef/FilePath.h"
#include "taskdef/TaskError.h"
#include "taskdef/VisibleName.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>

namespace morlevant {

namespace {

// Why the source cannot be read as a text file, or nothing when it can.
std::string unusableReason(const std::string& path) {
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(toFsPath(path), error);
    if (error || !std::filesystem::exists(status))
        return "it is missing";
    if (std::filesystem::is_directory(status))
        return "it is a folder, not a file";
    if (!std::filesystem::is_regular_file(status))
        return "it is not a regular file";
    return {};
}

} // namespace

TaskSources::TaskSources(const std::vector<std::string>& paths) : paths_(paths) {
    for (const std::string& path : paths_) {
        if (const std::string reason = unusableReason(path); !reason.empty())
            throw TaskError("The source file " + visibleName(path) +
                            " cannot be worked: " + reason);
        if (const auto identity = fileIdentity(path))
            identities_.insert(*identity);
    }
}

void TaskSources::refuseToOverwrite(const std::string& result, const std::string& what) const {
    // The result is written under its temporary name first, which must not be a source either.
    for (const std::string& name : {result, ResultFile::temporaryPath(result)}) {
        const auto identity = fileIdentity(name);
        if (identity && identities_.contains(*identity))
            throw TaskError("Cannot write " + what + " " + visibleName(result) + ": " +
                            (name == result ? "it" : visibleName(name)) +
                            " is a source file of the task (or a link to one), which is never "
                            "changed; take it out of the task or rename it");
    }
}

} // namespace morlevant
