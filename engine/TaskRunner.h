#pragma once

#include "engine/io/LineReader.h"

#include <atomic>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace morlevant {

class RunProgress;

// What the window or the command line passes to a run, and how the run talks back to it.
struct RunRequest {
    std::string programFolder; // holds "task/" and "outcome/merge/"
    std::string taskName;      // the task's caption, used unaltered as a file name
    // Files of the task: the progress maximum and the end of a merge. The window gives the
    // task's files in the tree; without one the run counts the files of the list it reads.
    std::optional<int> fileCount;
    // Turned true by the caller to stop the run at the next block it reads: RunTask then throws
    // RunStopped, the result being written is dropped and the older one stays.
    const std::atomic<bool>* stop = nullptr;
    // Another run of the same task under way is waited for (the command line); without this
    // the run is refused with a TaskError (the window).
    bool waitForOtherRun = false;
    // Files worked at once, each on a thread of its own; 1 works them one after the other on
    // the calling thread. A merge is always one at a time.
    int jobs = 1;
    // The files to work instead of the task's list (morlevant-run --files-from), each a full
    // path; checked as the list is.
    std::optional<std::vector<std::string>> files = std::nullopt;
    // Filled in while the run lasts, for another thread to show.
    RunProgress* progress = nullptr;
};

struct RunCallbacks {
    // After each file: files done so far and the total (the file count). With files worked at
    // once, on the thread that finished the file, one call at a time.
    std::function<void(int done, int total)> progress;
    // A message the run shows in a box with an OK button (the column-piece message), in list
    // order; the run waits for it to return.
    std::function<void(const std::string& text)> message;
    // A merge has written its last file: show this folder in the file manager.
    std::function<void(const std::string& folder)> openFolder;
    // The run waits for another run of the same task to end.
    std::function<void()> waiting;
};

// Runs the task over every file of its list, holding the task's lock while it lasts. Throws
// TaskError naming the file and the cause, or RunStopped when asked to stop; files finished
// before are kept, and every result is whole: the one being written when the run ended is
// dropped and the older one of its name stays. Source files are never opened for writing.
void RunTask(const RunRequest& request, const RunCallbacks& callbacks);

} // namespace morlevant
