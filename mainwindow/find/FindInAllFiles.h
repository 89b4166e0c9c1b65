#pragma once

#include <QString>

class QStandardItem;

namespace morlevant {

class TaskTreeModel;
struct WorkspaceState;

// "Find In &All File": adds a top-level node "Include Files:" + text + " " and under it a
// copy (caption, Tag and icon) of every node that was in the tree before whose file holds text
// (see Search), in tree order. The group is added also when no file matches. Marks the
// workspace changed and returns the group.
QStandardItem* findInAllFiles(TaskTreeModel& model, WorkspaceState& state, const QString& text);

} // namespace morlevant
