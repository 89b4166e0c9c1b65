#pragma once

#include "editor/OperationPage.h"

#include <array>

class QLineEdit;
class QPlainTextEdit;

namespace morlevant {

// The "Find and Replace" tab: four pairs of a text to find and its replacement, worked at the
// same time; the fourth pair in two large boxes that may hold several lines.
class FindReplacePage final : public OperationPage {
    Q_OBJECT

public:
    explicit FindReplacePage(QWidget* parent = nullptr);

    void store(TaskPageSettings& settings) const override;
    QString missingInput() const override;
    // What "ok" asks before saving when a large box holds a line break; empty when neither does.
    QString lineBreakQuestion() const;

protected:
    void loadControls(const TaskPageSettings& settings) override;

private:
    std::array<QLineEdit*, 6> lineBoxes_{}; // Text1 .. Text6
    QPlainTextEdit* find4_;                 // Text7
    QPlainTextEdit* replace4_;              // Text8
};

} // namespace morlevant
