#include "mainwindow/frmCorvellum.h"

#include "mainwindow/AboutDialog.h"
#include "mainwindow/MainMenus.h"
#include "mainwindow/MainPane.h"
#include "mainwindow/MainStatusBar.h"
#include "mainwindow/MainToolBar.h"
#include "mainwindow/SplitBar.h"
#include "mainwindow/TaskTreeView.h"
#include "mainwindow/Twips.h"
#include "mainwindow/find/FindInAllFiles.h"
#include "mainwindow/find/frmFind.h"
#include "mainwindow/viewer/TextViewer.h"
#include "platform/Prompts.h"
#include "settings/SettingsStore.h"
#include "workspace/CommandAvailability.h"
#include "workspace/NodeMove.h"
#include "workspace/NodeTag.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QLabel>
#include <QMenu>
#include <QScreen>

namespace morlevant {

namespace {

constexpr float narrowestWidth = 3500; // twips
constexpr int setToTitleLength = 50;

} // namespace

frmCorvellum::frmCorvellum(WindowContext context, QWidget* parent)
    : QMainWindow(parent), context_(std::move(context)), recent_(context_.settings),
      commands_(model_, state_, context_.prompts),
      session_(model_, state_, context_.prompts,
               [this](const QString& path) { applyRecentMenu(recent_.enterRecentFile(path)); }),
      external_(context_.prompts, context_.shell, QCoreApplication::applicationFilePath()),
      launcher_(
          context_.prompts, [this](const QString& folder) { external_.openFolder(folder); },
          context_.openTaskEditor, context_.programFolder, context_.runJobs),
      pane_(new MainPane(this)), tbMain_(new MainToolBar(this)), sbMain_(new MainStatusBar(this)),
      menus_(new MainMenus(*this)), viewerLoader_(*txtMain(), search_, context_.prompts),
      find_(search_, *txtMain(), context_.prompts) {
    setObjectName(QStringLiteral("frmCorvellum"));
    setWindowIcon(programIcon());
    setWindowTitle(state_.windowTitle());
    setMinimumWidth(twips::toPixels(narrowestWidth));
    // The size the window has when it is not maximised.
    if (const QScreen* screen = QGuiApplication::primaryScreen())
        resize(screen->availableSize() * 3 / 4);
    setCentralWidget(pane_);
    addToolBar(Qt::TopToolBarArea, tbMain_);
    setStatusBar(sbMain_);
    menus_->connectTo(*this);
    tbMain_->addStop(menus_->mnuStop);

    model_.setImageList(treeImages_.icons());
    tvMain()->setModel(&model_);
    connect(tvMain()->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex& current) {
                showNode(model_.itemFromIndex(current));
                applyAvailability();
            });
    connect(tvMain(), &TaskTreeView::nodeDropped, this, &frmCorvellum::nodeDropped);
    connect(tvMain(), &QWidget::customContextMenuRequested, this, &frmCorvellum::showTreeMenu);
    connect(txtMain(), &QWidget::customContextMenuRequested, this, &frmCorvellum::showViewerMenu);
    connect(txtMain(), &QPlainTextEdit::cursorPositionChanged, this, &frmCorvellum::updateCaret);
    connect(tbMain_, &MainToolBar::buttonClicked, this, &frmCorvellum::tbMain_ButtonClick);
    connect(sbMain_, &MainStatusBar::feedbackClicked, this, &frmCorvellum::sendFeedback);
}

frmCorvellum::~frmCorvellum() {
    // The view goes before the model it shows.
    delete pane_;
}

TaskTreeView* frmCorvellum::tvMain() const {
    return pane_->tvMain();
}

TextViewer* frmCorvellum::txtMain() const {
    return pane_->txtMain();
}

QLabel* frmCorvellum::lbCaption() const {
    return pane_->lbCaption();
}

