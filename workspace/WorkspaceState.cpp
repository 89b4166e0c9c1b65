#include "workspace/WorkspaceState.h"

#include "MorlevantVersion.h"

#include <QDir>

namespace morlevant {

namespace {

const QString productTitle = QStringLiteral("Morlevant v") + QLatin1StringView(programVersion);

} // namespace

void WorkspaceState::setTaskFile(const QString& path) {
    TaskFileName = path;
    const QString native = QDir::toNativeSeparators(path);
    TaskDir = native.left(native.lastIndexOf(QDir::separator()) + 1);
    HasTaskFile = true;
}

void WorkspaceState::clear() {
    *this = WorkspaceState();
}

QString WorkspaceState::windowTitle() const {
    return HasTaskFile ? productTitle + " - " + TaskFileName : productTitle;
}

} // namespace morlevant
