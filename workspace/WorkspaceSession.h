#pragma once

#include <QString>
#include <functional>

namespace morlevant {

class Prompts;
class TaskTreeModel;
struct WorkspaceState;

// The File menu's commands on the whole workspace: New, Open, Save, Save As, opening a file
// from the History or the command line, each with the question it asks before unsaved
// changes are lost. Each returns true when the tree or the workspace file changed, so that
// the window shows the selected node and the title again.
class WorkspaceSession final {
public:
    // Told the path of every workspace file the user chose in a dialog, for the History.
    using FileChosen = std::function<void(const QString& path)>;

    WorkspaceSession(TaskTreeModel& model, WorkspaceState& state, Prompts& prompts,
                     FileChosen fileChosen);

    bool mnuNew();
    bool mnuOpen();
    bool mnuSave();
    bool mnuSaveAs();
    // Opening a workspace of the History: asks about unsaved changes, then loads it.
    bool openRecent(const QString& path);
    // Loads the workspace at path without a dialog and without touching the History.
    bool CommandLineLoad(const QString& path);
    // The question asked before the window closes; false when the user cancelled (or a save
    // that was asked for did not happen).
    bool confirmClose();

    // The folder the open dialog starts in: that of the last workspace opened.
    const QString& lastDirectory() const { return lastDirectory_; }

private:
    // Asks text/title about unsaved changes; saves on Yes. False on Cancel.
    bool settleChanges(const QString& text, const QString& title);
    // The path the user chose to save under, empty when cancelled.
    QString ChooseFiletoSave();
    bool saveUnderANewName();
    bool Loadfile();
    // Writes the workspace to the file `state` names; says why when it cannot.
    bool save(WorkspaceState& state);

    TaskTreeModel& model_;
    WorkspaceState& state_;
    Prompts& prompts_;
    FileChosen fileChosen_;
    QString lastDirectory_;
};

} // namespace morlevant
