#pragma once

#include "editor/OperationPage.h"

#include <array>
#include <initializer_list>

class QCheckBox;
class QLineEdit;

namespace morlevant {

class EditRangePage;
class Prompts;

// The "Divide Or Merge" tab: divide each file into numbered pieces by rows, by columns, by
// the row ranges or by the column ranges, or merge all files into one; with the piece names'
// template and the range of piece numbers. Dividing by the ranges needs "select by row and
// column" on the Edit Range tab.
class DivideMergePage final : public OperationPage {
    Q_OBJECT

public:
    DivideMergePage(Prompts& prompts, const EditRangePage& ranges, QWidget* parent = nullptr);

    void store(TaskPageSettings& settings) const override;
    QString missingInput() const override;

    // The Edit Range tab's choices, which enable and disable some of the actions.
    void rangeModeClicked(bool selectByRanges);
    void takeOutClicked(bool ticked);

protected:
    void pageChosen(bool chosen) override;
    void loadControls(const TaskPageSettings& settings) override;

private:
    // The action boxes Check_dm(0..4), in the order of their codes on line 26.
    enum ActionBox { RowsBox, ColumnsBox, RangeRowBox, RangeColumnBox, MergeBox, actionBoxCount };
    // The code written is the ticked box's position from 1 (actionCode).
    static_assert(actionBoxCount == static_cast<int>(DivideMergeAction::Merge) &&
                  RangeRowBox + 1 == static_cast<int>(DivideMergeAction::DivideByRangeRow));
    // The text boxes Text_dm(0..4).
    enum TextBox {
        RowsText,
        ColumnsText,
        TemplateText,
        FirstNumberText,
        LastNumberText,
        textBoxCount
    };

    void actionClicked(int k);
    // Enables each listed action that may be chosen now: no other action is ticked, and the
    // range divides only with a row and column selection.
    void enableActions(std::initializer_list<int> which);
    void disableActions(std::initializer_list<int> which);

    Prompts& prompts_;
    const EditRangePage& ranges_;
    std::array<QCheckBox*, actionBoxCount> actions_{};
    std::array<QLineEdit*, textBoxCount> texts_{};
};

} // namespace morlevant
