#include "mainwindow/desktop/DesktopShell.h"

#include <QDesktopServices>
#include <QProcess>
#include <QStandardPaths>

namespace morlevant {

namespace {

// The desktop's tools finish in well under a second; a hung one must not freeze the window.
constexpr int toolTimeoutMs = 20000;

} // namespace

bool DesktopShell::openUrl(const QUrl& url) {
    return QDesktopServices::openUrl(url);
}

bool DesktopShell::openFolder(const QString& folder) {
    return QDesktopServices::openUrl(QUrl::fromLocalFile(folder));
}

bool DesktopShell::startProgram(const QString& program, const QStringList& arguments) {
    return QProcess::startDetached(program, arguments);
}

bool DesktopShell::runTool(const QString& tool, const QStringList& arguments) {
    const QString program = QStandardPaths::findExecutable(tool);
    if (program.isEmpty())
        return false;
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.setStandardOutputFile(QProcess::nullDevice());
    process.start(program, arguments);
    return process.waitForFinished(toolTimeoutMs) && process.exitStatus() == QProcess::NormalExit &&
           process.exitCode() == 0;
}

} // namespace morlevant
