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
    // The ranges' results are appended to what `out` holds, the line's positions found as a run
    // finds them.
    LineColumns line;
    routine.assignColumns(line, text);
    if (mode == Mode::InPlace)
        routine.inPlace(line, out);
    else
        routine.rangesOut(line, out);
    if (!out.starts_with("stale"))
        return "(overwrote what it appends to) " + out;
    return out.substr(5);
}

// The same for a line longer than a block, which the run's reader holds where the routine may
// overwrite it: the result is what the routine leaves there, or the parts it hands on followed
// by the rest it leaves in `out`.
inline std::string runLongLine(RangedRoutine& routine, Mode mode, const std::string& line) {
    std::string text = line;
    std::string result;
    std::string out = "stale";
    const Spill spill = [&](std::string_view part) { result += part; };
    LineColumns columns;
    columns.assign(text);
    if (mode == Mode::Whole && routine.overwritesLine()) {
        text.resize(routine.wholeLineOver(text));
        return text;
    }
    if (mode == Mode::Whole && routine.spillsLine())
        routine.wholeLineSpilling(text, out, spill);
    else if (mode == Mode::Whole)
        routine.wholeLine(text, out);
    else if (mode == Mode::InPlace)
        routine.inPlaceSpilling(columns, text, out, spill);
    else
        routine.rangesOutSpilling(columns, out, spill);
    return result + out;
}

} // namespace morlevant::testing
