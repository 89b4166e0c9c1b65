#pragma once

#include <QString>
#include <QStringList>

class QStandardItem;

namespace morlevant {

class Prompts;
class TaskTreeModel;
struct WorkspaceState;

// The commands that add, import, rename, delete and sort nodes of the task tree. Each takes the
// selected node (nullptr when none) and returns the node that should be selected afterwards
// (nullptr: leave the selection to the view). Adding, importing and deleting mark the
// workspace changed, and so does renaming; sorting does not, so a sorted order reaches the file
// only with the next save.
class TreeCommands final {
public:
    TreeCommands(TaskTreeModel& model, WorkspaceState& state, Prompts& prompts);

    // A task captioned "My Batch Task " + the number of nodes, right after the selected node;
    // in an empty tree a plain "My Batch Task".
    QStandardItem* addTask(QStandardItem* selected);

    // Asks for files and adds a node for each, under the selected node when intoSelected,
    // otherwise right after it. The dialog opens on the folder and the file type last chosen. The
    // files keep the order in which the dialog returned them. Returns the last node added, or
    // nullptr when the user cancelled.
    QStandardItem* importFiles(QStandardItem* selected, bool intoSelected);
    // The same without the dialog, for files the user has already chosen. A file whose name
    // holds a line break is left out, and the user told why: a task's file list could not keep
    // it. Returns nullptr when no file is added.
    QStandardItem* addFiles(QStandardItem* selected, const QStringList& chosen, bool intoSelected);

    // Asks for a new name of the task and gives it to the node and to the task's files in
    // programFolder's "task" folder together. A name that another task has, an empty one or one
    // that a file name cannot hold is refused with a message, and nothing changes. True when the
    // task was renamed.
    bool renameTask(QStandardItem* task, const QString& programFolder);

    // Removes the selected node; one with children only after the user confirmed. Nothing is
    // removed from the disk.
    QStandardItem* deleteNode(QStandardItem* selected);

    // Sorts the selected node and its siblings once by caption; a task at the top does nothing.
    void sortFiles(QStandardItem* selected);

    // The folder the import dialog opens in: the folder of the last import.
    const QString& lastDirectory() const { return lastDirectory_; }

private:
    // Why the task cannot be called name: what a file name cannot hold, or another task (a node
    // without a file) of that name; empty when it can.
    QString nameRefusal(const QStandardItem* task, const QString& name) const;
    // Says which files are left out because their names hold a line break.
    void refuseUnlistable(const QStringList& paths);

    TaskTreeModel& model_;
    WorkspaceState& state_;
    Prompts& prompts_;
    QString lastDirectory_;
    QString lastFilter_; // the file type last chosen in the import dialog
};

} // namespace morlevant
