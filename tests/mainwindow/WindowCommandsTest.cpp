#include "mainwindow/MainStatusBar.h"
#include "mainwindow/TaskTreeView.h"
#include "mainwindow/find/frmFind.h"
#include "mainwindow/viewer/TextViewer.h"
#include "taskdef/TaskFiles.h"
#include "taskdef/TaskPageSettings.h"
#include "tests/mainwindow/WindowFixture.h"
#include "tests/support/DesktopFolders.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QCloseEvent>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

namespace morlevant {
namespace {

using WindowCommands = testing::WindowFixture;

// The tree's changes are pinned by the tree commands' tests; here the selection and the panes
// follow them.
TEST_F(WindowCommands, ImportSortAddAndDeleteSelectWhatTheyLeave) {
    const QString first = makeFile("in/first.txt", "one\n");
    const QString second = makeFile("in/second.txt", "two\n");
    start();
    prompts.fileNames.enqueue({second, first});
    click(ToolbarButton::importFile);
    EXPECT_EQ(tree(), "My Batch Task[second first]");
    EXPECT_EQ(window->selectedNode()->text(), "first");
    EXPECT_EQ(window->txtMain()->toPlainText(), "one\n");
    click(ToolbarButton::sortFiles);
    EXPECT_EQ(tree(), "My Batch Task[first second]");
    EXPECT_EQ(window->selectedNode()->text(), "first");

    select({"My Batch Task"});
    click(ToolbarButton::addTask);
    EXPECT_EQ(window->selectedNode()->text(), "My Batch Task 3");

    select({"My Batch Task"});
    prompts.answers.enqueue(Answer::Yes);
    menus().mnuTDeleteFile->trigger();
    EXPECT_EQ(tree(), "My Batch Task 3");
    EXPECT_EQ(window->lbCaption()->text(), "My Batch Task 3");
}

TEST_F(WindowCommands, DroppingANodeOnTheTreeMovesIt) {
    start();
    TaskTreeModel& model = window->model();
    model.appendNode(node({"My Batch Task"}), "a", "/x/a.txt", treeImage::text);
    model.appendNode(nullptr, "Other");
    window->tvMain()->expandAll();
    TaskTreeView* view = window->tvMain();
    const auto rect = [&](const QStringList& captions) {
        return view->visualRect(model.indexFromItem(node(captions))).center();
    };
    // Which drops move what is pinned by the move's own tests; here the view hands them on with
    // the option of the moment, turned off here where it starts on.
    menus().mnuSun->setChecked(false);
    const QPoint from = rect({"My Batch Task", "a"});
    const QPoint onto = rect({"Other"});
    QTest::mousePress(view->viewport(), Qt::LeftButton, {}, from);
    QTest::mouseRelease(view->viewport(), Qt::LeftButton, {}, from);
    const std::unique_ptr<QMimeData> mime(view->nodeDragData());
    QDragEnterEvent enter(onto, Qt::MoveAction, mime.get(), Qt::LeftButton, {});
    QCoreApplication::sendEvent(view->viewport(), &enter);
    QDragMoveEvent move(onto, Qt::MoveAction, mime.get(), Qt::LeftButton, {});
    QCoreApplication::sendEvent(view->viewport(), &move);
    QDropEvent drop(onto, Qt::MoveAction, mime.get(), Qt::LeftButton, {});
    QCoreApplication::sendEvent(view->viewport(), &drop);
    EXPECT_EQ(tree(), "My Batch Task Other[a]");
    EXPECT_EQ(window->selectedNode()->text(), "a");
    EXPECT_TRUE(window->tvMain()->isExpanded(model.indexFromItem(node({"Other"}))));
}

// Without files there is nothing to edit, and a cancelled editor leaves the task to be edited
// again (what it leaves in the task files is pinned by EditWithSettings).
TEST_F(WindowCommands, EditTaskNeedsFilesAndACancelledEditorLeavesTheTaskToEditAgain) {
    start();
    std::filesystem::create_directories(home.path() / "task");
    menus().mnuEditCap->setEnabled(true);
    menus().mnuEditCap->trigger();
    EXPECT_EQ(prompts.messages(), QStringList{"information|Morlevant|You didn't select files"});
    EXPECT_TRUE(editorOpened.isEmpty());

    showFile("a", "in/a.txt", "a\n");
    writeTaskPageSettings(home.file("task/My Batch Task.ttp"), TaskPageSettings{});
    select({"My Batch Task"});
    EXPECT_TRUE(menus().RunTask->isEnabled());
    editorScript = [](const testing::EditorDriver& editor) { editor.click("cancel"); };
    click(ToolbarButton::editTask);
    EXPECT_EQ(editorOpened, QStringList{homeFile("task/My Batch Task")});
    EXPECT_FALSE(menus().RunTask->isEnabled());
}

class WindowRun : public testing::WindowFixture {
protected:
    void SetUp() override { start(); }
    // A task "Job" over the given files, with its settings and file list in the program folder.
    void makeTask(TaskPageSettings settings, const QStringList& files) {
        settings.rangeMode = "1";
        settings.takeRangesOut = "0";
        std::filesystem::create_directories(home.path() / "task");
        QStandardItem* job = window->model().appendNode(nullptr, "Job");
        std::vector<std::string> tags;
        for (const QString& file : files) {
            window->model().appendNode(job, QFileInfo(file).baseName(), file, treeImage::text);
            tags.push_back(file.toStdString());
        }
        writeTaskFileList(taskFileListPath(home.path().string(), "Job"), tags);
        writeTaskPageSettings(taskSettingsPath(home.path().string(), "Job"), settings);
        window->selectNode(job);
    }
    // Inserts a line after the last. The runner's tests pin what runs give; the editing flow
    // runs tasks to their results from the toolbar.
    static TaskPageSettings insertAfterLast() {
        TaskPageSettings settings;
        settings.operationPage = "5";
        settings.insertAction = "2";
        settings.insertString = "END";
        return settings;
    }
};

// What a refused folder is told is pinned by the desktop's tests.
TEST_F(WindowRun, AMergeOpensTheMergeFolder) {
    TaskPageSettings settings;
    settings.operationPage = "6";
    settings.divideAction = "5";
    makeTask(settings, {makeFile("in/a.txt", "a\n")});
    menus().mnuSplit8->trigger();
    waitForRun();
    ASSERT_EQ(shell.opened.size(), 1);
    EXPECT_TRUE(shell.opened[0].startsWith("folder " + homeFile("outcome/merge")));
    EXPECT_EQ(prompts.messages(), QStringList{"information|Morlevant|Vell down!"});
}

TEST_F(WindowRun, AFailedRunIsOneErrorAndTheWindowGoesOn) {
    makeTask(insertAfterLast(), {homeFile("in/missing.txt")});
    menus().RunTask->trigger();
    waitForRun();
    ASSERT_EQ(prompts.messages().size(), 1);
    EXPECT_TRUE(prompts.messages().at(0).startsWith("error|Morlevant|"));
    EXPECT_TRUE(prompts.messages().at(0).contains("missing.txt"));
    EXPECT_EQ(window->sbMain()->ProgressBar1()->value(), 0);
    EXPECT_TRUE(menus().RunTask->isEnabled());
    EXPECT_FALSE(menus().mnuStop->isEnabled());
}

// The run has ended once it shows how: the window then closes without asking.
TEST_F(WindowRun, ClosingWhileTheRunShowsItsEndClosesAtOnce) {
    makeTask(insertAfterLast(), {makeFile("in/a.txt", "a\n")});
    prompts.onInformation = [this](const QString&) { window->close(); };
    menus().RunTask->trigger();
    waitForRun();
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(prompts.messages(), QStringList{"information|Morlevant|Vell down!"});
}

// Dividing by column shows its notice while the second file is read, and waits for it: the test
// acts there, in the middle of the run, as a user would while the window goes on turning.
class WindowStop : public WindowRun {
protected:
    void SetUp() override {
        runJobs = 1; // how many files are done when the run stops is then certain
        WindowRun::SetUp();
        TaskPageSettings settings;
        settings.operationPage = "6";
        settings.divideAction = "2";
        settings.divideByColumnValue = "10";
        settings.divideNameTemplate = "p(*).txt";
        settings.divideNumberFrom = "001";
        // The first line ends inside the third piece; more than a block of reading follows.
        std::string wide = std::string(25, 'w') + "\n";
        for (int row = 0; row < 20000; ++row)
            wide += "row " + std::to_string(row) + "\n";
        makeTask(settings, {makeFile("in/a.txt", "a\n"), makeFile("in/wide.txt", wide),
                            makeFile("in/c.txt", "c\n")});
        makeFile("in/wide/p(001).txt", "older\n");
    }
    bool leftoverIn(const std::string& folder) const {
        for (const auto& entry : std::filesystem::directory_iterator(home.file(folder)))
            if (entry.path().extension() == ".unfinished")
                return true;
        return false;
    }
};

TEST_F(WindowStop, StopEndsTheRunMidFileAndKeepsTheOlderResult) {
    prompts.onInformation = [this](const QString& text) {
        if (text != "10")
            return;
        // The window repaints and names the file being worked while the run lasts...
        while (!window->sbMain()->path().startsWith("2 of 3: wide.txt"))
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        EXPECT_GT(window->sbMain()->ProgressBar1()->value(), 0);
        // ...and takes no command but Stop, which Escape gives, not even from the viewer's menu.
        window->txtMain()->setPlainText("a title");
        window->txtMain()->selectAll();
        emit window->txtMain()->customContextMenuRequested({});
        menus().mnuTxt->hide();
        EXPECT_FALSE(menus().mnuXCap->isEnabled());
        menus().mnuXCap->trigger();
        EXPECT_FALSE(menus().RunTask->isEnabled());
        EXPECT_FALSE(menus().mnuNew->isEnabled());
        EXPECT_FALSE(window->tvMain()->isEnabled());
        EXPECT_TRUE(menus().mnuStop->isEnabled());
        QTest::keyClick(window.get(), Qt::Key_Escape);
    };
    const QString shownBefore = window->sbMain()->path();
    menus().RunTask->trigger();
    // The run lasts until Stop: an event posted now is handled while it does.
    bool handledDuringTheRun = false;
    QMetaObject::invokeMethod(
        window.get(), [&] { handledDuringTheRun = window->isRunning(); }, Qt::QueuedConnection);
    waitForRun();
    EXPECT_TRUE(handledDuringTheRun);
    EXPECT_EQ(prompts.messages(),
              QStringList({"information|Morlevant|10",
                           "information|Morlevant|Stopped after 1 of 3 files"}));
    EXPECT_EQ(testing::readBytes(home.file("in/wide/p(001).txt")), "older\n");
    EXPECT_FALSE(leftoverIn("in/wide"));
    EXPECT_TRUE(std::filesystem::exists(home.file("in/a/p(001).txt")));
    EXPECT_FALSE(std::filesystem::exists(home.file("in/c")));
    EXPECT_TRUE(menus().RunTask->isEnabled());
    EXPECT_TRUE(menus().mnuNew->isEnabled());
    EXPECT_TRUE(window->tvMain()->isEnabled());
    EXPECT_FALSE(menus().mnuStop->isEnabled());
    EXPECT_EQ(window->sbMain()->path(), shownBefore);
}

TEST_F(WindowStop, ClosingDuringARunAsksWhetherToStopIt) {
    prompts.answers.append(Answer::No);
    prompts.answers.append(Answer::Yes);
    prompts.onInformation = [this](const QString& text) {
        if (text != "10")
            return;
        window->close();
        EXPECT_TRUE(window->isRunning()) << "No: the run goes on";
        window->close();
    };
    menus().RunTask->trigger();
    waitForRun();
    EXPECT_FALSE(window->isVisible());
    const QString asked = "yesno|Morlevant|A task is running. Stop it and close the window?";
    EXPECT_EQ(prompts.messages(), QStringList({"information|Morlevant|10", asked, asked}));
    EXPECT_EQ(testing::readBytes(home.file("in/wide/p(001).txt")), "older\n");
    EXPECT_FALSE(leftoverIn("in/wide"));
}

// Which program opens which kind is pinned by the open rules' tests; here the chosen one is
// used by both open commands and kept with the settings.
TEST_F(WindowCommands, ViewerCommandsAndTheChosenProgramActOnTheFileShown) {
    const QString viewer = makeFile("bin/viewer", "#!/bin/sh\n");
    QFile(viewer).setPermissions(QFile::ReadOwner | QFile::ExeOwner);
    start();
    const QString song = showFile("song", "in/song.wav", "RIFF", treeImage::wave);
    const QString notes = showFile("notes", "in/notes.txt", "alpha beta");

    menus().mnuCopy->trigger();
    EXPECT_EQ(QApplication::clipboard()->text(), "alpha beta");

    prompts.fileNames.enqueue({viewer});
    menus().mnuDefBrowse->trigger();
    click(ToolbarButton::openIt);
    menus().mnuTExec->trigger();
    select({"My Batch Task", "song"});
    menus().mnuXExec->trigger();
    EXPECT_EQ(shell.opened,
              QStringList({"program " + viewer + " " + notes, "program " + viewer + " " + notes,
                           "url " + QUrl::fromLocalFile(song).toString()}));
    window->close();
    EXPECT_EQ(store.value("DefBrowse"), viewer);
}

// What each command does outside the window is pinned by the desktop's tests (the association's
// answers after an earlier run among them); here the menus and links reach it.
TEST_F(WindowCommands, LinksHelpAndTheOptionMenuReachTheDesktop) {
    testing::DesktopFolders folders;
    start();
    menus().mnuHomepage->trigger();
    window->findChild<QLabel*>("Feedback")->linkActivated("feedback");
    menus().mnuHelp->trigger(); // no help page beside the test program
    menus().mnuFileMatch->trigger();
    menus().mnuCancelFileMatch->trigger();
    for (QAction* later : {menus().mnuMatch, menus().mnuClearLink}) {
        later->setEnabled(true);
        later->trigger();
    }
    EXPECT_EQ(shell.opened,
              QStringList({"url https://morlevant.example.org",
                           "url mailto:feedback@morlevant.example.org?subject=Morlevant "
                           "Feedback"}));
    const QStringList messages = prompts.messages();
    ASSERT_EQ(messages.size(), 5);
    EXPECT_TRUE(messages[0].startsWith("error|Morlevant|The help page is missing"));
    const QString later = "information|Morlevant|对不起，本功能将在2.8版中提供，请稍等";
    EXPECT_EQ(messages.mid(1),
              QStringList({"information|Morlevant|FileMatch succeed，you can open it directly "
                           "next time!",
                           "information|Morlevant|Cancel file match！", later, later}));
}

class Find : public testing::WindowFixture {
protected:
    void SetUp() override { start(); }
    void selectInViewer(int start, int length) const {
        QTextCursor cursor = viewer().textCursor();
        cursor.setPosition(start);
        cursor.setPosition(start + length, QTextCursor::KeepAnchor);
        viewer().setTextCursor(cursor);
    }
    // The viewer's selection as "start+length".
    QString selection() const {
        const QTextCursor cursor = viewer().textCursor();
        return QString::number(cursor.selectionStart()) + "+" +
               QString::number(cursor.selectionEnd() - cursor.selectionStart());
    }
    TextViewer& viewer() const { return *window->txtMain(); }
    frmFind& dialog() const { return *window->findDialog(); }
};

// Where each search lands is pinned by the viewer search's table; here the dialog and the
// commands drive it.
TEST_F(Find, TheDialogStartsFromTheSelectionAndFindNextGoesOnUntilNoneIsLeft) {
    showFile("text", "in/text.txt", "abc xyz ABC abc");
    selectInViewer(4, 3);
    menus().mnuFind->trigger();
    ASSERT_NE(window->findDialog(), nullptr);
    EXPECT_TRUE(dialog().isVisible());
    EXPECT_FALSE(dialog().isModal());
    EXPECT_EQ(dialog().Text1->text(), "xyz");
    EXPECT_TRUE(dialog().optDirection[1]->isChecked()); // forward, as the search state says
    dialog().Text1->clear();
    QTest::keyClicks(dialog().Text1, "abc");

    dialog().cmdFind->click();
    EXPECT_EQ(selection(), "8+3");
    EXPECT_TRUE(dialog().isVisible());
    menus().mnuFindNext->trigger();
    EXPECT_EQ(selection(), "12+3");
    menus().mnuFindNext->trigger();
    EXPECT_EQ(prompts.asked, QStringList{"information|Morlevant|Can't find \"abc\""});
    EXPECT_EQ(selection(), "12+3");

    dialog().optDirection[0]->click();
    dialog().chkCase->click();
    // Cancel keeps the text, the direction and the case for Find Next and closes the dialog for
    // good: backward, "ABC" is passed over.
    dialog().cmdcancel->click();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(window->findDialog(), nullptr);
    menus().mnuFindNext->trigger();
    EXPECT_EQ(selection(), "0+3");
}

// Which files the group holds is pinned by the file search's tests.
TEST_F(Find, FindInAllFilesAsksForTheTextAndShowsItsGroup) {
    showFile("a", "in/a.txt", "needle");
    prompts.inputs.enqueue("");
    menus().mnuSearch->trigger();
    EXPECT_EQ(tree(), "My Batch Task[a]");

    prompts.inputs.enqueue("needle");
    menus().mnuSearch->trigger();
    EXPECT_EQ(prompts.asked,
              QStringList({"input|Morlevant|What do you want to find in all files?",
                           "input|Morlevant|What do you want to find in all files?"}));
    EXPECT_EQ(tree(), "My Batch Task[a] Include Files:needle [a]");
    EXPECT_TRUE(window->tvMain()->isExpanded(
        window->model().indexFromItem(node({"Include Files:needle "}))));
}

} // namespace
} // namespace morlevant
