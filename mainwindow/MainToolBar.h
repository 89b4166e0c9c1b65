#pragma once

#include "mainwindow/icons/ToolbarImageList.h"

#include <QToolBar>
#include <array>

class QAction;

namespace morlevant {

// The buttons of the toolbar by their position, counted from 1 as the toolbar counts them; the
// positions between them (1, 5 to 7, 13) are a gap and separators.
enum class ToolbarButton {
    newTask = 2,
    openTask = 3,
    saveTask = 4,
    importFile = 8,
    addTask = 9,
    editTask = 10,
    runTask = 11,
    deleteNode = 12,
    setTitle = 14,
    sortFiles = 15,
    openIt = 16,
    strictDrag = 17,
    showHtml = 18,
};

// The toolbar `tbMain`: 18 positions, some buttons and some separators. A button tells by the
// image it carries whether its command is available (importFile to deleteNode); a click
// reports the button and the handler decides by that image.
class MainToolBar final : public QToolBar {
    Q_OBJECT

public:
    static constexpr int positionCount = 18;

    explicit MainToolBar(QWidget* parent = nullptr);

    int image(ToolbarButton button) const { return images_.at(slot(button)); }
    void setImage(ToolbarButton button, int image);
    bool isPressed(ToolbarButton button) const;
    void setPressed(ToolbarButton button, bool pressed);
    QAction* action(ToolbarButton button) const { return actions_.at(slot(button)); }
    // Puts the "&Stop" command after the last position, with its image.
    void addStop(QAction* stop);

signals:
    void buttonClicked(ToolbarButton button);

private:
    static std::size_t slot(ToolbarButton button) { return static_cast<std::size_t>(button) - 1; }

    ToolbarImageList imageList_;
    std::array<QAction*, positionCount> actions_{}; // by position, nullptr for a separator
    std::array<int, positionCount> images_{};
};

} // namespace morlevant
