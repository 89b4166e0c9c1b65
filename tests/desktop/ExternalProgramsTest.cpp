#include "mainwindow/desktop/ExternalPrograms.h"

#include "taskdef/InstallLayout.h"
#include "tests/support/QStringPrinter.h"
#include "tests/support/RecordingShell.h"
#include "tests/support/ScriptedPrompts.h"
#include "tests/support/TempDir.h"

#include <QFile>
#include <gtest/gtest.h>

namespace morlevant {
namespace {

using testing::RecordingShell;
using testing::ScriptedPrompts;

TEST(OpenRules, TheNineKindsGoToTheirDefaultProgramOthersToTheChosenOne) {
    const QString browser = "/usr/bin/viewer";
    for (const char* path : {"/d/song.wav", "/d/SONG.WAV", "/d/a.bmp", "/d/a.zip", "/d/setup.exe",
                             "/d/help.chm", "/d/photo.JPG", "/d/a.gif", "/d/a.mp3", "/d/a.mid"})
        EXPECT_EQ(ExternalPrograms::programFor(path, browser), QString()) << path;
    for (const char* path : {"/d/notes.txt", "/d/page.html", "/d/page.htm", "/d/README",
                             "/d/a.jpeg", "/d/wav", "/d/x.wav.txt"})
        EXPECT_EQ(ExternalPrograms::programFor(path, browser), browser) << path;
}

class Outside : public ::testing::Test {
protected:
    ScriptedPrompts prompts;
    RecordingShell shell;
    ExternalPrograms programs{prompts, shell, "/opt/morlevant/bin/morlevant"};
};

TEST_F(Outside, WhatTheDesktopRefusesIsSaidInOneMessageEach) {
    shell.refuses = true;
    programs.openFile(QString(), "/usr/bin/viewer"); // no file shown: nothing to say
    programs.openFile("/d/notes.txt", QString());
    programs.openFile("/d/notes.txt", "/usr/bin/viewer");
    programs.openFolder("/home/u/outcome/merge");
    programs.openHomepage();
    programs.sendFeedback();
    EXPECT_EQ(prompts.asked,
              QStringList({
                  "error|Morlevant|No program on this desktop opens /d/notes.txt.",
                  "error|Morlevant|/usr/bin/viewer could not be started to open /d/notes.txt.",
                  "error|Morlevant|No file manager on this desktop opens /home/u/outcome/merge.",
                  "error|Morlevant|No program on this desktop opens https://morlevant.example.org.",
                  "error|Morlevant|No program on this desktop opens "
                  "mailto:feedback@morlevant.example.org?subject=Morlevant%20Feedback.",
              }));
}

TEST_F(Outside, ChoosesOnlyAProgramAndKeepsTheOldOneOtherwise) {
    testing::TempDir dir;
    const QString tool = QString::fromStdString(dir.file("viewer"));
    const QString text = QString::fromStdString(dir.file("notes.txt"));
    for (const QString& path : {tool, text})
        testing::writeBytes(path.toStdString(), "#!/bin/sh\n");
    QFile(tool).setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    QFile(text).setPermissions(QFile::ReadOwner | QFile::WriteOwner);

    prompts.fileNames.enqueue({});
    EXPECT_EQ(programs.chooseBrowser("/usr/bin/old"), std::nullopt);
    prompts.fileNames.enqueue({text});
    EXPECT_EQ(programs.chooseBrowser("/usr/bin/old"), std::nullopt);
    prompts.fileNames.enqueue({tool});
    EXPECT_EQ(programs.chooseBrowser("/usr/bin/old"), tool);

    EXPECT_EQ(prompts.asked[0], "open file|select browser |executable file(*)");
    EXPECT_EQ(prompts.messages(),
              QStringList{"error|Morlevant|" + text +
                          " is not a program: the files stay with /usr/bin/old."});
    EXPECT_EQ(prompts.dialogs.size(), 3);
    EXPECT_EQ(prompts.dialogs.at(0).directory, "/usr/bin");
}

TEST(HelpPage, IsFoundBesideTheProgramAndWhereTheInstallPutsIt) {
    testing::TempDir dir;
    const QString buildTree = QString::fromStdString(dir.file("build/app"));
    testing::writeBytes(dir.file("build/app/help/index.html"), "<html/>");
    EXPECT_EQ(ExternalPrograms::findHelpPage(buildTree), buildTree + "/help/index.html");

    const std::string bin = dir.file("prefix/bin");
    std::filesystem::create_directories(bin);
    EXPECT_EQ(ExternalPrograms::findHelpPage(QString::fromStdString(bin)), QString());
    const std::string installed = installedDataFolder(bin) + "/help/index.html";
    testing::writeBytes(installed, "<html/>");
    EXPECT_EQ(ExternalPrograms::findHelpPage(QString::fromStdString(bin)),
              QString::fromStdString(installed));
}

} // namespace
} // namespace morlevant
