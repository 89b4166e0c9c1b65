#include "workspace/TreeCommands.h"

#include "tests/support/QStringPrinter.h"
#include "tests/support/ScriptedPrompts.h"
#include "tests/support/TreeText.h"
#include "workspace/WorkspaceState.h"

#include <gtest/gtest.h>

namespace morlevant {
namespace {

using testing::buildTree;
using testing::find;
using testing::treeText;

class TreeCommandsTest : public ::testing::Test {
protected:
    TaskTreeModel model;
    WorkspaceState state;
    testing::ScriptedPrompts prompts;
    TreeCommands commands{model, state, prompts};
};

TEST_F(TreeCommandsTest, AddTaskIsNumberedByAllNodesAndPlacedAfterTheSelection) {
    struct Case {
        const char* tree;
        QStringList selected;
        const char* after;
    };
    const Case cases[] = {
        {"", {}, "My Batch Task"},
        {"A", {"A"}, "A My Batch Task 1"},
        {"A[a.txt b.txt] B", {"A"}, "A[a.txt b.txt] My Batch Task 4 B"},
        {"A[a.txt b.txt] B", {"A", "a.txt"}, "A[a.txt My Batch Task 4 b.txt] B"},
    };
    for (const Case& c : cases) {
        model.clear();
        state.TaskDirty = false;
        buildTree(model, c.tree);
        const QStandardItem* added =
            commands.addTask(c.selected.isEmpty() ? nullptr : find(model, c.selected));
        EXPECT_EQ(treeText(model), c.after) << c.tree;
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

} // namespace
} // namespace morlevant
