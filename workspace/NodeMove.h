#pragma once

class QStandardItem;

namespace morlevant {

class TaskTreeModel;
struct WorkspaceState;

// Moving a node of the task tree by dropping it on another one.
class NodeMove final {
public:
    enum class Outcome {
        Nothing, // no target, no dragged node, or the node dropped on itself
        Refused, // the move would put the node inside its own subtree; the tree is untouched
        Moved,
    };
    struct Result {
        Outcome outcome = Outcome::Nothing;
        QStandardItem* moved = nullptr; // the node in its new place, to be selected
    };

    // Drops dragged on target. sameLevel ("Drag in the same level"): the node moves to the
    // target's level, as the last child of the target's parent; dropped on a task at the top,
    // it becomes a task of its own right after that task, its children moved along. Otherwise
    // the node becomes the target's last child, and a target without an icon shows the open
    // folder from then on. A move marks the workspace changed.
    static Result drop(TaskTreeModel& model, QStandardItem* dragged, QStandardItem* target,
                       bool sameLevel, WorkspaceState& state);

    // Whether node is ancestor itself or lies anywhere below it.
    static bool isWithin(const QStandardItem* node, const QStandardItem* ancestor);
};

} // namespace morlevant
