#include "LineWriter.h"

#include "FilePath.h"
#include "TaskError.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>

namespace morlevant {

namespace {

constexpr std::size_t bufferSize = 1 << 18;

std::FILE* openForWriting(const std::string& path, LineWriter::Mode mode) {
    const bool append = mode == LineWriter::Mode::Append;
#ifdef _WIN32
    return _wfopen(toFsPath(path).c_str(), append ? L"ab" : L"wb");
#else
    return std::fopen(path.c_str(), append ? "ab" : "wb");
#endif
}

} // namespace

LineWriter::LineWriter(const std::string& path, Mode mode)
    : path_(path), mode_(mode), file_(openForWriting(path, mode)) {
    if (!file_)
        fail();
    std::setvbuf(file_, nullptr, _IOFBF, bufferSize);
}

LineWriter::~LineWriter() {
    if (!file_)
        return;
    std::fclose(file_);
    if (mode_ == Mode::Truncate) {
        std::error_code ignored;
        std::filesystem::remove(toFsPath(path_), ignored);
    }
}

void LineWriter::writeLine(std::string_view line) {
    // An empty view may carry no buffer at all, which fwrite must not be given.
    if ((!line.empty() && std::fwrite(line.data(), 1, line.size(), file_) != line.size()) ||
        std::fwrite("\r\n", 1, 2, file_) != 2)
        fail();
}

void LineWriter::close() {
    if (!file_)
        return;
    std::FILE* file = file_;
    file_ = nullptr;
    if (std::fclose(file) != 0)
        fail();
}

void LineWriter::fail() {
    throw TaskError("Cannot write " + path_ + ": " + std::strerror(errno));
}

} // namespace morlevant
