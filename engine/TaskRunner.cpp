#include "engine/TaskRunner.h"

#include "engine/pages/FilePage.h"
#include "taskdef/TaskError.h"
#include "taskdef/TaskFiles.h"

#include <optional>

namespace morlevant {

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
    const TaskCodes codes = readTaskCodes(settings);
    const std::optional<RangeMode> mode = codes.rangeMode;
    std::unique_ptr<FilePage> page;
    std::optional<RunContext> context;
    if (mode) {
        const bool byRanges = *mode != RangeMode::WholeText;
        context.emplace(RunContext{
            settings, sources, *mode,
            byRanges ? RangePairs::parse(settings.rowRange, "row ranges") : RangePairs(),
            byRanges ? RangePairs::parse(settings.columnRange, "column ranges") : RangePairs(),
            request, callbacks});
        page = makeFilePage(*context, codes);
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
