#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace morlevant {

struct TaskPageSettings;

// A file the preview shows: its name and its first rows, with the number of rows it has.
struct PreviewFile {
    std::string name;
    std::vector<std::string> rows;
    std::size_t rowCount = 0;
};

// What a task would do to the first rows of one of its files, worked by the run's own pages on
// a copy of those rows, so that nothing is written beside the sources.
struct TaskPreview {
    enum class Kind {
        Lines,   // a page that writes F.modify: `source` and `result`
        Pieces,  // a divide: `source` and the pieces in `files`
        Merge,   // a merge: the files of the task in list order in `files`, and `result`
        Nothing, // the settings choose nothing to do for their range mode
    };
    Kind kind = Kind::Nothing;
    std::string file; // the source previewed (a merge: the task's first file)
    PreviewFile source;
    PreviewFile result;
    std::vector<PreviewFile> files;
    std::string divideFolder; // Pieces: the folder beside the source that would receive them
    std::vector<std::string> messages; // what the run would show in a box, in order
    std::optional<std::string> error;  // the message the run would stop with
    // Rows of the sample that the page changed, by position; only for Kind::Lines.
    std::size_t changedRows() const;
};

// Works `settings` on the first `rows` rows of `file`, or for a merge of each of `files` in
// order, in a temporary folder that is removed again. A failure the run would meet (a
// pattern JavaScript refuses, a division by zero) is in `error`, with the source's name where
// the run would give it; the caller sees no exception for it.
TaskPreview previewTask(const TaskPageSettings& settings, const std::vector<std::string>& files,
                        const std::string& file, std::size_t rows);

} // namespace morlevant
