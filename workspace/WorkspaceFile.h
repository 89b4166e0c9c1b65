#pragma once

#include "workspace/TaskTreeModel.h"
#include "workspace/WorkspaceState.h"

#include <QByteArray>
#include <QString>
#include <optional>

namespace morlevant {

// The ".tsk" file: one line per node in pre-order, three quoted fields each (the parent's key,
// the caption, the remark and path). Paths below the workspace's folder are stored relative to
// it, so a workspace moved together with its files still finds them.
class WorkspaceFile final {
public:
    // Levels of nesting a workspace may hold; a file with deeper records is loaded up to them.
    static constexpr int maxDepth = 256;

    struct ReadResult {
        bool treeReplaced = true;       // false: the bytes hold no record; tree left as it was
        std::optional<QString> problem; // what stopped the load early, if anything
    };

    // The whole tree as the file's bytes. An empty tree is given its default task first.
    static QByteArray write(TaskTreeModel& model, const QString& taskDir);
    // Replaces the tree with the records of bytes. A record that cannot be read or attached
    // ends the load: the nodes before it stay and the problem names its line.
    static ReadResult read(TaskTreeModel& model, const QByteArray& bytes, const QString& taskDir);

    // A path as the file stores it: cut by the length of taskDir when taskDir occurs anywhere
    // in it (case-insensitively), otherwise unchanged.
    static QString FNtoSave(const QString& path, const QString& taskDir);
    // A stored path made whole again: absolute paths as they stand, others joined to taskDir.
    static QString fullPath(const QString& storedPath, const QString& taskDir);
};

// Writes the tree to state.TaskFileName (all or nothing) and clears TaskDirty. Returns a
// message naming the file and the cause when it cannot be written; the state is then unchanged.
std::optional<QString> saveWorkspace(TaskTreeModel& model, WorkspaceState& state);

// Opens the workspace file at path into the tree and points the state at it (CommandLineLoad
// without the viewer); the loaded workspace has no unsaved changes. Returns a message when the
// file cannot be read or is no workspace (tree and state left as they were), or when a record
// cannot be used: the nodes before it are then loaded and the state points at the file.
std::optional<QString> loadWorkspace(TaskTreeModel& model, WorkspaceState& state,
                                     const QString& path);

} // namespace morlevant
