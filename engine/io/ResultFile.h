#pragma once

#include <cstdint>
#include <string>

namespace morlevant {

// A result file written under a temporary name beside its final one and renamed over the final
// name only when it is whole: a run that fails, is stopped or is killed leaves the older result
// whole, never a part of the new one, and at most the temporary, which the next run that writes
// the same result takes over and removes.
class ResultFile {
public:
    enum class Start {
        Empty,     // the result is written afresh
        FromFinal, // the result goes on from what the final file holds (a merge continued)
    };

    // Throws TaskError naming the file when the temporary cannot be made, or when another run
    // is writing the same result at this moment.
    ResultFile(const std::string& path, Start start);
    // A result never committed is abandoned: its temporary is removed.
    ~ResultFile();
    ResultFile(const ResultFile&) = delete;
    ResultFile& operator=(const ResultFile&) = delete;

    // Throws TaskError with the system's reason when the bytes cannot be written (disk full).
    void write(const char* data, std::size_t size);
    // Closes the temporary and renames it over the final name; throws TaskError when it cannot.
    void commit();

    const std::string& path() const { return path_; }
    // Bytes the temporary holds: those it went on from and those written since.
    std::uint64_t size() const { return size_; }
    static std::string temporaryPath(const std::string& path) { return path + ".unfinished"; }

private:
    [[noreturn]] void fail(const std::string& doing) const;
    [[noreturn]] void refuseBusy();
    void makeTemporary();
    void removeLeftover();
    void copyFinal();
    void abandon() noexcept;

    std::string path_;
    std::string temporary_;
    std::uint64_t size_ = 0;
#ifdef _WIN32
    void* file_ = nullptr; // the temporary's FILE*
#else
    int fd_ = -1;
#endif
};

} // namespace morlevant
