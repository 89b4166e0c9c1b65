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

TEST(NodeTag, SplitsAtTheFirstNul) {
    const QChar nul(0);
    const struct {
        QString tag, remark, path;
    } cases[] = {
        {QString("seen") + nul + "/data/a.txt", "seen", "/data/a.txt"},
        {QString("r") + nul + "p" + nul + "q", "r", QString("p") + nul + "q"},
    };
    for (const auto& c : cases) {
        const NodeTag split = NodeTag::split(c.tag);
        EXPECT_EQ(split.remark, c.remark);
        EXPECT_EQ(split.path, c.path);
    }
}

} // namespace
} // namespace morlevant
