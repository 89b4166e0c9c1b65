#include "editor/InsertFilterPage.h"

#include "editor/DateTimeSamples.h"
#include "editor/EditorWidgets.h"
#include "platform/Prompts.h"
#include "taskdef/TaskPageSettings.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateTime>
#include <QDir>
#include <QGridLayout>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace morlevant {

namespace {

// Twelve sample rows cycling through three kinds; only the first supplies a pattern. The
// addresses and the number are placeholders that reach nobody.
void addFilterTemplates(QTreeWidget* list) {
    const std::array<std::pair<QString, QString>, 3> kinds = {{
        {QStringLiteral("Email"), QStringLiteral("Email:someone@example.com")},
        {QStringLiteral("Web site"), QStringLiteral("Web site:http://www.example.com")},
        {QStringLiteral("Phone"), QStringLiteral("Phone:555-0100")},
    }};
    for (int row = 0; row < 12; ++row) {
        const auto& [name, description] = kinds[static_cast<std::size_t>(row % 3)];
        const QString pattern = row == 0 ? description + QStringLiteral("1111") : QString();
        list->addTopLevelItem(new QTreeWidgetItem({name, description, pattern}));
    }
}

} // namespace

InsertFilterPage::InsertFilterPage(Prompts& prompts, const QDateTime& opened, QWidget* parent)
    : OperationPage(QStringLiteral("Frame_insert"), PageCode::InsertOrFilter, parent),
      prompts_(prompts), dateTime_(named<QComboBox>(arrayName("Combox_id", 0))),
      templates_(named<QTreeWidget>(QStringLiteral("ListView_id"))) {
    const char* captions[] = {"insert date and time:",    "insert string:",    "insert text file:",
                              "filter and replace with:", "filter and delete", "filter and output"};
    for (int k = 0; k < actionBoxCount; ++k) {
        auto* box = named<QCheckBox>(arrayName("Check_id", k), QString::fromLatin1(captions[k]));
        actions_[static_cast<std::size_t>(k)] = box;
        connect(box, &QCheckBox::clicked, this, [this, k] { actionClicked(k); });
    }
    for (int i = 0; i < textBoxCount; ++i)
        texts_[static_cast<std::size_t>(i)] = named<QLineEdit>(arrayName("Text_id", i));
    texts_[ExtraText]->setToolTip(QStringLiteral("Kept with the task's settings"));
    // The boxes beside the action boxes are named after them.
    const std::pair<QWidget*, ActionBox> besideActions[] = {
        {dateTime_, InsertDateTimeBox},
        {texts_[StringText], InsertStringBox},
        {texts_[FileText], InsertFileBox},
        {texts_[ReplacementText], FilterReplaceBox}};
    for (const auto& [box, action] : besideActions)
        box->setAccessibleName(spokenName(actions_[action]->text()));
    templates_->setAccessibleName(QStringLiteral("filter templates"));

    dateTime_->addItems(dateTimeSamples(opened, QLocale::system()));
    dateTime_->setCurrentIndex(initialDateTimeSample);

    auto* open = named<QPushButton>(QStringLiteral("Command_id"), QStringLiteral("open"));
    open->setAutoDefault(false);
    connect(open, &QPushButton::clicked, this, &InsertFilterPage::chooseInsertFile);

    templates_->setColumnCount(3);
    templates_->setHeaderLabels({QStringLiteral("Filter Template Name"),
                                 QStringLiteral("Filter Template Description"),
                                 QStringLiteral("Filter Template Text")});
    templates_->setRootIsDecorated(false);
    templates_->setAllColumnsShowFocus(true);
    addFilterTemplates(templates_);
    templates_->resizeColumnToContents(0);
    templates_->resizeColumnToContents(1);
    connect(templates_, &QTreeWidget::itemClicked, this,
            [this](QTreeWidgetItem* row) { texts_[PatternText]->setText(row->text(2)); });

    auto* grid = new QGridLayout;
    grid->addWidget(labelFor(plainLabel(QStringLiteral("note:")), texts_[ExtraText]), 0, 0);
    grid->addWidget(texts_[ExtraText], 0, 1, 1, 2);
    grid->addWidget(actions_[InsertDateTimeBox], 1, 0);
    grid->addWidget(dateTime_, 1, 1, 1, 2);
    grid->addWidget(actions_[InsertStringBox], 2, 0);
    grid->addWidget(texts_[StringText], 2, 1, 1, 2);
    grid->addWidget(actions_[InsertFileBox], 3, 0);
    grid->addWidget(texts_[FileText], 3, 1);
    grid->addWidget(open, 3, 2);
    grid->addWidget(actions_[FilterReplaceBox], 4, 0);
    grid->addWidget(texts_[ReplacementText], 4, 1, 1, 2);
    grid->addWidget(actions_[FilterDeleteBox], 5, 0);
    grid->addWidget(actions_[FilterOutputBox], 6, 0);
    grid->addWidget(
        labelFor(plainLabel(QStringLiteral("regular expression:"), QStringLiteral("Label_id")),
                 texts_[PatternText]),
        7, 0);
    grid->addWidget(texts_[PatternText], 7, 1, 1, 2);
    grid->setColumnStretch(1, 1);

    auto* layout = new QVBoxLayout(controls());
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(grid);
    layout->addWidget(templates_, 1);
}

