#include "mainwindow/SplitBar.h"

#include "mainwindow/Twips.h"

#include <QMouseEvent>

namespace morlevant {

SplitBar::SplitBar(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("picSplit"));
    setCursor(Qt::SplitHCursor);
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::Window);
}

void SplitBar::setLeft(float twips) {
    left_ = twips;
}

void SplitBar::moveBy(float dx) {
    // Raised to the minimum first, then lowered to the right-hand limit, so in a window too
    // narrow for both the right-hand limit wins.
    float next = std::max(left_ + dx, minimumLeft);
    next = std::min(next, twips::fromPixels(window()->width()) - rightMargin);
    left_ = next;
    emit moved(left_);
}

void SplitBar::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    origin_ = twips::fromPixels(event->position().x());
    if (!liveDrag_)
        showDragging(true);
}

void SplitBar::mouseMoveEvent(QMouseEvent* event) {
    if (event->buttons() & Qt::LeftButton)
        moveBy(twips::fromPixels(event->position().x()) - origin_);
}

void SplitBar::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    origin_ = 0;
    if (!liveDrag_)
        showDragging(false);
    emit released();
}

// Without live dragging only the bar moves: it is drawn dark and above the panes while it
// travels, and goes back to the window's colour behind them when let go.
void SplitBar::showDragging(bool dragging) {
    setBackgroundRole(dragging ? QPalette::Dark : QPalette::Window);
    if (dragging)
        raise();
    else
        lower();
}

} // namespace morlevant
