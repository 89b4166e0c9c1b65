#pragma once

#include "engine/pages/FilePage.h"
#include "engine/routines/RangedRoutine.h"
#include "engine/text/LineColumns.h"

#include <deque>
#include <functional>
#include <span>

namespace morlevant {

class LineReader;
class LineWriter;
struct LineBatch;

// Calculate, Find and Replace and Filter: one line of F.modify for each line of the source
// (for each selected row when the ranges are taken out).
class LinePage final : public FilePage {
public:
    // Makes the page's routine, noting into `alerts` (null when no alert watches): once for
    // the page, and once more for each further thread that works lines of a file.
    using RoutineMaker = std::function<std::unique_ptr<RangedRoutine>(RunAlerts* alerts)>;

    // Throws TaskError, as `makeRoutine` does, for settings the routine cannot work with.
    LinePage(const RunContext& context, RoutineMaker makeRoutine);
    void checkResults(const std::string& source) const override;
    void process(const std::string& source) override;
    std::string resultPlace(const std::string& source) const override {
        return modifiedPath(source);
    }

private:
    // What one thread works lines with: its routine and the buffers it reuses from line to line.
    // Each on cache lines of its own (64 bytes on the processors this runs on): two threads that
    // update the buffers of neighbours on one line would take it from each other at every line.
    struct alignas(64) LineWork {
        std::unique_ptr<RangedRoutine> routine;
        RunAlerts* alerts = nullptr; // what the routine notes into
        LineColumns columns;
        std::string out;
    };

    // Whether blocks of whole lines are worked at once rather than line by line.
    bool takesManyLines() const;
    void processInOrder(const std::string& source, LineReader& reader, LineWriter& writer);
    // The lines of a large file in batches, worked on several threads.
    void processInBatches(const std::string& source, LineReader& reader, LineWriter& writer);
    void workBatch(LineWork& work, const std::string& source, LineBatch& batch);
    // Works one line of a batch as workLine does, its result appended to the batch's with a
    // CR LF end: the ranges' results go there directly rather than through work.out.
    void workBatchLine(LineWork& work, const std::string& source, std::size_t lineNumber,
                       std::string_view line, LineBatch& batch);
    // Works line `lineNumber` as the range mode says and hands its result to `emit`: nothing
    // for a row the ranges leave out, the line itself for a row they leave as it is.
    template <typename Emit>
    void workLine(LineWork& work, const std::string& source, std::size_t lineNumber,
                  std::string_view line, const Emit& emit, LineWriter* writer = nullptr,
                  std::span<char> gathered = {});
    // Works a block of whole lines at once into work.out; false when they must go one by one.
    bool applyToLines(LineWork& work, std::string_view lines) const;
    // The routine's result for one line. `gathered`, when not empty, is a long line in a
    // buffer of the reader's: the routine may overwrite it and leave its result there, or hand
    // the first part of its result to `writer` itself.
    static std::string_view apply(LineWork& work, RangeMode mode, const std::string& source,
                                  std::size_t lineNumber, std::string_view line, LineWriter* writer,
                                  std::span<char> gathered);
    // Appends the line's ranges worked in place or taken out, as `mode` says, to `out`.
    static void applyToRanges(RangedRoutine& routine, RangeMode mode, const LineColumns& line,
                              std::string& out);

    const RunContext& context_;
    RoutineMaker makeRoutine_;
    LineWork work_; // of the thread that reads
    // Of the further threads, made when a file is first worked in batches and kept for the run.
    std::deque<LineWork> lanes_;
    std::deque<RunAlerts> laneAlerts_;
};

} // namespace morlevant
