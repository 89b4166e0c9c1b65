#include "DesktopShell.h"

#include <QDesktopServices>
#include <QProcess>

namespace morlevant {

bool DesktopShell::openUrl(const QUrl& url) {
    return QDesktopServices::openUrl(url);
}

bool DesktopShell::openFolder(const QString& folder) {
    return QDesktopServices::openUrl(QUrl::fromLocalFile(folder));
}

bool DesktopShell::startProgram(const QString& program, const QStringList& arguments) {
    return QProcess::startDetached(program, arguments);
}

} // namespace morlevant