void InsertFilterPage::actionClicked(int k) {
    // One action only: the others are disabled, never unticked, while box k is ticked.
    const bool ticked = actions_[static_cast<std::size_t>(k)]->isChecked();
    for (int other = 0; other < actionBoxCount; ++other)
        if (other != k)
            actions_[static_cast<std::size_t>(other)]->setEnabled(!ticked);
    if (actions_[FilterDeleteBox]->isChecked() || actions_[FilterOutputBox]->isChecked())
        texts_[ReplacementText]->clear();
}

void InsertFilterPage::chooseInsertFile() {
    // The editor has always opened this dialog at the system drive's root.
    const QString path = prompts_.openFileName(
        {QStringLiteral("Select File"),
         QStringLiteral("Text File (*.txt *.TXT *.htm *.HTM *.html *.HTML);;"
                        "Archive (*.zip *.ZIP *.exe *.EXE *.chm *.CHM);;"
                        "multimedia (*.mp3 *.MP3 *.mid *.MID *.jpg *.JPG *.gif *.GIF *.bmp *.BMP);;"
                        "All Files (*)"),
         QDir::rootPath(), QString()});
    if (!path.isEmpty())
        texts_[FileText]->setText(QDir::toNativeSeparators(path));
}

void InsertFilterPage::store(TaskPageSettings& settings) const {
    settings.insertAction = std::to_string(actionCode(actions_));
    settings.dateTimeFormat = dateTime_->currentText().toStdString();
    settings.insertString = texts_[StringText]->text().toStdString();
    settings.insertFile = texts_[FileText]->text().toStdString();
    settings.filterReplacement = texts_[ReplacementText]->text().toStdString();
    settings.filterPattern = texts_[PatternText]->text().toStdString();
    settings.insertExtra = texts_[ExtraText]->text().toStdString();
}

void InsertFilterPage::loadControls(const TaskPageSettings& settings) {
    tickAction(actions_, settings.insertAction);
    for (int k = 0; k < actionBoxCount; ++k)
        if (actions_[static_cast<std::size_t>(k)]->isChecked())
            actionClicked(k);
    // The list shows samples of this moment; the sample the task keeps is shown as it was kept.
    const QString sample = QString::fromStdString(settings.dateTimeFormat);
    if (dateTime_->findText(sample) < 0)
        dateTime_->addItem(sample);
    dateTime_->setCurrentIndex(dateTime_->findText(sample));
    const std::string* lines[] = {&settings.insertString, &settings.insertFile,
                                  &settings.filterReplacement, &settings.filterPattern,
                                  &settings.insertExtra};
    for (int i = 0; i < textBoxCount; ++i)
        texts_[static_cast<std::size_t>(i)]->setText(QString::fromStdString(*lines[i]));
}

QString InsertFilterPage::missingInput() const {
    return actionCode(actions_) > 0 ? QString() : noActionMessage();
}

} // namespace morlevant
