#include "taskdef/WholeFile.h"

#include "taskdef/FilePath.h"
#include "taskdef/TaskError.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <system_error>

#ifdef _WIN32
#include <process.h>
#else
#include <unistd.h>
#endif

namespace morlevant {

std::string readWholeFile(const std::string& path, const std::string& what,
                          const std::string& whenMissing) {
    const auto cannot = [&](const std::string& reason) {
        return TaskError(what + " " + path + " cannot be read: " + reason);
    };
    std::error_code error;
    const auto status = std::filesystem::status(toFsPath(path), error);
    if (std::filesystem::is_directory(status))
        throw cannot("it is a folder, not a file");
    if (!error && std::filesystem::exists(status) && !std::filesystem::is_regular_file(status))
        throw cannot("it is not a regular file");

#ifdef _WIN32
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(_wfopen(toFsPath(path).c_str(), L"rb"),
                                                         &std::fclose);
#else
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "rb"),
                                                         &std::fclose);
#endif
    if (!file) {
        if (errno == ENOENT)
            throw TaskError(what + " " + path + " is missing: " + whenMissing);
        throw cannot(std::strerror(errno));
    }
    std::string bytes;
    char block[1 << 16];
    std::size_t got = 0;
    while ((got = std::fread(block, 1, sizeof block, file.get())) > 0)
        bytes.append(block, got);
    if (std::ferror(file.get()))
        throw cannot(std::strerror(errno));
    return bytes;
}

void writeWholeFile(const std::string& path, std::string_view bytes, const std::string& what) {
    namespace fs = std::filesystem;
    // A task file that is a link to another file stays one: the file it leads to is replaced,
    // beside itself. The replacement keeps the older file's permissions.
    std::error_code error;
    fs::path target = toFsPath(path);
    if (fs::is_symlink(fs::symlink_status(target, error)))
        target = fs::canonical(target, error);
    if (error)
        target = toFsPath(path);
    const fs::file_status older = fs::status(target, error);
    // Another program saving the same file at once writes under a name of its own.
#ifdef _WIN32
    fs::path writing = target;
    writing += ".writing" + std::to_string(_getpid());
#else
    fs::path writing = target;
    writing += ".writing" + std::to_string(::getpid());
#endif
    const auto fail = [&] {
        std::error_code ignored;
        fs::remove(writing, ignored);
        return TaskError("Cannot write " + what + " " + path);
    };
    {
        std::ofstream out(writing, std::ios::binary | std::ios::trunc);
        out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        out.close();
        if (!out)
            throw fail();
    }
    if (fs::is_regular_file(older))
        fs::permissions(writing, older.permissions(), error);
    fs::rename(writing, target, error);
    if (error)
        throw fail();
}

} // namespace morlevant
