#pragma once

#include "editor/TaskEditorDialog.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QLineEdit>
#include <QRadioButton>
#include <QTabWidget>
#include <QTest>
#include <gtest/gtest.h>

namespace morlevant::testing {

// Drives a task editor as a user does: clicks on its controls, found by their names, and keys
// typed into its boxes. The editor must be shown.
class EditorDriver {
public:
    explicit EditorDriver(TaskEditorDialog& dialog) : dialog_(dialog) {}

    template <class Widget = QWidget> Widget* control(const QString& name) const {
        auto* widget = dialog_.findChild<Widget*>(name);
        EXPECT_NE(widget, nullptr) << name.toStdString();
        return widget;
    }
    QTabWidget* tabs() const { return control<QTabWidget>("taskedit"); }

    // Brings the control's tab to the front, as a user must, and clicks it.
    void click(const QString& name) const {
        QWidget* widget = control(name);
        for (QWidget* page = widget; page != nullptr; page = page->parentWidget())
            if (tabs()->indexOf(page) >= 0)
                tabs()->setCurrentWidget(page);
        QApplication::processEvents(); // lay out the page now in front
        // A check box or option button answers to its box and caption, not to its whole width.
        const bool boxed = qobject_cast<QCheckBox*>(widget) || qobject_cast<QRadioButton*>(widget);
        QTest::mouseClick(widget, Qt::LeftButton, {},
                          boxed ? QPoint(6, widget->height() / 2) : widget->rect().center());
    }
    void clickAll(const QStringList& names) const {
        for (const QString& name : names)
            click(name);
    }
    // Each step is a click on a control, or "box=keys" typed into a box.
    void perform(const QStringList& steps) const {
        for (const QString& step : steps) {
            if (const int equals = step.indexOf(u'='); equals > 0)
                type(step.left(equals), step.mid(equals + 1));
            else
                click(step);
        }
    }
    void type(const QString& box, const QString& keys) const {
        click(box);
        control(box)->setFocus();
        QTest::keyClicks(control(box), keys);
    }
    QString text(const QString& box) const { return control<QLineEdit>(box)->text(); }
    // The enabled state of the named controls as "1" and "0", in order.
    QString enabled(const QStringList& names) const {
        QString states;
        for (const QString& name : names)
            states += control(name)->isEnabled() ? u'1' : u'0';
        return states;
    }

private:
    TaskEditorDialog& dialog_;
};

} // namespace morlevant::testing
