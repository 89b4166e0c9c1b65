#pragma once

#include "engine/io/LineWriter.h"
#include "engine/pages/FilePage.h"
#include "engine/text/LineColumns.h"
#include "taskdef/TaskFiles.h"

#include <deque>
#include <memory>

namespace morlevant {

class LineReader;

// Merge (line 26 "5"): every file of the task, in list order, into
// outcome/merge/merge-application-file.txt of the program folder. The first file merged in a
// run empties it; after the file whose count equals the number of files of the task, the
// outcome folder is shown. The result is written whole: it takes its name when that folder is
// shown and at the end of the run, so a run that fails keeps the older result as it was.
class MergePage final : public FilePage {
public:
    explicit MergePage(const RunContext& context);
    void checkResults(const std::string& source) const override;
    void process(const std::string& source) override;
    std::string resultPlace(const std::string&) const override {
        return mergeFolder(context_.request.programFolder) + resultName;
    }
    bool worksFilesApart() const override { return false; }
    void finish() override;

    static constexpr const char* resultName = "merge-application-file.txt";

private:
    void appendSelectedRows(LineReader& reader, LineWriter& writer);
    // Appends line `lineNumber` of a file with its column ranges taken out to `out` (a string
    // or an AppendBuffer); false, appending nothing, for a row that the row ranges leave out.
    template <typename Out>
    bool appendRangesOut(LineColumns& columns, std::size_t lineNumber, std::string_view line,
                         Out& out) const;

    const RunContext& context_;
    // The whole-text and in-place merges count in one counter, the merge with the ranges taken
    // out in its own; each starts at 1 and is the number of files merged so far plus one.
    int mergeCount_ = 1;
    int rangesOutMergeCount_ = 1;
    std::unique_ptr<LineWriter> writer_; // open from the first file until the result is whole
    // Buffers reused from line to line: of the thread that reads, and of the further threads
    // of a file worked in batches.
    LineColumns columns_;
    std::string out_;
    std::deque<LineColumns> laneColumns_;
};

} // namespace morlevant
