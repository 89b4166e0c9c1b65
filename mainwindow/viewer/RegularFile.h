#pragma once

#include <optional>
#include <string>

namespace morlevant {

// Why a path cannot be read as a file's content: nothing when it names a regular file (or a
// link to one), otherwise the reason in words, such as "it is a folder". Folders, named pipes,
// devices and sockets are refused before anything opens them, since reading a pipe or a device
// such as /dev/zero would never end.
std::optional<std::string> whyNotRegularFile(const std::string& path);

} // namespace morlevant
