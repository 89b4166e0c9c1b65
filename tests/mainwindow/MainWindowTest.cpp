#include "MorlevantVersion.h"
#include "mainwindow/QtPrompts.h"
#include "mainwindow/viewer/TextViewer.h"
#include "tests/mainwindow/WindowFixture.h"
#include "tests/support/NonRegularFiles.h"

#include <QFileInfo>
#include <QFontDatabase>
#include <QLayout>
#include <gtest/gtest.h>

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
    EXPECT_EQ(window->selectedNode(), node({"My Batch Task"}));
    // The task shows its folder (how tasks get it is pinned by the tree's and the file's tests).
    const QVariant icon = window->model().data(window->model().index(0, 0), Qt::DecorationRole);
    EXPECT_FALSE(icon.value<QIcon>().isNull());
    // Off at start whatever the default task would allow.
    for (QAction* off :
         {menus().mnuEditCap, menus().RunTask, menus().mnuSort, menus().mnuExec, menus().mnuMatch,
          menus().mnuClearLink, menus().mnuTAddFile, menus().mnuTAddPoint})
        EXPECT_FALSE(off->isEnabled()) << off->objectName().toStdString();
    EXPECT_TRUE(menus().mnuAddfile->isEnabled());
    // A fresh user's settings reach the options and the toggle buttons.
    for (QAction* on : {menus().mnuAFSon, menus().mnuHtml, menus().mnuSun})
        EXPECT_TRUE(on->isChecked()) << on->objectName().toStdString();
    EXPECT_FALSE(menus().mnuDrag->isChecked());
    EXPECT_TRUE(toolbar().isPressed(ToolbarButton::strictDrag));
}

TEST_F(Window, OpensTheWorkspaceNamedOnTheCommandLineAndHistoryReopensItSaved) {
    // A named pipe would keep the window from ever appearing: it starts with the default task.
    ASSERT_TRUE(testing::makeFifo(home.file("pipe.tsk")));
    start(homeFile("pipe.tsk"));
    EXPECT_EQ(tree(), "My Batch Task");
    EXPECT_EQ(window->windowTitle(), productTitle());
    EXPECT_EQ(prompts.messages(), QStringList{"error|Morlevant|Can't open the task file " +
                                              homeFile("pipe.tsk") + ": it is not a regular file"});

    makeFile("files/a.txt", "first line\r\nsecond\r\n");
    const QString workspace =
        makeFile("My Work.tsk", "\"K 0\",\"a\",\"\xff"
                                "files/a.txt\"\r\n\"K 0\",\"Job\",\"\xff\"\r\n");
    start(workspace);
    EXPECT_EQ(window->windowTitle(), productTitle() + " - " + workspace);
    EXPECT_EQ(tree(), "a Job");
    EXPECT_EQ(window->selectedNode()->text(), "a");
    EXPECT_EQ(window->txtMain()->toPlainText(), "first line\nsecond\n");
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
    const std::tuple<QStringList, ToolbarButton, const char*> cases[] = {
        {{"My Batch Task", "a"}, ToolbarButton::importFile, "please select task"},
        {{"My Batch Task", "a"}, ToolbarButton::addTask, "please select task"},
        {{"Lonely"}, ToolbarButton::editTask, "please import file"},
        {{"My Batch Task"}, ToolbarButton::runTask, "please edit task"},
    };
    for (const auto& [selected, button, message] : cases) {
        select(selected);
        prompts.asked.clear();
        click(button);
        EXPECT_EQ(prompts.asked, QStringList{QString("information|Morlevant|") + message})
            << static_cast<int>(button);
    }
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

// The message boxes the window asks its questions with.
TEST(QtPrompts, TheButtonChosenIsTheAnswerAndClosingCountsAsTheLast) {
    EXPECT_EQ(QtPrompts::answerOf(QMessageBox::Yes, Buttons::YesNo), Answer::Yes);
    EXPECT_EQ(QtPrompts::answerOf(QMessageBox::Escape, Buttons::YesNo), Answer::No);
    EXPECT_EQ(QtPrompts::answerOf(QMessageBox::No, Buttons::YesNoCancel), Answer::No);
    EXPECT_EQ(QtPrompts::answerOf(QMessageBox::Escape, Buttons::YesNoCancel), Answer::Cancel);
}

// A box is never narrower than its title needs, however short its message.
TEST(QtPrompts, ABoxIsWideEnoughForItsTitle) {
    const QString title =
        QStringLiteral("Delete this task with all folders and files, a long title");
    QMessageBox box(QMessageBox::Question, title, QStringLiteral("Yes?"),
                    QMessageBox::Yes | QMessageBox::No);
    const int before = box.layout()->totalMinimumSize().width();
    QtPrompts::widenForTitle(box);
    const int needed =
        QFontMetrics(QFontDatabase::systemFont(QFontDatabase::TitleFont)).horizontalAdvance(title);
    EXPECT_LT(before, needed);
    EXPECT_GT(box.layout()->totalMinimumSize().width(), needed);
}

} // namespace
} // namespace morlevant
