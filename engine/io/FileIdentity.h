#pragma once

#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>

namespace morlevant {

// What makes two paths the same file: the same file reached through a symbolic link or a hard
// link has the same identity under every name.
struct FileIdentity {
    std::uint64_t device = 0;
    std::uint64_t file = 0;
    auto operator<=>(const FileIdentity&) const = default;
};

// The identity of the file at `path`, following links; nothing when there is no such file.
std::optional<FileIdentity> fileIdentity(const std::string& path);

// What an open file is at one moment. Two versions differ when the file was written to in
// between (its size or times of change moved).
struct FileVersion {
    FileIdentity identity;
    bool regular = false; // a regular file rather than a pipe, a device or a folder
    bool folder = false;
    std::uint64_t size = 0;
    std::int64_t modified = 0; // nanoseconds
    std::int64_t changed = 0;  // nanoseconds; the last change of contents or attributes
    bool operator==(const FileVersion&) const = default;
};

// The version of an open file; nothing when the system cannot tell.
std::optional<FileVersion> fileVersion(std::FILE* file);

} // namespace morlevant
