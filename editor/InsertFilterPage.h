#pragma once

#include "editor/OperationPage.h"

#include <array>

class QCheckBox;
class QComboBox;
class QDateTime;
class QLineEdit;
class QTreeWidget;

namespace morlevant {

class Prompts;

// The "Insert Or Filter" tab: one of six actions (insert a date and time, a string or a text
// file; filter by a regular expression and replace, delete or output what it matches), with
// a list of filter templates that supply a pattern.
class InsertFilterPage final : public OperationPage {
    Q_OBJECT

public:
    // `opened` is the moment the editor opened, the moment the date and time samples show.
    InsertFilterPage(Prompts& prompts, const QDateTime& opened, QWidget* parent = nullptr);

    void store(TaskPageSettings& settings) const override;
    QString missingInput() const override;

protected:
    void loadControls(const TaskPageSettings& settings) override;

private:
    // The action boxes Check_id(0..5), in the order of their codes on line 19.
    enum ActionBox {
        InsertDateTimeBox,
        InsertStringBox,
        InsertFileBox,
        FilterReplaceBox,
        FilterDeleteBox,
        FilterOutputBox,
        actionBoxCount
    };
    // The code written is the ticked box's position from 1 (actionCode).
    static_assert(actionBoxCount == static_cast<int>(InsertFilterAction::FilterAndOutput) &&
                  FilterReplaceBox + 1 == static_cast<int>(InsertFilterAction::FilterAndReplace));
    // The text boxes Text_id(0..4).
    enum TextBox { StringText, FileText, ReplacementText, PatternText, ExtraText, textBoxCount };

    void actionClicked(int k);
    void chooseInsertFile();

    Prompts& prompts_;
    std::array<QCheckBox*, actionBoxCount> actions_{};
    std::array<QLineEdit*, textBoxCount> texts_{};
    QComboBox* dateTime_;    // Combox_id(0)
    QTreeWidget* templates_; // ListView_id
};

} // namespace morlevant
