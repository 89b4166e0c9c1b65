#include "workspace/CommandAvailability.h"

#include "taskdef/TaskFiles.h"
#include "workspace/NodeTag.h"
#include "workspace/TaskTreeModel.h"

namespace morlevant {

CommandAvailability CommandAvailability::forNode(const QStandardItem* node, bool addFileInSub,
                                                 const QString& programFolder) {
    CommandAvailability available;
    if (node == nullptr) {
        available.importFile = true;
        available.addTask = true;
        return available;
    }
    const bool isFile = !NodeTag::split(TaskTreeModel::tag(node)).path.isEmpty();
    available.importFile = !isFile || !addFileInSub;
    available.addTask = !isFile;
    available.editTask = !isFile && node->hasChildren();
    available.renameTask = !isFile;
    available.runTask =
        !isFile && isTaskEdited(programFolder.toStdString(), node->text().toStdString());
    const QStandardItem* task = isFile ? node->parent() : node;
    available.previewTask =
        task != nullptr &&
        (task == node ? available.runTask
                      : isTaskEdited(programFolder.toStdString(), task->text().toStdString()));
    available.deleteNode = true;
    available.sortFiles = !TaskTreeModel::isTopLevel(node);
    available.openFile = isFile;
    return available;
}

} // namespace morlevant
