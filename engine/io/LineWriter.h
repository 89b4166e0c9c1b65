#pragma once

#include "engine/io/AlignedBlock.h"
#include "engine/io/ResultFile.h"
#include "engine/io/WriteBehind.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace morlevant {

// Writes lines to a result file, each ended by CR LF. Lines are gathered in a buffer of its own
// and written in large blocks, so that a line costs a copy rather than a call into the system.
// Every write but the last ends where the file's length is a multiple of writeSize, whatever
// the lengths of the lines: a file system takes such writes in whole large pages, where writes
// that start anywhere cost it a good deal more than the copy through the buffer. The result
// takes its final name only on close(), whole (see ResultFile).
class LineWriter {
public:
    static constexpr std::size_t writeSize = std::size_t{1} << 17;
    static constexpr std::size_t bufferSize = 2 * writeSize;

    enum class Mode {
        Truncate, // a new result
        Append,   // the lines go after those the file holds
    };
    enum class Writes {
        OnCaller, // on the thread that hands over the lines
        Behind,   // on a thread of their own, for a caller with a core to spare (WriteBehind)
    };
    // How a page that may work on `threads` threads writes: behind where it has more than one.
    static Writes writesWith(std::size_t threads) {
        return threads > 1 ? Writes::Behind : Writes::OnCaller;
    }

    // Throws TaskError naming the file when it cannot be opened.
    LineWriter(const std::string& path, Mode mode, Writes writes = Writes::OnCaller);
    // A writer destroyed before close() was abandoned by a failure: the file stays as it was
    // before the writer was made.
    ~LineWriter() = default;
    LineWriter(const LineWriter&) = delete;
    LineWriter& operator=(const LineWriter&) = delete;

    void writeLine(std::string_view line);
    // Writes lines that end in CR LF, LF or a lone CR, each end made CR LF; text after the last
    // end is a line too. `allCrLf`: every end is CR LF already, which the caller often knows.
    void writeLines(std::string_view lines, bool allCrLf);
    // Writes bytes as they are: part of a line, or lines that already end in CR LF.
    void writeBytes(std::string_view bytes);
    // Flushes and gives the result its final name; throws TaskError when the data could not
    // be written (disk full). With Writes::Behind, a failure may also be thrown by a later call
    // than the one whose bytes could not be written.
    void close();
    const std::string& path() const { return file_.path(); }

private:
    // Room for `size` more bytes at the end of the buffer, at most writeSize; settle() then
    // takes the bytes written there.
    char* room(std::size_t size);
    // Counts `size` more bytes as used, and writes the buffer up to the next multiple of
    // writeSize in the file when they reach it.
    void settle(std::size_t size);
    // The bytes the buffer holds before it is written: those up to the next multiple of
    // writeSize in the file.
    std::size_t due() const { return writeSize - static_cast<std::size_t>(size_ % writeSize); }
    // Writes bytes to the file, or hands them to the thread that writes behind; `last`: no
    // more follow.
    void emit(const char* data, std::size_t size, bool last = false);
    void flush();

    ResultFile file_;
    std::uint64_t size_ = 0; // the file's length once every byte emitted is written
    // Started at the first write, so that a small result starts no thread; destroyed before
    // file_, which it writes to.
    Writes writes_;
    std::unique_ptr<WriteBehind> behind_;
    bool closed_ = false;
    // Lines waiting to be written, fewer than writeSize bytes between calls, at most bufferSize
    // while a call adds to them. It grows with use, so that a small result never allocates the
    // whole buffer.
    AlignedBlock buffer_;
    std::size_t capacity_ = 0;
    std::size_t used_ = 0;
};

} // namespace morlevant
