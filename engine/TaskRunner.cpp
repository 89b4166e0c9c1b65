#include "engine/TaskRunner.h"

#include "engine/io/Folders.h"
#include "engine/io/RunLock.h"
#include "engine/pages/FilePage.h"
#include "engine/run/FilesAtOnce.h"
#include "engine/run/RunProgress.h"
#include "taskdef/TaskError.h"
#include "taskdef/TaskFiles.h"
#include "taskdef/VisibleName.h"

#include <algorithm>
#include <chrono>
#include <optional>
#include <thread>

namespace morlevant {

namespace {

bool stopRequested(const RunRequest& request) {
    return request.stop && request.stop->load(std::memory_order_relaxed);
}

// Two runs of one task at once would write the same results together. Runs on lists of their
// own (shards of one large job) share the lock: their files differ, and each result is locked
// while it is written. A task that was never edited has no folder to lock in; its list then
// says so.
std::unique_ptr<RunLock> lockTask(const RunRequest& request, const RunCallbacks& callbacks) {
    if (!FolderExists(taskFolder(request.programFolder)))
        return nullptr;
    const std::string path = taskLockPath(request.programFolder, request.taskName);
    const bool shared = request.files.has_value();
    std::unique_ptr<RunLock> lock = RunLock::tryTake(path, shared);
    if (lock)
        return lock;
    if (!request.waitForOtherRun)
        throw TaskError("The task \"" + visibleName(request.taskName) +
                        "\" is being run elsewhere (by morlevant-run or another window); run it "
                        "again when that run has finished");
    if (callbacks.waiting)
        callbacks.waiting();
    while (!(lock = RunLock::tryTake(path, shared))) {
        if (stopRequested(request))
            throw RunStopped();
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
    return lock;
}

// The files in list order on the calling thread; `page` is null when the task's settings select
// nothing, and the files are then only counted.
void workOneAtATime(const std::vector<std::string>& files, FilePage* page, RunContext* context,
                    const RunRequest& request, const RunCallbacks& callbacks) {
    const int total = *request.fileCount;
    int done = 0;
    for (std::size_t index = 0; index < files.size(); ++index) {
        const std::string& file = files[index];
        if (stopRequested(request)) {
            RunStopped stopped;
            stopped.done = done;
            stopped.total = total;
            throw stopped;
        }
        if (request.progress) {
            std::atomic<std::uint64_t>* const bytesRead =
                request.progress->startFile(0, static_cast<int>(index), file);
            if (context)
                context->bytesRead = bytesRead;
        }
        try {
            if (page)
                page->process(file);
        } catch (RunStopped& stopped) {
            if (request.progress)
                request.progress->endFile(0, false);
            stopped.unfinished = file;
            stopped.done = done;
            stopped.total = total;
            throw;
        } catch (...) {
            if (request.progress)
                request.progress->endFile(0, false);
            throw;
        }
        if (request.progress)
            request.progress->endFile(0, true);
        ++done;
        if (callbacks.progress)
            callbacks.progress(done, total);
    }
    if (page)
        page->finish();
}

} // namespace

void RunTask(const RunRequest& given, const RunCallbacks& callbacks) {
    const std::unique_ptr<RunLock> lock = lockTask(given, callbacks);
    // The list first: a task never edited lacks both files, and the list's message says so.
    const std::vector<std::string> files =
        given.files ? *given.files
                    : readTaskFileList(taskFileListPath(given.programFolder, given.taskName));
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
            request, callbacks, watching, request.stop, nullptr});
        page = makeFilePage(*context, codes);
    }

    if (page && given.files && !page->worksFilesApart())
        throw TaskError("A merge gathers every file of the task into one result, so it cannot "
                        "work a list of files given to it; run the task on its own list");
    if (page)
        for (const std::string& file : files)
            page->checkResults(file);

    const std::size_t jobs =
        page && page->worksFilesApart()
            ? std::min<std::size_t>(static_cast<std::size_t>(std::max(request.jobs, 1)),
                                    files.size())
            : 1;
    if (request.progress)
        request.progress->begin(*request.fileCount, std::max<std::size_t>(jobs, 1));
    if (context && jobs == 1)
        context->lineJobs = static_cast<std::size_t>(std::max(request.jobs, 1));
    if (jobs > 1)
        workFilesAtOnce(*context, codes, files, jobs, request.progress);
    else
        workOneAtATime(files, page.get(), context ? &*context : nullptr, request, callbacks);
    if (const std::string report = alerts.report(); !report.empty() && callbacks.message)
        callbacks.message(report);
}

} // namespace morlevant
