#include "editor/CalculatePage.h"

#include "editor/CalculationStepBuilder.h"
#include "editor/EditorWidgets.h"
#include "editor/KeyFilter.h"
#include "taskdef/TaskPageSettings.h"

#include <QComboBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QVBoxLayout>

namespace morlevant {

namespace {

QComboBox* choiceBox(int index, const QStringList& items, const QString& selected) {
    auto* box = named<QComboBox>(arrayName("Combox_cal", index));
    box->addItems(items);
    box->setCurrentText(selected);
    return box;
}

} // namespace

CalculatePage::CalculatePage(Prompts& prompts, QWidget* parent)
    : OperationPage(QStringLiteral("Frame_condition"), PageCode::Calculate, parent),
      decimalNumber_(named<QLineEdit>(arrayName("Text_cal", 0), QStringLiteral("0"))),
      alignment_(
          choiceBox(1, {QStringLiteral("Left"), QStringLiteral("Right")}, QStringLiteral("Left"))),
      nonNumericAlert_(
          choiceBox(2, {QStringLiteral("Yes"), QStringLiteral("No")}, QStringLiteral("No"))),
      crossBorderAlert_(
          choiceBox(3, {QStringLiteral("Yes"), QStringLiteral("No")}, QStringLiteral("No"))),
      steps_(new CalculationStepBuilder(prompts)) {
    KeyFilter::install(decimalNumber_, &KeyFilter::digit);

    auto* options = new QFormLayout;
    const auto row = [options](const QString& caption, QWidget* field) {
        options->addRow(labelFor(plainLabel(caption), field), field);
    };
    row(QStringLiteral("decimal     number:"), decimalNumber_);
    row(QStringLiteral("alignment   in    file:"), alignment_);
    row(QStringLiteral("non-numeric  Alert:"), nonNumericAlert_);
    row(QStringLiteral("cross-border Alert:"), crossBorderAlert_);

    auto* layout = new QVBoxLayout(controls());
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(options);
    layout->addSpacing(12);
    layout->addWidget(steps_);
    layout->addStretch(1);
}

void CalculatePage::store(TaskPageSettings& settings) const {
    settings.decimalNumber = decimalNumber_->text().toStdString();
    settings.alignment = alignment_->currentText().toStdString();
    settings.nonNumericAlert = nonNumericAlert_->currentText().toStdString();
    settings.crossBorderAlert = crossBorderAlert_->currentText().toStdString();
    settings.calculateSteps = steps_->steps().toStdString();
}

void CalculatePage::loadControls(const TaskPageSettings& settings) {
    decimalNumber_->setText(QString::fromStdString(settings.decimalNumber));
    alignment_->setCurrentText(QString::fromStdString(settings.alignment));
    nonNumericAlert_->setCurrentText(QString::fromStdString(settings.nonNumericAlert));
    crossBorderAlert_->setCurrentText(QString::fromStdString(settings.crossBorderAlert));
    steps_->setSteps(QString::fromStdString(settings.calculateSteps));
}

QString CalculatePage::missingInput() const {
    return steps_->steps().isEmpty() ? QStringLiteral("Calculate steps was empty") : QString();
}

} // namespace morlevant
