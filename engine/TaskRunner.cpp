#include "engine/TaskRunner.h"

#include "engine/pages/FilePage.h"
#include "taskdef/TaskError.h"
#include "taskdef/TaskFiles.h"

#include <optional>

namespace morlevant {

namespace {

// Lines 1 and 4; any other combination leaves every file untouched.
std::optional<RangeMode> rangeModeOf(const TaskPageSettings& settings) {
    const std::string& out = settings.takeRangesOut;
    if (settings.rangeMode == "1" && (out == "0" || out == "1"))
        return RangeMode::WholeText;
    if (settings.rangeMode == "2" && out == "0")
        return RangeMode::InPlace;
    if (settings.rangeMode == "2" && out == "1")
        return RangeMode::RangesOut;
    return std::nullopt;
}

} // namespace

void RunTask(const RunRequest& given, const RunCallbacks& callbacks) {
    // The list first: a task never edited lacks both files, and the list's message says so.
    const std::vector<std::string> files =
        readTaskFileList(taskFileListPath(given.programFolder, given.taskName));
    const TaskPageSettings settings =
        readTaskPageSettings(taskSettingsPath(given.programFolder, given.taskName));
    RunRequest request = given;
    if (!request.fileCount)
        request.fileCount = static_cast<int>(files.size());

    const TaskSources sources(files);
    const std::optional<RangeMode> mode = rangeModeOf(settings);
    std::unique_ptr<FilePage> page;
    std::optional<RunContext> context;
    if (mode) {
        const bool byRanges = *mode != RangeMode::WholeText;
        context.emplace(RunContext{
            settings, sources, *mode,
            byRanges ? RangePairs::parse(settings.rowRange, "row ranges") : RangePairs(),
            byRanges ? RangePairs::parse(settings.columnRange, "column ranges") : RangePairs(),
            request, callbacks});
        page = makeFilePage(*context);
    }

    if (page)
        for (const std::string& file : files)
            page->checkResults(file);

    int done = 0;
    for (const std::string& file : files) {
        if (page)
            page->process(file);
        ++done;
        if (callbacks.progress)
            callbacks.progress(done, *request.fileCount);
    }
}

} // namespace morlevant
