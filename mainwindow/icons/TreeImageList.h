#pragma once

#include <QIcon>
#include <QList>

namespace morlevant {

// The icons of the task tree's images (see workspace/TreeImage.h).
class TreeImageList final {
public:
    TreeImageList();

    // The icons in index order, for the tree model's decoration; none has a null icon.
    const QList<QIcon>& icons() const { return icons_; }

private:
    QList<QIcon> icons_;
};

} // namespace morlevant
