#include "mainwindow/desktop/ExternalPrograms.h"

#include "mainwindow/MakerLinks.h"
#include "mainwindow/desktop/FileAssociation.h"
#include "platform/Prompts.h"
#include "platform/Shell.h"
#include "taskdef/InstallLayout.h"
#include "workspace/FileTypes.h"

#include <QDir>
#include <QFileInfo>
#include <QUrl>

namespace morlevant {

namespace {

QString native(const QString& path) {
    return QDir::toNativeSeparators(path);
}

} // namespace

ExternalPrograms::ExternalPrograms(Prompts& prompts, Shell& shell, QString programPath)
    : prompts_(prompts), shell_(shell), programPath_(std::move(programPath)) {}

QString ExternalPrograms::programFor(const QString& path, const QString& browser) {
    return isNonTextFile(path) ? QString() : browser;
}

void ExternalPrograms::openFile(const QString& path, const QString& browser) {
    if (path.isEmpty())
        return;
    const QString program = programFor(path, browser);
    if (program.isEmpty())
        openDefault(path, true);
    else if (!shell_.startProgram(program, {path}))
        refused(QStringLiteral("%1 could not be started to open %2.")
                    .arg(native(program), native(path)));
}

std::optional<QString> ExternalPrograms::chooseBrowser(const QString& current) {
#ifdef Q_OS_WIN
    const QString filter = QStringLiteral("executable file(*.exe)");
#else
    // Programs here carry no extension: any file the user may run will do.
    const QString filter = QStringLiteral("executable file(*)");
#endif
    const QString chosen = prompts_.openFileName(
        {QStringLiteral("select browser "), filter,
         current.isEmpty() ? QString() : QFileInfo(current).absolutePath(), QString()});
    if (chosen.isEmpty())
        return std::nullopt;
    const QFileInfo program(chosen);
    if (!program.isFile() || !program.isExecutable()) {
        refused(QStringLiteral("%1 is not a program: the files stay with %2.")
                    .arg(native(chosen), current.isEmpty() ? QStringLiteral("their default program")
                                                           : native(current)));
        return std::nullopt;
    }
    return chosen;
}

void ExternalPrograms::openFolder(const QString& folder) {
    if (!shell_.openFolder(folder))
        refused(QStringLiteral("No file manager on this desktop opens %1.").arg(native(folder)));
}

void ExternalPrograms::openHelp() {
    const QString page = findHelpPage(QFileInfo(programPath_).absolutePath());
    if (page.isEmpty())
        refused(QStringLiteral("The help page is missing: it belongs in %1.")
                    .arg(native(QString::fromStdString(installedDataFolder(
                                    QFileInfo(programPath_).absolutePath().toStdString())) +
                                "/help")));
    else
        openDefault(page, true);
}

void ExternalPrograms::openHomepage() {
    openDefault(QString::fromLatin1(maker::homepage), false);
}

void ExternalPrograms::sendFeedback() {
    openDefault(maker::feedbackMail(), false);
}

void ExternalPrograms::associate() {
    changeAssociation(&FileAssociation::associate);
}

void ExternalPrograms::removeAssociation() {
    changeAssociation(&FileAssociation::remove);
}

void ExternalPrograms::changeAssociation(FileAssociation::Outcome (FileAssociation::*change)()) {
    FileAssociation association(shell_, programPath_);
    try {
        prompts_.information(FileAssociation::message((association.*change)()), promptTitle);
    } catch (const FileAssociationError& error) {
        prompts_.error(error.text(), promptTitle);
    }
}

QString ExternalPrograms::findHelpPage(const QString& programFolder) {
    for (const QString& folder :
         {programFolder,
          QString::fromStdString(installedDataFolder(programFolder.toStdString()))}) {
        const QString page = folder + "/help/index.html";
        if (QFileInfo(page).isFile())
            return page;
    }
    return {};
}

void ExternalPrograms::openDefault(const QString& target, bool isFile) {
    const QUrl url = isFile ? QUrl::fromLocalFile(target) : QUrl(target);
    if (!shell_.openUrl(url))
        refused(QStringLiteral("No program on this desktop opens %1.")
                    .arg(isFile ? native(target) : target));
}

void ExternalPrograms::refused(const QString& text) {
    prompts_.error(text, promptTitle);
}

} // namespace morlevant
