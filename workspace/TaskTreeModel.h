#pragma once

#include "workspace/TreeImage.h"

#include <QIcon>
#include <QList>
#include <QStandardItemModel>

namespace morlevant {

// The workspace tree that `tvMain` shows: tasks are the top-level nodes, files (and anything
// the user moves there) lie below them. Each node is a QStandardItem whose display text is the
// node's Text; Tag, Image and SelectedImage live in the roles below.
class TaskTreeModel : public QStandardItemModel {
    Q_OBJECT

public:
    enum Role {
        TagRole = Qt::UserRole + 1, // QString: see NodeTag
        ImageRole,                  // int: a treeImage index, none for no icon
        SelectedImageRole,          // int: the index while selected; unset means ImageRole
    };

    // Caption of the task a new or empty workspace starts with.
    static QString defaultTaskCaption();

    explicit TaskTreeModel(QObject* parent = nullptr);

    // Adds a node as the last child of parent (nullptr: a top-level node) and returns it. The
    // selected image is left unset, so the node shows its image when selected too.
    QStandardItem* appendNode(QStandardItem* parent, const QString& text, const QString& tag = {},
                              int image = treeImage::none);
    // Adds a node right after sibling, under the same parent.
    QStandardItem* insertNodeAfter(QStandardItem* sibling, const QString& text,
                                   const QString& tag = {}, int image = treeImage::none);
    // Creates a node that is not yet in the tree, for callers that place it themselves.
    static QStandardItem* createNode(const QString& text, const QString& tag = {},
                                     int image = treeImage::none);

    // nullptr for the invisible root (a top-level node's parent).
    static QStandardItem* parentNode(const QStandardItem* node);
    static bool isTopLevel(const QStandardItem* node) { return parentNode(node) == nullptr; }

    static QString tag(const QStandardItem* node);
    static void setTag(QStandardItem* node, const QString& tag);
    static int image(const QStandardItem* node);
    static void setImage(QStandardItem* node, int image);
    static int selectedImage(const QStandardItem* node);
    static void setSelectedImage(QStandardItem* node, int image);
    // The images of a task or of a node holding others: a closed folder, open while selected.
    static void setFolderImages(QStandardItem* node);

    // Every node of the tree, tasks and files, at any depth.
    int nodeCount() const;
    // Every node in pre-order: a node, then its whole subtree, then its next sibling.
    QList<QStandardItem*> nodesInOrder() const;
    // Empties the tree and adds the one task a new workspace holds ("My Batch Task").
    QStandardItem* resetToDefaultTask(int image, int selectedImage);

    // Icons by index, used for the decoration role; index 0 and unknown indices show none.
    void setImageList(const QList<QIcon>& icons);

    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

private:
    QList<QIcon> icons_;
};

} // namespace morlevant
