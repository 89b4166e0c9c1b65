#include "mainwindow/MainStatusBar.h"
#include "mainwindow/SearchState.h"
#include "mainwindow/TaskTreeView.h"
#include "mainwindow/TextViewer.h"
#include "mainwindow/frmFind.h"
#include "tests/mainwindow/WindowFixture.h"
#include "tests/support/NonRegularFiles.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

namespace morlevant {
namespace {

class Find : public testing::WindowFixture {
protected:
    QString caret() const {
        return window->sbMain()->findChild<QLabel*>(QStringLiteral("sbCaret"))->text();
    }

    // Starts the window with one file node holding text, shown in the viewer.
    void showFile(const std::string& text) {
        const QString file = makeFile("in/text.txt", text);
        start();
        window->model().appendNode(node({"My Batch Task"}), "text", file, treeImage::text);
        select({"My Batch Task", "text"});
    }
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

TEST_F(Find, TheDialogOpensWithTheSelectionAndTheProgramsCaptions) {
    showFile("abc xyz ABC abc");
    selectInViewer(4, 3);
    menus().mnuFind->trigger();
    ASSERT_NE(window->findDialog(), nullptr);
    EXPECT_EQ(dialog().windowTitle(), "Find");
    EXPECT_TRUE(dialog().isVisible());
    EXPECT_FALSE(dialog().isModal());
    EXPECT_EQ(dialog().Text1->text(), "xyz");
    QStringList captions;
    for (const QLabel* label : dialog().findChildren<QLabel*>())
        captions.append(label->text());
    captions << dialog().findChild<QGroupBox*>()->title() << dialog().optDirection[1]->text()
             << dialog().optDirection[0]->text() << dialog().chkCase->text()
             << dialog().cmdFind->text() << dialog().cmdcancel->text();
    EXPECT_EQ(captions, QStringList({"Text to find(&N):", "Direction", "Forward(&D)",
                                     "backward(&U)", "Match case(&C)", "Find(&F)", "Cancel"}));
    EXPECT_TRUE(dialog().optDirection[1]->isChecked());
    EXPECT_FALSE(dialog().chkCase->isChecked());
    EXPECT_TRUE(dialog().cmdFind->isEnabled());
    dialog().Text1->clear();
    EXPECT_FALSE(dialog().cmdFind->isEnabled());
    QTest::keyClicks(dialog().Text1, "a");
    EXPECT_TRUE(dialog().cmdFind->isEnabled());
}

TEST_F(Find, FindAndFindNextWalkTheMatchesUntilNoneIsLeft) {
    showFile("abc xyz ABC abc");
    menus().mnuFind->trigger();
    QTest::keyClicks(dialog().Text1, "abc");
    dialog().cmdFind->click();
    EXPECT_EQ(selection(), "0+3"); // right after a load the caret itself matches
    EXPECT_TRUE(dialog().isVisible());
    dialog().cmdFind->click();
    EXPECT_EQ(selection(), "8+3");
    menus().mnuFindNext->trigger();
    EXPECT_EQ(selection(), "12+3");
    EXPECT_TRUE(prompts.asked.isEmpty());
    menus().mnuFindNext->trigger();
    EXPECT_EQ(prompts.asked, QStringList{"information|Morlevant|Can't find \"abc\""});
    EXPECT_EQ(selection(), "12+3");

    // Backward with match case: the capitals no longer match.
    dialog().optDirection[0]->click();
    dialog().chkCase->click();
    EXPECT_EQ(window->searchState().direction, SearchState::backward);
    EXPECT_TRUE(window->searchState().matchCase);
    dialog().cmdFind->click();
    EXPECT_EQ(selection(), "0+3");

    // Cancel keeps the text and the case for Find Next and closes the dialog for good.
    dialog().cmdcancel->click();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(window->findDialog(), nullptr);
    menus().mnuFindNext->trigger();
    EXPECT_EQ(prompts.asked.last(), "information|Morlevant|Can't find \"abc\"");
}

TEST_F(Find, FindNextWithoutATextOpensTheDialogAndALoadStartsAfresh) {
    showFile("one two one");
    menus().mnuFindNext->trigger();
    ASSERT_NE(window->findDialog(), nullptr);
    EXPECT_EQ(dialog().Text1->text(), "");
    QTest::keyClicks(dialog().Text1, "one");
    dialog().cmdFind->click();
    dialog().cmdFind->click();
    EXPECT_EQ(selection(), "8+3");
    EXPECT_FALSE(window->searchState().newText);

    window->model().appendNode(node({"My Batch Task"}), "other", makeFile("in/other.txt", "one"),
                               11);
    select({"My Batch Task", "other"});
    EXPECT_EQ(window->searchState().findPosition, 1);
    EXPECT_TRUE(window->searchState().newText);
    menus().mnuFindNext->trigger();
    EXPECT_EQ(selection(), "0+3");
}

TEST_F(Find, FindInAllFilesAddsAGroupOfTheFilesThatHoldTheText) {
    start();
    QStandardItem* task = node({"My Batch Task"});
    window->model().appendNode(task, "a", makeFile("in/a.txt", "hay\r\nneedle\r\n"),
                               treeImage::text);
    window->model().appendNode(task, "b", makeFile("in/b.txt", "hay only\r\n"), treeImage::text);
    window->model().appendNode(task, "gone", homeFile("in/gone.txt"), treeImage::text);

    prompts.inputs.enqueue("");
    menus().mnuSearch->trigger();
    EXPECT_EQ(tree(), "My Batch Task[a b gone]");
    EXPECT_FALSE(window->state().TaskDirty);

    prompts.inputs.enqueue("needle");
    menus().mnuSearch->trigger();
    EXPECT_EQ(prompts.asked,
              QStringList({"input|Morlevant|What do you want to find in all files?",
                           "input|Morlevant|What do you want to find in all files?"}));
    EXPECT_EQ(tree(), "My Batch Task[a b gone] Include Files:needle [a]");
    EXPECT_TRUE(window->state().TaskDirty);
    EXPECT_TRUE(window->tvMain()->isExpanded(
        window->model().indexFromItem(node({"Include Files:needle "}))));
}

TEST_F(Find, TheStatusBarFollowsTheCaretInRowsAndCharacters) {
    std::string text;
    for (int line = 1; line <= 1300; ++line)
        text += (line == 1234 ? "äö𝄞xy" : "line") + std::string("\r\n");
    showFile(text);
    const QString shown = viewer().toPlainText();
    const auto lineStart = [&](int line) {
        qsizetype position = 0;
        for (int skip = 1; skip < line; ++skip)
            position = shown.indexOf(u'\n', position) + 1;
        return static_cast<int>(position);
    };
    // The musical symbol is one character in two UTF-16 units.
    selectInViewer(lineStart(1234) + 5, 0);
    EXPECT_EQ(caret(), "row: 1,234  column:5");
    selectInViewer(lineStart(2), 2); // the caret is the selection's end
    EXPECT_EQ(caret(), "row: 2  column:3");
    window->model().appendNode(node({"My Batch Task"}), "other", makeFile("in/b.txt", "b"),
                               treeImage::text);
    select({"My Batch Task", "other"});
    EXPECT_EQ(caret(), "row: 1  column:1"); // a load puts the caret first
    select({"My Batch Task", "text"});
    selectInViewer(lineStart(2), 2);

    // "Set to Title" is offered only with a selection.
    emit viewer().customContextMenuRequested({5, 5});
    EXPECT_TRUE(menus().mnuXCap->isEnabled());
    menus().mnuTxt->close();
    selectInViewer(0, 0);
    emit viewer().customContextMenuRequested({5, 5});
    EXPECT_FALSE(menus().mnuXCap->isEnabled());
    menus().mnuTxt->close();
}

TEST_F(Find, NoFileStopsTheWindowNotEvenAtStartUp) {
    ASSERT_TRUE(testing::makeFifo(home.file("pipe")));
    // The workspace's first node, shown at start-up, is a pipe that nobody writes to.
    const QString workspace = makeFile(
        "pipes.tsk", "\"K 0\",\"pipe\",\"\xff" + home.file("pipe") +
                         "\"\r\n\"K 0\",\"Job\",\"\xff\"\r\n\"K2\",\"zero\",\"\xff/dev/zero\"\r\n");
    start(workspace);
    EXPECT_EQ(prompts.messages(), QStringList{"error|Morlevant|Can't show " + homeFile("pipe") +
                                              ": it is a named pipe."});
    select({"Job", "zero"});
    EXPECT_EQ(prompts.messages().last(), "error|Morlevant|Can't show /dev/zero: it is a device.");
    EXPECT_EQ(viewer().toPlainText(), "");
    menus().mnuAddPoint->trigger();
    EXPECT_TRUE(window->isVisible());
}

} // namespace
} // namespace morlevant
