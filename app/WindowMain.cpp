// morlevant: the window program. The whole command line is one workspace path.
#include "MorlevantVersion.h"
#include "app/ProgramSurroundingsFromQt.h"
#include "editor/TaskEditorDialog.h"
#include "mainwindow/QtPrompts.h"
#include "mainwindow/desktop/DesktopShell.h"
#include "mainwindow/frmCorvellum.h"
#include "settings/SettingsStore.h"

#include <QApplication>

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Morlevant"));
    QApplication::setApplicationVersion(QString::fromLatin1(morlevant::programVersion));

    // A path with blanks may reach us split into several arguments: they are one path.
    const QStringList arguments = QApplication::arguments().mid(1);
    const QString workspace = arguments.join(u' ');

    const std::string programFolder =
        morlevant::resolveProgramFolder(morlevant::programSurroundingsFromQt());
    // A failure here shows as a clear message when a merge writes there.
    morlevant::createMergeFolder(programFolder);

    morlevant::QtPrompts prompts;
    morlevant::DesktopShell shell;
    morlevant::SettingsStore settings;
    const auto openTaskEditor = [&prompts](QWidget* parent, const QString& taskPath) {
        return morlevant::TaskEditorDialog::edit(prompts, parent, taskPath);
    };
    morlevant::frmCorvellum window(
        {prompts, shell, settings, openTaskEditor, QString::fromStdString(programFolder)});
    prompts.setParent(&window);
    window.startUp(workspace);
    return QApplication::exec();
}
