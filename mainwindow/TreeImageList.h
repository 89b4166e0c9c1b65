#pragma once

#include <QIcon>
#include <QList>

namespace morlevant {

// The task tree's images by index: 0 none (a file of unknown type, a task), 1 to 11 the file types
// of the workspace's extension table (".BMP" .. ".TXT"), 12 a closed and 13 an open folder (a node
// holding others).
class TreeImageList final {
public:
    TreeImageList();

    // The images in index order, for the tree model's decoration.
    const QList<QIcon>& icons() const { return icons_; }

private:
    QList<QIcon> icons_;
};

} // namespace morlevant
