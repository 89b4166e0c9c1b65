#pragma once

#include <string>
#include <string_view>

namespace morlevant {

// The folder separator this platform writes, every character it reads as one, and the
// characters that cannot stand in a single file name: the separators (and on Windows the drive
// mark), and NUL.
#ifdef _WIN32
inline constexpr char pathSeparator = '\\';
inline constexpr std::string_view pathSeparators = "\\/";
inline constexpr std::string_view fileNameBreakers = std::string_view("/\\:\0", 4);
#else
inline constexpr char pathSeparator = '/';
inline constexpr std::string_view pathSeparators = "/";
inline constexpr std::string_view fileNameBreakers = std::string_view("/\0", 2);
#endif

// The path up to and including its last separator ("" when it has none).
std::string GetFilePath(const std::string& path);
// The file name after the last separator, without the part from its last "." on.
std::string GetMainName(const std::string& path);

} // namespace morlevant
