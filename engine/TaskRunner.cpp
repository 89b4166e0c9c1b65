#include "engine/TaskRunner.h"

#include "engine/io/Folders.h"
#include "engine/io/RunLock.h"
#include "engine/pages/FilePage.h"
#include "taskdef/TaskError.h"
#include "taskdef/TaskFiles.h"
#include "taskdef/VisibleName.h"

#include <chrono>
#include <optional>
#include <thread>

namespace morlevant {

namespace {

bool stopRequested(const RunRequest& request) {
    return request.stop && request.stop->load(std::memory_order_relaxed);
}

// Two runs of one task at once would write the same results together. A task that was never
// edited has no folder to lock in; its list then says so.
std::unique_ptr<RunLock> lockTask(const RunRequest& request, const RunCallbacks& callbacks) {
    if (!FolderExists(taskFolder(request.programFolder)))
        return nullptr;
    const std::string path = taskLockPath(request.programFolder, request.taskName);
    std::unique_ptr<RunLock> lock = RunLock::tryTake(path);
    if (lock)
        return lock;
    if (!request.waitForOtherRun)
        throw TaskError("The task \"" + visibleName(request.taskName) +
                        "\" is being run elsewhere (by morlevant-run or another window); run it "
                        "again when that run has finished");
    if (callbacks.waiting)
        callbacks.waiting();
    while (!(lock = RunLock::tryTake(path))) {
        if (stopRequested(request))
            throw RunStopped();
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
    return lock;
}

} // namespace

void RunTask(const RunRequest& given, const RunCallbacks& callbacks) {
    const std::unique_ptr<RunLock> lock = lockTask(given, callbacks);
    // The list first: a task never edited lacks both files, and the list's message says so.
    const std::vector<std::string> files =
        readTaskFileList(taskFileListPath(given.programFolder, given.taskName));
    const TaskPageSettings settings =
        readTaskPageSettings(taskSettingsPath(given.programFolder, given.taskName));
    RunRequest request = given;
    if (!request.fileCount)
        request.fileCount = static_cast<int>(files.size());

    const TaskSources sources(files);
    const TaskCodes codes = readTaskCodes(settings);
    const std::optional<RangeMode> mode = codes.rangeMode;
    std::unique_ptr<FilePage> page;
    std::optional<RunContext> context;
    RunAlerts alerts(settings.nonNumericAlert == "Yes", settings.crossBorderAlert == "Yes");
    // Pages mark the row being worked only for alerts that watch: nothing per line otherwise.
    RunAlerts* const watching =
        alerts.watches(RunAlerts::Kind::NoNumber) || alerts.watches(RunAlerts::Kind::TooWide)
            ? &alerts
            : nullptr;
    if (mode) {
        const bool byRanges = *mode != RangeMode::WholeText;
        context.emplace(RunContext{
            settings, sources, *mode,
            byRanges ? RangePairs::parse(settings.rowRange, "row ranges") : RangePairs(),
            byRanges ? RangePairs::parse(settings.columnRange, "column ranges") : RangePairs(),
            request, callbacks, watching});
        page = makeFilePage(*context, codes);
    }

    if (page)
        for (const std::string& file : files)
            page->checkResults(file);

    int done = 0;
    for (const std::string& file : files) {
        if (stopRequested(request)) {
            RunStopped stopped;
            stopped.done = done;
            stopped.total = *request.fileCount;
            throw stopped;
        }
        try {
            if (page)
                page->process(file);
        } catch (RunStopped& stopped) {
            stopped.unfinished = file;
            stopped.done = done;
            stopped.total = *request.fileCount;
            throw;
        }
        ++done;
        if (callbacks.progress)
            callbacks.progress(done, *request.fileCount);
    }
    if (page)
        page->finish();
    if (const std::string report = alerts.report(); !report.empty() && callbacks.message)
        callbacks.message(report);
}

} // namespace morlevant
