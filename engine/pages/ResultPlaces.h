#pragma once

#include "engine/io/Folders.h"

#include <string>

namespace morlevant {

class TaskSources;

// The folder that receives the pieces of a divide of `path`: its folder followed by its name
// without the extension ("/in/report.txt" gives "/in/report/"). Where that name would be the
// file itself (no extension: "notes"), its own folder or one above it (".notes", "...txt"),
// the pieces go to the whole name followed by " pieces" ("notes pieces", ".notes pieces").
std::string divideFolder(const std::string& path);

// Refuses, before anything is written, a result file that is a source of the task (or a link
// to one) or that a folder stands in the way of. `what` names the result in the message.
void checkResultFile(const TaskSources& sources, const std::string& path, const std::string& what);

// Refuses, before anything is written, a divide folder that a file stands in the way of.
void checkDivideFolder(const std::string& folder);

// Runs `work` with the divide folder made when missing. When the work fails, a folder made for
// it is removed again if nothing is left in it.
template <typename Work> void inDivideFolder(const std::string& folder, Work work) {
    const bool made = createFolderWhenMissing(folder);
    try {
        work();
    } catch (...) {
        if (made)
            removeFolderIfEmpty(folder);
        throw;
    }
}

} // namespace morlevant
