#include "editor/CalculationStepBuilder.h"

#include "editor/EditorWidgets.h"
#include "editor/KeyFilter.h"
#include "platform/Prompts.h"

#include <QGridLayout>
#include <QLineEdit>
#include <QPushButton>

namespace morlevant {

namespace {

struct Operator {
    const char16_t* caption;
    const char* toolTip;
    const char* spoken; // what a screen reader calls the button
    char16_t written;
};

// "subtration" is the button's tool tip as users know it.
constexpr std::array<Operator, 6> operators = {{
    {u"+", "addition", "addition", u'+'},
    {u"-", "subtration", "subtraction", u'-'},
    {u"\u00d7", "multiplication", "multiplication", u'*'},
    {u"/", "division", "division", u'/'},
    {u"^", "power", "power", u'^'},
    {u"%", "remainder", "remainder", u'%'},
}};

} // namespace

CalculationStepBuilder::CalculationStepBuilder(Prompts& prompts, QWidget* parent)
    : QWidget(parent), prompts_(prompts), steps_(named<QLineEdit>(arrayName("Text_cal", 7))) {
    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    for (int k = 0; k < 6; ++k) {
        const Operator& op = operators[static_cast<std::size_t>(k)];
        auto* button =
            named<QPushButton>(arrayName("Command_cal", k), QString::fromUtf16(op.caption));
        button->setToolTip(QString::fromLatin1(op.toolTip));
        button->setAccessibleName(QString::fromLatin1(op.spoken));
        button->setAutoDefault(false);
        button->setFixedWidth(button->fontMetrics().horizontalAdvance(u'M') * 3);
        auto* operand = named<QLineEdit>(arrayName("Text_cal", k + 1));
        operand->setAccessibleName(QStringLiteral("number for ") + QString::fromLatin1(op.spoken));
        KeyFilter::install(operand, &KeyFilter::digitOrPoint);
        operands_[static_cast<std::size_t>(k)] = operand;
        layout->addWidget(button, k / 3, (k % 3) * 2);
        layout->addWidget(operand, k / 3, (k % 3) * 2 + 1);
        connect(button, &QPushButton::clicked, this, [this, k] { appendStep(k); });
    }
    // The steps are only ever appended by the buttons; the keyboard may take the last ones back.
    KeyFilter::makeShortenOnly(steps_);
    layout->addWidget(labelFor(plainLabel(QStringLiteral("calculate steps:")), steps_), 2, 0, 1, 6);
    layout->addWidget(steps_, 3, 0, 1, 6);
}

QString CalculationStepBuilder::steps() const {
    return steps_->text();
}

void CalculationStepBuilder::setSteps(const QString& steps) {
    steps_->setText(steps);
}

void CalculationStepBuilder::appendStep(int k) {
    const QString operand = operands_.at(static_cast<std::size_t>(k))->text();
    if (operand.isEmpty()) {
        prompts_.information(QStringLiteral("Please input a number in the textbox"), promptTitle);
        return;
    }
    steps_->setText(steps_->text() + operators.at(static_cast<std::size_t>(k)).written + operand +
                    u',');
}

} // namespace morlevant
