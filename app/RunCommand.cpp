#include "app/RunCommand.h"

#include "MorlevantVersion.h"
#include "engine/TaskRunner.h"
#include "engine/io/LineReader.h"
#include "taskdef/FilePath.h"
#include "taskdef/InstallLayout.h"
#include "taskdef/TaskError.h"
#include "taskdef/TaskFiles.h"
#include "taskdef/VisibleName.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <system_error>

namespace morlevant {

namespace {

// A command line that does not say what to run: exit code 2, apart from failed runs.
struct UsageError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

struct Options {
    std::optional<std::string> home;
    bool open = false;
    bool help = false;
    bool version = false;
    std::string task;
};

Options parse(const std::vector<std::string>& arguments) {
    Options options;
    bool taskGiven = false;
    bool optionsEnded = false;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        if (!optionsEnded && argument == "--") {
            optionsEnded = true;
        } else if (!optionsEnded && (argument == "--help" || argument == "-h")) {
            options.help = true;
        } else if (!optionsEnded && argument == "--version") {
            options.version = true;
        } else if (!optionsEnded && argument == "--open") {
            options.open = true;
        } else if (!optionsEnded && argument == "--home") {
            if (i + 1 == arguments.size())
                throw UsageError("--home needs a folder");
            options.home = arguments[++i];
        } else if (!optionsEnded && argument.starts_with("--home=")) {
            options.home = argument.substr(7);
        } else if (!optionsEnded && argument.size() > 1 && argument[0] == '-') {
            throw UsageError("unknown option " + argument);
        } else if (taskGiven) {
            throw UsageError("only one task can be run at a time; put a task name with blanks "
                             "in quotes");
        } else {
            options.task = argument;
            taskGiven = true;
        }
    }
    if (!taskGiven && !options.help && !options.version)
        throw UsageError("no task named");
    return options;
}

// Unlike the window, the command line refuses a program folder that is not there: it holds the
// task to run, so a missing one is a mistyped name rather than a first start.
void prepareProgramFolder(const std::string& home) {
    if (home.empty())
        throw TaskError("The program folder given with --home is empty: name a folder");
    std::error_code error;
    if (!std::filesystem::is_directory(toFsPath(home), error))
        throw TaskError("The program folder " + home + " does not exist");
    if (const std::error_code failed = createMergeFolder(home))
        throw TaskError("Cannot create the folder " + mergeFolder(home) + ": " + failed.message());
}

// Where a task without its file list was looked for when no --home chose the folder: the task
// may have been edited under another program folder.
std::string folderLookedIn(const Options& options, const std::string& home) {
    std::error_code error;
    if (options.home || home.empty() ||
        std::filesystem::exists(toFsPath(taskFolder(home) + options.task + ".edt"), error))
        return {};
    return " (looked in the program folder " + home +
           "; choose another with --home DIR or MORLEVANT_HOME)";
}

} // namespace

const char* const RunCommand::usage =
    "Usage: morlevant-run [--home DIR] [--open] TASK\n"
    "Runs the task TASK as \"Run Task\" does, without a window: reads DIR/task/TASK.ttp and\n"
    "DIR/task/TASK.edt and writes the results beside the task's files.\n"
    "\n"
    "  --home DIR  the program folder; default MORLEVANT_HOME, else the program's own folder\n"
    "              when it is writable and not installed, else the per-user data folder\n"
    "  --open      show the merge folder in the file manager when a merge ends\n"
    "  --help      print this help\n"
    "  --version   print the version\n"
    "\n"
    "Exit status: 0 when the run ends, 1 when it fails, 2 when the command line is wrong.\n";

RunCommand::RunCommand(RunEnvironment environment, std::ostream& out, std::ostream& err,
                       bool errIsTerminal)
    : environment_(std::move(environment)), out_(out), err_(err), errIsTerminal_(errIsTerminal) {}

int RunCommand::run(const std::vector<std::string>& arguments) {
    Options options;
    try {
        options = parse(arguments);
    } catch (const UsageError& error) {
        fail(std::string(error.what()) + " (morlevant-run --help shows the usage)");
        return usageErrorCode;
    }
    if (options.help) {
        out_ << usage;
        return 0;
    }
    if (options.version) {
        out_ << "morlevant-run " << programVersion << '\n';
        return 0;
    }

    std::string home;
    try {
        home = options.home ? *options.home : resolveProgramFolder(environment_.surroundings);
        prepareProgramFolder(home);
        // The run counts the files of the list as it reads it.
        RunRequest request{home, options.task, std::nullopt};
        request.stop = environment_.stop;
        request.waitForOtherRun = true;

        RunCallbacks callbacks;
        callbacks.progress = [this](int done, int total) { showProgress(done, total); };
        callbacks.message = [this](const std::string& text) {
            if (barShown_) {
                err_ << '\n';
                barShown_ = false;
            }
            err_ << text << '\n';
        };
        if (options.open && environment_.openFolder)
            callbacks.openFolder = environment_.openFolder;
        callbacks.waiting = [this, &options] {
            err_ << "morlevant-run: waiting for another run of the task \"" << options.task
                 << "\" to finish" << std::endl;
        };
        RunTask(request, callbacks);
    } catch (const RunStopped& stopped) {
        return interrupted(stopped);
    } catch (const std::exception& error) {
        return fail(error.what() + folderLookedIn(options, home));
    }
    if (barShown_)
        err_ << '\n';
    out_ << "Vell down!\n";
    return 0;
}

int RunCommand::fail(const std::string& message) {
    if (barShown_)
        err_ << '\n';
    barShown_ = false;
    err_ << "morlevant-run: " << message << '\n';
    return 1;
}

int RunCommand::interrupted(const RunStopped& stopped) {
    if (barShown_)
        err_ << '\n';
    barShown_ = false;
    if (stopped.total == 0) {
        err_ << "morlevant-run: interrupted before the run began\n";
    } else {
        err_ << "morlevant-run: interrupted; ";
        if (!stopped.unfinished.empty())
            err_ << visibleName(stopped.unfinished)
                 << " was not finished and its result was left as it was; ";
        err_ << stopped.done << " of " << stopped.total << " files were finished\n";
    }
    const int signal = environment_.stopSignal ? environment_.stopSignal() : 0;
    return 128 + signal;
}

void RunCommand::showProgress(int done, int total) {
    if (!errIsTerminal_ || total <= 0)
        return;
    constexpr int width = 30;
    const int filled = std::min(width, done * width / total);
    err_ << "\r[" << std::string(static_cast<std::size_t>(filled), '#')
         << std::string(static_cast<std::size_t>(width - filled), '.') << "] " << done << '/'
         << total << (total == 1 ? " file" : " files") << std::flush;
    barShown_ = true;
}

} // namespace morlevant
