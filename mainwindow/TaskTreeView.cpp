#include "mainwindow/TaskTreeView.h"

#include <QApplication>
#include <QCoreApplication>
#include <QDrag>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>

namespace morlevant {

namespace {

// Marks a drag as one of the tree's own nodes; the node itself is the view's DragNode.
const QString nodeMimeType = QStringLiteral("application/x-morlevant-node");

// Which view of which running program the drag left, so that a node dragged from another
// window is never taken for this one's.
QByteArray dragOrigin(const TaskTreeView* view) {
    return QByteArray::number(QCoreApplication::applicationPid()) + ' ' +
           QByteArray::number(reinterpret_cast<quintptr>(view));
}

} // namespace

TaskTreeView::TaskTreeView(QWidget* parent) : QTreeView(parent) {
    setObjectName(QStringLiteral("tvMain"));
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setContextMenuPolicy(Qt::CustomContextMenu);
    viewport()->setAcceptDrops(true);
}

void TaskTreeView::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        DragNode = indexAt(event->position().toPoint());
        pressPosition_ = event->position().toPoint();
    }
    QTreeView::mousePressEvent(event);
}

void TaskTreeView::mouseMoveEvent(QMouseEvent* event) {
    const bool draggable = (event->buttons() & Qt::LeftButton) && DragNode.isValid();
    if (!draggable || (event->position().toPoint() - pressPosition_).manhattanLength() <
                          QApplication::startDragDistance()) {
        QTreeView::mouseMoveEvent(event);
        return;
    }
    auto* drag = new QDrag(this);
    drag->setMimeData(nodeDragData());
    drag->setPixmap(model()->data(DragNode, Qt::DecorationRole).value<QIcon>().pixmap(16, 16));
    drag->exec(Qt::MoveAction);
    setDropHighlight({});
}

QMimeData* TaskTreeView::nodeDragData() const {
    auto* mime = new QMimeData;
    mime->setData(nodeMimeType, dragOrigin(this));
    return mime;
}

bool TaskTreeView::isOwnDrag(const QMimeData* mime) const {
    return DragNode.isValid() && mime->data(nodeMimeType) == dragOrigin(this);
}

void TaskTreeView::dragEnterEvent(QDragEnterEvent* event) {
    if (isOwnDrag(event->mimeData()))
        event->acceptProposedAction();
    else
        event->ignore();
}

void TaskTreeView::dragMoveEvent(QDragMoveEvent* event) {
    if (!isOwnDrag(event->mimeData())) {
        event->ignore();
        return;
    }
    setDropHighlight(indexAt(event->position().toPoint()));
    event->acceptProposedAction();
}

void TaskTreeView::dragLeaveEvent(QDragLeaveEvent*) {
    setDropHighlight({});
}

void TaskTreeView::dropEvent(QDropEvent* event) {
    if (!isOwnDrag(event->mimeData())) {
        event->ignore();
        return;
    }
    const QModelIndex target = indexAt(event->position().toPoint());
    setDropHighlight({});
    // The owner moves the node; the view's own move would copy and delete through the model.
    event->setDropAction(Qt::IgnoreAction);
    event->accept();
    emit nodeDropped(DragNode, target);
}

void TaskTreeView::setDropHighlight(const QModelIndex& index) {
    if (dropHighlight_ == index)
        return;
    dropHighlight_ = index;
    viewport()->update();
}

void TaskTreeView::drawRow(QPainter* painter, const QStyleOptionViewItem& option,
                           const QModelIndex& index) const {
    QTreeView::drawRow(painter, option, index);
    if (!dropHighlight_.isValid() || index != dropHighlight_)
        return;
    painter->save();
    QColor frame = palette().color(QPalette::Highlight);
    painter->setPen(QPen(frame, 1.5));
    frame.setAlpha(48);
    painter->setBrush(frame);
    painter->drawRoundedRect(visualRect(index).adjusted(1, 1, -1, -1), 3, 3);
    painter->restore();
}

} // namespace morlevant
