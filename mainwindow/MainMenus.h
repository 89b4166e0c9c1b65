#pragma once

#include <QObject>
#include <array>

class QAction;
class QMainWindow;
class QMenu;

namespace morlevant {

class frmCorvellum;

// Every menu of the main window, the tree's pop-up `mnuTree` and the viewer's pop-up `mnuTxt`,
// each item a QAction named after its control. Built once; connected to the window in
// connectTo.
class MainMenus final : public QObject {
    Q_OBJECT

public:
    explicit MainMenus(QMainWindow& window);

    void connectTo(frmCorvellum& window);

    // File(&F)
    QAction* mnuNew;
    QAction* mnuOpen;
    QAction* mnuSave;
    QAction* mnuSaveAs;
    std::array<QAction*, 4> mLastFile;
    QAction* mnuExit;
    // Edit(&E)
    QAction* mnuCopy;
    QAction* mnuFind;
    QAction* mnuFindNext;
    QAction* mnuSearch;
    // Control(&C)
    QAction* mnuAddfile;
    QAction* mnuEditCap;
    QAction* mnuRenameTask;
    QAction* RunTask;
    QAction* mnuStop;    // "Stop": ends the run under way, the one command a run takes
    QAction* mnuPreview; // "Preview Task"
    QAction* mnuDeleteFile;
    QAction* mnuAddPoint;
    QAction* mnuSort;
    QAction* mnuMatch;
    QAction* mnuClearLink;
    QAction* mnuExec;
    // option(&O)
    QAction* mnuTool;
    QAction* mnuStatus;
    QAction* mnuFont;
    QAction* mnuDefBrowse;
    QAction* mnuSun;
    QAction* mnuHtml;
    QAction* mnuAFSon;
    QAction* mnuDrag;
    QAction* mnuPath;
    QAction* mnuEditWithSettings;
    QAction* mnuFileMatch;
    QAction* mnuCancelFileMatch;
    // Help(&H)
    QAction* mnuHelp;
    QAction* mnuHomepage;
    QAction* mnuAbout;
    // Tree pop-up: each item runs its twin of the Control menu.
    QAction* mnuTAddFile;
    QAction* mnuTDelete;
    QAction* mnuTRenameTask;
    QAction* mnuSplit8;
    QAction* mnuTPreview;
    QAction* mnuTDeleteFile;
    QAction* mnuTAddPoint;
    QAction* mnuTExec;
    // Viewer pop-up
    QAction* mnuWrap;
    QAction* mnuWrapCancel;
    QAction* mnuXCap;
    QAction* mnuXFont;
    QAction* mnuXExec;

    QMenu* mnuTree;
    QMenu* mnuTxt;

private:
    static QAction* item(QMenu* menu, const char* name, const QString& caption,
                         bool checkable = false);
};

} // namespace morlevant
