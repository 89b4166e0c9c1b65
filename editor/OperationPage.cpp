#include "editor/OperationPage.h"

#include "taskdef/TaskPageSettings.h"

#include <QCheckBox>
#include <QVBoxLayout>

namespace morlevant {

OperationPage::OperationPage(const QString& frameName, PageCode pageCode, QWidget* parent)
    : QWidget(parent), pageCode_(pageCode),
      pageBox_(new QCheckBox(QStringLiteral("Selected to edit this task page"), this)),
      controls_(new QWidget(this)) {
    setObjectName(frameName);
    pageBox_->setObjectName(QStringLiteral("Check") + QString::number(static_cast<int>(pageCode)));
    // Every page starts unchosen, its controls disabled until its box is ticked.
    controls_->setEnabled(false);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(pageBox_);
    layout->addWidget(controls_, 1);
    connect(pageBox_, &QCheckBox::clicked, this, [this](bool ticked) {
        controls_->setEnabled(ticked);
        pageChosen(ticked);
        emit pageBoxClicked(ticked);
    });
}

bool OperationPage::isChosen() const {
    return pageBox_->isChecked();
}

void OperationPage::load(const TaskPageSettings& settings) {
    const bool chosen = settings.operationPage == std::to_string(static_cast<int>(pageCode_));
    pageBox_->setChecked(chosen);
    controls_->setEnabled(chosen);
    loadControls(settings);
    pageChosen(chosen);
}

void OperationPage::tickAction(std::span<QCheckBox* const> actions, const std::string& code) {
    for (std::size_t k = 0; k < actions.size(); ++k)
        actions[k]->setChecked(code == std::to_string(k + 1));
}

int OperationPage::actionCode(std::span<QCheckBox* const> actions) {
    int code = 0;
    for (std::size_t k = 0; k < actions.size(); ++k)
        code += static_cast<int>(k + 1) * (actions[k]->isChecked() ? 1 : 0);
    return code;
}

QString OperationPage::noActionMessage() {
    return QStringLiteral("What do you want to do?Please press the check button!");
}

} // namespace morlevant
