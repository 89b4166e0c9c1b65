#pragma once

#include "taskdef/TaskPageSettings.h"

#include <optional>

namespace morlevant {

// Lines 1 and 4 together: the whole text, row ranges worked in place, or ranges taken out.
enum class RangeMode { WholeText, InPlace, RangesOut };

// Line 5: the operation page the task carries out.
enum class PageCode { Calculate = 3, FindAndReplace, InsertOrFilter, DivideOrMerge };

// Line 19: the action of Insert Or Filter.
enum class InsertFilterAction {
    InsertDateTime = 1,
    InsertString,
    InsertTextFile,
    FilterAndReplace,
    FilterAndDelete,
    FilterAndOutput
};

// Line 26: the action of Divide Or Merge.
enum class DivideMergeAction {
    DivideByRow = 1,
    DivideByColumn,
    DivideByRangeRow,
    DivideByRangeColumn,
    Merge
};

// The codes of a task's settings, read once from their text lines. A line that holds none of
// its codes, exactly as the editor writes them, gives nothing: a run then has no page to work
// and passes every file over untouched, as these files have always been read.
struct TaskCodes {
    std::optional<RangeMode> rangeMode;
    std::optional<PageCode> page;
    std::optional<InsertFilterAction> insertFilterAction;
    std::optional<DivideMergeAction> divideMergeAction;
};

TaskCodes readTaskCodes(const TaskPageSettings& settings);

} // namespace morlevant
