#pragma once

#include <QString>
#include <QStringList>

namespace morlevant {

// What the window program's command line asks for. It is read before the application object
// exists, so that --help, --version and a wrong command line are answered without a display.
struct WindowOptions {
    enum class Action { Start, ShowHelp, ShowVersion, UsageError };

    Action action = Action::Start;
    // Start: the workspace file to open, empty for none.
    QString workspace;
    // ShowHelp, ShowVersion: what goes to standard output; UsageError: to standard error.
    QString text;
};

// `arguments` with the program name first. Qt's own options (-platform, -style...) are let
// through for the application object to read.
WindowOptions readWindowOptions(const QStringList& arguments);

// The exit code of a wrong command line; a command that ran is 0.
inline constexpr int usageErrorCode = 2;

} // namespace morlevant
