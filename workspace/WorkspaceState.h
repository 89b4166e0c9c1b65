#pragma once

#include <QString>

namespace morlevant {

// What the main window knows about the open workspace file.
struct WorkspaceState {
    QString TaskFileName; // full path of the ".tsk" file; empty for a new workspace
    QString TaskDir;      // folder of TaskFileName with its trailing separator
    bool HasTaskFile = false;
    bool TaskDirty = false;

    // Points the state at a workspace file: TaskFileName, TaskDir and HasTaskFile.
    void setTaskFile(const QString& path);
    // A new, unsaved and unchanged workspace.
    void clear();
    // "Morlevant v" and the version, followed by " - " and the file's path once there is one.
    QString windowTitle() const;
};

} // namespace morlevant
