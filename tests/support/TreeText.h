#pragma once

#include "tests/support/QStringPrinter.h"
#include "workspace/TaskTreeModel.h"

namespace morlevant::testing {

// The tree as one line: captions in order, each node's children in brackets, for example
// "A[a1 a2] B".
inline QString treeText(const QStandardItem* parent) {
    QStringList parts;
    for (int row = 0; row < parent->rowCount(); ++row) {
        const QStandardItem* node = parent->child(row);
        parts.append(node->hasChildren() ? node->text() + "[" + treeText(node) + "]"
                                         : node->text());
    }
    return parts.join(' ');
}

inline QString treeText(const TaskTreeModel& model) {
    return treeText(model.invisibleRootItem());
}

// Builds a tree from the same notation; a caption ending in ".txt" becomes a file node whose
// Tag is folder + caption. Captions hold no blanks or brackets.
inline void buildTree(TaskTreeModel& model, const QString& text, const QString& folder = "/data/") {
    QList<QStandardItem*> parents{nullptr};
    QString caption;
    const auto flush = [&] {
        if (caption.isEmpty())
            return;
        const bool file = caption.endsWith(".txt");
        model.appendNode(parents.last(), caption, file ? folder + caption : QString(),
                         file ? 11 : 0);
        caption.clear();
    };
    for (const QChar c : text) {
        if (c == '[') {
            flush();
            QStandardItem* holder = parents.last() ? parents.last() : model.invisibleRootItem();
            parents.append(holder->child(holder->rowCount() - 1));
        } else if (c == ']') {
            flush();
            parents.removeLast();
        } else if (c == ' ') {
            flush();
        } else {
            caption += c;
        }
    }
    flush();
}

// The node reached by captions from the top, e.g. find(model, {"A", "a1.txt"}).
inline QStandardItem* find(const TaskTreeModel& model, const QStringList& captions) {
    QStandardItem* node = model.invisibleRootItem();
    for (const QString& caption : captions) {
        QStandardItem* next = nullptr;
        for (int row = 0; row < node->rowCount() && !next; ++row)
            if (node->child(row)->text() == caption)
                next = node->child(row);
        if (!next)
            return nullptr;
        node = next;
    }
    return node;
}

} // namespace morlevant::testing
