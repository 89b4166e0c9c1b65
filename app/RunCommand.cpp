#include "app/RunCommand.h"

#include "MorlevantVersion.h"
#include "app/UnifiedDiff.h"
#include "engine/TaskRunner.h"
#include "engine/io/LineReader.h"
#include "engine/preview/TaskPreview.h"
#include "taskdef/FilePath.h"
#include "taskdef/InstallLayout.h"
#include "taskdef/TaskError.h"
#include "taskdef/TaskFiles.h"
#include "taskdef/TaskPageSettings.h"
#include "taskdef/VisibleName.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <mutex>
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
    std::optional<std::size_t> previewRows; // --preview: rows of each file worked
    std::optional<int> jobs;
    std::optional<std::string> filesFrom; // a list of files, "-" for the standard input
    std::string task;
};

constexpr std::size_t defaultPreviewRows = 200;

bool allDigits(const std::string& text) {
    return !text.empty() && text.size() < 10 &&
           std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

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
        } else if (!optionsEnded && argument == "--preview") {
            // A number follows when a task name comes after it.
            const bool rowsGiven = i + 2 < arguments.size() && allDigits(arguments[i + 1]);
            options.previewRows = rowsGiven ? std::stoul(arguments[++i]) : defaultPreviewRows;
        } else if (!optionsEnded && argument.starts_with("--preview=")) {
            if (!allDigits(argument.substr(10)))
                throw UsageError("--preview= needs a number of rows");
            options.previewRows = std::stoul(argument.substr(10));
        } else if (!optionsEnded && (argument == "--jobs" || argument.starts_with("--jobs="))) {
            const bool joined = argument.size() > 6;
            if (!joined && i + 1 == arguments.size())
                throw UsageError("--jobs needs a number of files to work at once");
            const std::string count = joined ? argument.substr(7) : arguments[++i];
            if (!allDigits(count) || std::stoul(count) == 0)
                throw UsageError("--jobs needs a number of files to work at once, 1 or more; \"" +
                                 count + "\" is not one");
            options.jobs = static_cast<int>(std::stoul(count));
        } else if (!optionsEnded && argument == "--files-from") {
            if (i + 1 == arguments.size())
                throw UsageError("--files-from needs a list of files, or - for the standard input");
            options.filesFrom = arguments[++i];
        } else if (!optionsEnded && argument.starts_with("--files-from=")) {
            options.filesFrom = argument.substr(13);
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

// The files of "--files-from": full paths, one a line, each a file that is there; read whole
// before anything is written, so that a list with a mistake in it runs nothing.
std::vector<std::string> readFilesFrom(const std::string& list, std::istream* in) {
    std::string text;
    std::string name;
    if (list == "-") {
        if (!in)
            throw TaskError("No standard input to read the file list from");
        text.assign(std::istreambuf_iterator<char>(*in), {});
        name = "The file list on the standard input";
    } else {
        std::ifstream file(toFsPath(list), std::ios::binary);
        if (!file)
            throw TaskError("Cannot open the file list " + visibleName(list) + ": " +
                            std::strerror(errno));
        text.assign(std::istreambuf_iterator<char>(file), {});
        name = "The file list " + visibleName(list);
    }
    std::vector<std::string> files =
        parseFileList(text, name, "list every file with its full path");
    for (const std::string& file : files) {
        std::error_code error;
        if (!std::filesystem::exists(toFsPath(file), error))
            throw TaskError(name + " names " + visibleName(file) + ", which does not exist");
    }
    return files;
}

} // namespace

const char* const RunCommand::usage =
    "Usage: morlevant-run [--home DIR] [--open] [--jobs N] [--files-from LIST]\n"
    "                     [--preview [N]] TASK\n"
    "Runs the task TASK as \"Run Task\" does, without a window: reads DIR/task/TASK.ttp and\n"
    "DIR/task/TASK.edt and writes the results beside the task's files.\n"
    "\n"
    "  --home DIR  the program folder; default MORLEVANT_HOME, else the program's own folder\n"
    "              when it is writable and not installed, else the per-user data folder\n"
    "  --open      show the merge folder in the file manager when a merge ends\n"
    "  --jobs N    work N files at once (default: as many as the machine has cores);\n"
    "              1 works them one after the other\n"
    "  --files-from LIST  work the files listed in LIST (full paths, one a line; - for the\n"
    "              standard input) with the task's settings, instead of the task's own list\n"
    "  --preview [N]  write nothing: print what the task would do to the first N rows\n"
    "              (default 200) of each of its files, as a unified diff\n"
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
        if (options.previewRows)
            return preview(home, options.task, *options.previewRows);
        prepareProgramFolder(home);
        // The run counts the files of the list as it reads it.
        RunRequest request{home, options.task, std::nullopt};
        request.stop = environment_.stop;
        request.waitForOtherRun = true;
        request.jobs = options.jobs.value_or(environment_.defaultJobs);
        if (options.filesFrom)
            request.files = readFilesFrom(*options.filesFrom, environment_.in);

        RunCallbacks callbacks;
        // Files worked at once report from their threads: one at a time on the error stream.
        std::mutex errLock;
        callbacks.progress = [this, &errLock](int done, int total) {
            const std::lock_guard lock(errLock);
            showProgress(done, total);
        };
        callbacks.message = [this, &errLock](const std::string& text) {
            const std::lock_guard lock(errLock);
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

// What the run would write, as diffs from each source (or from nothing, for pieces and the merge
// file) to its results; errors and messages as a run gives them.
int RunCommand::preview(const std::string& home, const std::string& task, std::size_t rows) {
    const std::vector<std::string> files = readTaskFileList(taskFileListPath(home, task));
    const TaskPageSettings settings = readTaskPageSettings(taskSettingsPath(home, task));
    for (const std::string& file : files) {
        const TaskPreview shown = previewTask(settings, files, file, rows);
        for (const std::string& message : shown.messages)
            err_ << message << '\n';
        if (shown.error)
            return fail(*shown.error);
        switch (shown.kind) {
        case TaskPreview::Kind::Lines:
            out_ << unifiedDiff(shown.source.rows, shown.result.rows, file, file + ".modify");
            break;
        case TaskPreview::Kind::Pieces:
            for (const PreviewFile& piece : shown.files)
                out_ << unifiedDiff({}, piece.rows, "/dev/null", shown.divideFolder + piece.name);
            break;
        case TaskPreview::Kind::Merge:
            out_ << unifiedDiff({}, shown.result.rows, "/dev/null",
                                mergeFolder(home) + shown.result.name);
            return 0; // one result for all files
        case TaskPreview::Kind::Nothing:
            break;
        }
    }
    return 0;
}

int RunCommand::interrupted(const RunStopped& stopped) {
    if (barShown_)
        err_ << '\n';
    barShown_ = false;
    if (stopped.total == 0) {
        err_ << "morlevant-run: interrupted before the run began\n";
    } else {
        err_ << "morlevant-run: interrupted";
        // A merge's result is the one being written: what it held of earlier files goes too.
        if (!stopped.unfinished.empty())
            err_ << " while working " << visibleName(stopped.unfinished)
                 << ": the result being written was dropped and any older one kept";
        err_ << "; " << stopped.done << " of " << stopped.total << " files were done before\n";
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
