#pragma once

#include <QPersistentModelIndex>
#include <QTreeView>

class QMimeData;

namespace morlevant {

// The task tree `tvMain`. Besides showing the model it carries a node dragged with the left
// button to another node: it remembers the node pressed (`DragNode`), highlights the node
// under the pointer while dragging, and reports the drop; what a drop does is the owner's.
class TaskTreeView final : public QTreeView {
    Q_OBJECT

public:
    explicit TaskTreeView(QWidget* parent = nullptr);

    // What a drag of DragNode carries: this view's mark and nothing of the node.
    QMimeData* nodeDragData() const;

signals:
    // A node was dropped on target (invalid when dropped on empty space).
    void nodeDropped(const QModelIndex& dragged, const QModelIndex& target);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void drawRow(QPainter* painter, const QStyleOptionViewItem& option,
                 const QModelIndex& index) const override;

private:
    void setDropHighlight(const QModelIndex& index);
    bool isOwnDrag(const QMimeData* mime) const;

    QPersistentModelIndex DragNode;
    QPersistentModelIndex dropHighlight_;
    QPoint pressPosition_;
};

} // namespace morlevant
