#include "workspace/NodeMove.h"

#include "workspace/TaskTreeModel.h"
#include "workspace/WorkspaceState.h"

namespace morlevant {

namespace {

QStandardItem* holderOf(TaskTreeModel& model, QStandardItem* node) {
    QStandardItem* parent = TaskTreeModel::parentNode(node);
    return parent ? parent : model.invisibleRootItem();
}

// Detaches node with its subtree and appends it under newParent (nullptr: the top level).
QStandardItem* reparent(TaskTreeModel& model, QStandardItem* node, QStandardItem* newParent) {
    QList<QStandardItem*> row = holderOf(model, node)->takeRow(node->row());
    (newParent ? newParent : model.invisibleRootItem())->appendRow(row);
    return row.first();
}

// A top-level node standing for node, right after target: the same Text, Tag and images,
// and node's children moved under it; node itself leaves the tree.
QStandardItem* recreateAtTop(TaskTreeModel& model, QStandardItem* node, QStandardItem* target) {
    QStandardItem* copy = TaskTreeModel::createNode(node->text(), TaskTreeModel::tag(node),
                                                    TaskTreeModel::image(node));
    const QVariant selected = node->data(TaskTreeModel::SelectedImageRole);
    if (selected.isValid())
        TaskTreeModel::setSelectedImage(copy, selected.toInt());
    while (node->rowCount() > 0)
        copy->appendRow(node->takeRow(0));
    holderOf(model, node)->removeRow(node->row());
    model.invisibleRootItem()->insertRow(target->row() + 1, copy);
    return copy;
}

} // namespace

bool NodeMove::isWithin(const QStandardItem* node, const QStandardItem* ancestor) {
    for (const QStandardItem* step = node; step != nullptr; step = TaskTreeModel::parentNode(step))
        if (step == ancestor)
            return true;
    return false;
}

NodeMove::Result NodeMove::drop(TaskTreeModel& model, QStandardItem* dragged, QStandardItem* target,
                                bool sameLevel, WorkspaceState& state) {
    if (dragged == nullptr || target == nullptr || dragged == target)
        return {};
    Result result{Outcome::Moved, nullptr};
    if (sameLevel) {
        QStandardItem* targetParent = TaskTreeModel::parentNode(target);
        if (targetParent == nullptr) {
            result.moved = recreateAtTop(model, dragged, target);
        } else {
            if (isWithin(targetParent, dragged))
                return {Outcome::Refused, nullptr};
            result.moved = reparent(model, dragged, targetParent);
        }
    } else {
        if (isWithin(target, dragged))
            return {Outcome::Refused, nullptr};
        result.moved = reparent(model, dragged, target);
        // Only the image changes, not the selected image: a node that had no icon shows the
        // open folder from now on, as the program has always done.
        if (TaskTreeModel::image(target) == treeImage::none)
            TaskTreeModel::setImage(target, treeImage::openFolder);
    }
    state.TaskDirty = true;
    return result;
}

} // namespace morlevant
