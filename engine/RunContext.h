#pragma once

#include "engine/RunAlerts.h"
#include "engine/TaskRunner.h"
#include "engine/TaskSources.h"
#include "engine/ranges/ColumnRanges.h"
#include "taskdef/RangePairs.h"
#include "taskdef/TaskCodes.h"
#include "taskdef/TaskPageSettings.h"

#include <atomic>
#include <cstdint>

namespace morlevant {

// What every page of a run shares: the settings, the ranges parsed once per run, and the
// sources that no result may overwrite.
struct RunContext {
    const TaskPageSettings& settings;
    const TaskSources& sources;
    RangeMode mode;
    RangePairs rows;    // line 2; empty in whole-text mode
    RangePairs columns; // line 3; empty in whole-text mode
    const RunRequest& request;
    const RunCallbacks& callbacks;
    RunAlerts* alerts = nullptr; // what the Calculate page's alerts count
    // Of the thread working a file: turned true to stop at the next block read, and the bytes
    // read of the file being worked.
    const std::atomic<bool>* stop = nullptr;
    std::atomic<std::uint64_t>* bytesRead = nullptr;
    // Threads a page may work the lines of one large file on: more than one only when the run
    // works its files one at a time, so that the cores are not shared out twice.
    std::size_t lineJobs = 1;
    // Line 3 in whole character positions, worked out once rather than for every line.
    ColumnRanges columnRanges{columns};
};

// Name of the result of the line pages: the source with ".modify" appended.
inline std::string modifiedPath(const std::string& source) {
    return source + ".modify";
}

} // namespace morlevant
