#include "workspace/TaskTreeModel.h"

#include <functional>
#include <vector>

namespace morlevant {

QString TaskTreeModel::defaultTaskCaption() {
    return QStringLiteral("My Batch Task");
}

TaskTreeModel::TaskTreeModel(QObject* parent) : QStandardItemModel(parent) {}

QStandardItem* TaskTreeModel::createNode(const QString& text, const QString& tag, int image) {
    auto* node = new QStandardItem(text);
    node->setEditable(false);
    setTag(node, tag);
    setImage(node, image);
    return node;
}

QStandardItem* TaskTreeModel::appendNode(QStandardItem* parent, const QString& text,
                                         const QString& tag, int image) {
    QStandardItem* node = createNode(text, tag, image);
    (parent ? parent : invisibleRootItem())->appendRow(node);
    return node;
}

QStandardItem* TaskTreeModel::insertNodeAfter(QStandardItem* sibling, const QString& text,
                                              const QString& tag, int image) {
    QStandardItem* node = createNode(text, tag, image);
    QStandardItem* parent = sibling->parent() ? sibling->parent() : invisibleRootItem();
    parent->insertRow(sibling->row() + 1, node);
    return node;
}

QStandardItem* TaskTreeModel::parentNode(const QStandardItem* node) {
    return node->parent();
}

QString TaskTreeModel::tag(const QStandardItem* node) {
    return node->data(TagRole).toString();
}

void TaskTreeModel::setTag(QStandardItem* node, const QString& tag) {
    node->setData(tag, TagRole);
}

int TaskTreeModel::image(const QStandardItem* node) {
    return node->data(ImageRole).toInt();
}

void TaskTreeModel::setImage(QStandardItem* node, int image) {
    node->setData(image, ImageRole);
}

int TaskTreeModel::selectedImage(const QStandardItem* node) {
    const QVariant selected = node->data(SelectedImageRole);
    return selected.isValid() ? selected.toInt() : image(node);
}

void TaskTreeModel::setSelectedImage(QStandardItem* node, int image) {
    node->setData(image, SelectedImageRole);
}

void TaskTreeModel::setFolderImages(QStandardItem* node) {
    setImage(node, treeImage::closedFolder);
    setSelectedImage(node, treeImage::openFolder);
}

int TaskTreeModel::nodeCount() const {
    return static_cast<int>(nodesInOrder().size());
}

QList<QStandardItem*> TaskTreeModel::nodesInOrder() const {
    // Walked with a stack of its own rather than by recursion, whatever the depth of the tree.
    QList<QStandardItem*> nodes;
    std::vector<QStandardItem*> pending;
    const QStandardItem* root = invisibleRootItem();
    for (int row = root->rowCount() - 1; row >= 0; --row)
        pending.push_back(root->child(row));
    while (!pending.empty()) {
        QStandardItem* node = pending.back();
        pending.pop_back();
        nodes.append(node);
        for (int row = node->rowCount() - 1; row >= 0; --row)
            pending.push_back(node->child(row));
    }
    return nodes;
}

QStandardItem* TaskTreeModel::resetToDefaultTask(int image, int selectedImage) {
    removeRows(0, rowCount());
    QStandardItem* task = appendNode(nullptr, defaultTaskCaption(), {}, image);
    setSelectedImage(task, selectedImage);
    return task;
}

void TaskTreeModel::setImageList(const QList<QIcon>& icons) {
    icons_ = icons;
    if (rowCount() > 0)
        emit dataChanged(index(0, 0), index(rowCount() - 1, 0), {Qt::DecorationRole});
}

QVariant TaskTreeModel::data(const QModelIndex& index, int role) const {
    if (role != Qt::DecorationRole || !index.isValid())
        return QStandardItemModel::data(index, role);
    const QStandardItem* node = itemFromIndex(index);
    const int normal = image(node);
    const int selected = selectedImage(node);
    QIcon icon = normal > treeImage::none && normal < icons_.size() ? icons_[normal] : QIcon();
    // The tree swaps to the selected image while a node is selected: carry it as the icon's
    // Selected mode so the view needs no special painting.
    if (selected != normal && selected > treeImage::none && selected < icons_.size()) {
        const QIcon selectedIcon = icons_[selected];
        for (const QSize& size : selectedIcon.availableSizes())
            icon.addPixmap(selectedIcon.pixmap(size), QIcon::Selected);
    }
    return icon.isNull() ? QVariant() : QVariant(icon);
}

} // namespace morlevant
