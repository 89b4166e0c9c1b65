#pragma once

#include <string>

namespace morlevant {

// The bytes of one of a task's own files (its settings, its file list). Throws TaskError that
// names the file: "<what> <path> is missing: <whenMissing>" when there is no such file, else
// "<what> <path> cannot be read: <reason>" (a folder, no permission, a name too long, ...).
std::string readWholeFile(const std::string& path, const std::string& what,
                          const std::string& whenMissing);

} // namespace morlevant
