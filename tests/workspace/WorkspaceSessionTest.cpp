#include "workspace/WorkspaceSession.h"

#include "tests/support/NonRegularFiles.h"
#include "tests/support/QStringPrinter.h"
#include "tests/support/ScriptedPrompts.h"
#include "tests/support/TempDir.h"
#include "tests/support/TreeText.h"
#include "workspace/WorkspaceBytes.h"
#include "workspace/WorkspaceState.h"

#include <QFileInfo>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>

namespace morlevant {
namespace {

using namespace testing;

class WorkspaceSessionTest : public ::testing::Test {
protected:
    QString path(const std::string& name) const {
        return QString::fromStdString(folder.file(name));
    }

    testing::TempDir folder;
    TaskTreeModel model;
    WorkspaceState state;
    testing::ScriptedPrompts prompts;
    QStringList chosen;
    WorkspaceSession session{model, state, prompts,
                             [this](const QString& file) { chosen.append(file); }};
};

TEST_F(WorkspaceSessionTest, NewAsksAboutChangesAndCancelKeepsTheTree) {
    buildTree(model, "A[a.txt]");
    state.TaskDirty = true;
    prompts.answers.enqueue(Answer::Cancel);
    EXPECT_FALSE(session.mnuNew());
    EXPECT_EQ(treeText(model), "A[a.txt]");
    EXPECT_EQ(prompts.asked.last(), "yesnocancel|Open task|Save the task？");

    prompts.answers.enqueue(Answer::No);
    EXPECT_TRUE(session.mnuNew());
    EXPECT_EQ(treeText(model), "My Batch Task");
    EXPECT_FALSE(state.TaskDirty);
    EXPECT_FALSE(state.HasTaskFile);
}

// Save asks for a name once. A Save As that is cancelled or cannot write leaves the workspace
// under its old name: the title and the History, which follow that name, stay as they were.
TEST_F(WorkspaceSessionTest, SaveAsksForANameOnceAndASaveAsThatDoesNotSaveKeepsIt) {
    buildTree(model, "A");
    state.TaskDirty = true;
    prompts.fileNames.enqueue({path("work")});
    EXPECT_TRUE(session.mnuSave());
    EXPECT_TRUE(QFileInfo::exists(path("work.tsk")));
    EXPECT_EQ(state.TaskFileName, path("work.tsk"));
    EXPECT_FALSE(state.TaskDirty);
    EXPECT_EQ(chosen, QStringList{path("work.tsk")});
    EXPECT_TRUE(session.mnuSave()); // no second dialog: the script holds no more names
    EXPECT_EQ(prompts.dialogs.size(), 1);

    buildTree(model, "B");
    state.TaskDirty = true;
    const std::string before = testing::readBytes(folder.file("work.tsk"));
    testing::writeBytes(folder.file("blocked"), ""); // no one, root included, writes below a file
    for (const QString& name : {QString(), path("blocked/two.tsk"), path("missing/two.tsk")}) {
        prompts.asked.clear();
        prompts.fileNames.enqueue({name});
        EXPECT_FALSE(session.mnuSaveAs());
        EXPECT_EQ(prompts.messages().size(), name.isEmpty() ? 0 : 1);
        if (!name.isEmpty()) {
            EXPECT_TRUE(prompts.messages().at(0).startsWith(
                "error|Morlevant|Can't save the task file " + name))
                << prompts.messages().at(0).toStdString();
        }
        EXPECT_EQ(testing::readBytes(folder.file("work.tsk")), before);
        EXPECT_EQ(state.TaskFileName, path("work.tsk"));
        EXPECT_TRUE(state.TaskDirty);
        EXPECT_EQ(chosen, QStringList{path("work.tsk")});
    }
}

// Opening asks for a file, and a cancelled dialog leaves all as it was. A History entry asks its
// own question about changes.
TEST_F(WorkspaceSessionTest, OpenLoadsTheChosenFileAndOtherwiseChangesNothing) {
    buildTree(model, "Saved[a.txt]");
    prompts.fileNames.enqueue({path("saved.tsk")});
    session.mnuSaveAs();
    buildTree(model, "Other");
    prompts.fileNames.enqueue({});
    EXPECT_FALSE(session.mnuOpen());
    EXPECT_EQ(treeText(model), "Saved[a.txt] Other");
    EXPECT_TRUE(prompts.messages().isEmpty());
    EXPECT_EQ(chosen, QStringList{path("saved.tsk")});

    prompts.fileNames.enqueue({path("saved.tsk")});
    EXPECT_TRUE(session.mnuOpen());
    EXPECT_EQ(treeText(model), "Saved[a.txt]");
    EXPECT_EQ(state.TaskFileName, path("saved.tsk"));
    EXPECT_EQ(prompts.dialogs.last().title, "Open “Morlevant” Task File");
    EXPECT_EQ(session.lastDirectory(), QString::fromStdString(folder.path().string()));

    state.TaskDirty = true;
    prompts.answers.enqueue(Answer::Cancel);
    EXPECT_FALSE(session.openRecent(path("saved.tsk")));
    EXPECT_EQ(prompts.asked.last(), "yesnocancel|Open Task|Save the Task？");
    EXPECT_TRUE(state.TaskDirty);
}

// A named pipe would keep the window waiting for ever and /dev/zero would fill its memory: every
// way of opening a workspace reads only a regular file of a workspace's size, and otherwise
// says why and leaves the workspace as it was.
TEST_F(WorkspaceSessionTest, EveryOpenRefusesWhatIsNoRegularFileOrTooLarge) {
    ASSERT_TRUE(testing::makeFifo(folder.file("pipe.tsk")));
    std::filesystem::create_symlink("/dev/zero", folder.path() / "zero.tsk");
    std::filesystem::create_directories(folder.path() / "dir.tsk");
    testing::writeBytes(folder.file("huge.tsk"), "\"K 0\",\"a\",\"\377\"\r\n");
    std::filesystem::resize_file(folder.path() / "huge.tsk", maxWorkspaceBytes + 1);
    const struct {
        const char* name;
        const char* why;
    } cases[] = {
        {"pipe.tsk", "it is not a regular file"},
        {"zero.tsk", "it is not a regular file"},
        {"dir.tsk", "it is a folder, not a regular file"},
        {"huge.tsk", "it is too large to be a workspace (more than 64 MiB)"},
    };
    const std::function<bool(const QString&)> ways[] = {
        [&](const QString& file) { return session.CommandLineLoad(file); },
        [&](const QString& file) { return session.openRecent(file); },
        [&](const QString& file) {
            prompts.fileNames.enqueue({file});
            return session.mnuOpen();
        },
    };
    buildTree(model, "Kept[a.txt]");
    for (const auto& c : cases)
        for (const auto& open : ways) {
            prompts.asked.clear();
            EXPECT_FALSE(open(path(c.name)));
            EXPECT_EQ(prompts.messages(), QStringList{"error|Morlevant|Can't open the task file " +
                                                      path(c.name) + ": " + c.why});
            EXPECT_EQ(treeText(model), "Kept[a.txt]");
            EXPECT_FALSE(state.HasTaskFile);
        }
    EXPECT_TRUE(chosen.isEmpty());
}

} // namespace
} // namespace morlevant
