#include "mainwindow/TaskLauncher.h"

#include "editor/PreviewDialog.h"
#include "engine/TaskRunner.h"
#include "mainwindow/BackgroundRun.h"
#include "platform/Prompts.h"
#include "taskdef/TaskFiles.h"
#include "taskdef/TaskPageSettings.h"
#include "workspace/NodeTag.h"
#include "workspace/TaskTreeModel.h"

#include <QApplication>
#include <QProgressBar>
#include <QThread>
#include <algorithm>
#include <exception>
#include <optional>
#include <string>
#include <vector>

namespace morlevant {

TaskLauncher::TaskLauncher(Prompts& prompts, FolderOpener openFolder, EditorOpener openEditor,
                           QString programFolder, int jobs)
    : prompts_(prompts), openFolder_(std::move(openFolder)), openEditor_(std::move(openEditor)),
      programFolder_(std::move(programFolder)), jobs_(jobs) {}

TaskLauncher::~TaskLauncher() {
    if (run_)
        QApplication::restoreOverrideCursor();
}

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

void TaskLauncher::run(const QStandardItem& task, QProgressBar& bar, MainStatusBar& status,
                       std::function<void()> ended) {
    if (run_)
        return;
    RunRequest request{programFolder_.toStdString(), task.text().toStdString(), task.rowCount()};
    request.jobs = jobs_ > 0 ? jobs_ : std::max(1, QThread::idealThreadCount());
    run_ = std::make_unique<BackgroundRun>(std::move(request), prompts_, openFolder_, bar, status);
    QObject::connect(run_.get(), &BackgroundRun::ended, run_.get(), [this, ended] {
        // Deleted once the signal has returned: it is emitted by the run itself.
        run_.release()->deleteLater();
        QApplication::restoreOverrideCursor();
        if (ended)
            ended();
    });
    // The wait cursor for as long as the run lasts; the window still takes the stop.
    QApplication::setOverrideCursor(Qt::BusyCursor);
}

bool TaskLauncher::isWorking() const {
    return run_ && !run_->hasEnded();
}

void TaskLauncher::stop(bool quietly) {
    if (run_)
        run_->stop(quietly);
}

} // namespace morlevant
