#include "MorlevantVersion.h"
#include "mainwindow/MainPane.h"
#include "mainwindow/MainStatusBar.h"
#include "mainwindow/SplitBar.h"
#include "mainwindow/TaskTreeView.h"
#include "mainwindow/TextViewer.h"
#include "mainwindow/Twips.h"
#include "tests/mainwindow/WindowFixture.h"

#include <QFileInfo>
#include <QLabel>
#include <QStatusBar>
#include <QTest>

namespace morlevant {
namespace {

QString productTitle() {
    return "Morlevant v" + QString::fromLatin1(programVersion);
}

using Window = testing::WindowFixture;

TEST_F(Window, StartsWithOneTaskAndOnlyTheCommandsThatSuitIt) {
    start();
    EXPECT_EQ(window->windowTitle(), productTitle());
    EXPECT_EQ(tree(), "My Batch Task");
    QStandardItem* task = node({"My Batch Task"});
    EXPECT_EQ(window->selectedNode(), task);
    EXPECT_EQ(TaskTreeModel::image(task), treeImage::closedFolder);
    EXPECT_EQ(TaskTreeModel::selectedImage(task), treeImage::openFolder);
    // Off at start whatever the default task would allow.
    for (QAction* off :
         {menus().mnuEditCap, menus().RunTask, menus().mnuSort, menus().mnuExec, menus().mnuMatch,
          menus().mnuClearLink, menus().mnuTAddFile, menus().mnuTAddPoint})
        EXPECT_FALSE(off->isEnabled()) << off->objectName().toStdString();
    EXPECT_TRUE(menus().mnuAddfile->isEnabled());
    EXPECT_EQ(toolbar().image(ToolbarButton::editTask), toolbarImage::editTaskOff);
    EXPECT_EQ(toolbar().image(ToolbarButton::runTask), toolbarImage::runTaskOff);
    // A fresh user's settings reach the options, the toggle buttons and the History.
    for (QAction* on : {menus().mnuAFSon, menus().mnuHtml, menus().mnuSun})
        EXPECT_TRUE(on->isChecked()) << on->objectName().toStdString();
    EXPECT_FALSE(menus().mnuDrag->isChecked());
    EXPECT_TRUE(toolbar().isPressed(ToolbarButton::strictDrag));
    EXPECT_EQ(menus().mLastFile[0]->text(), "no history");
    EXPECT_FALSE(menus().mLastFile[0]->isEnabled());
    EXPECT_FALSE(menus().mLastFile[1]->isVisible());
}

TEST_F(Window, OpensTheWorkspaceNamedOnTheCommandLineAndHistoryReopensItSaved) {
    const QString text = makeFile("files/a.txt", "first line\r\nsecond\r\n");
    const QString workspace =
        makeFile("My Work.tsk", "\"K 0\",\"a\",\"\xff"
                                "files/a.txt\"\r\n\"K 0\",\"Job\",\"\xff\"\r\n");
    start(workspace);
    EXPECT_EQ(window->windowTitle(), productTitle() + " - " + workspace);
    EXPECT_EQ(tree(), "a Job");
    EXPECT_EQ(window->selectedNode()->text(), "a");
    EXPECT_EQ(window->lbCaption()->text(), "a");
    EXPECT_EQ(window->sbMain()->path(), text);
    EXPECT_EQ(window->txtMain()->toPlainText(), "first line\nsecond\n");
    EXPECT_TRUE(menus().mnuExec->isEnabled());
    EXPECT_EQ(menus().mLastFile[0]->text(), "no history"); // the command line is no History entry

    prompts.fileNames.enqueue({homeFile("one.tsk")});
    menus().mnuSaveAs->trigger();
    EXPECT_EQ(window->windowTitle(), productTitle() + " - " + homeFile("one.tsk"));
    EXPECT_EQ(menus().mLastFile[0]->text(), "&1 " + homeFile("one.tsk"));
    menus().mnuNew->trigger();
    EXPECT_EQ(tree(), "My Batch Task");
    menus().mLastFile[0]->trigger();
    EXPECT_EQ(tree(), "a Job");
    EXPECT_EQ(window->windowTitle(), productTitle() + " - " + homeFile("one.tsk"));
}

TEST_F(Window, ToolbarButtonsInTheirDisabledLookExplainWhy) {
    start();
    window->model().appendNode(node({"My Batch Task"}), "a", homeFile("a.txt"), treeImage::text);
    window->model().appendNode(nullptr, "Lonely");
    struct Case {
        QStringList selected;
        ToolbarButton button;
        const char* message;
    };
    const Case cases[] = {
        {{"My Batch Task", "a"}, ToolbarButton::importFile, "please select task"},
        {{"My Batch Task", "a"}, ToolbarButton::addTask, "please select task"},
        {{"Lonely"}, ToolbarButton::editTask, "please import file"},
        {{"My Batch Task"}, ToolbarButton::runTask, "please edit task"},
    };
    for (const Case& c : cases) {
        select(c.selected);
        prompts.asked.clear();
        click(c.button);
        EXPECT_EQ(prompts.asked, QStringList{QString("information|Morlevant|") + c.message})
            << static_cast<int>(c.button);
    }
    // With nothing selected there is nothing to delete, and the button stays silent.
    window->tvMain()->setCurrentIndex({});
    window->applyAvailability();
    prompts.asked.clear();
    click(ToolbarButton::deleteNode);
    EXPECT_TRUE(prompts.asked.isEmpty());
    EXPECT_EQ(tree(), "My Batch Task[a] Lonely");
}

TEST_F(Window, ToggleButtonsAndOptionsFollowEachOther) {
    start();
    click(ToolbarButton::strictDrag); // pressed at start: now released
    EXPECT_FALSE(menus().mnuSun->isChecked());
    menus().mnuSun->trigger();
    EXPECT_TRUE(toolbar().isPressed(ToolbarButton::strictDrag));

    const QString page = showFile("page", "page.htm", "<b>old</b>", treeImage::html);
    menus().mnuHtml->trigger();
    EXPECT_FALSE(toolbar().isPressed(ToolbarButton::showHtml));
    testing::writeBytes(page.toStdString(), "<b>new</b>");
    click(ToolbarButton::showHtml); // and the file shown is read again
    EXPECT_TRUE(menus().mnuHtml->isChecked());
    EXPECT_EQ(window->txtMain()->toPlainText(), "new\n");

    menus().mnuTool->trigger();
    EXPECT_FALSE(window->tbMain()->isVisible());
    menus().mnuStatus->trigger();
    EXPECT_FALSE(window->statusBar()->isVisible());
    menus().mnuTool->trigger();
    EXPECT_TRUE(window->tbMain()->isVisible());
}

TEST_F(Window, SetToTitleTakesTheFirstFiftySelectedCharacters) {
    start();
    showFile("long", "long.txt", std::string(60, 'x') + "y");
    click(ToolbarButton::setTitle); // nothing selected: nothing happens
    EXPECT_EQ(window->selectedNode()->text(), "long");
    EXPECT_FALSE(window->state().TaskDirty);
    window->txtMain()->selectAll();
    click(ToolbarButton::setTitle);
    EXPECT_EQ(window->selectedNode()->text(), QString(50, 'x'));
    EXPECT_TRUE(window->state().TaskDirty);
}

TEST_F(Window, SplitterStaysWithinItsLimitsAndMovesPanesLiveOnlyWithDrag) {
    start();
    window->resize(800, 600);
    SplitBar* bar = window->pane()->picSplit();
    QWidget* tree = window->tvMain();
    // The button stays down after a drag until released.
    const auto drag = [bar](int dx) {
        QTest::mousePress(bar, Qt::LeftButton, {}, {2, 10});
        QTest::mouseMove(bar, {2 + dx, 10});
    };
    const auto release = [bar] { QTest::mouseRelease(bar, Qt::LeftButton, {}, {2, 10}); };
    const int treeWidth = tree->width();
    drag(40);
    EXPECT_FLOAT_EQ(bar->Left(), 2700 + 40 * 15);
    EXPECT_EQ(tree->width(), treeWidth); // only the bar travels
    release();
    EXPECT_EQ(tree->width(), twips::toPixels(2700 + 40 * 15));

    menus().mnuDrag->trigger();
    drag(-1000);
    release();
    EXPECT_FLOAT_EQ(bar->Left(), 1000);
    drag(5000);
    EXPECT_FLOAT_EQ(bar->Left(), twips::fromPixels(window->width()) - 2000);
    EXPECT_EQ(tree->width(), twips::toPixels(bar->Left())); // followed during the drag
    release();
}

TEST_F(Window, FileButtonsAndClosingAskAboutChangesAndClosingKeepsTheSettingsFirst) {
    start();
    window->close();
    EXPECT_FALSE(window->isVisible()); // nothing changed: no question
    EXPECT_TRUE(prompts.asked.isEmpty());

    start();
    menus().mnuDrag->trigger();
    window->state().TaskDirty = true;
    prompts.answers.enqueue(Answer::Cancel);
    click(ToolbarButton::newTask);
    prompts.answers.enqueue(Answer::Cancel);
    click(ToolbarButton::openTask);
    prompts.fileNames.enqueue({});
    click(ToolbarButton::saveTask);
    prompts.answers.enqueue(Answer::Cancel);
    window->close();
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(prompts.asked,
              QStringList({"yesnocancel|Open task|Save the task？",
                           "yesnocancel|Open task|Save the task？",
                           "save file|Save “Morlevant” Task file As|Task File (*.tsk)",
                           "yesnocancel|EXIT|Do you want save task？"}));
    EXPECT_EQ(store.value("Drag"), "True"); // written although the window stays
    EXPECT_EQ(tree(), "My Batch Task");

    prompts.answers.enqueue(Answer::Yes);
    prompts.fileNames.enqueue({homeFile("closing.tsk")});
    window->close();
    EXPECT_FALSE(window->isVisible());
    EXPECT_TRUE(QFileInfo::exists(homeFile("closing.tsk")));
}

} // namespace
} // namespace morlevant
