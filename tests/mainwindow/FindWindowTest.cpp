#include "mainwindow/MainStatusBar.h"
#include "mainwindow/SearchState.h"
#include "mainwindow/TaskTreeView.h"
#include "mainwindow/TextViewer.h"
#include "mainwindow/frmFind.h"
#include "tests/mainwindow/WindowFixture.h"

#include <QCheckBox>
#include <QCoreApplication>
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
    start();
    showFile("text", "in/text.txt", "abc xyz ABC abc");
    selectInViewer(4, 3);
    menus().mnuFind->trigger();
    ASSERT_NE(window->findDialog(), nullptr);
    EXPECT_TRUE(dialog().isVisible());
    EXPECT_FALSE(dialog().isModal());
    EXPECT_EQ(dialog().Text1->text(), "xyz");
    EXPECT_TRUE(dialog().optDirection[1]->isChecked()); // forward, as the search state says
    dialog().Text1->clear();
    EXPECT_FALSE(dialog().cmdFind->isEnabled());
    QTest::keyClicks(dialog().Text1, "abc");
    EXPECT_TRUE(dialog().cmdFind->isEnabled());

    dialog().cmdFind->click();
    EXPECT_EQ(selection(), "8+3");
    EXPECT_TRUE(dialog().isVisible());
    menus().mnuFindNext->trigger();
    EXPECT_EQ(selection(), "12+3");
    EXPECT_TRUE(prompts.asked.isEmpty());
    menus().mnuFindNext->trigger();
    EXPECT_EQ(prompts.asked, QStringList{"information|Morlevant|Can't find \"abc\""});
    EXPECT_EQ(selection(), "12+3");

    dialog().optDirection[0]->click();
    dialog().chkCase->click();
    EXPECT_EQ(window->searchState().direction, SearchState::backward);
    EXPECT_TRUE(window->searchState().matchCase);

    // Cancel keeps the text and the case for Find Next and closes the dialog for good.
    dialog().cmdcancel->click();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(window->findDialog(), nullptr);
    menus().mnuFindNext->trigger();
    EXPECT_EQ(selection(), "0+3");
}

TEST_F(Find, FindNextWithoutATextOpensTheDialogAndALoadStartsAfresh) {
    start();
    showFile("text", "in/text.txt", "one two one");
    menus().mnuFindNext->trigger();
    ASSERT_NE(window->findDialog(), nullptr);
    EXPECT_EQ(dialog().Text1->text(), "");
    QTest::keyClicks(dialog().Text1, "one");
    dialog().cmdFind->click();
    EXPECT_EQ(selection(), "0+3"); // right after a load the caret itself matches
    dialog().cmdFind->click();
    EXPECT_EQ(selection(), "8+3");

    showFile("other", "in/other.txt", "one");
    menus().mnuFindNext->trigger();
    EXPECT_EQ(selection(), "0+3");
}

// Which files the group holds is pinned by the file search's tests.
TEST_F(Find, FindInAllFilesAsksForTheTextAndShowsItsGroup) {
    start();
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

TEST_F(Find, TheStatusBarFollowsTheCaretInRowsAndCharacters) {
    std::string text;
    for (int line = 1; line <= 1300; ++line)
        text += (line == 1234 ? "äö𝄞xy" : "line") + std::string("\r\n");
    start();
    showFile("text", "in/text.txt", text);
    // Each line before the 1,234th takes five characters with its line end. The musical symbol
    // is one character in two UTF-16 units.
    selectInViewer(1233 * 5 + 5, 0);
    EXPECT_EQ(caret(), "row: 1,234  column:5");
    selectInViewer(5, 2); // the caret is the selection's end
    EXPECT_EQ(caret(), "row: 2  column:3");
    showFile("other", "in/b.txt", "b");
    EXPECT_EQ(caret(), "row: 1  column:1"); // a load puts the caret first
    select({"My Batch Task", "text"});
    selectInViewer(5, 2);

    // "Set to Title" is offered only with a selection.
    emit viewer().customContextMenuRequested({5, 5});
    EXPECT_TRUE(menus().mnuXCap->isEnabled());
    menus().mnuTxt->close();
    selectInViewer(0, 0);
    emit viewer().customContextMenuRequested({5, 5});
    EXPECT_FALSE(menus().mnuXCap->isEnabled());
    menus().mnuTxt->close();
}

} // namespace
} // namespace morlevant
