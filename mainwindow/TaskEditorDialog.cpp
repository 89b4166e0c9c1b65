#include "TaskEditorDialog.h"

#include <QDialogButtonBox>
#include <QFileInfo>
#include <QLabel>
#include <QVBoxLayout>

namespace morlevant {

TaskEditorDialog::TaskEditorDialog(const QString& taskPath, QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmTask"));
    setWindowTitle(QStringLiteral("Edit Task - ") + QFileInfo(taskPath).fileName());
    auto* text =
        new QLabel(QStringLiteral("The pages of the task editor come with a later version "
                                  "of Morlevant.\n\n对不起，本功能将在2.8版中提供，请稍等"),
                   this);
    text->setWordWrap(true);
    auto* path = new QLabel(taskPath + QStringLiteral(".ttp"), this);
    path->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(text);
    layout->addWidget(path);
    layout->addWidget(buttons);
}

bool TaskEditorDialog::edit(QWidget* parent, const QString& taskPath) {
    TaskEditorDialog dialog(taskPath, parent);
    return dialog.exec() == QDialog::Accepted;
}

} // namespace morlevant
