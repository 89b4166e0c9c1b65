#pragma once

#include "taskdef/TaskError.h"

#include <functional>
#include <string>

namespace morlevant::testing {

// The message of the TaskError that `action` throws, or "no error".
inline std::string taskErrorOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const TaskError& error) {
        return error.what();
    }
    return "no error";
}

} // namespace morlevant::testing
