#include "workspace/NodeMove.h"

#include "tests/support/TreeText.h"
#include "workspace/WorkspaceState.h"

#include <gtest/gtest.h>

namespace morlevant {
namespace {

using testing::buildTree;
using testing::find;
using testing::treeText;

TEST(NodeMove, MovesByTheDragRules) {
    using O = NodeMove::Outcome;
    const struct {
        const char* tree;
        const char* dragged; // captions from the top, joined by "/"
        const char* target;
        bool sameLevel;
        O outcome;
        const char* after;
    } cases[] = {
        {"A[a.txt]", "A/a.txt", "A/a.txt", false, O::Nothing, "A[a.txt]"},
        {"A[a.txt] B[b.txt]", "A/a.txt", "B", false, O::Moved, "A B[b.txt a.txt]"},
        {"A[a.txt[x.txt]]", "A", "A/a.txt/x.txt", false, O::Refused, "A[a.txt[x.txt]]"},
        {"A[a.txt] B[b.txt c.txt]", "A/a.txt", "B/b.txt", true, O::Moved, "A B[b.txt c.txt a.txt]"},
        // Dropped beside a top-level node, a node is made anew after it.
        {"A[a.txt] B[b.txt] C", "B/b.txt", "A", true, O::Moved, "A[a.txt] b.txt B C"},
        {"A[a.txt b.txt] B C", "A", "B", true, O::Moved, "B A[a.txt b.txt] C"},
    };
    for (const auto& c : cases) {
        TaskTreeModel model;
        buildTree(model, c.tree);
        WorkspaceState state;
        const auto result =
            NodeMove::drop(model, find(model, QString(c.dragged).split('/')),
                           find(model, QString(c.target).split('/')), c.sameLevel, state);
        const std::string name = std::string(c.dragged) + " on " + c.target + " in " + c.tree;
        EXPECT_EQ(result.outcome, c.outcome) << name;
        EXPECT_EQ(treeText(model), c.after) << name;
        EXPECT_EQ(state.TaskDirty, c.outcome == O::Moved) << name;
        if (c.outcome == O::Moved) {
            EXPECT_EQ(result.moved->text(), QString(c.dragged).section('/', -1)) << name;
        }
    }
}

// A node dropped beside a top-level node is made anew there and keeps its tag: remark and path.
TEST(NodeMove, ANodeMadeAnewKeepsItsTag) {
    TaskTreeModel model;
    buildTree(model, "A[a.txt b.txt] B");
    QStandardItem* file = find(model, {"A", "b.txt"});
    TaskTreeModel::setTag(file, QString("note") + QChar(0) + "/data/b.txt");
    WorkspaceState state;
    const auto result = NodeMove::drop(model, file, find(model, {"B"}), true, state);
    ASSERT_TRUE(TaskTreeModel::isTopLevel(result.moved));
    EXPECT_EQ(TaskTreeModel::tag(result.moved), QString("note") + QChar(0) + "/data/b.txt");
}

} // namespace
} // namespace morlevant
