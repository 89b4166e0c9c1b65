#include "workspace/TreeCommands.h"

#include "platform/Prompts.h"
#include "taskdef/PathNames.h"
#include "taskdef/TaskError.h"
#include "taskdef/TaskFiles.h"
#include "taskdef/TaskRename.h"
#include "taskdef/VisibleName.h"
#include "workspace/FileTypes.h"
#include "workspace/NodeTag.h"
#include "workspace/TaskTreeModel.h"
#include "workspace/WorkspaceState.h"

#include <QFileInfo>
#include <algorithm>

namespace morlevant {

TreeCommands::TreeCommands(TaskTreeModel& model, WorkspaceState& state, Prompts& prompts)
    : model_(model), state_(state), prompts_(prompts) {}

QStandardItem* TreeCommands::addTask(QStandardItem* selected) {
    QStandardItem* task = nullptr;
    if (model_.rowCount() == 0 || selected == nullptr) {
        // With nodes but none selected, the new task goes last among the tasks.
        const QString caption = model_.rowCount() == 0
                                    ? TaskTreeModel::defaultTaskCaption()
                                    : QStringLiteral("My Batch Task %1").arg(model_.nodeCount());
        task = model_.appendNode(nullptr, caption);
    } else {
        // The number is that of all nodes, files included, as the program has always counted.
        task = model_.insertNodeAfter(selected,
                                      QStringLiteral("My Batch Task %1").arg(model_.nodeCount()));
    }
    TaskTreeModel::setFolderImages(task);
    state_.TaskDirty = true;
    return task;
}

QStandardItem* TreeCommands::importFiles(QStandardItem* selected, bool intoSelected) {
    const QStringList paths = prompts_.openFileNames(
        {QStringLiteral("Select File"), QStringLiteral("Text File (*.txt);;All Files (*)"),
         lastDirectory_, QString(), &lastFilter_});
    if (paths.isEmpty())
        return nullptr;
    lastDirectory_ = QFileInfo(paths.first()).absolutePath();
    return addFiles(selected, paths, intoSelected);
}

QStandardItem* TreeCommands::addFiles(QStandardItem* selected, const QStringList& chosen,
                                      bool intoSelected) {
    QStringList paths;
    QStringList refused;
    for (const QString& path : chosen)
        (isListablePath(path.toStdString()) ? paths : refused).append(path);
    if (!refused.isEmpty())
        refuseUnlistable(refused);
    if (paths.isEmpty())
        return nullptr;
    // Files imported into an empty tree go into the task made for them; with nodes but none
    // selected, into the last task.
    if (model_.rowCount() == 0) {
        selected = model_.appendNode(nullptr, TaskTreeModel::defaultTaskCaption());
        TaskTreeModel::setFolderImages(selected);
        intoSelected = true;
    } else if (selected == nullptr) {
        selected = model_.item(model_.rowCount() - 1);
        intoSelected = true;
    }
    // Beside the selected node, each file goes after the one added before it, so the files
    // appear in the order they were chosen.
    QStandardItem* previous = selected;
    for (const QString& path : paths) {
        const QString name = QString::fromStdString(GetMainName(path.toStdString()));
        previous = intoSelected ? model_.appendNode(selected, name, path, Imagen(path))
                                : model_.insertNodeAfter(previous, name, path, Imagen(path));
    }
    state_.TaskDirty = true;
    return previous;
}

void TreeCommands::refuseUnlistable(const QStringList& paths) {
    QStringList shown;
    for (const QString& path : paths)
        shown.append(QString::fromStdString(visibleName(path.toStdString())));
    prompts_.error(
        QStringLiteral("These files are not imported: their names hold a line break, and "
                       "a task lists its files one name per line. Rename them first:\n") +
            shown.join('\n'),
        promptTitle);
}

QString TreeCommands::nameRefusal(const QStandardItem* task, const QString& name) const {
    if (const std::string problem = taskNameProblem(name.toStdString()); !problem.empty())
        return QString::fromStdString(problem);
    const QList<QStandardItem*> nodes = model_.nodesInOrder();
    const bool taken = std::any_of(nodes.begin(), nodes.end(), [&](const QStandardItem* other) {
        return other != task && other->text() == name &&
               NodeTag::split(TaskTreeModel::tag(other)).path.isEmpty();
    });
    if (!taken)
        return {};
    return QStringLiteral("Another task is already named \"%1\": choose another name")
        .arg(QString::fromStdString(visibleName(name.toStdString())));
}

bool TreeCommands::renameTask(QStandardItem* task, const QString& programFolder) {
    if (task == nullptr || !NodeTag::split(TaskTreeModel::tag(task)).path.isEmpty())
        return false;
    const std::optional<QString> answer = prompts_.editText(
        QStringLiteral("New name of the task:"), QStringLiteral("Rename Task"), task->text());
    if (!answer || *answer == task->text())
        return false;
    const QString& name = *answer;
    QString problem = nameRefusal(task, name);
    if (problem.isEmpty()) {
        try {
            renameTaskFiles(programFolder.toStdString(), task->text().toStdString(),
                            name.toStdString());
        } catch (const TaskError& failure) {
            problem = QString::fromStdString(failure.what());
        }
    }
    if (!problem.isEmpty()) {
        prompts_.error(problem, promptTitle);
        return false;
    }
    task->setText(name);
    state_.TaskDirty = true;
    return true;
}

QStandardItem* TreeCommands::deleteNode(QStandardItem* selected) {
    // Marked changed whatever happens, also when the user keeps the task: the program has
    // always done so.
    state_.TaskDirty = true;
    if (model_.rowCount() == 0 || selected == nullptr)
        return nullptr;
    if (selected->hasChildren() &&
        prompts_.question(QStringLiteral("Delete this task with all folders and files？"),
                          QStringLiteral("Request confirmation"), Buttons::YesNo) != Answer::Yes)
        return nullptr;
    QStandardItem* parent = TaskTreeModel::parentNode(selected);
    QStandardItem* holder = parent ? parent : model_.invisibleRootItem();
    const int row = selected->row();
    holder->removeRow(row);
    // The next node takes the removed one's place; at the end of a level, the one before it,
    // and in an emptied level the parent.
    if (holder->rowCount() > 0)
        return holder->child(std::min(row, holder->rowCount() - 1));
    return parent;
}

void TreeCommands::sortFiles(QStandardItem* selected) {
    QStandardItem* parent = selected ? TaskTreeModel::parentNode(selected) : nullptr;
    if (parent == nullptr)
        return;
    // Alphabetical as a reader expects it: case only decides between otherwise equal captions.
    QList<QList<QStandardItem*>> rows;
    while (parent->rowCount() > 0)
        rows.append(parent->takeRow(0));
    std::stable_sort(rows.begin(), rows.end(), [](const auto& left, const auto& right) {
        const QString a = left.first()->text();
        const QString b = right.first()->text();
        const int folded = a.compare(b, Qt::CaseInsensitive);
        return folded != 0 ? folded < 0 : a < b;
    });
    for (const QList<QStandardItem*>& row : rows)
        parent->appendRow(row);
}

} // namespace morlevant
