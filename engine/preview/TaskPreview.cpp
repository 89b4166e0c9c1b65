#include "engine/preview/TaskPreview.h"

#include "engine/TaskRunner.h"
#include "engine/io/LineReader.h"
#include "engine/pages/ResultPlaces.h"
#include "taskdef/FilePath.h"
#include "taskdef/PathNames.h"
#include "taskdef/TaskCodes.h"
#include "taskdef/TaskError.h"
#include "taskdef/TaskFiles.h"
#include "taskdef/TaskPageSettings.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <random>
#include <system_error>

namespace morlevant {

namespace fs = std::filesystem;

namespace {

constexpr const char* previewTaskName = "Preview";

// A folder of the preview's own under the system's temporary folder, removed with everything
// in it when the preview is made.
class ScratchFolder {
public:
    ScratchFolder() {
        std::random_device random;
        std::error_code error;
        for (int attempt = 0; attempt < 8; ++attempt) {
            path_ = fs::temp_directory_path(error) /
                    ("morlevant-preview-" + std::to_string(random()) + std::to_string(random()));
            if (!error && fs::create_directory(path_, error))
                return;
        }
        throw TaskError("Cannot make a folder for the preview: " + error.message());
    }
    ~ScratchFolder() {
        std::error_code ignored;
        fs::remove_all(path_, ignored);
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    std::string file(const std::string& name) const { return (path_ / name).string(); }

private:
    fs::path path_;
};

// The first `most` rows of a file and the number of rows it has; counting stops at `most`
// rows for a source, which may be as large as the disk.
PreviewFile readRows(const std::string& path, std::size_t most, bool countAll) {
    PreviewFile file;
    file.name = path;
    LineReader reader(path);
    std::string_view row;
    while ((countAll || file.rowCount < most) && reader.next(row)) {
        if (file.rows.size() < most)
            file.rows.emplace_back(row);
        ++file.rowCount;
    }
    return file;
}

void writeRows(const std::string& path, const std::vector<std::string>& rows) {
    fs::create_directories(toFsPath(GetFilePath(path)));
    std::ofstream out(toFsPath(path), std::ios::binary);
    for (const std::string& row : rows)
        out << row << '\n';
    if (!out)
        throw TaskError("Cannot write the preview's copy of " + path);
}

void replaceAll(std::string& text, const std::string& from, const std::string& to) {
    for (std::size_t at = text.find(from); at != std::string::npos;
         at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
}

TaskPreview::Kind kindOf(const TaskPageSettings& settings) {
    const TaskCodes codes = readTaskCodes(settings);
    if (!codes.rangeMode || !codes.page)
        return TaskPreview::Kind::Nothing;
    if (*codes.page != PageCode::DivideOrMerge)
        return TaskPreview::Kind::Lines;
    if (!codes.divideMergeAction)
        return TaskPreview::Kind::Nothing;
    return *codes.divideMergeAction == DivideMergeAction::Merge ? TaskPreview::Kind::Merge
                                                                : TaskPreview::Kind::Pieces;
}

// The pieces a divide left in its folder, in the order of their names.
std::vector<PreviewFile> piecesIn(const std::string& folder, std::size_t rows) {
    std::vector<std::string> names;
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(toFsPath(folder), error))
        if (entry.is_regular_file())
            names.push_back(entry.path().string());
    std::sort(names.begin(), names.end());
    std::vector<PreviewFile> pieces;
    for (const std::string& name : names) {
        pieces.push_back(readRows(name, rows, true));
        pieces.back().name = name.substr(folder.size());
    }
    return pieces;
}

} // namespace

std::size_t TaskPreview::changedRows() const {
    const std::size_t common = std::min(source.rows.size(), result.rows.size());
    std::size_t changed = std::max(source.rows.size(), result.rows.size()) - common;
    for (std::size_t i = 0; i < common; ++i)
        changed += source.rows[i] != result.rows[i] ? 1 : 0;
    return changed;
}

TaskPreview previewTask(const TaskPageSettings& settings, const std::vector<std::string>& files,
                        const std::string& file, std::size_t rows) {
    TaskPreview preview;
    preview.kind = kindOf(settings);
    preview.file =
        preview.kind == TaskPreview::Kind::Merge && !files.empty() ? files.front() : file;
    if (preview.kind == TaskPreview::Kind::Nothing)
        return preview;

    const ScratchFolder scratch;
    const std::string home = scratch.file("home");
    const std::vector<std::string> sources =
        preview.kind == TaskPreview::Kind::Merge ? files : std::vector<std::string>{file};
    std::vector<std::string> copies;
    try {
        fs::create_directories(toFsPath(mergeFolder(home)));
        fs::create_directories(toFsPath(taskFolder(home)));
        // Each copy in a folder of its own keeps its file name, which names the divide folder.
        for (std::size_t i = 0; i < sources.size(); ++i) {
            PreviewFile sample = readRows(sources[i], rows, false);
            copies.push_back(scratch.file("files/" + std::to_string(i) + "/" +
                                          sources[i].substr(GetFilePath(sources[i]).size())));
            writeRows(copies.back(), sample.rows);
            if (preview.kind == TaskPreview::Kind::Merge)
                preview.files.push_back(std::move(sample));
            else
                preview.source = std::move(sample);
        }
        writeTaskPageSettings(taskSettingsPath(home, previewTaskName), settings);
        writeTaskFileList(taskFileListPath(home, previewTaskName), copies);
        RunCallbacks callbacks;
        callbacks.message = [&preview](const std::string& text) {
            preview.messages.push_back(text);
        };
        RunTask({home, previewTaskName, static_cast<int>(copies.size())}, callbacks);
    } catch (const TaskError& failure) {
        // The run's own message, about the source rather than its copy.
        std::string message = failure.what();
        for (std::size_t i = 0; i < copies.size(); ++i) {
            replaceAll(message, copies[i], sources[i]);
            replaceAll(message, GetFilePath(copies[i]), GetFilePath(sources[i]));
        }
        preview.error = message;
        return preview;
    }

    const std::string copy = copies.front();
    std::error_code error;
    switch (preview.kind) {
    case TaskPreview::Kind::Lines:
        if (fs::exists(toFsPath(copy + ".modify"), error))
            preview.result = readRows(copy + ".modify", rows + rows, true);
        else
            preview.kind = TaskPreview::Kind::Nothing;
        break;
    case TaskPreview::Kind::Pieces:
        preview.files = piecesIn(divideFolder(copy), rows);
        preview.divideFolder = divideFolder(file);
        if (preview.files.empty())
            preview.kind = TaskPreview::Kind::Nothing;
        break;
    case TaskPreview::Kind::Merge:
        preview.result = readRows(mergeFolder(home) + "merge-application-file.txt", rows, true);
        break;
    case TaskPreview::Kind::Nothing:
        break;
    }
    preview.result.name = preview.kind == TaskPreview::Kind::Merge
                              ? "merge-application-file.txt"
                              : file.substr(GetFilePath(file).size()) + ".modify";
    return preview;
}

} // namespace morlevant
