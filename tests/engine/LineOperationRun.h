#pragma once

#include "engine/LineOperation.h"
#include "taskdef/TaskError.h"

#include <functional>
#include <string>

namespace morlevant::testing {

// Which of the three routines of a page a test calls.
enum class Mode { Whole, InPlace, Out };

inline std::string runLine(LineOperation& operation, Mode mode, const std::string& text) {
    std::string out = "stale";
    if (mode == Mode::Whole) {
        operation.wholeLine(text, out);
        return out;
    }
    LineColumns line;
    line.assign(text);
    if (mode == Mode::InPlace)
        operation.inRanges(line, out);
    else
        operation.rangesOut(line, out);
    return out;
}

// The message of the TaskError that `action` throws, or "(no error)".
inline std::string taskErrorOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const TaskError& error) {
        return error.what();
    }
    return "(no error)";
}

} // namespace morlevant::testing
