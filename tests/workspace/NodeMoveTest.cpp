#include "NodeMove.h"

#include "TreeText.h"
#include "WorkspaceState.h"

#include <gtest/gtest.h>

namespace morlevant {
namespace {

using testing::buildTree;
using testing::find;
using testing::treeText;

struct DropCase {
    const char* name;
    const char* tree;
    QStringList dragged;
    QStringList target;
    bool sameLevel;
    NodeMove::Outcome outcome;
    const char* after;
};

class NodeMoveDrop : public ::testing::TestWithParam<DropCase> {};

TEST_P(NodeMoveDrop, MovesByTheDragRules) {
    const DropCase& c = GetParam();
    TaskTreeModel model;
    buildTree(model, c.tree);
    WorkspaceState state;
    const auto result =
        NodeMove::drop(model, find(model, c.dragged), find(model, c.target), c.sameLevel, state);
    EXPECT_EQ(result.outcome, c.outcome);
    EXPECT_EQ(treeText(model), c.after);
    EXPECT_EQ(state.TaskDirty, c.outcome == NodeMove::Outcome::Moved);
    if (c.outcome == NodeMove::Outcome::Moved) {
        EXPECT_EQ(result.moved->text(), c.dragged.last());
    }
}

using O = NodeMove::Outcome;

INSTANTIATE_TEST_SUITE_P(
    Drops, NodeMoveDrop,
    ::testing::Values(
        DropCase{
            "OnItself", "A[a.txt]", {"A", "a.txt"}, {"A", "a.txt"}, false, O::Nothing, "A[a.txt]"},
        DropCase{"FileOnTaskBecomesLastChild",
                 "A[a.txt] B[b.txt]",
                 {"A", "a.txt"},
                 {"B"},
                 false,
                 O::Moved,
                 "A B[b.txt a.txt]"},
        DropCase{"TaskOnFileBecomesItsChild",
                 "A[a.txt] B",
                 {"B"},
                 {"A", "a.txt"},
                 false,
                 O::Moved,
                 "A[a.txt[B]]"},
        DropCase{"IntoOwnSubtreeRefused",
                 "A[a.txt[x.txt]]",
                 {"A"},
                 {"A", "a.txt", "x.txt"},
                 false,
                 O::Refused,
                 "A[a.txt[x.txt]]"},
        DropCase{"SameLevelFileOnFileOfOtherTask",
                 "A[a.txt] B[b.txt c.txt]",
                 {"A", "a.txt"},
                 {"B", "b.txt"},
                 true,
                 O::Moved,
                 "A B[b.txt c.txt a.txt]"},
        DropCase{"SameLevelOnTopTaskRecreatesAfterIt",
                 "A[a.txt] B[b.txt] C",
                 {"B", "b.txt"},
                 {"A"},
                 true,
                 O::Moved,
                 "A[a.txt] b.txt B C"},
        DropCase{"SameLevelTaskOnTaskKeepsChildren",
                 "A[a.txt b.txt] B C",
                 {"A"},
                 {"B"},
                 true,
                 O::Moved,
                 "B A[a.txt b.txt] C"},
        DropCase{"SameLevelOnOwnChildRefused",
                 "A[a.txt[x.txt]]",
                 {"A", "a.txt"},
                 {"A", "a.txt", "x.txt"},
                 true,
                 O::Refused,
                 "A[a.txt[x.txt]]"},
        DropCase{"NothingDraggedDoesNothing", "A B", {"missing"}, {"A"}, false, O::Nothing, "A B"}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(NodeMove, DropOnNodeWithoutIconGivesItTheOpenFolder) {
    TaskTreeModel model;
    buildTree(model, "A[a.txt] B");
    QStandardItem* target = find(model, {"B"});
    TaskTreeModel::setSelectedImage(target, 2);
    WorkspaceState state;
    NodeMove::drop(model, find(model, {"A", "a.txt"}), target, false, state);
    EXPECT_EQ(TaskTreeModel::image(target), TaskTreeModel::parentSelectedImage);
    EXPECT_EQ(TaskTreeModel::selectedImage(target), 2); // the selected image is left alone
}

TEST(NodeMove, RecreatedTopLevelNodeKeepsTagAndImages) {
    TaskTreeModel model;
    buildTree(model, "A[a.txt] B");
    QStandardItem* file = find(model, {"A", "a.txt"});
    TaskTreeModel::setTag(file, QString("note") + QChar(0) + "/data/a.txt");
    TaskTreeModel::setSelectedImage(file, 13);
    WorkspaceState state;
    const auto result = NodeMove::drop(model, file, find(model, {"B"}), true, state);
    ASSERT_TRUE(TaskTreeModel::isTopLevel(result.moved));
    EXPECT_EQ(TaskTreeModel::tag(result.moved), QString("note") + QChar(0) + "/data/a.txt");
    EXPECT_EQ(TaskTreeModel::image(result.moved), 11);
    EXPECT_EQ(TaskTreeModel::selectedImage(result.moved), 13);
}

} // namespace
} // namespace morlevant
