// "Rename Task" from the window: the node, the settings file and the file list together, or
// nothing at all.
#include "mainwindow/TaskTreeView.h"
#include "tests/mainwindow/WindowFixture.h"

#include <QApplication>
#include <QLabel>
#include <QTest>

namespace morlevant {
namespace {

class TaskRename : public testing::WindowFixture {
protected:
    // The start-up task with one file and both task files, and a second task "Other".
    void SetUp() override {
        start();
        showFile("a", "in/a.txt", "a\n");
        makeFile("task/My Batch Task.ttp", "settings\r\n");
        makeFile("task/My Batch Task.edt", "list\r\n");
        window->model().appendNode(nullptr, "Other");
        select({"My Batch Task"});
    }
    // The task's two files as "settings|list", "-" for one that is missing.
    std::string files(const std::string& task) const {
        const auto bytes = [&](const char* ext) {
            const std::string name = home.file("task/" + task + ext);
            return std::filesystem::exists(name) ? testing::readBytes(name) : "-";
        };
        return bytes(".ttp") + "|" + bytes(".edt");
    }
    // Renames the selected task answering `answer` in the input box.
    void rename(const std::optional<QString>& answer) {
        prompts.edits.enqueue(answer);
        menus().mnuRenameTask->trigger();
    }
};

TEST_F(TaskRename, MovesTheSettingsAndTheFileListWithTheCaptionOfATask) {
    // F2 in the tree, as on the desktop.
    QApplication::setActiveWindow(window.get());
    prompts.edits.enqueue("Prices");
    QTest::keyClick(window->tvMain(), Qt::Key_F2);
    EXPECT_EQ(prompts.asked, QStringList{"edit|Rename Task|New name of the task:|My Batch Task"});
    EXPECT_EQ(tree(), "Prices[a] Other");
    EXPECT_EQ(window->lbCaption()->text(), "Prices");
    EXPECT_TRUE(window->state().TaskDirty);
    EXPECT_EQ(files("My Batch Task"), "-|-");
    EXPECT_EQ(files("Prices"), "settings\r\n|list\r\n");

    // The tree's menu runs the same command.
    prompts.edits.enqueue("Prices 2");
    menus().mnuTRenameTask->trigger();
    EXPECT_EQ(tree(), "Prices 2[a] Other");
    EXPECT_EQ(files("Prices 2"), "settings\r\n|list\r\n");

    // Only a task can be renamed, and one never edited has no files to move.
    select({"Prices 2", "a"});
    EXPECT_FALSE(menus().mnuRenameTask->isEnabled());
    EXPECT_FALSE(menus().mnuTRenameTask->isEnabled());
    select({"Other"});
    rename("Third");
    EXPECT_EQ(tree(), "Prices 2[a] Third");
    EXPECT_EQ(files("Third"), "-|-");
}

TEST_F(TaskRename, RefusesANameItCannotTakeAndChangesNothing) {
    makeFile("task/Elsewhere.ttp", "another workspace's task\r\n");
    const struct {
        QString name;
        QString message;
    } refused[] = {
        {"Other", "Another task is already named \"Other\": choose another name"},
        {"", "The task name is empty: a task needs a name, which its files take"},
        {"a/b", "The task name \"a/b\" cannot be a file name: it holds \"/\""},
        {"two\nlines",
         "The task name \"two[LF]lines\" holds a line break: a task's name is one line"},
        {QString(251, u'x'), "is too long for a file name: 251 bytes, at most 250"},
        {"Elsewhere", "A task named \"Elsewhere\" already has its files in the program folder"},
    };
    for (const auto& c : refused) {
        prompts.asked.clear();
        rename(c.name);
        ASSERT_EQ(prompts.asked.size(), 2) << c.name.toStdString();
        EXPECT_TRUE(prompts.asked[1].startsWith("error|Morlevant|"));
        EXPECT_TRUE(prompts.asked[1].contains(c.message)) << prompts.asked[1].toStdString();
        EXPECT_EQ(tree(), "My Batch Task[a] Other");
        EXPECT_FALSE(window->state().TaskDirty);
        EXPECT_EQ(files("My Batch Task"), "settings\r\n|list\r\n");
    }
    // Cancel, or the same name, is no rename.
    for (const std::optional<QString>& answer : {std::optional<QString>(), {"My Batch Task"}}) {
        prompts.asked.clear();
        rename(answer);
        EXPECT_EQ(prompts.asked.size(), 1);
        EXPECT_FALSE(window->state().TaskDirty);
    }
}

} // namespace
} // namespace morlevant