void frmCorvellum::startUp(const QString& commandLine) {
    setViewerWrap(false);

    settings_.windowState = isMaximized() ? UserSettings::Maximised : UserSettings::Normal;
    LoadSet(context_.settings, settings_, programFolder());
    applySettings();
    viewerLoader_.setTempFilePath(settings_.tempFilePath);
    // Applies the splitter's limits to the loaded position.
    pane_->picSplit()->moveBy(0);

    selectNode(model_.resetToDefaultTask(treeImage::closedFolder, treeImage::openFolder));
    for (QAction* action : {menus_->mnuEditCap, menus_->RunTask, menus_->mnuSort, menus_->mnuExec,
                            menus_->mnuMatch, menus_->mnuClearLink})
        action->setEnabled(false);
    tbMain_->setImage(ToolbarButton::editTask, toolbarImage::editTaskOff);
    tbMain_->setImage(ToolbarButton::runTask, toolbarImage::runTaskOff);
    // The two toggle buttons show the options as loaded.
    tbMain_->setPressed(ToolbarButton::strictDrag, menus_->mnuSun->isChecked());
    tbMain_->setPressed(ToolbarButton::showHtml, menus_->mnuHtml->isChecked());

    if (settings_.windowState == UserSettings::Maximised)
        showMaximized();
    else
        show();
    tvMain()->setFocus();
    if (!commandLine.trimmed().isEmpty() && session_.CommandLineLoad(commandLine.trimmed()))
        workspaceReplaced();
    menus_->mnuTAddFile->setEnabled(false);
    menus_->mnuTAddPoint->setEnabled(false);
}

void frmCorvellum::applySettings() {
    QFont font(settings_.fontName);
    // Where the chosen font is missing, a fixed-width one keeps the columns of the text aligned.
    font.setStyleHint(QFont::TypeWriter);
    font.setPointSizeF(settings_.fontSize > 0 ? settings_.fontSize : 12);
    font.setBold(settings_.fontBold);
    font.setItalic(settings_.fontItalic);
    font.setUnderline(settings_.fontUnderline);
    txtMain()->setFont(font);
    menus_->mnuAFSon->setChecked(settings_.addFileInSub);
    menus_->mnuHtml->setChecked(settings_.showHtml);
    menus_->mnuSun->setChecked(settings_.sameLevelDrag);
    menus_->mnuDrag->setChecked(settings_.liveDrag);
    menus_->mnuEditWithSettings->setChecked(settings_.editWithSettings);
    pane_->setLiveDrag(settings_.liveDrag);
    pane_->picSplit()->setLeft(settings_.split);
    applyRecentMenu(recent_.ShowRecentFiles());
}

void frmCorvellum::collectSettings() {
    const QFont font = txtMain()->font();
    settings_.fontName = font.family();
    settings_.fontSize = font.pointSizeF();
    settings_.fontBold = font.bold();
    settings_.fontItalic = font.italic();
    settings_.fontUnderline = font.underline();
    settings_.addFileInSub = menus_->mnuAFSon->isChecked();
    settings_.showHtml = menus_->mnuHtml->isChecked();
    settings_.sameLevelDrag = menus_->mnuSun->isChecked();
    settings_.liveDrag = menus_->mnuDrag->isChecked();
    settings_.editWithSettings = menus_->mnuEditWithSettings->isChecked();
    settings_.split = pane_->picSplit()->Left();
    settings_.windowState = isMinimized()   ? UserSettings::Minimised
                            : isMaximized() ? UserSettings::Maximised
                                            : UserSettings::Normal;
}

void frmCorvellum::applyRecentMenu(const RecentMenu& menu) {
    for (std::size_t entry = 0; entry < menu.size(); ++entry) {
        QAction* action = menus_->mLastFile[entry];
        action->setText(menu[entry].caption);
        action->setVisible(menu[entry].visible);
        action->setEnabled(menu[entry].enabled);
    }
}

