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

private:
    void actionClicked(int k);
    void chooseInsertFile();

    Prompts& prompts_;
    std::array<QCheckBox*, 6> actions_{}; // Check_id(0..5)
    std::array<QLineEdit*, 5> texts_{};   // Text_id(0..4)
    QComboBox* dateTime_;                 // Combox_id(0)
    QTreeWidget* templates_;              // ListView_id
};

} // namespace morlevant
