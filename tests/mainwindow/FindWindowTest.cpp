#include "mainwindow/TaskTreeView.h"
#include "mainwindow/find/frmFind.h"
#include "mainwindow/viewer/TextViewer.h"
#include "tests/mainwindow/WindowFixture.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

namespace morlevant {
namespace {

class Find : public testing::WindowFixture {
protected:
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

} // namespace
} // namespace morlevant
