#include "workspace/CommandAvailability.h"

#include "taskdef/TaskFiles.h"
#include "taskdef/TaskPageSettings.h"
#include "workspace/NodeTag.h"
#include "workspace/TaskTreeModel.h"

#include <exception>

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
    available.runTask = !isFile && isTaskEdited(programFolder, node->text());
    available.deleteNode = true;
    available.sortFiles = !TaskTreeModel::isTopLevel(node);
    available.openFile = isFile;
    return available;
}

bool CommandAvailability::isTaskEdited(const QString& programFolder, const QString& taskName) {
    try {
        readTaskPageSettings(taskSettingsPath(programFolder.toStdString(), taskName.toStdString()));
        return true;
    } catch (const std::exception&) { // missing, emptied, short, or a name that is no file name
        return false;
    }
}

} // namespace morlevant
