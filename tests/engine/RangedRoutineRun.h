#pragma once

#include "engine/routines/RangedRoutine.h"
#include "taskdef/TaskPageSettings.h"
#include "tests/support/TaskErrorOf.h"

#include <memory>
#include <string>

namespace morlevant::testing {

// A page's routine as a run makes it, the column ranges read from line 3 as the run reads them:
// made(makeFilter, settings, kind).
template <typename Make, typename... Rest>
std::unique_ptr<RangedRoutine> made(Make make, const TaskPageSettings& settings, Rest... rest) {
    return make(settings, ColumnRanges(settings.columnRange), rest...);
}

// How a test carries the routine over its line.
enum class Mode { Whole, InPlace, Out };

inline std::string runLine(RangedRoutine& routine, Mode mode, const std::string& text) {
    std::string out = "stale";
    if (mode == Mode::Whole) {
        routine.wholeLine(text, out);
        return out;
    }
    LineColumns line;
    line.assign(text);
    if (mode == Mode::InPlace)
        routine.inPlace(line, out);
    else
        routine.rangesOut(line, out);
    return out;
}

} // namespace morlevant::testing
