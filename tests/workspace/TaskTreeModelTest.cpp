#include "workspace/TaskTreeModel.h"

#include "tests/support/QStringPrinter.h"
#include "workspace/NodeTag.h"

#include <QAbstractItemModelTester>
#include <gtest/gtest.h>

namespace morlevant {
namespace {

TEST(TaskTreeModel, StaysConsistentThroughEdits) {
    TaskTreeModel model;
    QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    QStandardItem* task = model.resetToDefaultTask(12, 13);
    QStandardItem* file = model.appendNode(task, "notes", "/data/notes.txt", treeImage::text);
    model.insertNodeAfter(file, "report", "/data/report.txt", 11);
    model.insertNodeAfter(task, "My Batch Task 3");
    model.appendNode(file, "inner");
    task->removeRow(0);
    EXPECT_EQ(model.nodeCount(), 3);
    model.resetToDefaultTask(2, 2);
    EXPECT_EQ(model.nodeCount(), 1);
}

// The ordinary tag of a remark and a path is split by the workspace file's writer (tested there).
TEST(NodeTag, SplitsAtTheFirstNul) {
    const QChar nul(0);
    const NodeTag split = NodeTag::split(QString("r") + nul + "p" + nul + "q");
    EXPECT_EQ(split.remark, "r");
    EXPECT_EQ(split.path, QString("p") + nul + "q");
}

} // namespace
} // namespace morlevant
