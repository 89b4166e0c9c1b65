#include "editor/TemplateLibrary.h"

#include "editor/EditorWidgets.h"
#include "platform/Prompts.h"

#include <QGridLayout>
#include <QPushButton>
#include <QTreeWidget>

namespace morlevant {

namespace {

QTreeWidget* templateList(const QString& objectName, const QStringList& columns) {
    auto* list = named<QTreeWidget>(objectName);
    list->setHeaderLabels(columns);
    list->setRootIsDecorated(false);
    list->setAllColumnsShowFocus(true);
    return list;
}

QPushButton* button(const QString& objectName, const QString& caption) {
    auto* pushButton = named<QPushButton>(objectName, caption);
    pushButton->setAutoDefault(false);
    return pushButton;
}

} // namespace

TemplateLibrary::TemplateLibrary(Prompts& prompts, QWidget* parent)
    : QWidget(parent), prompts_(prompts),
      library_(templateList(QStringLiteral("list_temp"),
                            {QStringLiteral("Template Task Name"), QStringLiteral("Description")})),
      selected_(
          templateList(QStringLiteral("list_select"),
                       {QStringLiteral("Selected template task"), QStringLiteral("description")})) {
    setObjectName(QStringLiteral("frame_temp"));
    auto* add = button(QStringLiteral("cmd_add"), QStringLiteral("\u2192"));
    add->setToolTip(QStringLiteral("add template task"));
    add->setAccessibleName(add->toolTip()); // rather than the arrow's name
    auto* deleteFromLibrary =
        button(QStringLiteral("cmd_delete"), QStringLiteral("selected delete"));
    auto* deleteSelected = button(QStringLiteral("cmd_delete1"), QStringLiteral("selected delete"));
    // "Apply" has no action: choosing templates does not change the task.
    auto* apply = button(QStringLiteral("cmd_apply"), QStringLiteral("Apply"));

    auto* layout = new QGridLayout(this);
    layout->addWidget(labelFor(plainLabel(QStringLiteral("Template Library")), library_), 0, 0);
    layout->addWidget(labelFor(plainLabel(QStringLiteral("Selected Template")), selected_), 0, 2);
    layout->addWidget(library_, 1, 0);
    layout->addWidget(add, 1, 1, Qt::AlignVCenter);
    layout->addWidget(selected_, 1, 2);
    layout->addWidget(deleteFromLibrary, 2, 0, Qt::AlignLeft);
    layout->addWidget(deleteSelected, 2, 2, Qt::AlignLeft);
    layout->addWidget(apply, 2, 2, Qt::AlignRight);

    connect(add, &QPushButton::clicked, this, &TemplateLibrary::addSelected);
    connect(deleteFromLibrary, &QPushButton::clicked, this, [this] { removeSelected(library_); });
    connect(deleteSelected, &QPushButton::clicked, this, [this] { removeSelected(selected_); });
    setVisible(false);
}

void TemplateLibrary::open() {
    const std::pair<const char*, const char*> samples[] = {
        {"hello every one", "use for sort"},
        {"let me talk about", "file index"},
        {"bye bye", "reverse"},
    };
    for (const auto& [name, description] : samples)
        library_->addTopLevelItem(
            new QTreeWidgetItem({QString::fromLatin1(name), QString::fromLatin1(description)}));
    library_->resizeColumnToContents(0);
    setVisible(true);
}

void TemplateLibrary::addSelected() {
    if (QTreeWidgetItem* row = library_->selectedItems().value(0))
        selected_->addTopLevelItem(new QTreeWidgetItem({row->text(0), row->text(1)}));
}

void TemplateLibrary::removeSelected(QTreeWidget* list) {
    QTreeWidgetItem* row = list->selectedItems().value(0);
    if (row == nullptr) {
        prompts_.information(QStringLiteral("Select a template in the list first"), promptTitle);
        return;
    }
    delete row;
}

} // namespace morlevant
