#include "app/WindowOptions.h"

#include "MorlevantVersion.h"

#include <QCommandLineParser>

namespace morlevant {

namespace {

const char help[] =
    "Usage: morlevant [OPTION]... [WORKSPACE]\n"
    "Opens the window of Morlevant, which edits many plain-text files in one batch, on the\n"
    "workspace file WORKSPACE (*.tsk) when one is named. A task is run with \"Run Task\";\n"
    "morlevant-run runs one without a window.\n"
    "\n"
    "  -h, --help     print this help\n"
    "  -v, --version  print the version\n"
    "\n"
    "Qt's options, such as -platform NAME and -style NAME, are passed on to Qt.\n"
    "Exit status: 0, or 2 when the command line is wrong.\n";

// The options QGuiApplication and QApplication read from the command line; the first group
// takes a value.
const char* const qtValueOptions[] = {"platform",        "platformpluginpath",
                                      "platformtheme",   "plugin",
                                      "qwindowgeometry", "geometry",
                                      "qwindowtitle",    "title",
                                      "qwindowicon",     "icon",
                                      "display",         "session",
                                      "style",           "stylesheet",
                                      "qmljsdebugger"};
const char* const qtFlagOptions[] = {"reverse", "nograb", "dograb", "sync", "widgetcount"};

void addQtOptions(QCommandLineParser& parser) {
    const auto add = [&parser](const char* name, const QString& valueName) {
        QCommandLineOption option(QString::fromLatin1(name), QString(), valueName);
        option.setFlags(QCommandLineOption::HiddenFromHelp);
        parser.addOption(option);
    };
    for (const char* name : qtValueOptions)
        add(name, QStringLiteral("value"));
    for (const char* name : qtFlagOptions)
        add(name, QString());
}

} // namespace

WindowOptions readWindowOptions(const QStringList& arguments) {
    QCommandLineParser parser;
    // Qt's options are written with one dash: -platform is one option, not eight letters.
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    const QCommandLineOption helpOption({QStringLiteral("h"), QStringLiteral("help")}, QString());
    const QCommandLineOption versionOption({QStringLiteral("v"), QStringLiteral("version")},
                                           QString());
    parser.addOption(helpOption);
    parser.addOption(versionOption);
    addQtOptions(parser);

    if (!parser.parse(arguments))
        return {WindowOptions::Action::UsageError,
                {},
                QStringLiteral("morlevant: %1 (morlevant --help shows the usage)\n")
                    .arg(parser.errorText())};
    if (parser.isSet(helpOption))
        return {WindowOptions::Action::ShowHelp, {}, QString::fromUtf8(help)};
    if (parser.isSet(versionOption))
        return {WindowOptions::Action::ShowVersion,
                {},
                QStringLiteral("morlevant %1\n").arg(QString::fromLatin1(programVersion))};
    // A path with blanks may reach us split into several arguments: they are one path.
    return {WindowOptions::Action::Start, parser.positionalArguments().join(u' '), {}};
}

} // namespace morlevant
