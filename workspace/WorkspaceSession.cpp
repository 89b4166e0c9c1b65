#include "workspace/WorkspaceSession.h"

#include "platform/Prompts.h"
#include "workspace/TaskTreeModel.h"
#include "workspace/WorkspaceFile.h"
#include "workspace/WorkspaceState.h"

#include <QFileInfo>

namespace morlevant {

namespace {

const QString taskFilter = QStringLiteral("Task File (*.tsk)");

} // namespace

WorkspaceSession::WorkspaceSession(TaskTreeModel& model, WorkspaceState& state, Prompts& prompts,
                                   FileChosen fileChosen)
    : model_(model), state_(state), prompts_(prompts), fileChosen_(std::move(fileChosen)) {}

bool WorkspaceSession::settleChanges(const QString& text, const QString& title) {
    if (!state_.TaskDirty)
        return true;
    switch (prompts_.question(text, title, Buttons::YesNoCancel)) {
    case Answer::Cancel:
        return false;
    case Answer::Yes:
        // A save the user then cancels (or that fails) keeps the changes and stops here.
        return mnuSave();
    case Answer::No:
        return true;
    }
    return true;
}

bool WorkspaceSession::mnuNew() {
    // New and Open share one question and one caption.
    if (!settleChanges(QStringLiteral("Save the task？"), QStringLiteral("Open task")))
        return false;
    model_.resetToDefaultTask(treeImage::closedFolder, treeImage::openFolder);
    state_.clear();
    return true;
}

bool WorkspaceSession::mnuOpen() {
    if (!settleChanges(QStringLiteral("Save the task？"), QStringLiteral("Open task")))
        return false;
    return Loadfile();
}

bool WorkspaceSession::mnuSave() {
    return state_.HasTaskFile ? save(state_) : saveUnderANewName();
}

bool WorkspaceSession::mnuSaveAs() {
    // Cancelling the dialog cancels the command; it never saves under the old name instead.
    return saveUnderANewName();
}

bool WorkspaceSession::saveUnderANewName() {
    const QString path = ChooseFiletoSave();
    if (path.isEmpty())
        return false;
    // The workspace takes the new name, and the History gets it, only once the file is written:
    // a failed save leaves the title and the History on the file that holds the workspace.
    WorkspaceState named = state_;
    named.setTaskFile(path);
    if (!save(named))
        return false;
    state_ = named;
    if (fileChosen_)
        fileChosen_(path);
    return true;
}

bool WorkspaceSession::save(WorkspaceState& state) {
    if (const auto failure = saveWorkspace(model_, state)) {
        prompts_.error(*failure, promptTitle);
        return false;
    }
    return true;
}

bool WorkspaceSession::openRecent(const QString& path) {
    if (!settleChanges(QStringLiteral("Save the Task？"), QStringLiteral("Open Task")))
        return false;
    return CommandLineLoad(path);
}

bool WorkspaceSession::confirmClose() {
    return settleChanges(QStringLiteral("Do you want save task？"), QStringLiteral("EXIT"));
}

QString WorkspaceSession::ChooseFiletoSave() {
    QString path = prompts_.saveFileName({QStringLiteral("Save “Morlevant” Task file As"),
                                          taskFilter, lastDirectory_, QStringLiteral("*.tsk")});
    // A name typed without an extension is given the workspace's own.
    if (!path.isEmpty() && QFileInfo(path).suffix().isEmpty())
        path += QStringLiteral(".tsk");
    return path;
}

bool WorkspaceSession::Loadfile() {
    const QString path = prompts_.openFileName({QStringLiteral("Open “Morlevant” Task File"),
                                                QStringLiteral("task file (*.tsk)"), lastDirectory_,
                                                QStringLiteral("*.tsk")});
    if (path.isEmpty())
        return false;
    const bool loaded = CommandLineLoad(path);
    if (loaded && fileChosen_)
        fileChosen_(path);
    return loaded;
}

bool WorkspaceSession::CommandLineLoad(const QString& path) {
    const auto failure = loadWorkspace(model_, state_, path);
    if (failure)
        prompts_.error(*failure, promptTitle);
    // A file that could not be read at all leaves the workspace as it was; one that was read
    // in part is now the open workspace.
    const bool opened = !failure || (state_.HasTaskFile && state_.TaskFileName == path);
    if (opened)
        lastDirectory_ = QFileInfo(path).absolutePath();
    return opened;
}

} // namespace morlevant
