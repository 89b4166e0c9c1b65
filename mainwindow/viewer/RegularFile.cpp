#include "mainwindow/viewer/RegularFile.h"

#include "taskdef/FilePath.h"

#include <filesystem>

namespace morlevant {

std::optional<std::string> whyNotRegularFile(const std::string& path) {
    namespace fs = std::filesystem;
    std::error_code error;
    const fs::file_status status = fs::status(toFsPath(path), error);
    switch (status.type()) {
    case fs::file_type::regular:
        return std::nullopt;
    case fs::file_type::not_found:
        return "it does not exist";
    case fs::file_type::directory:
        return "it is a folder";
    case fs::file_type::fifo:
        return "it is a named pipe";
    case fs::file_type::character:
    case fs::file_type::block:
        return "it is a device";
    case fs::file_type::socket:
        return "it is a socket";
    default:
        return error ? error.message() : "it is not a regular file";
    }
}

} // namespace morlevant
