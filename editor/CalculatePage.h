#pragma once

#include "editor/OperationPage.h"

class QComboBox;
class QLineEdit;

namespace morlevant {

class CalculationStepBuilder;
class Prompts;

// The "Calculate" tab: the decimal number, the alignment in the file, the two alerts and the
// calculation steps applied to the numbers of each line.
class CalculatePage final : public OperationPage {
    Q_OBJECT

public:
    explicit CalculatePage(Prompts& prompts, QWidget* parent = nullptr);

    void store(TaskPageSettings& settings) const override;
    QString missingInput() const override;

protected:
    void loadControls(const TaskPageSettings& settings) override;

private:
    QLineEdit* decimalNumber_;
    QComboBox* alignment_;
    QComboBox* nonNumericAlert_;
    QComboBox* crossBorderAlert_;
    CalculationStepBuilder* steps_;
};

} // namespace morlevant
