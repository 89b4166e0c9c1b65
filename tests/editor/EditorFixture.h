#pragma once

#include "tests/support/EditorDriver.h"
#include "tests/support/ScriptedPrompts.h"
#include "tests/support/TempDir.h"

#include <memory>

namespace morlevant::testing {

// A task editor over a temporary task folder, with scripted prompts, shown offscreen and
// driven as a user drives it.
class EditorFixture : public ::testing::Test {
protected:
    EditorFixture() { reopen(); }

    // A fresh editor for the task, as "&Edit Task" opens one.
    void reopen() {
        dialog = std::make_unique<TaskEditorDialog>(
            prompts, QString::fromStdString(home.file("Job")), nullptr,
            QDateTime(QDate(2026, 11, 22), QTime(9, 5, 7)));
        dialog->show();
        // Focus moves only within the active window, which no window manager picks here.
        QApplication::setActiveWindow(dialog.get());
        EXPECT_TRUE(QTest::qWaitForWindowExposed(dialog.get()));
    }

    EditorDriver driver() const { return EditorDriver(*dialog); }
    template <class Widget = QWidget> Widget* control(const QString& name) const {
        return driver().control<Widget>(name);
    }
    QTabWidget* tabs() const { return driver().tabs(); }
    void click(const QString& name) const { driver().click(name); }
    void clickAll(const QStringList& names) const { driver().clickAll(names); }
    void type(const QString& box, const QString& keys) const { driver().type(box, keys); }
    QString text(const QString& box) const { return driver().text(box); }
    QString enabled(const QStringList& names) const { return driver().enabled(names); }
    std::string written() const { return readBytes(home.file("Job.ttp")); }

    TempDir home;
    ScriptedPrompts prompts;
    std::unique_ptr<TaskEditorDialog> dialog;
};

} // namespace morlevant::testing
