// The window program's command line, read before there is an application or a display.
#include "app/WindowOptions.h"

#include "MorlevantVersion.h"
#include "tests/support/QStringPrinter.h"

#include <gtest/gtest.h>

namespace morlevant {
namespace {

using Action = WindowOptions::Action;

WindowOptions read(QStringList arguments) {
    arguments.prepend("/usr/bin/morlevant");
    return readWindowOptions(arguments);
}

TEST(WindowOptions, NamesTheWorkspaceToOpen) {
    const struct {
        QStringList arguments;
        QString workspace;
    } cases[] = {
        {{}, ""},
        {{"/home/u/Example.tsk"}, "/home/u/Example.tsk"},
        // A path with blanks that reached us in pieces is one path.
        {{"/home/u/my", "work.tsk"}, "/home/u/my work.tsk"},
        {{"--", "-odd.tsk"}, "-odd.tsk"},
        // Qt's options are Qt's, with their values.
        {{"-platform", "offscreen", "-reverse", "a.tsk", "-style=fusion"}, "a.tsk"},
    };
    for (const auto& c : cases) {
        const WindowOptions options = read(c.arguments);
        EXPECT_EQ(options.action, Action::Start) << c.arguments.join(' ').toStdString();
        EXPECT_EQ(options.workspace, c.workspace);
    }
}

TEST(WindowOptions, HelpAndVersionAreAnsweredWhateverElseIsGiven) {
    for (const QStringList& arguments :
         {QStringList{"--help"}, QStringList{"-h", "a.tsk"}, QStringList{"a.tsk", "--help"}}) {
        const WindowOptions options = read(arguments);
        EXPECT_EQ(options.action, Action::ShowHelp);
        EXPECT_TRUE(options.text.startsWith("Usage: morlevant [OPTION]... [WORKSPACE]\n"));
        EXPECT_TRUE(options.text.contains("\"Run Task\"")) << "without its accelerator";
    }
    for (const QStringList& arguments : {QStringList{"--version"}, QStringList{"-v"}}) {
        const WindowOptions options = read(arguments);
        EXPECT_EQ(options.action, Action::ShowVersion);
        EXPECT_EQ(options.text, QString("morlevant ") + programVersion + "\n");
    }
}

TEST(WindowOptions, AnOptionItDoesNotKnowIsAUsageError) {
    for (const QStringList& arguments : {QStringList{"--fast"}, QStringList{"-x", "a.tsk"},
                                         QStringList{"--version=2"}, QStringList{"-platform"}}) {
        const WindowOptions options = read(arguments);
        EXPECT_EQ(options.action, Action::UsageError) << arguments.join(' ').toStdString();
        EXPECT_TRUE(options.text.startsWith("morlevant: ")) << options.text.toStdString();
        EXPECT_TRUE(options.text.endsWith("(morlevant --help shows the usage)\n"));
    }
}

} // namespace
} // namespace morlevant