void frmCorvellum::closeEvent(QCloseEvent* event) {
    // A run showing its last message has ended: the window closes as it would without it.
    if (launcher_.isWorking()) {
        if (context_.prompts.question(QStringLiteral("A task is running. Stop it and close the "
                                                     "window?"),
                                      promptTitle, Buttons::YesNo) != Answer::Yes) {
            event->ignore();
            return;
        }
        // The run ends at its next block, its result being written dropped; then the window
        // closes as it would have without it.
        launcher_.stop(true);
        while (launcher_.isWorking())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    // The settings are kept even when the user then stays.
    collectSettings();
    SaveSet(context_.settings, settings_);
    context_.settings.sync();
    if (session_.confirmClose())
        event->accept();
    else
        event->ignore();
}

QStandardItem* frmCorvellum::selectedNode() const {
    return model_.itemFromIndex(tvMain()->currentIndex());
}

void frmCorvellum::selectNode(QStandardItem* node) {
    if (node == nullptr)
        return;
    const QModelIndex index = model_.indexFromItem(node);
    tvMain()->scrollTo(index);
    tvMain()->setCurrentIndex(index);
}

void frmCorvellum::showNode(QStandardItem* node) {
    if (node == nullptr) {
        lbCaption()->clear();
        sbMain_->setPath(QString());
        txtMain()->showText(QString());
        return;
    }
    const QString tag = TaskTreeModel::tag(node);
    const QString path = NodeTag::split(tag).path;
    lbCaption()->setText(node->text());
    sbMain_->setPath(path);
    if (path.isEmpty())
        txtMain()->showText(QString());
    else if (path != txtMain()->shownFile())
        viewerLoader_.loadtext(tag, menus_->mnuHtml->isChecked());
}

void frmCorvellum::workspaceReplaced() {
    setWindowTitle(state_.windowTitle());
    txtMain()->forgetShownFile();
    if (model_.rowCount() > 0) {
        tvMain()->expand(model_.index(0, 0));
        selectNode(model_.item(0));
    }
    showNode(selectedNode());
    applyAvailability();
}

void frmCorvellum::applyAvailability() {
    // While a run lasts the commands stay held; its end works their availability out afresh.
    if (launcher_.isRunning())
        return;
    const CommandAvailability available = CommandAvailability::forNode(
        selectedNode(), menus_->mnuAFSon->isChecked(), programFolder());
    const MainMenus& m = *menus_;
    const auto enable = [](bool on, std::initializer_list<QAction*> actions) {
        for (QAction* action : actions)
            action->setEnabled(on);
    };
    enable(available.importFile, {m.mnuAddfile, m.mnuTAddFile});
    enable(available.addTask, {m.mnuAddPoint, m.mnuTAddPoint});
    enable(available.editTask, {m.mnuEditCap, m.mnuTDelete});
    enable(available.renameTask, {m.mnuRenameTask, m.mnuTRenameTask});
    enable(available.runTask, {m.RunTask, m.mnuSplit8});
    enable(available.previewTask, {m.mnuPreview, m.mnuTPreview});
    enable(available.deleteNode, {m.mnuDeleteFile, m.mnuTDeleteFile});
    enable(available.sortFiles, {m.mnuSort});
    enable(available.openFile, {m.mnuExec, m.mnuTExec, m.mnuXExec});
    using namespace toolbarImage;
    tbMain_->setImage(ToolbarButton::importFile, available.importFile ? importFile : importFileOff);
    tbMain_->setImage(ToolbarButton::addTask, available.addTask ? addTask : addTaskOff);
    tbMain_->setImage(ToolbarButton::editTask, available.editTask ? editTask : editTaskOff);
    tbMain_->setImage(ToolbarButton::runTask, available.runTask ? runTask : runTaskOff);
    tbMain_->setImage(ToolbarButton::deleteNode, available.deleteNode ? deleteNode : deleteNodeOff);
}

void frmCorvellum::tbMain_ButtonClick(ToolbarButton button) {
    const auto information = [this](const char* text) {
        context_.prompts.information(QString::fromUtf8(text), promptTitle);
    };
    switch (button) {
    case ToolbarButton::newTask:
        mnuNew_Click();
        break;
    case ToolbarButton::openTask:
        mnuOpen_Click();
        break;
    case ToolbarButton::saveTask:
        mnuSave_Click();
        break;
    // importFile to deleteNode act only while they show their first image; the image, not an
    // enabled state, tells the button's state.
    case ToolbarButton::importFile:
        tbMain_->image(ToolbarButton::importFile) == toolbarImage::importFile
            ? mnuAddfile_Click()
            : information("please select task");
        break;
    case ToolbarButton::addTask:
        tbMain_->image(ToolbarButton::addTask) == toolbarImage::addTask
            ? mnuAddPoint_Click()
            : information("please select task");
        break;
    case ToolbarButton::editTask:
        tbMain_->image(ToolbarButton::editTask) == toolbarImage::editTask
            ? EditTask()
            : information("please import file");
        break;
    case ToolbarButton::runTask:
        tbMain_->image(ToolbarButton::runTask) == toolbarImage::runTask
            ? RunTask()
            : information("please edit task");
        break;
    case ToolbarButton::deleteNode:
        if (tbMain_->image(ToolbarButton::deleteNode) == toolbarImage::deleteNode)
            mnuDeleteFile_Click();
        break;
    case ToolbarButton::setTitle:
        mnuXCap_Click();
        break;
    case ToolbarButton::sortFiles:
        mnuSort_Click();
        break;
    case ToolbarButton::openIt:
        mnuExec_Click();
        break;
    case ToolbarButton::strictDrag:
        menus_->mnuSun->setChecked(tbMain_->isPressed(ToolbarButton::strictDrag));
        break;
    case ToolbarButton::showHtml:
        menus_->mnuHtml->setChecked(tbMain_->isPressed(ToolbarButton::showHtml));
        txtMain()->forgetShownFile();
        showNode(selectedNode());
        break;
    }
}

void frmCorvellum::mnuNew_Click() {
    if (session_.mnuNew())
        workspaceReplaced();
}

void frmCorvellum::mnuOpen_Click() {
    if (session_.mnuOpen())
        workspaceReplaced();
}

void frmCorvellum::mnuSave_Click() {
    session_.mnuSave();
    setWindowTitle(state_.windowTitle());
}

void frmCorvellum::mnuSaveAs_Click() {
    session_.mnuSaveAs();
    setWindowTitle(state_.windowTitle());
}

void frmCorvellum::mLastFile_Click(int position) {
    const QString path = RecentFiles::pathOfCaption(menus_->mLastFile.at(position)->text());
    if (!session_.openRecent(path))
        return;
    applyRecentMenu(recent_.UpdateRecentFiles(position));
    workspaceReplaced();
}

void frmCorvellum::mnuCopy_Click() {
    txtMain()->copyToClipboard();
}

void frmCorvellum::mnuFind_Click() {
    find_.mnuFind(this);
}

void frmCorvellum::mnuFindNext_Click() {
    find_.mnuFindNext(this);
}

void frmCorvellum::mnuSearch_Click() {
    const QString text = context_.prompts.inputText(
        QStringLiteral("What do you want to find in all files?"), promptTitle);
    if (text.isEmpty())
        return;
    QStandardItem* group = findInAllFiles(model_, state_, text);
    tvMain()->expand(model_.indexFromItem(group));
    tvMain()->scrollTo(model_.indexFromItem(group));
}

void frmCorvellum::mnuAddfile_Click() {
    if (QStandardItem* added =
            commands_.importFiles(selectedNode(), menus_->mnuAFSon->isChecked())) {
        if (QStandardItem* holder = TaskTreeModel::parentNode(added))
            tvMain()->expand(model_.indexFromItem(holder));
        selectNode(added);
        applyAvailability();
    }
}

void frmCorvellum::mnuAddPoint_Click() {
    selectNode(commands_.addTask(selectedNode()));
    applyAvailability();
}

void frmCorvellum::mnuDeleteFile_Click() {
    QStandardItem* next = commands_.deleteNode(selectedNode());
    if (next != nullptr)
        selectNode(next);
    showNode(selectedNode());
    applyAvailability();
}

void frmCorvellum::mnuSort_Click() {
    QStandardItem* selected = selectedNode();
    commands_.sortFiles(selected);
    selectNode(selected);
}

void frmCorvellum::EditTask() {
    QStandardItem* task = selectedNode();
    if (task == nullptr)
        return;
    launcher_.EditTask(*task, this, menus_->mnuEditWithSettings->isChecked());
    applyAvailability();
}

void frmCorvellum::mnuRenameTask_Click() {
    QStandardItem* task = selectedNode();
    if (!commands_.renameTask(task, programFolder()))
        return;
    showNode(task);
    applyAvailability();
}

void frmCorvellum::RunTask() {
    QStandardItem* task = selectedNode();
    if (task == nullptr || launcher_.isRunning())
        return;
    // Its end comes through the event loop, so the commands are held before it can come.
    try {
        launcher_.run(*task, *sbMain_->ProgressBar1(), *sbMain_, [this] { holdCommands(false); });
    } catch (const std::exception& failure) { // no thread could be started for it
        context_.prompts.error(QString::fromStdString(failure.what()), promptTitle);
        return;
    }
    holdCommands(true);
}

void frmCorvellum::mnuStop_Click() {
    launcher_.stop();
}

void frmCorvellum::holdCommands(bool held) {
    if (held) {
        for (QAction* action : findChildren<QAction*>())
            // A menu's own entry stays, so that "Stop" can be reached in the Control menu.
            if (action != menus_->mnuStop && action->menu() == nullptr && action->isEnabled()) {
                heldCommands_.append(action);
                action->setEnabled(false);
            }
    } else {
        for (const QPointer<QAction>& action : std::as_const(heldCommands_))
            if (action)
                action->setEnabled(true);
        heldCommands_.clear();
    }
    tvMain()->setEnabled(!held);
    if (findDialog())
        findDialog()->setEnabled(!held);
    menus_->mnuStop->setEnabled(held);
    if (!held)
        applyAvailability();
}

// The selected file of a task, or the task's first file when the task itself is selected.
void frmCorvellum::PreviewTask() {
    QStandardItem* node = selectedNode();
    if (node == nullptr)
        return;
    const QString path = NodeTag::split(TaskTreeModel::tag(node)).path;
    QStandardItem* task = path.isEmpty() || node->parent() == nullptr ? node : node->parent();
    launcher_.preview(*task, path, this);
}

void frmCorvellum::mnuExec_Click() {
    external_.openFile(txtMain()->shownFile(), settings_.defBrowse);
}

void frmCorvellum::mnuDefBrowse_Click() {
    if (const auto chosen = external_.chooseBrowser(settings_.defBrowse))
        settings_.defBrowse = *chosen;
}

void frmCorvellum::mnuHelp_Click() {
    external_.openHelp();
}

void frmCorvellum::mnuFileMatch_Click() {
    external_.associate();
}

void frmCorvellum::mnuCancelFileMatch_Click() {
    external_.removeAssociation();
}

void frmCorvellum::mnuTool_Click(bool checked) {
    tbMain_->setVisible(checked);
}

void frmCorvellum::mnuStatus_Click(bool checked) {
    sbMain_->setVisible(checked);
}

void frmCorvellum::mnuFont_Click() {
    if (const auto font = context_.prompts.chooseFont(txtMain()->font()))
        txtMain()->setFont(*font);
}

void frmCorvellum::mnuSun_Click(bool checked) {
    tbMain_->setPressed(ToolbarButton::strictDrag, checked);
}

void frmCorvellum::mnuHtml_Click(bool checked) {
    tbMain_->setPressed(ToolbarButton::showHtml, checked);
    txtMain()->forgetShownFile();
    showNode(selectedNode());
}

void frmCorvellum::mnuDrag_Click(bool checked) {
    pane_->setLiveDrag(checked);
}

void frmCorvellum::mnuHomepage_Click() {
    external_.openHomepage();
}

void frmCorvellum::sendFeedback() {
    external_.sendFeedback();
}

void frmCorvellum::mnuAbout_Click() {
    AboutDialog about(context_.shell, this);
    about.exec();
}

void frmCorvellum::mnuXCap_Click() {
    const QString selected = txtMain()->textCursor().selectedText();
    QStandardItem* node = selectedNode();
    if (selected.isEmpty() || model_.rowCount() == 0 || node == nullptr)
        return;
    node->setText(selected.left(setToTitleLength));
    lbCaption()->setText(node->text());
    state_.TaskDirty = true;
    applyAvailability();
}

void frmCorvellum::setViewerWrap(bool on) {
    txtMain()->setWrap(on);
}

void frmCorvellum::notProvidedYet() {
    context_.prompts.information(QStringLiteral("对不起，本功能将在2.8版中提供，请稍等"),
                                 promptTitle);
}

void frmCorvellum::nodeDropped(const QModelIndex& dragged, const QModelIndex& target) {
    const NodeMove::Result result =
        NodeMove::drop(model_, model_.itemFromIndex(dragged), model_.itemFromIndex(target),
                       menus_->mnuSun->isChecked(), state_);
    if (result.outcome != NodeMove::Outcome::Moved)
        return;
    if (QStandardItem* holder = TaskTreeModel::parentNode(result.moved))
        tvMain()->expand(model_.indexFromItem(holder));
    selectNode(result.moved);
    applyAvailability();
}

void frmCorvellum::showTreeMenu(const QPoint& position) {
    const QModelIndex index = tvMain()->indexAt(position);
    if (index.isValid()) {
        tvMain()->setCurrentIndex(index);
        applyAvailability();
    }
    menus_->mnuTree->popup(tvMain()->viewport()->mapToGlobal(position));
}

void frmCorvellum::showViewerMenu(const QPoint& position) {
    updateCaret();
    menus_->mnuXCap->setEnabled(txtMain()->textCursor().hasSelection() && !launcher_.isRunning());
    menus_->mnuTxt->popup(txtMain()->viewport()->mapToGlobal(position));
}

void frmCorvellum::updateCaret() {
    sbMain_->setCaret(txtMain()->caretText());
}

} // namespace morlevant
