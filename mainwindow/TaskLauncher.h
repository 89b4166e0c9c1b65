#pragma once

#include <QString>
#include <functional>
#include <string>
#include <vector>

class QProgressBar;
class QStandardItem;
class QWidget;

namespace morlevant {

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

    // programFolder holds the tasks' files ("task/") and the merge folder.
    TaskLauncher(Prompts& prompts, FolderOpener openFolder, EditorOpener openEditor,
                 QString programFolder);

    const QString& programFolder() const { return programFolder_; }

    // Writes the task's file list from its children, empties its settings and opens the
    // editor. A task without files only gets "You didn't select files". False when the editor
    // did not open. withSettings ("Edit Task opens with the task's settings"): the editor opens
    // on the task's settings instead, nothing is emptied, and the file list is written only when
    // the editor confirmed, so that a cancelled edit leaves the task as it was.
    bool EditTask(const QStandardItem& task, QWidget* parent, bool withSettings = false);

    // Runs the task over its files. The bar advances per file and is redrawn at once, while
    // the window takes no commands; the run ends with "Vell down!" or with one error message.
    void runWithProgress(const QStandardItem& task, QProgressBar& progress);
    // Shows what the task would do to `file` (the task's first file when empty) as its
    // settings stand, writing nothing beside the sources.
    void preview(const QStandardItem& task, const QString& file, QWidget* parent);
    // Whether a run is under way: the window repaints meanwhile but takes no other command.
    bool isRunning() const { return running_; }

private:
    Prompts& prompts_;
    FolderOpener openFolder_;
    EditorOpener openEditor_;
    QString programFolder_;
    bool running_ = false;
};

} // namespace morlevant
