#include "mainwindow/TaskTreeView.h"
#include "mainwindow/TextViewer.h"
#include "mainwindow/frmFind.h"
#include "tests/mainwindow/WindowFixture.h"

#include <QImage>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>

namespace morlevant {
namespace {

class Screenshot : public testing::WindowFixture {
protected:
    // Opens the example workspace in a window of a fixed size, all tasks expanded.
    void startWithExamples() {
        QProcess prepare;
        prepare.start("bash", {MORLEVANT_EXAMPLES "/prepare-home.sh", homeFile("")});
        ASSERT_TRUE(prepare.waitForFinished(30000));
        ASSERT_EQ(prepare.exitCode(), 0) << prepare.readAllStandardError().toStdString();
        start(homeFile("Example.tsk"));
        window->showNormal();
        window->resize(1000, 560);
        window->tvMain()->expandAll();
    }
    // Saves a picture into the folder MORLEVANT_SCREENSHOT_DIR names, when it names one.
    static void keep(const QImage& picture, const QString& name) {
        const QString folder = qEnvironmentVariable("MORLEVANT_SCREENSHOT_DIR");
        if (!folder.isEmpty()) {
            EXPECT_TRUE(picture.save(folder + "/" + name));
        }
    }
};

// The example workspace as a user first sees it, with a file open in the viewer. With
// MORLEVANT_SCREENSHOT set to a file name the picture is saved there (the README's picture is
// taken so, under a virtual X display).
TEST_F(Screenshot, ExampleWorkspaceShowsTasksFilesAndViewer) {
    startWithExamples();
    select({"Raise Prices", "prices"});
    const QImage picture = window->grab().toImage();
    EXPECT_TRUE(window->txtMain()->toPlainText().size() > 0);

    const QString target = qEnvironmentVariable("MORLEVANT_SCREENSHOT");
    if (!target.isEmpty()) {
        EXPECT_TRUE(picture.save(target));
    }
}

// The viewer with a word found by the find dialog beside it, and the group that find in all
// files adds, as pictures under MORLEVANT_SCREENSHOT_DIR.
TEST_F(Screenshot, ViewerFindDialogAndFoundFilesGroup) {
    startWithExamples();
    select({"Fix Spelling", "letter"});
    menus().mnuFind->trigger();
    frmFind* find = window->findDialog();
    ASSERT_NE(find, nullptr);
    find->Text1->setText("recieve");
    find->cmdFind->click();
    find->cmdFind->click();
    EXPECT_EQ(window->txtMain()->textCursor().selectedText(), "recieve");
    keep(window->grab().toImage(), "viewer.png");
    keep(find->grab().toImage(), "find.png");
    find->close();

    prompts.inputs.enqueue("week 2");
    menus().mnuSearch->trigger();
    EXPECT_EQ(window->model().item(window->model().rowCount() - 1)->rowCount(), 2);
    keep(window->grab().toImage(), "include-files.png");
}

} // namespace
} // namespace morlevant
