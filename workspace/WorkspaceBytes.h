#pragma once

#include <QByteArray>
#include <QString>
#include <variant>

namespace morlevant {

// The most a workspace file may hold. A node is one short line, so 64 MiB is hundreds of
// thousands of nodes, far beyond any tree a person builds and clicks through; the bound only
// keeps a huge or endless file from filling memory.
inline constexpr qint64 maxWorkspaceBytes = qint64{64} << 20;

// The bytes of the workspace file at path, or a message that names the file and says why it
// cannot be read. Only a regular file of at most maxWorkspaceBytes is read: a named pipe would
// keep the window waiting for ever, and a device such as /dev/zero would never end.
std::variant<QByteArray, QString> readWorkspaceBytes(const QString& path);

} // namespace morlevant
