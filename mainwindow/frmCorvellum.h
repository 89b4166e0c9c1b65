#pragma once

#include "mainwindow/TaskLauncher.h"
#include "mainwindow/WindowContext.h"
#include "mainwindow/desktop/ExternalPrograms.h"
#include "mainwindow/find/FindCommands.h"
#include "mainwindow/find/SearchState.h"
#include "mainwindow/icons/TreeImageList.h"
#include "mainwindow/viewer/ViewerLoader.h"
#include "settings/RecentFiles.h"
#include "settings/UserSettings.h"
#include "workspace/TaskTreeModel.h"
#include "workspace/TreeCommands.h"
#include "workspace/WorkspaceSession.h"
#include "workspace/WorkspaceState.h"

#include <QList>
#include <QMainWindow>
#include <QPointer>

class QLabel;
class QStandardItem;

namespace morlevant {

class MainMenus;
class MainPane;
class MainStatusBar;
class MainToolBar;
enum class ToolbarButton;
class TaskTreeView;
class TextViewer;

// The main window: the task tree and the viewer side by side, menus, toolbar and status bar.
// It owns the workspace (the tree model and its state) and the user's settings, and turns
// menu, toolbar and tree events into the workspace and task commands.
class frmCorvellum final : public QMainWindow {
    Q_OBJECT

public:
    explicit frmCorvellum(WindowContext context, QWidget* parent = nullptr);
    ~frmCorvellum() override;

    // Reads the settings, shows the window and opens the workspace named by commandLine (the
    // whole command line is one path; empty for none).
    void startUp(const QString& commandLine);

    TaskTreeModel& model() { return model_; }
    WorkspaceState& state() { return state_; }
    const UserSettings& settings() const { return settings_; }
    MainMenus& menus() const { return *menus_; }
    MainToolBar* tbMain() const { return tbMain_; }
    MainStatusBar* sbMain() const { return sbMain_; }
    TaskTreeView* tvMain() const;
    TextViewer* txtMain() const;
    QLabel* lbCaption() const;
    const QString& programFolder() const { return launcher_.programFolder(); }
    // The open find dialog, nullptr when none is.
    frmFind* findDialog() const { return find_.dialog(); }

    // The selected node, nullptr when none.
    QStandardItem* selectedNode() const;
    void selectNode(QStandardItem* node);

    // Commands of the menus and the toolbar.
    void mnuNew_Click();
    void mnuOpen_Click();
    void mnuSave_Click();
    void mnuSaveAs_Click();
    void mLastFile_Click(int position);
    void mnuCopy_Click();
    void mnuFind_Click();
    void mnuFindNext_Click();
    void mnuSearch_Click();
    void mnuAddfile_Click();
    void EditTask();
    void mnuRenameTask_Click();
    void RunTask();
    void mnuStop_Click();
    // Whether a run is under way: the window then takes no command but "Stop".
    bool isRunning() const { return launcher_.isRunning(); }
    void PreviewTask();
    void mnuDeleteFile_Click();
    void mnuAddPoint_Click();
    void mnuSort_Click();
    void mnuExec_Click();
    void mnuDefBrowse_Click();
    void mnuHelp_Click();
    void mnuFileMatch_Click();
    void mnuCancelFileMatch_Click();
    void mnuTool_Click(bool checked);
    void mnuStatus_Click(bool checked);
    void mnuFont_Click();
    void mnuSun_Click(bool checked);
    void mnuHtml_Click(bool checked);
    void mnuDrag_Click(bool checked);
    void mnuHomepage_Click();
    void mnuAbout_Click();
    void mnuXCap_Click();
    void setViewerWrap(bool on);
    void sendFeedback();
    // Commands whose work comes with a later version say so.
    void notProvidedYet();
    void tbMain_ButtonClick(ToolbarButton button);

    // Enables the commands that suit the selected node (see CommandAvailability) in the
    // menus, the tree's pop-up and the toolbar's images.
    void applyAvailability();
    // What a click on a node shows: its caption, its path and its file.
    void showNode(QStandardItem* node);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void applySettings();
    void collectSettings();
    void applyRecentMenu(const RecentMenu& menu);
    void workspaceReplaced();
    void nodeDropped(const QModelIndex& dragged, const QModelIndex& target);
    void showTreeMenu(const QPoint& position);
    void showViewerMenu(const QPoint& position);
    void updateCaret();
    // While a run lasts every command but "Stop" is disabled, the tree as well; afterwards each
    // is as it was.
    void holdCommands(bool held);

    WindowContext context_;
    TaskTreeModel model_;
    WorkspaceState state_;
    UserSettings settings_;
    RecentFiles recent_;
    TreeCommands commands_;
    WorkspaceSession session_;
    ExternalPrograms external_;
    TaskLauncher launcher_;
    TreeImageList treeImages_;
    MainPane* pane_;
    MainToolBar* tbMain_;
    MainStatusBar* sbMain_;
    MainMenus* menus_;
    SearchState search_;
    ViewerLoader viewerLoader_;
    FindCommands find_;
    QList<QPointer<QAction>> heldCommands_; // those that holdCommands disabled
};

} // namespace morlevant
