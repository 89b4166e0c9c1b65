// A task made, edited through the task editor and run from the window, as a user does it. What
// each page writes is pinned by the editor's and the runner's tests; dividing and merging are
// run from the window by WindowRun.
#include "tests/mainwindow/WindowFixture.h"

#include <QApplication>
#include <QLabel>
#include <QTableWidget>

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

TEST_F(TaskEditing, APageEditedInTheEditorRunsToItsResult) {
    start();
    const QString file = makeFile("in/calculate.txt", "10\nx\n");
    menus().mnuAddPoint->trigger();
    window->selectedNode()->setText("calculate");
    prompts.fileNames.enqueue({file});
    menus().mnuAddfile->trigger();
    select({"calculate"});
    editorScript = [](const testing::EditorDriver& editor) {
        editor.perform({"Check3", "Text_cal(1)=5", "Command_cal(0)"});
        editor.click("ok");
    };
    menus().mnuEditCap->trigger();
    ASSERT_EQ(toolbar().image(ToolbarButton::runTask), toolbarImage::runTask);
    click(ToolbarButton::runTask);
    waitForRun();
    EXPECT_EQ(prompts.messages().last(), "information|Morlevant|Vell down!");
    // A line without a number counts as 0.
    EXPECT_EQ(testing::readBytes((file + ".modify").toStdString()), "15\r\n5\r\n");
}

// "Preview" in the editor works the controls as they stand, unsaved; "Preview Task" in the window
// works the saved task on the file selected, or on the task's first file. Nothing is written.
TEST_F(TaskEditing, PreviewShowsWhatTheTaskWouldDoAndWritesNothing) {
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
    EXPECT_FALSE(QFile::exists(first + ".modify"));
    EXPECT_FALSE(QFile::exists(second + ".modify"));
}

} // namespace
} // namespace morlevant
