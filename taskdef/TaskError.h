#pragma once

#include <stdexcept>
#include <string>

namespace morlevant {

// A failure that ends a run or a file operation; its text is shown to the user as it stands,
// so it names the file or value and the cause.
class TaskError : public std::runtime_error {
public:
    explicit TaskError(const std::string& message) : std::runtime_error(message) {}
};

} // namespace morlevant
