#pragma once

#include "mainwindow/ToolbarImageList.h"

#include <QToolBar>
#include <array>

class QAction;

namespace morlevant {

// The toolbar `tbMain`: 18 positions counted from 1, some buttons and some separators. A
// button tells by the image it carries whether its command is available (positions 8 to 12);
// a click reports the position and the handler decides by that image.
class MainToolBar final : public QToolBar {
    Q_OBJECT

public:
    static constexpr int positionCount = 18;

    explicit MainToolBar(QWidget* parent = nullptr);

    int image(int position) const { return images_.at(position - 1); }
    void setImage(int position, int image);
    bool isPressed(int position) const;
    void setPressed(int position, bool pressed);
    // The button at a position, nullptr for a separator.
    QAction* button(int position) const { return buttons_.at(position - 1); }

signals:
    void buttonClicked(int position);

private:
    ToolbarImageList imageList_;
    std::array<QAction*, positionCount> buttons_{};
    std::array<int, positionCount> images_{};
};

} // namespace morlevant
