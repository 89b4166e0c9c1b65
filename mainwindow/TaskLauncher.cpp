#include "mainwindow/TaskLauncher.h"

#include "editor/PreviewDialog.h"
#include "engine/TaskRunner.h"
#include "platform/Prompts.h"
#include "taskdef/TaskFiles.h"
#include "taskdef/TaskPageSettings.h"
#include "workspace/NodeTag.h"
#include "workspace/TaskTreeModel.h"

#include <QApplication>
#include <QProgressBar>
#include <QScopedValueRollback>
#include <exception>
#include <optional>
#include <string>
#include <vector>

namespace morlevant {

namespace {

// The wait cursor for as long as a run lasts, also when it ends in an error.
class BusyCursor final {
public:
    BusyCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~BusyCursor() { QApplication::restoreOverrideCursor(); }
    BusyCursor(const BusyCursor&) = delete;
    BusyCursor& operator=(const BusyCursor&) = delete;
};

} // namespace

TaskLauncher::TaskLauncher(Prompts& prompts, FolderOpener openFolder, EditorOpener openEditor,
                           QString programFolder)
    : prompts_(prompts), openFolder_(std::move(openFolder)), openEditor_(std::move(openEditor)),
      programFolder_(std::move(programFolder)) {}

bool TaskLauncher::EditTask(const QStandardItem& task, QWidget* parent, bool withSettings) {
    const std::string folder = programFolder_.toStdString();
    const std::string name = task.text().toStdString();
    std::vector<std::string> childTags;
    std::vector<std::string> files;
    for (int row = 0; row < task.rowCount(); ++row) {
        childTags.push_back(TaskTreeModel::tag(task.child(row)).toStdString());
        if (const QString path = NodeTag::split(TaskTreeModel::tag(task.child(row))).path;
            !path.isEmpty())
            files.push_back(path.toStdString());
    }
    if (childTags.empty()) {
        prompts_.information(QStringLiteral("You didn't select files"), promptTitle);
        return false;
    }
    std::optional<TaskPageSettings> shown;
    try {
        if (withSettings)
            shown = settingsForEditing(folder, name, childTags);
        else
            prepareTaskForEditing(folder, name, childTags);
    } catch (const std::exception& failure) {
        prompts_.error(QString::fromStdString(failure.what()), promptTitle);
        return false;
    }
    QString taskPath = QString::fromStdString(taskSettingsPath(folder, name));
    taskPath.chop(4); // ".ttp"
    const bool confirmed = openEditor_(parent, taskPath, shown ? &*shown : nullptr, files);
    if (confirmed && withSettings) {
        try {
            writeTaskFileList(taskFileListPath(folder, name), childTags);
        } catch (const std::exception& failure) {
            prompts_.error(QString::fromStdString(failure.what()), promptTitle);
        }
    }
    return true;
}

void TaskLauncher::preview(const QStandardItem& task, const QString& file, QWidget* parent) {
    const std::string folder = programFolder_.toStdString();
    const std::string name = task.text().toStdString();
    try {
        // The list written at the task's last edit, as a run reads it.
        const std::vector<std::string> files = readTaskFileList(taskFileListPath(folder, name));
        if (files.empty() && file.isEmpty()) {
            prompts_.information(QStringLiteral("You didn't select files"), promptTitle);
            return;
        }
        showTaskPreview(parent, readTaskPageSettings(taskSettingsPath(folder, name)), files,
                        file.isEmpty() ? files.front() : file.toStdString());
    } catch (const std::exception& failure) {
        prompts_.error(QString::fromStdString(failure.what()), promptTitle);
    }
}

void TaskLauncher::runWithProgress(const QStandardItem& task, QProgressBar& progress) {
    if (running_)
        return;
    const QScopedValueRollback<bool> running(running_, true);
    const int fileCount = task.rowCount();
    progress.setRange(0, std::max(fileCount, 1));
    progress.setValue(0);
    const auto redraw = [&progress] {
        progress.repaint();
        // Paint what is due without taking a click or a key: the run is one command.
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    };
    RunCallbacks callbacks;
    callbacks.progress = [&](int done, int) {
        progress.setValue(done);
        redraw();
    };
    callbacks.message = [this](const std::string& text) {
        prompts_.information(QString::fromStdString(text), promptTitle);
    };
    callbacks.openFolder = [this](const std::string& folder) {
        openFolder_(QString::fromStdString(folder));
    };
    try {
        const BusyCursor busy;
        redraw();
        RunTask({programFolder_.toStdString(), task.text().toStdString(), fileCount}, callbacks);
    } catch (const std::exception& failure) {
        // A TaskError names the file and the cause; anything else is reported the same way.
        progress.setValue(0);
        prompts_.error(QString::fromStdString(failure.what()), promptTitle);
        return;
    }
    progress.setValue(0);
    prompts_.information(QStringLiteral("Vell down!"), promptTitle);
}

} // namespace morlevant
