#pragma once

#include <QIcon>
#include <QList>

namespace morlevant {

// The task tree's images by index: 0 a file of unknown type, 1 to 11 the file types of the
// workspace's extension table (".BMP" .. ".TXT"), 12 a closed and 13 an open folder (a node
// holding others).
class TreeImageList final {
public:
    TreeImageList();

    // An index outside the list shows the unknown-file image.
    const QIcon& icon(int image) const;

private:
    QList<QIcon> icons_;
};

} // namespace morlevant
