#pragma once

#include "engine/LineColumns.h"
#include "taskdef/TaskPageSettings.h"

#include <memory>
#include <string>
#include <string_view>

namespace morlevant {

// The per-line work of one page (Calculate, Find and Replace, Filter), prepared once per run
// from the task's settings: steps parsed, ranges parsed, pattern compiled. Each call replaces
// `out` with the text to write for the line. A failure (division by zero, a regular expression
// that exceeds its limits) throws TaskError; the runner adds the file and line to the message.
class LineOperation {
public:
    virtual ~LineOperation() = default;

    // Whole text: CalculateLine, ReplaceLine, FilterLine.
    virtual void wholeLine(std::string_view line, std::string& out) = 0;
    // Column ranges worked in place, the rest of the line kept: CalculateInRanges,
    // ReplaceInRanges, FilterInRanges.
    virtual void inRanges(const LineColumns& line, std::string& out) = 0;
    // Column ranges taken out and joined: CalculateRangesOut, ReplaceRangesOut, FilterRangesOut.
    virtual void rangesOut(const LineColumns& line, std::string& out) = 0;
};

// Throw TaskError for settings that cannot work (a pattern that does not compile, unpaired
// ranges) before any file is written.
std::unique_ptr<LineOperation> makeCalculation(const TaskPageSettings& settings);
std::unique_ptr<LineOperation> makeReplacement(const TaskPageSettings& settings);
// kind 1 replace with line 23, kind 2 delete, kind 3 output the matches.
std::unique_ptr<LineOperation> makeFilter(const TaskPageSettings& settings, int kind);

} // namespace morlevant
