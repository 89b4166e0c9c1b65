#pragma once

#include <cstdint>
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

} // namespace morlevant
