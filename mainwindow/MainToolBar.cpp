#include "mainwindow/MainToolBar.h"

#include <QAction>

namespace morlevant {

namespace {

struct Position {
    const char* key; // the button's name
    const char* tip;
    int image; // 0 for a separator
    bool toggle;
};

// In position order; position 1 carries no command and the toolbar starts with a gap there.
constexpr std::array<Position, MainToolBar::positionCount> positions{{
    {"", "", 0, false},
    {"tbNew", "New Task", toolbarImage::newTask, false},
    {"tbOpen", "Open Task", toolbarImage::openTask, false},
    {"tbSave", "Save Task", toolbarImage::saveTask, false},
    {"", "", 0, false},
    {"", "", 0, false},
    {"", "", 0, false},
    {"tbAddFile", "Improt File", toolbarImage::importFile, false},
    {"tbAddPoint", "Add Task", toolbarImage::addTask, false},
    {"tbDeletePoint", "Edit Task", toolbarImage::editTask, false},
    {"tbMatch", "Run Task", toolbarImage::runTask, false},
    {"tbDeleteFile", "Delete Task Or File", toolbarImage::deleteNode, false},
    {"", "", 0, false},
    {"tbSetCap", "Select To Filename", toolbarImage::setTitle, false},
    {"", "Sort File", toolbarImage::sortFiles, false}, // the one button without a key
    {"tbExec", "Open It", toolbarImage::openIt, false},
    {"tbSon", "Strict Drag", toolbarImage::strictDrag, true},
    {"tbHtml", "Show Html", toolbarImage::showHtml, true},
}};

} // namespace

MainToolBar::MainToolBar(QWidget* parent) : QToolBar(parent) {
    setObjectName(QStringLiteral("tbMain"));
    setWindowTitle(QStringLiteral("Tool bars"));
    setMovable(false);
    setFloatable(false);
    setIconSize(QSize(24, 24));
    for (int index = 0; index < positionCount; ++index) {
        const Position& position = positions[index];
        images_[index] = position.image;
        if (position.image == 0) {
            addSeparator();
            continue;
        }
        QAction* action =
            addAction(imageList_.icon(position.image), QString::fromUtf8(position.tip));
        action->setObjectName(QString::fromUtf8(position.key));
        action->setToolTip(QString::fromUtf8(position.tip));
        action->setCheckable(position.toggle);
        const auto button = static_cast<ToolbarButton>(index + 1);
        connect(action, &QAction::triggered, this, [this, button] { emit buttonClicked(button); });
        actions_[index] = action;
    }
}

void MainToolBar::setImage(ToolbarButton button, int image) {
    images_.at(slot(button)) = image;
    action(button)->setIcon(imageList_.icon(image));
}

bool MainToolBar::isPressed(ToolbarButton button) const {
    return action(button)->isChecked();
}

void MainToolBar::setPressed(ToolbarButton button, bool pressed) {
    action(button)->setChecked(pressed);
}

void MainToolBar::addStop(QAction* stop) {
    addSeparator();
    stop->setIcon(imageList_.icon(toolbarImage::stopRun));
    addAction(stop);
}

} // namespace morlevant
