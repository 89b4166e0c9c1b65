#pragma once

#include <QString>
#include <functional>
#include <memory>
#include <string>
#include <vector>

class QProgressBar;
class QStandardItem;
class QWidget;

namespace morlevant {

class BackgroundRun;
class MainStatusBar;
class Prompts;
struct TaskPageSettings;

// "&Edit Task" and "&Run Task" on a task node of the tree: preparing the task's files and
// opening the editor, and running the task with the window's progress bar.
class TaskLauncher final {
public:
    // Opens the task editor modally for the task whose files are taskPath + ".ttp" / ".edt",
    // its controls as `shown` says (nullptr: the editor's defaults); true when the user
    // confirmed.
    // `files`: the task's files in the tree, which the editor's preview works.
    using EditorOpener =
        std::function<bool(QWidget* parent, const QString& taskPath, const TaskPageSettings* shown,
                           const std::vector<std::string>& files)>;

    // Shows a folder in the file manager (the merge folder at the end of a merge).
    using FolderOpener = std::function<void(const QString& folder)>;

    // programFolder holds the tasks' files ("task/") and the merge folder; a run works `jobs`
    // files at once, 0 for as many as the machine has cores.
    TaskLauncher(Prompts& prompts, FolderOpener openFolder, EditorOpener openEditor,
                 QString programFolder, int jobs = 0);
    // A run still under way is stopped and waited for.
    ~TaskLauncher();
    TaskLauncher(const TaskLauncher&) = delete;
    TaskLauncher& operator=(const TaskLauncher&) = delete;

    const QString& programFolder() const { return programFolder_; }

    // Writes the task's file list from its children, empties its settings and opens the
    // editor. A task without files only gets "You didn't select files". False when the editor
    // did not open. withSettings ("Edit Task opens with the task's settings"): the editor opens
    // on the task's settings instead, nothing is emptied, and the file list is written only when
    // the editor confirmed, so that a cancelled edit leaves the task as it was.
    bool EditTask(const QStandardItem& task, QWidget* parent, bool withSettings = false);

    // Starts the task's run over its files on threads of its own and returns at once: the
    // window keeps painting, showing progress on `bar` and `status`. The run ends with "Vell
    // down!", one error message, or how far it came when stopped; then `ended` is called.
    void run(const QStandardItem& task, QProgressBar& bar, MainStatusBar& status,
             std::function<void()> ended);
    // Asks the run under way to stop at its next block; `quietly` shows nothing at its end.
    void stop(bool quietly = false);
    // Shows what the task would do to `file` (the task's first file when empty) as its
    // settings stand, writing nothing beside the sources.
    void preview(const QStandardItem& task, const QString& file, QWidget* parent);
    // Whether a run is under way: the window repaints meanwhile but takes no other command.
    bool isRunning() const { return run_ != nullptr; }
    // Whether the run is still at work, rather than showing how it ended.
    bool isWorking() const;

private:
    Prompts& prompts_;
    FolderOpener openFolder_;
    EditorOpener openEditor_;
    QString programFolder_;
    int jobs_;
    std::unique_ptr<BackgroundRun> run_;
};

} // namespace morlevant
