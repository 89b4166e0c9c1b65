#pragma once

#include <functional>
#include <optional>
#include <string>

namespace morlevant {

// What the window or the command line passes to a run, and how the run talks back to it.
struct RunRequest {
    std::string programFolder; // holds "task/" and "outcome/merge/"
    std::string taskName;      // the task's caption, used unaltered as a file name
    // Files of the task: the progress maximum and the end of a merge. The window gives the
    // task's files in the tree; without one the run counts the files of the list it reads.
    std::optional<int> fileCount;
};

struct RunCallbacks {
    // After each file: files done so far and the total (the file count).
    std::function<void(int done, int total)> progress;
    // A message the run shows in a box with an OK button (the column-piece message).
    std::function<void(const std::string& text)> message;
    // A merge has written its last file: show this folder in the file manager.
    std::function<void(const std::string& folder)> openFolder;
};

// Runs the task over every file of its list. Throws TaskError naming the file and the cause;
// files written before the failure are kept. Source files are never opened for writing.
void RunTask(const RunRequest& request, const RunCallbacks& callbacks);

} // namespace morlevant
