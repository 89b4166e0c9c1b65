#pragma once

#include <filesystem>
#include <string>

namespace morlevant {

// Paths travel through the program as UTF-8 text; this turns one into a file-system path
// without going through the narrow code page on Windows.
inline std::filesystem::path toFsPath(const std::string& utf8) {
    return std::filesystem::path(std::u8string(utf8.begin(), utf8.end()));
}

} // namespace morlevant
