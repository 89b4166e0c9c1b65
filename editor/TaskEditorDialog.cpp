#include "editor/TaskEditorDialog.h"

#include "editor/CalculatePage.h"
#include "editor/DivideMergePage.h"
#include "editor/EditRangePage.h"
#include "editor/EditorWidgets.h"
#include "editor/FindReplacePage.h"
#include "editor/InsertFilterPage.h"
#include "editor/PreviewDialog.h"
#include "editor/TemplateLibrary.h"
#include "platform/Prompts.h"
#include "taskdef/TaskError.h"
#include "taskdef/TaskFiles.h"
#include "taskdef/TaskPageSettings.h"

#include <QCheckBox>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>
#include <algorithm>

namespace morlevant {

namespace {

QPushButton* button(const QString& objectName, const QString& caption) {
    auto* pushButton = named<QPushButton>(objectName, caption);
    // Enter belongs to the boxes (it moves between some of them); it never presses a button.
    pushButton->setAutoDefault(false);
    return pushButton;
}

} // namespace

TaskEditorDialog::TaskEditorDialog(Prompts& prompts, const QString& taskPath, QWidget* parent,
                                   const QDateTime& opened)
    : QDialog(parent), prompts_(prompts), tabs_(named<QTabWidget>(QStringLiteral("taskedit"))),
      rangePage_(new EditRangePage(prompts)), findReplacePage_(new FindReplacePage),
      templates_(new TemplateLibrary(prompts)),
      taskPath_(named<QLineEdit>(QStringLiteral("lujing"), taskPath)) {
    setObjectName(QStringLiteral("frmTask"));
    setWindowTitle(QStringLiteral("Edit Task - ") + QFileInfo(taskPath).fileName());
    taskPath_->setVisible(false);

    auto* divide = new DivideMergePage(prompts, *rangePage_);
    operationPages_ = {new CalculatePage(prompts), findReplacePage_,
                       new InsertFilterPage(prompts, opened), divide};
    tabs_->addTab(rangePage_, QStringLiteral("Edit Range"));
    const char* captions[] = {"Calculate", "Find and Replace", "Insert Or Filter",
                              "Divide Or Merge"};
    for (std::size_t i = 0; i < operationPages_.size(); ++i) {
        OperationPage* page = operationPages_[i];
        tabs_->addTab(page, QString::fromLatin1(captions[i]));
        connect(page, &OperationPage::pageBoxClicked, this,
                [this, page](bool ticked) { pageBoxClicked(*page, ticked); });
    }
    connect(rangePage_, &EditRangePage::rangeModeClicked, divide,
            &DivideMergePage::rangeModeClicked);
    connect(rangePage_, &EditRangePage::takeOutClicked, divide, &DivideMergePage::takeOutClicked);

    auto* okButton = button(QStringLiteral("ok"), QStringLiteral("ok"));
    auto* previewButton = button(QStringLiteral("Preview"), QStringLiteral("Preview"));
    auto* cancelButton = button(QStringLiteral("cancel"), QStringLiteral("cancel"));
    auto* openTemplates = button(QStringLiteral("Opent"), QStringLiteral("OpenTemplate"));
    // "Save asTemplate" has no action: templates are not stored.
    auto* saveTemplate = button(QStringLiteral("apply"), QStringLiteral("Save asTemplate"));
    connect(okButton, &QPushButton::clicked, this, &TaskEditorDialog::ok);
    connect(previewButton, &QPushButton::clicked, this, &TaskEditorDialog::preview);
    connect(cancelButton, &QPushButton::clicked, this, &QDialog::reject);
    connect(openTemplates, &QPushButton::clicked, templates_, &TemplateLibrary::open);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(openTemplates);
    buttons->addWidget(saveTemplate);
    buttons->addStretch(1);
    buttons->addWidget(previewButton);
    buttons->addWidget(okButton);
    buttons->addWidget(cancelButton);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(tabs_, 1);
    layout->addWidget(templates_);
    layout->addWidget(taskPath_);
    layout->addLayout(buttons);
    // Room for the large find and replace boxes and a few filter templates at first sight.
    resize(sizeHint().expandedTo(QSize(720, 520)));
}

TaskEditorDialog::~TaskEditorDialog() = default;

bool TaskEditorDialog::edit(Prompts& prompts, QWidget* parent, const QString& taskPath,
                            const TaskPageSettings* shown, const std::vector<std::string>& files) {
    TaskEditorDialog dialog(prompts, taskPath, parent);
    dialog.setPreviewFiles(files);
    if (shown != nullptr)
        dialog.showSettings(*shown);
    return dialog.exec() == QDialog::Accepted;
}

void TaskEditorDialog::showSettings(const TaskPageSettings& settings) {
    // The ranges first: which divides may be chosen depends on them.
    rangePage_->load(settings);
    for (OperationPage* page : operationPages_)
        page->load(settings);
    for (OperationPage* page : operationPages_)
        if (page->isChosen())
            pageBoxClicked(*page, true);
}

void TaskEditorDialog::pageBoxClicked(const OperationPage& page, bool ticked) {
    // One operation page per task: while one is ticked the other three tabs are disabled.
    // "Edit Range" is never disabled.
    for (OperationPage* other : operationPages_)
        if (other != &page)
            tabs_->setTabEnabled(tabs_->indexOf(other), !ticked);
}

QString TaskEditorDialog::validationMessage() const {
    const auto chosen = std::find_if(operationPages_.begin(), operationPages_.end(),
                                     [](const OperationPage* page) { return page->isChosen(); });
    if (chosen == operationPages_.end())
        return QStringLiteral("You didn't edit task page");
    // The range boxes were checked when they lost the focus and are not checked again; the
    // merge notice shows only when "merge:" is clicked.
    return (*chosen)->missingInput();
}

TaskPageSettings TaskEditorDialog::settings() const {
    TaskPageSettings settings;
    rangePage_->store(settings);
    int pageCode = 0;
    for (const OperationPage* page : operationPages_) {
        pageCode += static_cast<int>(page->pageCode()) * (page->isChosen() ? 1 : 0);
        page->store(settings);
    }
    settings.operationPage = std::to_string(pageCode);
    return settings;
}

void TaskEditorDialog::preview() {
    if (const QString message = validationMessage(); !message.isEmpty()) {
        prompts_.information(message, promptTitle);
        return;
    }
    try {
        // The first of the task's files is previewed.
        const std::vector<std::string> files =
            !previewFiles_.empty()
                ? previewFiles_
                : readTaskFileList((taskPath_->text() + QStringLiteral(".edt")).toStdString());
        if (files.empty()) {
            prompts_.information(QStringLiteral("You didn't select files"), promptTitle);
            return;
        }
        showTaskPreview(this, settings(), files, files.front());
    } catch (const TaskError& failure) {
        prompts_.error(QString::fromStdString(failure.what()), promptTitle);
    }
}

void TaskEditorDialog::ok() {
    if (const QString message = validationMessage(); !message.isEmpty()) {
        prompts_.information(message, promptTitle);
        return;
    }
    // The settings file is written as it always was once the user knows what a line break does.
    if (const QString question = findReplacePage_->lineBreakQuestion();
        !question.isEmpty() &&
        prompts_.question(question, promptTitle, Buttons::YesNo) != Answer::Yes)
        return;
    const QString path = taskPath_->text() + QStringLiteral(".ttp");
    try {
        writeTaskPageSettings(path.toStdString(), settings());
    } catch (const TaskError& failure) {
        // Nothing of what the user filled in is lost: the editor stays open.
        prompts_.error(QString::fromStdString(failure.what()), promptTitle);
        return;
    }
    accept();
}

} // namespace morlevant
