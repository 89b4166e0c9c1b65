#pragma once

#include <QString>

class QStandardItem;

namespace morlevant {

// Which tree commands make sense for the selected node. A task is a node without a file path
// (usually a top-level node); a file is a node with one.
//
//   command                      nothing selected   task                    file
//   Import File                  yes (new task)     yes                     when files go beside
//                                                                           it, not under it
//   Add Task                     yes                yes                     no: tasks are added
//                                                                           beside tasks
//   Edit Task                    no                 when it holds files     no
//   Rename Task                  no                 yes                     no
//   Run Task                     no                 when edited: its ".ttp" no
//                                                   is complete (31 lines)
//   Preview Task                 no                 when edited             when its task is
//   Delete Task Or File          no                 yes                     yes
//   File Sort                    no                 when below another node (sorts its level)
//   Open In Default              no                 no                      yes
//
// Menus, the tree's pop-up and the toolbar's images all follow this table.
struct CommandAvailability {
    bool importFile = false;
    bool addTask = false;
    bool editTask = false;
    bool renameTask = false;
    bool runTask = false;
    bool previewTask = false;
    bool deleteNode = false;
    bool sortFiles = false;
    bool openFile = false;

    // node nullptr: nothing selected. addFileInSub: "Add File In Sub" is checked.
    // programFolder: where the task's ".ttp" is looked for.
    static CommandAvailability forNode(const QStandardItem* node, bool addFileInSub,
                                       const QString& programFolder);

    bool operator==(const CommandAvailability&) const = default;
};

} // namespace morlevant
