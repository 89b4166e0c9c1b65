#pragma once

#include "taskdef/TaskCodes.h"

#include <QString>
#include <QWidget>
#include <span>

class QCheckBox;

namespace morlevant {

// One of the four operation tabs (Calculate, Find and Replace, Insert Or Filter, Divide Or
// Merge): its page box "Selected to edit this task page" on top and, below, the page's
// controls, which are enabled only while the page box is ticked.
class OperationPage : public QWidget {
    Q_OBJECT

public:
    bool isChosen() const;
    // The page's code on line 5 of the settings file.
    PageCode pageCode() const { return pageCode_; }

    // Puts the page's values into their lines of the settings; all pages do, chosen or not.
    virtual void store(TaskPageSettings& settings) const = 0;
    // The other way: the page box and every control as the settings say, ticked boxes
    // disabling the others as a click would.
    void load(const TaskPageSettings& settings);
    // What "ok" says when this page is chosen but not filled in enough to run; empty when fine.
    virtual QString missingInput() const = 0;

signals:
    // The user ticked or unticked the page box.
    void pageBoxClicked(bool ticked);

protected:
    OperationPage(const QString& frameName, PageCode pageCode, QWidget* parent);

    // The parent of every control of the page but the page box.
    QWidget* controls() const { return controls_; }
    // Called after the page's controls were enabled or disabled by the page box.
    virtual void pageChosen(bool /*chosen*/) {}
    // Sets the page's controls from their lines of the settings.
    virtual void loadControls(const TaskPageSettings& settings) = 0;
    // Ticks the box of an action code (1 the first box; 0 none), unticking the others.
    static void tickAction(std::span<QCheckBox* const> actions, const std::string& code);

    // The code of a group of action boxes: each ticked box weighs its position from 1, the
    // settings file's own encoding; 0 when none is ticked.
    static int actionCode(std::span<QCheckBox* const> actions);
    // What "ok" says when a page with action boxes has none ticked.
    static QString noActionMessage();

private:
    PageCode pageCode_;
    QCheckBox* pageBox_;
    QWidget* controls_;
};

} // namespace morlevant
