#pragma once

#include <QDateTime>
#include <QDialog>
#include <array>
#include <string>
#include <vector>

class QLineEdit;
class QTabWidget;

namespace morlevant {

class EditRangePage;
class FindReplacePage;
class OperationPage;
class Prompts;
class TemplateLibrary;
struct TaskPageSettings;

// The task editor: five tabs on which the user says once what a task does to each of its
// files. It opens on the defaults, or on the task's settings when given them; "ok" checks the
// chosen page and writes the task's settings file, "cancel" writes nothing.
class TaskEditorDialog final : public QDialog {
    Q_OBJECT

public:
    // taskPath: the task's files without their extension (program folder/task/name); the
    // settings go to taskPath + ".ttp". `opened` is the moment the date and time samples show.
    TaskEditorDialog(Prompts& prompts, const QString& taskPath, QWidget* parent = nullptr,
                     const QDateTime& opened = QDateTime::currentDateTime());
    ~TaskEditorDialog() override;

    // Shows the editor modally, its controls as `shown` says (nullptr: the defaults); true when
    // the task's settings were written.
    static bool edit(Prompts& prompts, QWidget* parent, const QString& taskPath,
                     const TaskPageSettings* shown = nullptr,
                     const std::vector<std::string>& files = {});
    // The files "Preview" works: the task's files in the tree. Without them, those of the list
    // the task's last edit wrote.
    void setPreviewFiles(std::vector<std::string> files) { previewFiles_ = std::move(files); }

    // The 31 values as the controls hold them now.
    TaskPageSettings settings() const;
    // Sets every control as the settings say, the tabs enabled as the chosen page leaves them.
    void showSettings(const TaskPageSettings& settings);

    // "ok": the first failing check shows its message and leaves everything as it is;
    // otherwise the settings are written and the editor closes accepted.
    void ok();
    // "Preview": checked as "ok" checks, then the controls as they stand now, unsaved, are
    // worked on the first rows of the task's first file (see showTaskPreview).
    void preview();

private:
    void pageBoxClicked(const OperationPage& page, bool ticked);
    QString validationMessage() const;

    Prompts& prompts_;
    QTabWidget* tabs_; // taskedit
    EditRangePage* rangePage_;
    std::array<OperationPage*, 4> operationPages_{};
    FindReplacePage* findReplacePage_;
    TemplateLibrary* templates_; // frame_temp
    QLineEdit* taskPath_;        // lujing
    std::vector<std::string> previewFiles_;
};

} // namespace morlevant
