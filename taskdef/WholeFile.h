#pragma once

#include <string>
#include <string_view>

namespace morlevant {

// The bytes of one of a task's own files (its settings, its file list). Throws TaskError that
// names the file: "<what> <path> is missing: <whenMissing>" when there is no such file, else
// "<what> <path> cannot be read: <reason>" (a folder, no permission, a name too long, ...).
std::string readWholeFile(const std::string& path, const std::string& what,
                          const std::string& whenMissing);

// Replaces one of a task's own files with `bytes` as a whole: they are written under another name
// beside it (the file's name, ".writing" and the program's process number) and renamed over it, so
// that a run reading the task meanwhile finds the older file or the newer one, never a part, and a
// failed write leaves the older one. A file reached by a symbolic link is replaced where it lies,
// the link kept, and the older file's permissions are kept. Throws TaskError "Cannot write <what>
// <path>" when it cannot.
void writeWholeFile(const std::string& path, std::string_view bytes, const std::string& what);

} // namespace morlevant
