#include "mainwindow/find/FindInAllFiles.h"

#include "mainwindow/find/FileSearch.h"
#include "workspace/NodeTag.h"
#include "workspace/TaskTreeModel.h"
#include "workspace/WorkspaceState.h"

namespace morlevant {

QStandardItem* findInAllFiles(TaskTreeModel& model, WorkspaceState& state, const QString& text) {
    const QList<QStandardItem*> searched = model.nodesInOrder();
    QStandardItem* group = model.appendNode(nullptr, QStringLiteral("Include Files:") + text + u' ',
                                            {}, treeImage::closedFolder);
    TaskTreeModel::setSelectedImage(group, treeImage::openFolder);
    // Files hold UTF-8, so the text is looked for in that form.
    const std::string bytes = text.toStdString();
    for (const QStandardItem* node : searched) {
        const QString tag = TaskTreeModel::tag(node);
        const QString path = NodeTag::split(tag).path;
        if (!path.isEmpty() && Search(path.toStdString(), bytes))
            model.appendNode(group, node->text(), tag, TaskTreeModel::image(node));
    }
    state.TaskDirty = true;
    return group;
}

} // namespace morlevant
