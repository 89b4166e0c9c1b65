#pragma once

#include <QString>

namespace morlevant {

// A tree node's Tag: empty for a task; for a file either the full path alone, or a remark, a
// NUL character and the full path. The viewer, find and the workspace file all split it at its
// first NUL.
struct NodeTag {
    QString remark;
    QString path;

    // Splits at the first NUL; without one the whole Tag is the path and the remark is empty.
    static NodeTag split(const QString& tag);
    // The remark, a NUL and the path, the form a loaded file node always has.
    QString joined() const;
};

} // namespace morlevant
