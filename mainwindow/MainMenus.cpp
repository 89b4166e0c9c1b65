#include "mainwindow/MainMenus.h"

#include "mainwindow/frmCorvellum.h"

#include <QAction>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>

namespace morlevant {

namespace {

QMenu* menu(QMainWindow& window, const char* name, const QString& caption) {
    QMenu* created = window.menuBar()->addMenu(caption);
    created->setObjectName(QString::fromLatin1(name));
    return created;
}

QMenu* popup(QMainWindow& window, const char* name, const QString& caption) {
    auto* created = new QMenu(caption, &window);
    created->setObjectName(QString::fromLatin1(name));
    return created;
}

} // namespace

QAction* MainMenus::item(QMenu* menu, const char* name, const QString& caption, bool checkable) {
    QAction* action = menu->addAction(caption);
    action->setObjectName(QString::fromLatin1(name));
    action->setCheckable(checkable);
    return action;
}

MainMenus::MainMenus(QMainWindow& window) : QObject(&window) {
    QMenu* file = menu(window, "mnuFile", QStringLiteral("File(&F)"));
    mnuNew = item(file, "mnuNew", QStringLiteral("&NewTask"));
    mnuOpen = item(file, "mnuOpen", QStringLiteral("&OpenTask"));
    mnuSave = item(file, "mnuSave", QStringLiteral("&SaveTask"));
    mnuSaveAs = item(file, "mnuSaveAs", QStringLiteral("Save&AsTask"));
    file->addSeparator();
    for (int entry = 0; entry < 4; ++entry) {
        mLastFile[entry] = item(file, "mLastFile", QStringLiteral("History"));
        mLastFile[entry]->setData(entry);
    }
    file->addSeparator();
    mnuExit = item(file, "mnuExit", QStringLiteral("E&xit"));
    mnuNew->setShortcut(QKeySequence::New);
    mnuOpen->setShortcut(QKeySequence::Open);
    mnuSave->setShortcut(QKeySequence::Save);

    QMenu* edit = menu(window, "mnuEdit", QStringLiteral("Edit(&E)"));
    mnuCopy = item(edit, "mnuCopy", QStringLiteral("&Copy"));
    mnuFind = item(edit, "mnuFind", QStringLiteral("&Find"));
    mnuFindNext = item(edit, "mnuFindNext", QStringLiteral("Find &Next"));
    mnuSearch = item(edit, "mnuSearch", QStringLiteral("Find In &All File"));
    mnuFind->setShortcut(QKeySequence::Find);
    mnuFindNext->setShortcut(Qt::Key_F3); // F3 on every desktop

    QMenu* manage = menu(window, "mnuManage", QStringLiteral("Control(&C)"));
    mnuAddfile = item(manage, "mnuAddfile", QStringLiteral("&Import File"));
    mnuEditCap = item(manage, "mnuEditCap", QStringLiteral("&Edit Task"));
    mnuRenameTask = item(manage, "mnuRenameTask", QStringLiteral("Re&name Task"));
    mnuRenameTask->setShortcut(Qt::Key_F2); // where desktops rename
    RunTask = item(manage, "RunTask", QStringLiteral("&Run Task"));
    mnuStop = item(manage, "mnuStop", QStringLiteral("S&top"));
    mnuStop->setShortcut(Qt::Key_Escape);
    mnuStop->setEnabled(false);
    mnuPreview = item(manage, "mnuPreview", QStringLiteral("&Preview Task"));
    mnuDeleteFile = item(manage, "mnuDeleteFile", QStringLiteral("&Delete Task Or File"));
    mnuAddPoint = item(manage, "mnuAddPoint", QStringLiteral("&Add Task"));
    mnuSort = item(manage, "mnuSort", QStringLiteral("&File Sort"));
    manage->addSeparator();
    mnuMatch = item(manage, "mnuMatch", QStringLiteral("&Match File"));
    mnuClearLink = item(manage, "mnuClearLink", QStringLiteral("&Cancel Match"));
    mnuExec = item(manage, "mnuExec", QStringLiteral("&Open In Default"));

    QMenu* option = menu(window, "mnuOption", QStringLiteral("option(&O)"));
    mnuTool = item(option, "mnuTool", QStringLiteral("&Tool bars"), true);
    mnuStatus = item(option, "mnuStatus", QStringLiteral("&Status bar"), true);
    mnuFont = item(option, "mnuFont", QStringLiteral("&Font"));
    mnuDefBrowse = item(option, "mnuDefBrowse", QStringLiteral("&Choose exploer"));
    option->addSeparator();
    mnuSun = item(option, "mnuSun", QStringLiteral("Drag in the same level"), true);
    mnuHtml = item(option, "mnuHtml", QStringLiteral("Show Html"), true);
    mnuAFSon = item(option, "mnuAFSon", QStringLiteral("Add File In Sub"), true);
    mnuDrag = item(option, "mnuDrag", QStringLiteral("Drag"), true);
    mnuPath = item(option, "mnuPath", QStringLiteral("Relative Path"), true);
    mnuEditWithSettings = item(option, "mnuEditWithSettings",
                               QStringLiteral("Edit Task opens with the task's settings"), true);
    option->addSeparator();
    mnuFileMatch = item(option, "mnuFileMatch", QStringLiteral("&Open *.tsk with Morlevant"));
    mnuCancelFileMatch =
        item(option, "mnuCancelFileMatch", QStringLiteral("Cancel *.tsk &association"));
    // How toolbar, status bar and relative paths start every run.
    mnuTool->setChecked(true);
    mnuStatus->setChecked(true);
    mnuPath->setChecked(true);

    QMenu* help = menu(window, "mnuHlp", QStringLiteral("Help(&H)"));
    mnuHelp = item(help, "mnuHelp", QStringLiteral("Morlevant &Help"));
    mnuHomepage = item(help, "mnuHomepage", QStringLiteral("Morlevant Home&page"));
    help->addSeparator();
    mnuAbout = item(help, "mnuAbout", QStringLiteral("&About"));
    mnuHelp->setShortcut(QKeySequence::HelpContents);

    mnuTree = popup(window, "mnuTree", QStringLiteral("Tree"));
    mnuTAddFile = item(mnuTree, "mnuTAddFile", QStringLiteral("&Improt File"));
    mnuTDelete = item(mnuTree, "mnuTDelete", QStringLiteral("&Edit Task"));
    mnuTRenameTask = item(mnuTree, "mnuTRenameTask", QStringLiteral("Re&name Task"));
    mnuSplit8 = item(mnuTree, "mnuSplit8", QStringLiteral("&Run Task"));
    mnuTPreview = item(mnuTree, "mnuTPreview", QStringLiteral("&Preview Task"));
    mnuTDeleteFile = item(mnuTree, "mnuTDeleteFile", QStringLiteral("&Delete Task Or File"));
    mnuTAddPoint = item(mnuTree, "mnuTAddPoint", QStringLiteral("&Add New Task"));
    mnuTree->addSeparator();
    mnuTExec = item(mnuTree, "mnuTExec", QStringLiteral("&Open File in other window"));

    mnuTxt = popup(window, "mnuTxt", QStringLiteral("Text"));
    mnuWrap = item(mnuTxt, "mnuWrap", QStringLiteral("&Wrap"));
    mnuWrapCancel = item(mnuTxt, "mnuWrapCancel", QStringLiteral("&Cancel Wrap"));
    mnuXCap = item(mnuTxt, "mnuXCap", QStringLiteral("&Set to Title"));
    mnuXFont = item(mnuTxt, "mnuXFont", QStringLiteral("&Font"));
    mnuXExec = item(mnuTxt, "mnuXExec", QStringLiteral("&Open File in other window"));
}

void MainMenus::connectTo(frmCorvellum& w) {
    const auto on = [&w](QAction* action, void (frmCorvellum::*slot)()) {
        connect(action, &QAction::triggered, &w, slot);
    };
    const auto toggle = [&w](QAction* action, void (frmCorvellum::*slot)(bool)) {
        connect(action, &QAction::triggered, &w, slot);
    };
    const auto twin = [](QAction* action, QAction* original) {
        connect(action, &QAction::triggered, original, &QAction::trigger);
    };

    on(mnuNew, &frmCorvellum::mnuNew_Click);
    on(mnuOpen, &frmCorvellum::mnuOpen_Click);
    on(mnuSave, &frmCorvellum::mnuSave_Click);
    on(mnuSaveAs, &frmCorvellum::mnuSaveAs_Click);
    for (QAction* entry : mLastFile)
        connect(entry, &QAction::triggered, &w,
                [&w, entry] { w.mLastFile_Click(entry->data().toInt()); });
    connect(mnuExit, &QAction::triggered, &w, &QWidget::close);

    on(mnuCopy, &frmCorvellum::mnuCopy_Click);
    on(mnuFind, &frmCorvellum::mnuFind_Click);
    on(mnuFindNext, &frmCorvellum::mnuFindNext_Click);
    on(mnuSearch, &frmCorvellum::mnuSearch_Click);
    for (QAction* later : {mnuMatch, mnuClearLink})
        on(later, &frmCorvellum::notProvidedYet);

    on(mnuAddfile, &frmCorvellum::mnuAddfile_Click);
    on(mnuEditCap, &frmCorvellum::EditTask);
    on(mnuRenameTask, &frmCorvellum::mnuRenameTask_Click);
    on(RunTask, &frmCorvellum::RunTask);
    on(mnuStop, &frmCorvellum::mnuStop_Click);
    on(mnuPreview, &frmCorvellum::PreviewTask);
    on(mnuDeleteFile, &frmCorvellum::mnuDeleteFile_Click);
    on(mnuAddPoint, &frmCorvellum::mnuAddPoint_Click);
    on(mnuSort, &frmCorvellum::mnuSort_Click);
    on(mnuExec, &frmCorvellum::mnuExec_Click);
    on(mnuDefBrowse, &frmCorvellum::mnuDefBrowse_Click);
    on(mnuFileMatch, &frmCorvellum::mnuFileMatch_Click);
    on(mnuCancelFileMatch, &frmCorvellum::mnuCancelFileMatch_Click);
    on(mnuHelp, &frmCorvellum::mnuHelp_Click);

    toggle(mnuTool, &frmCorvellum::mnuTool_Click);
    toggle(mnuStatus, &frmCorvellum::mnuStatus_Click);
    on(mnuFont, &frmCorvellum::mnuFont_Click);
    toggle(mnuSun, &frmCorvellum::mnuSun_Click);
    toggle(mnuHtml, &frmCorvellum::mnuHtml_Click);
    toggle(mnuDrag, &frmCorvellum::mnuDrag_Click);
    // Where imported files go decides whether a file node can take them.
    on(mnuAFSon, &frmCorvellum::applyAvailability);

    on(mnuHomepage, &frmCorvellum::mnuHomepage_Click);
    on(mnuAbout, &frmCorvellum::mnuAbout_Click);

    twin(mnuTAddFile, mnuAddfile);
    twin(mnuTDelete, mnuEditCap);
    twin(mnuTRenameTask, mnuRenameTask);
    twin(mnuSplit8, RunTask);
    twin(mnuTPreview, mnuPreview);
    twin(mnuTDeleteFile, mnuDeleteFile);
    twin(mnuTAddPoint, mnuAddPoint);
    twin(mnuTExec, mnuExec);

    connect(mnuWrap, &QAction::triggered, &w, [&w] { w.setViewerWrap(true); });
    connect(mnuWrapCancel, &QAction::triggered, &w, [&w] { w.setViewerWrap(false); });
    on(mnuXCap, &frmCorvellum::mnuXCap_Click);
    twin(mnuXFont, mnuFont);
    twin(mnuXExec, mnuExec);
}

} // namespace morlevant
