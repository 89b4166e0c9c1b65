// morlevant: the window program, started on the workspace its command line names.
#include "MorlevantVersion.h"
#include "app/ProgramSurroundingsFromQt.h"
#include "app/WindowOptions.h"
#include "editor/TaskEditorDialog.h"
#include "mainwindow/QtPrompts.h"
#include "mainwindow/desktop/DesktopShell.h"
#include "mainwindow/frmCorvellum.h"
#include "settings/SettingsStore.h"

#include <QApplication>
#include <cstdio>

int main(int argc, char** argv) {
    // Read before QApplication, which needs a display.
    QStringList commandLine;
    for (int i = 0; i < argc; ++i)
        commandLine.append(QString::fromLocal8Bit(argv[i]));
    const morlevant::WindowOptions options = morlevant::readWindowOptions(commandLine);
    switch (options.action) {
    case morlevant::WindowOptions::Action::ShowHelp:
    case morlevant::WindowOptions::Action::ShowVersion:
        std::fputs(options.text.toLocal8Bit().constData(), stdout);
        return 0;
    case morlevant::WindowOptions::Action::UsageError:
        std::fputs(options.text.toLocal8Bit().constData(), stderr);
        return morlevant::usageErrorCode;
    case morlevant::WindowOptions::Action::Start:
        break;
    }

    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Morlevant"));
    QApplication::setApplicationVersion(QString::fromLatin1(morlevant::programVersion));

    const std::string programFolder =
        morlevant::resolveProgramFolder(morlevant::programSurroundingsFromQt());
    // A failure here shows as a clear message when a merge writes there.
    morlevant::createMergeFolder(programFolder);

    morlevant::QtPrompts prompts;
    morlevant::DesktopShell shell;
    morlevant::SettingsStore settings;
    const auto openTaskEditor = [&prompts](QWidget* parent, const QString& taskPath,
                                           const morlevant::TaskPageSettings* shown,
                                           const std::vector<std::string>& files) {
        return morlevant::TaskEditorDialog::edit(prompts, parent, taskPath, shown, files);
    };
    morlevant::frmCorvellum window(
        {prompts, shell, settings, openTaskEditor, QString::fromStdString(programFolder)});
    prompts.setParent(&window);
    window.startUp(options.workspace);
    return QApplication::exec();
}
