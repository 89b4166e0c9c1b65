// A task made, edited through the task editor and run from the window, as a user does it. What
// each page writes is pinned by the editor's and the runner's tests; dividing and merging are
// run from the window by WindowRun.
#include "mainwindow/TaskTreeView.h"
#include "tests/mainwindow/WindowFixture.h"

#include <QApplication>
#include <QLabel>
#include <QTableWidget>
#include <QTest>

namespace morlevant {
namespace {

using TaskEditing = testing::WindowFixture;

// The preview window shown last.
QDialog* lastPreview() {
    QDialog* found = nullptr;
    for (QWidget* widget : QApplication::topLevelWidgets())
        if (widget->objectName() == QStringLiteral("frmPreview") && widget->isVisible())
            found = qobject_cast<QDialog*>(widget);
    return found;
}

QString summaryOf(QDialog* preview) {
    return preview ? preview->findChild<QLabel*>(QStringLiteral("previewSummary"))->text()
                   : QStringLiteral("(no preview)");
}

// "Preview" in the editor works the controls as they stand, unsaved; "Preview Task" in the window
// works the saved task on the file selected, or on the task's first file. Nothing is written
// before the task is run from the toolbar.
TEST_F(TaskEditing, APageEditedInTheEditorPreviewsAndRunsToItsResult) {
    start();
    const QString first = makeFile("in/a.txt", "10\nx\n");
    const QString second = makeFile("in/b.txt", "1\n");
    menus().mnuAddPoint->trigger();
    window->selectedNode()->setText("calculate");
    prompts.fileNames.enqueue({first, second});
    menus().mnuAddfile->trigger();
    select({"calculate"});
    EXPECT_FALSE(menus().mnuPreview->isEnabled()) << "not edited yet";
    // Edited with its settings shown, nothing is written before "ok", no file list either:
    // the editor previews the task's files in the tree.
    menus().mnuEditWithSettings->setChecked(true);
    QString inEditor;
    editorScript = [&inEditor](const testing::EditorDriver& editor) {
        editor.perform({"Check3", "Text_cal(1)=5", "Command_cal(0)", "Preview"});
        inEditor = summaryOf(lastPreview());
        editor.click("ok");
    };
    menus().mnuEditCap->trigger();
    EXPECT_EQ(inEditor, "On the first 200 rows of " + first + ", 2 of 2 rows change.");

    select({"calculate"});
    ASSERT_TRUE(menus().mnuPreview->isEnabled());
    menus().mnuPreview->trigger();
    QDialog* preview = lastPreview();
    ASSERT_TRUE(preview);
    const auto* rows = preview->findChild<QTableWidget*>(QStringLiteral("previewRows"));
    ASSERT_TRUE(rows);
    const QStringList firstRow = {rows->item(0, 0)->text(), rows->item(0, 1)->text(),
                                  rows->item(0, 2)->text(), rows->item(0, 3)->text(),
                                  rows->item(0, 4)->text()};
    EXPECT_EQ(firstRow, (QStringList{"1", "10", "1", "15", "changed"}));
    preview->close();

    window->selectNode(node({"calculate"})->child(1));
    ASSERT_TRUE(menus().mnuTPreview->isEnabled());
    menus().mnuTPreview->trigger();
    EXPECT_EQ(summaryOf(lastPreview()),
              "On the first 200 rows of " + second + ", 1 of 1 rows change.");
    lastPreview()->close();
    EXPECT_FALSE(QFile::exists(first + ".modify"));
    EXPECT_FALSE(QFile::exists(second + ".modify"));

    select({"calculate"});
    ASSERT_EQ(toolbar().image(ToolbarButton::runTask), toolbarImage::runTask);
    click(ToolbarButton::runTask);
    waitForRun();
    EXPECT_EQ(prompts.messages().last(), "information|Morlevant|Vell down!");
    // A line without a number counts as 0.
    EXPECT_EQ(testing::readBytes((first + ".modify").toStdString()), "15\r\n5\r\n");
    EXPECT_EQ(testing::readBytes((second + ".modify").toStdString()), "6\r\n");
}

// "Edit Task opens with the task's settings" (option menu): off, "&Edit Task" empties the
// settings as it always has; on, the editor shows them and "cancel" leaves the task as it was.
class EditWithSettings : public testing::WindowFixture {
protected:
    // The start-up task with one file, edited once to replace "cat" with "dog".
    void SetUp() override {
        start();
        showFile("a", "in/a.txt", "cat\n");
        select({"My Batch Task"});
        editorScript = [](const testing::EditorDriver& editor) {
            editor.perform({"Check4", "Text1=cat", "Text2=dog", "ok"});
        };
        menus().mnuEditCap->trigger();
        settingsFile = settings();
        ASSERT_EQ(settingsFile.substr(0, 5), "1\r\n\r\n");
    }
    std::string settings() const { return testing::readBytes(home.file("task/My Batch Task.ttp")); }
    std::string fileList() const { return testing::readBytes(home.file("task/My Batch Task.edt")); }
    // Opens the editor and cancels it, giving what its two top boxes showed.
    QString shownOnCancel() {
        QString shown = "?";
        editorScript = [&shown](const testing::EditorDriver& editor) {
            shown = editor.text("Text1") + "/" + editor.text("Text2");
            editor.click("cancel");
        };
        menus().mnuEditCap->trigger();
        return shown;
    }

    std::string settingsFile;
};

TEST_F(EditWithSettings, OnlyWhenOnTheEditorShowsTheSettingsAndCancelKeepsThem) {
    menus().mnuEditWithSettings->trigger();
    // A file imported since the last edit reaches the list only with the next confirmed edit.
    window->model().appendNode(node({"My Batch Task"}), "b", makeFile("in/b.txt", "b\n"),
                               treeImage::text);
    const std::string listFile = fileList();
    EXPECT_EQ(shownOnCancel(), "cat/dog");
    EXPECT_EQ(settings(), settingsFile);
    EXPECT_EQ(fileList(), listFile);
    EXPECT_TRUE(menus().RunTask->isEnabled());

    // "ok" without a change writes the same settings, and now the whole list.
    editorScript = [](const testing::EditorDriver& editor) { editor.click("ok"); };
    menus().mnuEditCap->trigger();
    EXPECT_EQ(settings(), settingsFile);
    EXPECT_EQ(fileList(), listFile + homeFile("in/b.txt").toStdString() + "\r\n");

    // Settings that are not complete show the defaults and stay as they are.
    testing::writeBytes(home.file("task/My Batch Task.ttp"), "1\r\n\r\n");
    EXPECT_EQ(shownOnCancel(), "/");
    EXPECT_EQ(settings(), "1\r\n\r\n");

    // Off again, the editor opens on the defaults and a cancel leaves the settings empty.
    menus().mnuEditWithSettings->trigger();
    testing::writeBytes(home.file("task/My Batch Task.ttp"), settingsFile);
    EXPECT_EQ(shownOnCancel(), "/");
    EXPECT_EQ(settings(), "");
}

TEST_F(EditWithSettings, TheOptionIsRememberedInTheSettingsStore) {
    EXPECT_FALSE(menus().mnuEditWithSettings->isChecked());
    menus().mnuEditWithSettings->trigger();
    window->state().TaskDirty = false;
    window->close();
    EXPECT_EQ(store.value("EditWithSettings"), "True");
    window.reset();
    start();
    EXPECT_TRUE(menus().mnuEditWithSettings->isChecked());
}

// "Rename Task" from the window: the node, the settings file and the file list together, or
// nothing at all.
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
