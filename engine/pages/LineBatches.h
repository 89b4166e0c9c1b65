#pragma once

#include "engine/RunAlerts.h"
#include "engine/io/AlignedBlock.h"

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <exception>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace morlevant {

class LineReader;

// A stretch of whole lines of one file, and what working them gave. On cache lines of its own, as
// the threads that fill neighbouring batches would otherwise take shared lines from each other.
struct alignas(64) LineBatch {
    std::string_view lines;    // each line with its end: CR LF, LF or a lone CR; in one of these:
    AlignedBlock block;        // a block of lines as the reader read it, or a spare one
    std::string gathered;      // lines read one by one, each ended by CR LF
    bool allCrLf = true;       // every end in `lines` is CR LF
    std::size_t firstLine = 1; // number of the first line in the file
    // The result's lines, each ended by CR LF. A batch used again keeps the last one: the work
    // writes over it, so that a buffer of the same size is not filled with zeros first.
    std::string result;
    RunAlerts alerts{false, false}; // what working the lines noted
    std::exception_ptr failure;     // thrown by the work, handed on with the batch
    bool worked = false;

    void appendResultLine(std::string_view line) {
        result.append(line);
        endResultLine();
    }
    // Two stores rather than a copy call for the end of each line.
    void endResultLine() {
        result.push_back('\r');
        result.push_back('\n');
    }
};

// Whether the file that `reader` reads is large enough to be worked in batches, when the run
// allows `lineJobs` threads for it: for a small file, starting threads costs more than they save.
bool worthBatching(const LineReader& reader, std::size_t lineJobs);

// Works batches of one file's lines on several threads while the thread that reads them goes
// on reading, and hands the batches back to that thread in the order they were read, so that
// the result's lines go out in order. A failure stays with its batch: the first failing line
// of the file is the one reported, as when the lines go one by one. At most four batches per
// thread are read ahead, so memory stays with the batch size, never with the file.
class LineBatches {
public:
    // `work` runs on thread `lane` (0 to lanes - 1); `deliver` on the reading thread, in order.
    // What `work` throws is thrown on the reading thread in its batch's place.
    using Work = std::function<void(std::size_t lane, LineBatch& batch)>;
    using Deliver = std::function<void(LineBatch& batch)>;

    LineBatches(std::size_t lanes, Work work, Deliver deliver);
    // Waits for the batches at work and drops those not delivered (the file failed or stopped).
    ~LineBatches();
    LineBatches(const LineBatches&) = delete;
    LineBatches& operator=(const LineBatches&) = delete;

    // Reads every line of `reader` into batches and delivers them all. A line longer than a
    // block goes to `longLine` instead, on this thread, in its place among the batches: a
    // routine may then work it in the reader's buffer rather than copy it into a batch.
    void workAll(LineReader& reader, const std::function<void(std::string_view line)>& longLine);

private:
    // Passes the batch being filled on to the threads, and delivers those worked in order,
    // waiting for the oldest when too many are ahead.
    void submit();
    // Passes the batch being filled with lines read one by one on, when it holds any.
    void submitGathered();
    // Passes those lines on, and delivers every batch.
    void finish();
    void lane(std::size_t index);
    // Lets each thread end its batch and joins it.
    void stopLanes();
    // Delivers the batches worked at the front; with `all`, waits for every one.
    void deliverWorked(bool all);
    std::unique_ptr<LineBatch> emptyBatch();

    Work work_;
    Deliver deliver_;
    std::size_t ahead_; // batches passed on and not delivered, at most
    std::mutex mutex_;  // guards what follows
    std::condition_variable toWork_;
    std::condition_variable worked_;
    std::deque<std::unique_ptr<LineBatch>> passedOn_; // in file order
    std::size_t nextToWork_ = 0;                      // index in passedOn_
    bool closing_ = false;
    // Of the reading thread: delivered batches, their storage kept for reuse.
    std::vector<std::unique_ptr<LineBatch>> spare_;
    std::unique_ptr<LineBatch> filling_;
    std::vector<std::thread> threads_;
};

} // namespace morlevant
