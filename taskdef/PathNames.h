#pragma once

#include <string>

namespace morlevant {

// The path up to and including its last separator ("" when it has none).
std::string GetFilePath(const std::string& path);
// The file name after the last separator, without the part from its last "." on.
std::string GetMainName(const std::string& path);

} // namespace morlevant
