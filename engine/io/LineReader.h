#pragma once

#include "engine/io/AlignedBlock.h"
#include "engine/io/FileIdentity.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace morlevant {

class LineWriter;

// Thrown where a run was asked to stop: at the next block read. The run fills in how far it
// came.
struct RunStopped : std::exception {
    std::string unfinished; // the source whose result was not written; empty between files
    int done = 0;           // files finished before the stop
    int total = 0;          // files of the run
    const char* what() const noexcept override { return "The run was stopped"; }
};

// Reads a text file line by line in large blocks. A line ends at CR LF, LF or a lone CR; the
// last line needs no line end. Memory grows with the longest line, never with the file.
class LineReader {
public:
    // A block is read in steps of readSize, which the system copies faster than larger ones,
    // and is as long as a writer's write (LineWriter::writeSize): a block of lines that already
    // end in CR LF goes from this buffer to the result file without a copy. A file shorter than
    // a block is read in a block of its own length and a byte more.
    static constexpr std::size_t blockSize = std::size_t{1} << 17;
    static constexpr std::size_t readSize = std::size_t{1} << 16;

    // Throws TaskError naming the file when it cannot be opened or is not a regular file (a
    // pipe, a device, a folder), and, when its end is read, when it was changed or replaced
    // since it was opened. When `stop` is given and turns true, the next block read throws
    // RunStopped. `bytesRead`, when given, grows by every block read (a run's progress).
    explicit LineReader(const std::string& path, const std::atomic<bool>* stop = nullptr,
                        std::atomic<std::uint64_t>* bytesRead = nullptr);

    // The next line without its line end, valid until the next call; false at the end.
    bool next(std::string_view& line);
    // The line that next() returned last when it ran across blocks and was gathered in a
    // buffer of the reader's own, which the caller may then change in place until the next
    // call; empty when that line lay within a block, or within a block and the short start of
    // it kept from the block before (see nextLines), at most keptRoom bytes more than a block.
    // A longer line is always gathered.
    std::span<char> gatheredLine() {
        return gathering_ ? std::span<char>(longLine_.get(), longSize_) : std::span<char>();
    }
    // Copies up to `maxLines` next lines to `writer` unchanged but for their ends, which become
    // CR LF as writeLine makes them, without handing them out one by one: a block whose ends are
    // all CR LF goes out in one piece, the start of a line it ends in included, and a line
    // longer than a block is never gathered. Returns the number of lines copied, fewer than
    // `maxLines` only at the end.
    std::size_t copyLines(std::size_t maxLines, LineWriter& writer);
    // The whole lines left in the current block, with their ends as they are, valid until the
    // next call; false, consuming no line, when the rest of the block holds no line end or a
    // lone CR: then next() takes the lines one by one. A lone CR is refused because a routine
    // that empties the line after it would join it to that line's LF as one CR LF end.
    // `allCrLf` tells whether every end among them is CR LF. The start of a line that ends a
    // block, when short, is read with the next block, so that most blocks give lines only.
    bool nextLines(std::string_view& lines, bool& allCrLf);
    // Hands over the buffer that the lines nextLines() returned last lie in, so that they stay
    // valid, where they lie, for as long as the caller keeps it: a block of lines goes on to
    // be worked without a copy. The reader reads on in `spare`, a buffer it handed over before,
    // or a new one when that is null.
    AlignedBlock handOverBlock(AlignedBlock spare);
    // Whether every line has been read.
    bool atEnd() { return begin_ == end_ && !fill(); }
    // The file's size when it was opened.
    std::uint64_t size() const { return opened_.size; }
    // For a page that reads a source more than once: throws TaskError when this reader's file
    // is not the version that `first` holds, which it takes when it holds none, so that every
    // pass reads the same file.
    void sameVersionAs(std::optional<FileVersion>& first) const;
    // Number of the line returned or copied last, counted from 1.
    std::size_t lineNumber() const { return lineNumber_; }
    const std::string& path() const { return path_; }

private:
    // Reads the next block after the room for a kept line start; what is left unread before it
    // stays.
    bool fill();
    std::size_t lastLineEnd() const;
    void checkUnchanged() const;
    std::size_t findLineEnd(std::size_t from);
    void gather(const char* data, std::size_t size);

    std::string path_;
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> file_;
    FileVersion opened_; // what the file was when it was opened
    const std::atomic<bool>* stop_;
    std::atomic<std::uint64_t>* bytesRead_;
    // Room before each block for the start of a line that the last block ended in, so that the
    // block is still read where the buffer's cache lines start.
    static constexpr std::size_t keptRoom = 4096;
    // Left uninitialised: a run over many small files need not clear a block for each.
    AlignedBlock buffer_;
    std::size_t block_ = blockSize; // the length of a block, read after keptRoom bytes
    std::size_t begin_ = 0;         // first unread byte in buffer_
    std::size_t end_ = 0;           // one past the last valid byte in buffer_
    // The first CR at or after begin_ (end_ when there is none), valid while crKnown_: a file
    // with LF ends is searched for CR once per block rather than once per line.
    std::size_t nextCr_ = 0;
    bool crKnown_ = false;
    bool eof_ = false;
    bool skipLeadingLf_ = false; // the previous block ended in CR: a following LF belongs to it
    // The rest of this block was found unfit to go in one piece (nextLines: a lone CR;
    // copyLines: not all CR LF, or more lines than asked for): it goes line by line, and is not
    // counted again for every line or piece.
    bool blockRefused_ = false;
    // A line that spans blocks is gathered here. The buffer grows by realloc, which for large
    // sizes (glibc) moves its pages rather than copying them and commits only the part written:
    // the line is held once, at about its own size, however long it grows.
    std::unique_ptr<char, void (*)(void*)> longLine_{nullptr, &std::free};
    std::size_t longSize_ = 0;
    std::size_t longCapacity_ = 0;
    bool gathering_ = false; // the line returned last is in longLine_
    std::size_t lineNumber_ = 0;
};

} // namespace morlevant
