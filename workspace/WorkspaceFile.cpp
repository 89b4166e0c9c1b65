#include "WorkspaceFile.h"

namespace morlevant {

QByteArray WorkspaceFile::write(TaskTreeModel&, const QString&) {
    return {};
}

std::optional<QString> WorkspaceFile::read(TaskTreeModel&, const QByteArray&, const QString&) {
    return std::nullopt;
}

QString WorkspaceFile::FNtoSave(const QString& path, const QString&) {
    return path;
}

QString WorkspaceFile::fullPath(const QString& storedPath, const QString&) {
    return storedPath;
}

std::optional<QString> saveWorkspace(TaskTreeModel&, WorkspaceState&) {
    return std::nullopt;
}

std::optional<QString> loadWorkspace(TaskTreeModel&, WorkspaceState&, const QString&) {
    return std::nullopt;
}

} // namespace morlevant
