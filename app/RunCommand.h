#pragma once

#include "taskdef/InstallLayout.h"

#include <atomic>
#include <functional>
#include <istream>
#include <ostream>
#include <string>
#include <vector>

namespace morlevant {

struct RunStopped;

// What the command-line runner learns from its surroundings; main() fills it in from the
// environment and Qt, tests with fixed values.
struct RunEnvironment {
    // Where the program folder is looked for when "--home" does not name one.
    ProgramSurroundings surroundings;
    // Shows a folder in the file manager; used for "--open" after a merge.
    std::function<void(const std::string& folder)> openFolder;
    // Turns true when the run is asked to stop (Ctrl+C); the signal that asked, 0 for none.
    const std::atomic<bool>* stop = nullptr;
    std::function<int()> stopSignal = {};
    // Read for "--files-from -".
    std::istream* in = nullptr;
    // Files worked at once when "--jobs" does not say: the machine's cores.
    int defaultJobs = 1;
};

// morlevant-run [--home DIR] [--open] [--jobs N] [--files-from LIST] TASK: runs a task as
// "&Run Task" does, without a window.
// The progress bar goes to the error stream when that is a terminal, "Vell down!" to the output
// stream at the end; a failure is one line on the error stream and exit code 1, a command line
// that does not say what to run exit code 2. A run stopped by a signal says so in one line and
// exits 128 + the signal (130 for SIGINT, 143 for SIGTERM). Another run of the same task under
// way is waited for.
class RunCommand {
public:
    RunCommand(RunEnvironment environment, std::ostream& out, std::ostream& err,
               bool errIsTerminal);

    // `arguments` without the program name; returns the exit code.
    int run(const std::vector<std::string>& arguments);

    static const char* const usage;
    static constexpr int usageErrorCode = 2;

private:
    int fail(const std::string& message);
    int interrupted(const RunStopped& stopped);
    int preview(const std::string& home, const std::string& task, std::size_t rows);
    void showProgress(int done, int total);

    RunEnvironment environment_;
    std::ostream& out_;
    std::ostream& err_;
    bool errIsTerminal_;
    bool barShown_ = false; // the bar's line is open on the terminal
};

} // namespace morlevant
