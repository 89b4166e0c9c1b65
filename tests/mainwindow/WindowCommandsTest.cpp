#include "MorlevantVersion.h"
#include "mainwindow/AboutDialog.h"
#include "mainwindow/MainStatusBar.h"
#include "mainwindow/TaskTreeView.h"
#include "mainwindow/TextViewer.h"
#include "taskdef/TaskFiles.h"
#include "taskdef/TaskPageSettings.h"
#include "tests/mainwindow/WindowFixture.h"
#include "workspace/NodeTag.h"

#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QMimeData>
#include <QProgressBar>
#include <QTest>

namespace morlevant {
namespace {

using WindowCommands = testing::WindowFixture;

TEST_F(WindowCommands, ImportAddAndDeleteChangeTheTreeAndMarkIt) {
    const QString first = makeFile("in/first.txt", "one\n");
    const QString second = makeFile("in/second.txt", "two\n");
    start();
    prompts.fileNames.enqueue({first, second});
    click(ToolbarButton::importFile);
    EXPECT_EQ(tree(), "My Batch Task[first second]");
    EXPECT_EQ(window->selectedNode()->text(), "second");
    EXPECT_EQ(window->txtMain()->toPlainText(), "two\n");
    EXPECT_TRUE(window->state().TaskDirty);

    select({"My Batch Task"});
    EXPECT_EQ(toolbar().image(ToolbarButton::editTask),
              toolbarImage::editTask); // a task with files can be edited
    click(ToolbarButton::addTask);
    EXPECT_EQ(tree(), "My Batch Task[first second] My Batch Task 3");
    EXPECT_EQ(window->selectedNode()->text(), "My Batch Task 3");

    select({"My Batch Task"});
    prompts.answers.enqueue(Answer::Yes);
    menus().mnuTDeleteFile->trigger();
    EXPECT_EQ(prompts.messages().last(),
              "yesno|Request confirmation|Delete this task with all folders and files？");
    EXPECT_EQ(tree(), "My Batch Task 3");
    EXPECT_TRUE(QFileInfo::exists(first));
    EXPECT_EQ(window->lbCaption()->text(), "My Batch Task 3");
}

TEST_F(WindowCommands, SortOrdersFilesWithoutMarkingChanges) {
    start();
    window->model().appendNode(node({"My Batch Task"}), "b", "/x/b.txt", treeImage::text);
    window->model().appendNode(node({"My Batch Task"}), "a", "/x/a.txt", treeImage::text);
    select({"My Batch Task", "b"});
    click(ToolbarButton::sortFiles);
    EXPECT_EQ(tree(), "My Batch Task[a b]");
    EXPECT_EQ(window->selectedNode()->text(), "b");
    EXPECT_FALSE(window->state().TaskDirty);
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
    const auto dropOn = [&](const QStringList& dragged, const QStringList& target) {
        QTest::mousePress(view->viewport(), Qt::LeftButton, {}, rect(dragged));
        QTest::mouseRelease(view->viewport(), Qt::LeftButton, {}, rect(dragged));
        const std::unique_ptr<QMimeData> mime(view->nodeDragData());
        QDragEnterEvent enter(rect(target), Qt::MoveAction, mime.get(), Qt::LeftButton, {});
        QCoreApplication::sendEvent(view->viewport(), &enter);
        QDragMoveEvent move(rect(target), Qt::MoveAction, mime.get(), Qt::LeftButton, {});
        QCoreApplication::sendEvent(view->viewport(), &move);
        EXPECT_EQ(view->dropHighlight(), model.indexFromItem(node(target)));
        QDropEvent drop(rect(target), Qt::MoveAction, mime.get(), Qt::LeftButton, {});
        QCoreApplication::sendEvent(view->viewport(), &drop);
        EXPECT_FALSE(view->dropHighlight().isValid());
    };
    menus().mnuSun->setChecked(false);
    dropOn({"My Batch Task", "a"}, {"Other"});
    EXPECT_EQ(tree(), "My Batch Task Other[a]");
    EXPECT_EQ(window->selectedNode()->text(), "a");
    EXPECT_TRUE(window->state().TaskDirty);
    EXPECT_EQ(TaskTreeModel::image(node({"Other"})), treeImage::openFolder);

    window->state().TaskDirty = false;
    dropOn({"Other"}, {"Other", "a"}); // into its own subtree: refused, nothing changes
    EXPECT_EQ(tree(), "My Batch Task Other[a]");
    EXPECT_FALSE(window->state().TaskDirty);

    menus().mnuSun->setChecked(true);
    dropOn({"Other"}, {"My Batch Task"});
    EXPECT_EQ(tree(), "My Batch Task Other[a]");
    EXPECT_TRUE(window->state().TaskDirty);
}

TEST_F(WindowCommands, EditTaskPreparesTheTaskFilesBeforeTheEditorOpens) {
    start();
    std::filesystem::create_directories(home.path() / "task");
    menus().mnuEditCap->setEnabled(true);
    menus().mnuEditCap->trigger();
    EXPECT_EQ(prompts.messages(), QStringList{"information|Morlevant|You didn't select files"});
    EXPECT_TRUE(editorOpened.isEmpty());

    const QString file = makeFile("in/a.txt", "a\n");
    window->model().appendNode(node({"My Batch Task"}), "a", file, treeImage::text);
    writeTaskPageSettings(home.file("task/My Batch Task.ttp"), TaskPageSettings{});
    select({"My Batch Task", "a"});
    select({"My Batch Task"});
    EXPECT_TRUE(menus().RunTask->isEnabled());
    click(ToolbarButton::editTask);
    EXPECT_EQ(editorOpened, QStringList{homeFile("task/My Batch Task")});
    EXPECT_EQ(testing::readBytes(home.file("task/My Batch Task.ttp")), "");
    EXPECT_EQ(testing::readBytes(home.file("task/My Batch Task.edt")), file.toStdString() + "\r\n");
    EXPECT_FALSE(menus().RunTask->isEnabled()); // emptied: to be edited before it runs
    EXPECT_EQ(toolbar().image(ToolbarButton::runTask), toolbarImage::runTaskOff);
}

class WindowRun : public testing::WindowFixture {
protected:
    // A task "Job" over the given files, with its settings and file list in the program folder.
    void makeTask(const TaskPageSettings& settings, const QStringList& files) {
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
    static TaskPageSettings page(const char* operation) {
        TaskPageSettings settings;
        settings.rangeMode = "1";
        settings.takeRangesOut = "0";
        settings.operationPage = operation;
        return settings;
    }
};

TEST_F(WindowRun, RunsTheSelectedTaskToVellDown) {
    start();
    const QString a = makeFile("in/a.txt", "x\n");
    const QString b = makeFile("in/b.txt", "y\r\n");
    TaskPageSettings settings = page("5");
    settings.insertAction = "2";
    settings.insertString = "END";
    makeTask(settings, {a, b});
    ASSERT_EQ(toolbar().image(ToolbarButton::runTask), toolbarImage::runTask);
    click(ToolbarButton::runTask);
    EXPECT_EQ(prompts.messages(), QStringList{"information|Morlevant|Vell down!"});
    EXPECT_EQ(testing::readBytes((a + ".modify").toStdString()), "x\r\nEND\r\n");
    EXPECT_EQ(testing::readBytes((b + ".modify").toStdString()), "y\r\nEND\r\n");
    EXPECT_EQ(window->sbMain()->ProgressBar1()->value(), 0);
    EXPECT_TRUE(shell.opened.isEmpty());
}

TEST_F(WindowRun, AMergeOpensTheMergeFolder) {
    start();
    TaskPageSettings settings = page("6");
    settings.divideAction = "5";
    makeTask(settings, {makeFile("in/a.txt", "a\n"), makeFile("in/b.txt", "b\n")});
    menus().mnuSplit8->trigger();
    EXPECT_EQ(testing::readBytes(home.file("outcome/merge/merge-application-file.txt")),
              "a\r\nb\r\n");
    ASSERT_EQ(shell.opened.size(), 1);
    EXPECT_TRUE(shell.opened.at(0).startsWith("folder " + homeFile("outcome/merge")));
}

TEST_F(WindowRun, AMergeFolderNoFileManagerOpensIsSaid) {
    start();
    shell.refuses = true;
    TaskPageSettings settings = page("6");
    settings.divideAction = "5";
    makeTask(settings, {makeFile("in/a.txt", "a\n")});
    menus().RunTask->trigger();
    const QStringList messages = prompts.messages();
    ASSERT_EQ(messages.size(), 2);
    EXPECT_TRUE(messages[0].startsWith("error|Morlevant|No file manager on this desktop opens " +
                                       homeFile("outcome/merge")));
    EXPECT_EQ(messages[1], "information|Morlevant|Vell down!");
}

TEST_F(WindowRun, AFailedRunIsOneErrorAndTheWindowGoesOn) {
    start();
    TaskPageSettings settings = page("5");
    settings.insertAction = "2";
    makeTask(settings, {homeFile("in/missing.txt")});
    menus().RunTask->trigger();
    ASSERT_EQ(prompts.messages().size(), 1);
    EXPECT_TRUE(prompts.messages().at(0).startsWith("error|Morlevant|"));
    EXPECT_TRUE(prompts.messages().at(0).contains("missing.txt"));
    EXPECT_EQ(window->sbMain()->ProgressBar1()->value(), 0);
    EXPECT_TRUE(window->isEnabled());
    menus().mnuAddPoint->trigger();
    EXPECT_EQ(window->selectedNode()->text(), "My Batch Task 3");
}

TEST_F(WindowCommands, ViewerCommandsCopyChangeFontAndOpenElsewhere) {
    const QString file = makeFile("in/notes.txt", "alpha beta");
    store.setValue("DefBrowse", "/usr/bin/viewer");
    start();
    window->model().appendNode(node({"My Batch Task"}), "notes", file, treeImage::text);
    select({"My Batch Task", "notes"});

    menus().mnuCopy->trigger();
    EXPECT_EQ(QApplication::clipboard()->text(), "alpha beta");

    QFont chosen("Monospace", 17);
    prompts.fonts.enqueue(chosen);
    menus().mnuXFont->trigger();
    EXPECT_EQ(window->txtMain()->font().pointSize(), 17);

    menus().mnuTExec->trigger();
    EXPECT_EQ(shell.opened, QStringList{"program /usr/bin/viewer " + file});

    menus().mnuWrap->trigger();
    EXPECT_EQ(window->txtMain()->lineWrapMode(), QPlainTextEdit::WidgetWidth);
    menus().mnuWrapCancel->trigger();
    EXPECT_EQ(window->txtMain()->lineWrapMode(), QPlainTextEdit::NoWrap);
}

TEST(AboutBox, NamesTheProductAndOpensItsLinksThroughTheShell) {
    testing::RecordingShell shell;
    AboutDialog about(shell);
    QStringList texts;
    bool hasPicture = false;
    for (const QLabel* label : about.findChildren<QLabel*>()) {
        texts.append(label->text());
        hasPicture = hasPicture || !label->pixmap().isNull();
    }
    EXPECT_TRUE(hasPicture);
    EXPECT_TRUE(texts.contains("Morlevant"));
    EXPECT_TRUE(texts.contains("Version " + QString::fromLatin1(programVersion)));
    emit about.findChild<QLabel*>("lblHomepage")->linkActivated("https://morlevant.example.org");
    EXPECT_EQ(shell.opened, QStringList{"url https://morlevant.example.org"});
}

} // namespace
} // namespace morlevant
