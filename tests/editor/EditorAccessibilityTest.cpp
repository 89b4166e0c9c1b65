// What a screen reader says for each control of the editor: the words of its label; and what
// the editor looks like.
#include "tests/editor/EditorFixture.h"
#include "tests/support/QStringPrinter.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QComboBox>
#include <QImage>
#include <QLabel>
#include <QPlainTextEdit>
#include <QTreeWidget>

namespace morlevant {
namespace {

using EditorAccessibility = testing::EditorFixture;
using EditorPicture = testing::EditorFixture; // named in the README

// A combo box's accessible name is its current item on Linux, where a reader names it by its
// label relation or the name given to the widget.
QString spoken(QWidget* widget) {
    if (qobject_cast<QComboBox*>(widget))
        return widget->accessibleName();
    return QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name);
}

// Boxes named by a fixed text rather than a label are left to NoControlIsNameless.
TEST_F(EditorAccessibility, EveryBoxIsCalledByItsLabel) {
    const struct {
        const char* control;
        const char* name;
    } table[] = {
        {"Text_row", "row"},
        {"Text_column", "column"},
        {"Text_cal(0)", "decimal number"},
        {"Combox_cal(1)", "alignment in file"},
        {"Combox_cal(2)", "non-numeric Alert"},
        {"Combox_cal(3)", "cross-border Alert"},
        {"Command_cal(1)", "subtraction"},
        {"Text_cal(2)", "number for subtraction"},
        {"Text_cal(7)", "calculate steps"},
        {"Text1", "text to find"},
        {"Text2", "raplace with"},
        {"Text5", "text to find"},
        {"Text7", "text to find"},
        {"Text8", "raplace with"},
        {"Combox_id(0)", "insert date and time"},
        {"Text_id(0)", "insert string"},
        {"Text_id(1)", "insert text file"},
        {"Text_id(2)", "filter and replace with"},
        {"Text_id(3)", "regular expression"},
        {"Text_id(4)", "note"},
        {"Text_dm(0)", "divide by row"},
        {"Text_dm(1)", "divide by column"},
        {"Text_dm(2)", "divide filename template"},
    };
    for (const auto& row : table)
        EXPECT_EQ(spoken(control(row.control)), row.name) << row.control;
    EXPECT_EQ(control("Text7")->accessibleDescription(), "pair 4 of 4");
    EXPECT_EQ(control<QLabel>("Label_id")->buddy(), control("Text_id(3)"));
    const auto labels = QAccessible::queryAccessibleInterface(control("Combox_cal(1)"))
                            ->relations(QAccessible::Label);
    ASSERT_EQ(labels.size(), 1);
    EXPECT_EQ(labels[0].first->text(QAccessible::Name), "alignment   in    file:");
}

TEST_F(EditorAccessibility, NoControlIsNameless) {
    QStringList nameless;
    for (QWidget* widget : dialog->findChildren<QWidget*>()) {
        const bool control =
            qobject_cast<QLineEdit*>(widget) || qobject_cast<QPlainTextEdit*>(widget) ||
            qobject_cast<QComboBox*>(widget) || qobject_cast<QAbstractButton*>(widget) ||
            qobject_cast<QTreeWidget*>(widget);
        // The combo boxes' own line edits and the hidden task path are no controls of the user.
        if (control && !widget->isHidden() && !qobject_cast<QComboBox*>(widget->parentWidget()) &&
            spoken(widget).trimmed().isEmpty())
            nameless.append(widget->objectName() + "/" + widget->metaObject()->className());
    }
    EXPECT_TRUE(nameless.isEmpty()) << nameless.join(", ").toStdString();
}

// The editor as the user sees it. With MORLEVANT_SCREENSHOT_DIR set, each tab is saved there as
// a picture (taken so under a virtual X display, also with QT_SCALE_FACTOR=2).
TEST_F(EditorPicture, EveryTabFitsASmallScreen) {
    // Its own size fits a 1280 x 800 screen with room for the window frame.
    const QSize needed = dialog->sizeHint();
    EXPECT_LE(needed.width(), 1200);
    EXPECT_LE(needed.height(), 720);

    const QString folder = qEnvironmentVariable("MORLEVANT_SCREENSHOT_DIR");
    click("Option1(1)");
    for (int i = 0; i < tabs()->count(); ++i) {
        tabs()->setCurrentIndex(i);
        if (i > 0) // each operation tab as it looks when chosen
            click(QStringLiteral("Check%1").arg(i + 2));
        QApplication::processEvents();
        const QImage picture = dialog->grab().toImage();
        if (!folder.isEmpty()) {
            EXPECT_TRUE(picture.save(folder + QStringLiteral("/editor-%1.png").arg(i)));
        }
        if (i > 0)
            click(QStringLiteral("Check%1").arg(i + 2));
    }
    click("Opent");
    QApplication::processEvents();
    if (!folder.isEmpty()) {
        EXPECT_TRUE(dialog->grab().save(folder + QStringLiteral("/editor-templates.png")));
    }
}

} // namespace
} // namespace morlevant
