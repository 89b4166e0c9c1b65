#pragma once

#include <QWidget>
#include <array>

class QLineEdit;

namespace morlevant {

class Prompts;

// The calculation steps of the Calculate tab, built by clicks rather than typed: each of six
// operator buttons appends its operator, the number in the box beside it and "," to the step
// box "calculate steps:" (adding 5, then multiplying by 2 gives "+5,*2,").
class CalculationStepBuilder final : public QWidget {
    Q_OBJECT

public:
    explicit CalculationStepBuilder(Prompts& prompts, QWidget* parent = nullptr);

    // The step box's text, line 10 of the settings.
    QString steps() const;
    // Steps built before, as a task's settings keep them.
    void setSteps(const QString& steps);

    // Appends the step of button k (0 "+" .. 5 "%"); an empty operand box only gets "Please
    // input a number in the textbox".
    void appendStep(int k);

private:
    Prompts& prompts_;
    std::array<QLineEdit*, 6> operands_{};
    QLineEdit* steps_;
};

} // namespace morlevant
