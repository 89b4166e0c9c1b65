#include "workspace/TreeCommands.h"

#include "tests/support/QStringPrinter.h"
#include "tests/support/ScriptedPrompts.h"
#include "tests/support/TreeText.h"
#include "workspace/NodeMove.h"
#include "workspace/WorkspaceState.h"

#include <gtest/gtest.h>

namespace morlevant {
namespace {

using namespace testing;

class TreeCommandsTest : public ::testing::Test {
protected:
    TaskTreeModel model;
    WorkspaceState state;
    testing::ScriptedPrompts prompts;
    TreeCommands commands{model, state, prompts};
};

TEST_F(TreeCommandsTest, AddTaskIsNumberedByAllNodesAndPlacedAfterTheSelection) {
    const std::tuple<const char*, QStringList, const char*> cases[] = {
        {"", {}, "My Batch Task"},
        {"A", {"A"}, "A My Batch Task 1"},
        {"A[a.txt b.txt] B", {"A"}, "A[a.txt b.txt] My Batch Task 4 B"},
        {"A[a.txt b.txt] B", {"A", "a.txt"}, "A[a.txt My Batch Task 4 b.txt] B"},
    };
    for (const auto& [tree, selected, after] : cases) {
        model.clear();
        state.TaskDirty = false;
        buildTree(model, tree);
        const QStandardItem* added =
            commands.addTask(selected.isEmpty() ? nullptr : find(model, selected));
        EXPECT_EQ(treeText(model), after) << tree;
        EXPECT_TRUE(state.TaskDirty);
        // A new task shows its folder at once, as the start-up task does.
        EXPECT_EQ(TaskTreeModel::image(added), treeImage::closedFolder);
        EXPECT_EQ(TaskTreeModel::selectedImage(added), treeImage::openFolder);
    }
}

TEST_F(TreeCommandsTest, ImportedFilesGoUnderOrBesideTheSelectionOrIntoANewTask) {
    buildTree(model, "A[a.txt] B");
    prompts.fileNames.enqueue({});
    EXPECT_EQ(commands.importFiles(find(model, {"A"}), true), nullptr);
    EXPECT_EQ(treeText(model), "A[a.txt] B");
    EXPECT_FALSE(state.TaskDirty);
    EXPECT_EQ(prompts.dialogs.at(0).title, "Select File");

    prompts.fileNames.enqueue({"/in/zeta.txt", "/in/alpha.data.txt", "/in/readme"});
    EXPECT_EQ(commands.importFiles(find(model, {"A"}), true)->text(), "readme");
    EXPECT_EQ(commands.lastDirectory(), "/in");
    EXPECT_EQ(treeText(model), "A[a.txt zeta alpha.data readme] B");
    commands.addFiles(find(model, {"A", "a.txt"}), {"/in/x.txt", "/in/y.txt"}, false);
    EXPECT_EQ(treeText(model), "A[a.txt x y zeta alpha.data readme] B");
    const QStandardItem* alpha = find(model, {"A", "alpha.data"});
    EXPECT_EQ(TaskTreeModel::tag(alpha), "/in/alpha.data.txt");
    EXPECT_EQ(TaskTreeModel::image(alpha), treeImage::text);
    EXPECT_TRUE(state.TaskDirty);

    model.clear(); // into an empty tree: a task is made for the files, showing its folder
    const QStandardItem* file = commands.addFiles(nullptr, {"/in/a.txt"}, false);
    EXPECT_EQ(treeText(model), "My Batch Task[a]");
    EXPECT_EQ(TaskTreeModel::image(TaskTreeModel::parentNode(file)), treeImage::closedFolder);
}

// A task lists its files one name per line, so a name with a line break is not imported.
TEST_F(TreeCommandsTest, ImportLeavesOutNamesWithALineBreakAndSaysWhy) {
    buildTree(model, "A");
    prompts.fileNames.enqueue({"/in/x\ny.txt", "/in/ok.txt", "/in/c\rr.txt"});
    EXPECT_EQ(commands.importFiles(find(model, {"A"}), true)->text(), "ok");
    EXPECT_EQ(treeText(model), "A[ok]");
    EXPECT_EQ(prompts.messages(),
              QStringList{"error|Morlevant|These files are not imported: their names hold a line "
                          "break, and a task lists its files one name per line. Rename them "
                          "first:\n/in/x[LF]y.txt\n/in/c[CR]r.txt"});

    state.TaskDirty = false;
    prompts.fileNames.enqueue({"/in/only\n.txt"});
    EXPECT_EQ(commands.importFiles(find(model, {"A"}), true), nullptr);
    EXPECT_EQ(treeText(model), "A[ok]");
    EXPECT_FALSE(state.TaskDirty);
}

TEST_F(TreeCommandsTest, DeleteAsksOnlyForNodesWithChildren) {
    buildTree(model, "A[kept.txt b.txt] B");
    EXPECT_EQ(commands.deleteNode(find(model, {"A", "b.txt"}))->text(), "kept.txt");
    EXPECT_TRUE(prompts.asked.isEmpty());

    prompts.answers.enqueue(Answer::No);
    state.TaskDirty = false;
    commands.deleteNode(find(model, {"A"}));
    EXPECT_EQ(treeText(model), "A[kept.txt] B");
    EXPECT_TRUE(state.TaskDirty); // marked changed although nothing was removed
    EXPECT_EQ(prompts.asked.last(),
              "yesno|Request confirmation|Delete this task with all folders and files？");

    model.clear();
    buildTree(model, "B");
    EXPECT_EQ(commands.deleteNode(find(model, {"B"})), nullptr);
    state.TaskDirty = false;
    EXPECT_EQ(commands.deleteNode(nullptr), nullptr);
    EXPECT_TRUE(state.TaskDirty);
}

TEST_F(TreeCommandsTest, SortOrdersTheLevelOnceWithoutMarkingChanges) {
    buildTree(model, "B A[c.txt B.txt a.txt b.txt]");
    commands.sortFiles(find(model, {"A", "c.txt"}));
    EXPECT_EQ(treeText(model), "B A[a.txt B.txt b.txt c.txt]");
    commands.sortFiles(find(model, {"B"}));
    EXPECT_EQ(treeText(model), "B A[a.txt B.txt b.txt c.txt]");
    EXPECT_FALSE(state.TaskDirty);
    // Later additions stay where they are put.
    commands.addFiles(find(model, {"A"}), {"/in/0.txt"}, true);
    EXPECT_EQ(treeText(model), "B A[a.txt B.txt b.txt c.txt 0]");
}

// The import dialog opens on the file type last chosen; its list of types stays as it is.
TEST_F(TreeCommandsTest, TheImportDialogRemembersTheFileTypeLastChosen) {
    buildTree(model, "A");
    prompts.fileNames.enqueue({"/in/a.log"});
    prompts.chosenFilters.enqueue("All Files (*)");
    commands.importFiles(find(model, {"A"}), true);
    prompts.fileNames.enqueue({});
    commands.importFiles(find(model, {"A"}), true);
    EXPECT_EQ(prompts.startFilters, (QStringList{"", "All Files (*)"}));
    EXPECT_EQ(prompts.dialogs.at(1).filter, "Text File (*.txt);;All Files (*)");
}

// A node dragged onto another, or beside it with "Drag in the same level" on.
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
        QStandardItem* dragged = find(model, QString(c.dragged).split('/'));
        // A node made anew keeps its tag too, remark and path.
        const QString tag = "note" + QString(QChar(0)) + TaskTreeModel::tag(dragged);
        TaskTreeModel::setTag(dragged, tag);
        const auto result = NodeMove::drop(
            model, dragged, find(model, QString(c.target).split('/')), c.sameLevel, state);
        const std::string name = std::string(c.dragged) + " on " + c.target + " in " + c.tree;
        EXPECT_EQ(result.outcome, c.outcome) << name;
        EXPECT_EQ(treeText(model), c.after) << name;
        EXPECT_EQ(state.TaskDirty, c.outcome == O::Moved) << name;
        if (c.outcome == O::Moved) {
            EXPECT_EQ(result.moved->text(), QString(c.dragged).section('/', -1)) << name;
            EXPECT_EQ(TaskTreeModel::tag(result.moved), tag) << name;
        }
    }
}

} // namespace
} // namespace morlevant
