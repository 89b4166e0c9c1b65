#include "engine/pages/MergePage.h"

#include "engine/io/LineReader.h"
#include "engine/io/LineWriter.h"
#include "engine/pages/LineBatches.h"
#include "engine/pages/ResultPlaces.h"
#include "engine/ranges/RowRanges.h"
#include "engine/ranges/TakeRangesOut.h"
#include "engine/text/AppendBuffer.h"
#include "engine/text/LineEnds.h"
#include "taskdef/TaskFiles.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace morlevant {

MergePage::MergePage(const RunContext& context) : context_(context) {}

// A merge result listed among the sources would be emptied by the first file merged.
void MergePage::checkResults(const std::string&) const {
    checkResultFile(context_.sources, mergeFolder(context_.request.programFolder) + resultName,
                    "the merge result");
}

void MergePage::process(const std::string& source) {
    int& count = context_.mode == RangeMode::RangesOut ? rangesOutMergeCount_ : mergeCount_;
    const std::string folder = mergeFolder(context_.request.programFolder);
    const std::string result = folder + resultName;
    LineReader reader(source, context_.stop, context_.bytesRead);
    // Files merged after the result was shown (the task has more files in its list than in the
    // tree) go on from what it holds.
    if (!writer_)
        writer_ = std::make_unique<LineWriter>(
            result, count == 1 ? LineWriter::Mode::Truncate : LineWriter::Mode::Append,
            LineWriter::writesWith(context_.lineJobs));
    if (context_.mode == RangeMode::RangesOut) {
        appendSelectedRows(reader, *writer_);
    } else {
        // The row ranges do not restrict a merge worked in place.
        reader.copyLines(std::numeric_limits<std::size_t>::max(), *writer_);
    }
    if (count == context_.request.fileCount) {
        finish();
        if (context_.callbacks.openFolder)
            context_.callbacks.openFolder(folder);
    }
    ++count;
}

void MergePage::finish() {
    if (writer_)
        writer_->close();
    writer_.reset();
}

// The row number tested against the row ranges starts at 1 for the first line of each file and
// doubles from line to line (lines 1, 2, 3, 4 are tested as rows 1, 2, 4, 8). Long-standing
// behaviour of the merge with the ranges taken out, kept deliberately.
template <typename Out>
bool MergePage::appendRangesOut(LineColumns& columns, std::size_t lineNumber, std::string_view line,
                                Out& out) const {
    // 2 to the power lineNumber - 1, exactly as by doubling, and infinite past the doubles;
    // blank row ranges select every row without it.
    if (!context_.rows.empty()) {
        const int doublings = static_cast<int>(std::min<std::size_t>(lineNumber, 2000)) - 1;
        if (!RowInRanges(context_.rows, std::ldexp(1.0, doublings)))
            return false;
    }
    columns.assign(line);
    appendRangesTakenOut(context_.columnRanges, columns, out);
    return true;
}

void MergePage::appendSelectedRows(LineReader& reader, LineWriter& writer) {
    const auto appendOne = [&](std::string_view line) {
        out_.clear();
        if (appendRangesOut(columns_, reader.lineNumber(), line, out_))
            writer.writeLine(out_);
    };
    std::string_view line;
    if (!worthBatching(reader, context_.lineJobs)) {
        while (reader.next(line))
            appendOne(line);
        return;
    }
    laneColumns_.resize(context_.lineJobs);
    LineBatches batches(
        laneColumns_.size(),
        [&](std::size_t lane, LineBatch& batch) {
            std::size_t lineNumber = batch.firstLine;
            AppendBuffer result(batch.result, batch.lines.size(), AppendBuffer::overwriting);
            forEachLine(batch.lines, [&](std::string_view one) {
                if (appendRangesOut(laneColumns_[lane], lineNumber++, one, result))
                    result.append("\r\n");
            });
        },
        [&](LineBatch& batch) { writer.writeBytes(batch.result); });
    batches.workAll(reader, appendOne);
}

} // namespace morlevant
