#pragma once

#include "engine/TaskRunner.h"
#include "engine/io/LineReader.h"
#include "taskdef/TaskFiles.h"
#include "taskdef/TaskPageSettings.h"
#include "tests/support/TaskErrorOf.h"
#include "tests/support/TempDir.h"

#include <atomic>
#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace morlevant::testing {

// Settings lines as (line number, value): 1 range mode, 2 rows, 3 columns, 4 take out,
// 5 page, 19 insert or filter action, 26 divide action, 27 rows and 28 columns per piece,
// 29 piece name template, 30 first piece number.
using Lines = std::vector<std::pair<int, std::string>>;

inline Lines operator+(Lines a, const Lines& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

// Every file and folder below `folder` by its path below it, with its bytes ("" for folders and
// links that lead nowhere).
inline std::map<std::string, std::string> snapshot(const std::filesystem::path& folder) {
    std::map<std::string, std::string> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder))
        files[entry.path().lexically_relative(folder).string()] =
            entry.is_regular_file() ? readBytes(entry.path().string()) : "";
    return files;
}

// A program folder with "task" and "outcome/merge", source files under "files/", and a runner
// that records what it reports.
class RunnerFixture {
public:
    RunnerFixture() {
        std::filesystem::create_directories(home.path() / "task");
        std::filesystem::create_directories(home.path() / "outcome" / "merge");
        settings.rangeMode = "1";
        settings.takeRangesOut = "0";
        settings.divideNameTemplate = "p(*).txt";
        settings.divideNumberFrom = "001";
    }

    void set(const Lines& lines) {
        for (const auto& [line, value] : lines)
            settings.line(line) = value;
    }

    std::string source(const std::string& name) const { return home.file("files/" + name); }
    void writeSource(const std::string& name, const std::string& bytes) const {
        writeBytes(source(name), bytes);
    }
    std::string result(const std::string& name) const { return readBytes(source(name)); }
    bool exists(const std::string& name) const { return std::filesystem::exists(source(name)); }
    std::string mergeResult() const {
        return readBytes(home.file("outcome/merge/merge-application-file.txt"));
    }

    // Writes the task's two files for the named sources and runs it; fileCount -1 means the
    // length of the list.
    void run(const std::vector<std::string>& names, int fileCount = -1) {
        writeTask(names);
        runOnly(fileCount < 0 ? static_cast<int>(names.size()) : fileCount);
    }

    void writeTask(const std::vector<std::string>& names) const {
        std::vector<std::string> paths;
        for (const std::string& name : names)
            paths.push_back(source(name));
        writeTaskPageSettings(taskSettingsPath(home.path().string(), taskName), settings);
        writeTaskFileList(taskFileListPath(home.path().string(), taskName), paths);
    }

    void runOnly(int fileCount) {
        RunCallbacks callbacks;
        callbacks.progress = [this](int done, int total) {
            progress.emplace_back(done, total);
            if (afterFile)
                afterFile();
        };
        callbacks.message = [this](const std::string& text) {
            messages.push_back(text);
            if (onMessage)
                onMessage();
        };
        callbacks.openFolder = [this](const std::string& folder) { opened.push_back(folder); };
        callbacks.waiting = [this] { ++waited; };
        RunRequest request{home.path().string(), taskName, fileCount};
        request.stop = &stop;
        request.waitForOtherRun = waitForOtherRun;
        request.jobs = jobs;
        RunTask(request, callbacks);
    }

    // The RunStopped that the run ends with; an empty one, with done -1, when it is not stopped.
    RunStopped stopped(const std::vector<std::string>& names) {
        try {
            run(names);
        } catch (const RunStopped& stopped) {
            return stopped;
        }
        RunStopped none;
        none.done = -1;
        return none;
    }

    // The message of the TaskError that the run ends with, or "no error".
    std::string failure(const std::vector<std::string>& names) {
        return taskErrorOf([&] { run(names); });
    }

    TempDir home;
    std::string taskName = "My Batch Task";
    TaskPageSettings settings;
    std::vector<std::pair<int, int>> progress;
    std::vector<std::string> messages;
    std::vector<std::string> opened;
    // Called after each file, and with each message (the column divide's notice comes while a
    // file is being read).
    std::function<void()> afterFile, onMessage;
    std::atomic<bool> stop{false}; // turned true by a test to stop the run
    bool waitForOtherRun = false;
    int jobs = 1;               // files worked at once
    std::atomic<int> waited{0}; // times the run waited for another run of the task
};

} // namespace morlevant::testing
