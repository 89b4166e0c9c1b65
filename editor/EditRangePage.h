#pragma once

#include <QWidget>

class QCheckBox;
class QLabel;
class QLineEdit;
class QRadioButton;

namespace morlevant {

class Prompts;
struct TaskPageSettings;

// The "Edit Range" tab: the whole text or chosen rows and columns, and whether the chosen
// ranges are taken out. The range boxes and "take the operating ranges out" are enabled only
// with "select by row and column".
class EditRangePage final : public QWidget {
    Q_OBJECT

public:
    explicit EditRangePage(Prompts& prompts, QWidget* parent = nullptr);

    bool selectByRanges() const;
    bool allRange() const;
    bool takeRangesOut() const;

    // Lines 1 to 4 of the settings: the range mode, the two ranges, the take-out flag.
    void store(TaskPageSettings& settings) const;
    // Sets the tab as lines 1 to 4 say; a mode of "1" shows "all range".
    void load(const TaskPageSettings& settings);

signals:
    void rangeModeClicked(bool selectByRanges);
    void takeOutClicked(bool ticked);

private:
    void applyRangeMode(bool selectByRanges);

    QRadioButton* allRange_;
    QRadioButton* selectByRanges_;
    QLineEdit* rowBox_;
    QLineEdit* columnBox_;
    QLabel* rowLabel_;
    QLabel* columnLabel_;
    QCheckBox* takeOut_;
};

} // namespace morlevant
