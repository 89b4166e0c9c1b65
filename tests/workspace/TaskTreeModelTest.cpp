#include "TaskTreeModel.h"

#include "NodeTag.h"

#include <QAbstractItemModelTester>
#include <gtest/gtest.h>

namespace morlevant {
namespace {

TEST(TaskTreeModel, StaysConsistentThroughEdits) {
    TaskTreeModel model;
    QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    QStandardItem* task = model.resetToDefaultTask(12, 13);
    QStandardItem* file = model.appendNode(task, "notes", "/data/notes.txt", 11);
    model.insertNodeAfter(file, "report", "/data/report.txt", 11);
    model.insertNodeAfter(task, "My Batch Task 3");
    model.appendNode(file, "inner");
    task->removeRow(0);
    model.resetToDefaultTask(2, 2);
    EXPECT_EQ(model.nodeCount(), 1);
}

TEST(TaskTreeModel, ListsNodesInPreOrder) {
    TaskTreeModel model;
    QStandardItem* first = model.appendNode(nullptr, "a");
    QStandardItem* second = model.appendNode(nullptr, "d");
    QStandardItem* child = model.appendNode(first, "b");
    model.appendNode(child, "c");
    model.appendNode(second, "e");
    QStringList texts;
    for (const QStandardItem* node : model.nodesInOrder())
        texts << node->text();
    EXPECT_EQ(texts.join(""), "abcde");
    EXPECT_EQ(model.nodeCount(), 5);
    EXPECT_TRUE(TaskTreeModel::isTopLevel(second));
    EXPECT_EQ(TaskTreeModel::parentNode(child), first);
}

TEST(TaskTreeModel, SelectedImageFollowsImageUntilSet) {
    TaskTreeModel model;
    QStandardItem* node = model.appendNode(nullptr, "a", {}, 11);
    EXPECT_EQ(TaskTreeModel::selectedImage(node), 11);
    TaskTreeModel::setSelectedImage(node, 13);
    TaskTreeModel::setImage(node, 12);
    EXPECT_EQ(TaskTreeModel::selectedImage(node), 13);
    EXPECT_EQ(TaskTreeModel::image(node), 12);
}

TEST(NodeTag, SplitsAtTheFirstNul) {
    const QChar nul(0);
    const struct {
        QString tag, remark, path;
    } cases[] = {
        {"", "", ""},
        {"/data/a.txt", "", "/data/a.txt"},
        {QString("seen") + nul + "/data/a.txt", "seen", "/data/a.txt"},
        {nul + QString("/data/a.txt"), "", "/data/a.txt"},
        {QString("r") + nul + "p" + nul + "q", "r", QString("p") + nul + "q"},
    };
    for (const auto& c : cases) {
        const NodeTag split = NodeTag::split(c.tag);
        EXPECT_EQ(split.remark, c.remark);
        EXPECT_EQ(split.path, c.path);
    }
    EXPECT_EQ((NodeTag{"seen", "/a"}).joined(), QString("seen") + nul + "/a");
}

} // namespace
} // namespace morlevant
