#include "mainwindow/desktop/FileAssociation.h"

#include "mainwindow/desktop/ExternalPrograms.h"
#include "mainwindow/desktop/MimeAppsList.h"
#include "taskdef/InstallLayout.h"
#include "tests/support/DesktopFolders.h"
#include "tests/support/QStringPrinter.h"
#include "tests/support/RecordingShell.h"
#include "tests/support/ScriptedPrompts.h"
#include "tests/support/TempDir.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

namespace morlevant {
namespace {

using namespace testing;

const QString matched = "information|Morlevant|FileMatch succeed，you can open it directly next "
                        "time!";
const QString alreadyMatched = "information|Morlevant|*.tsk file matched";
const QString cancelled = "information|Morlevant|Cancel file match！";
const QString noMatch = "information|Morlevant|File no match！";

QString readAll(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

class Association : public ::testing::Test {
protected:
    QString data(const QString& name) const { return folders.path("data/" + name.toStdString()); }
    QString mimeApps() const { return folders.path("config/mimeapps.list"); }
    // Puts the menu entry and the type where an install into `folder` ("data" for the user's
    // ~/.local, "system" for /usr) puts them.
    void install(const std::string& folder) {
        for (const char* file : {"applications/morlevant.desktop", "mime/packages/morlevant.xml"})
            testing::writeBytes(folders.path(folder + "/" + file).toStdString(), "installed");
    }
    // The messages of `open` and `cancel` commands, in the order given ('o' or 'c').
    QStringList commands(const std::string& order) {
        prompts.asked.clear();
        for (const char command : order)
            command == 'o' ? programs.associate() : programs.removeAssociation();
        return prompts.messages();
    }

    DesktopFolders folders;
    ScriptedPrompts prompts;
    RecordingShell shell;
    const QString program = folders.path("my programs/morlevant");
    ExternalPrograms programs{prompts, shell, program};
};

TEST_F(Association, WithoutAnInstallOpenWritesItsOwnEntryAndCancelTakesBackExactlyThat) {
    const QString before = "[Added Associations]\ntext/plain=editor.desktop;\n";
    testing::writeBytes(mimeApps().toStdString(), before.toStdString());
    shell.refuses = true; // desktop tools that are missing do not spoil the association
    EXPECT_EQ(commands("oo"), QStringList({matched, alreadyMatched}));
    EXPECT_EQ(readAll(data("applications/morlevant-user.desktop")),
              FileAssociation(shell, program).desktopEntry());
    EXPECT_TRUE(readAll(data("applications/morlevant-user.desktop"))
                    .contains("\nExec=\"" + program + "\" %f\n"));
    EXPECT_EQ(readAll(data("mime/packages/morlevant-user.xml")), FileAssociation::mimePackage());
    EXPECT_EQ(readAll(mimeApps()), before + "[Default Applications]\n"
                                            "application/x-corvellum=morlevant-user.desktop;\n");
    EXPECT_EQ(shell.tools, QStringList({"update-mime-database " + data("mime"),
                                        "update-desktop-database " + data("applications")}));

    EXPECT_EQ(commands("cc"), QStringList({cancelled, noMatch}));
    EXPECT_FALSE(QFile::exists(data("applications/morlevant-user.desktop")));
    EXPECT_FALSE(QFile::exists(data("mime/packages/morlevant-user.xml")));
    EXPECT_EQ(readAll(mimeApps()), before);
}

TEST_F(Association, AUserInstallKeepsItsEntryAndTypeOnlyTheDefaultChanges) {
    install("data");
    EXPECT_EQ(commands("oo"), QStringList({matched, alreadyMatched}));
    EXPECT_EQ(readAll(mimeApps()),
              "[Default Applications]\napplication/x-corvellum=morlevant.desktop;\n");
    EXPECT_EQ(commands("cc"), QStringList({cancelled, noMatch}));
    EXPECT_EQ(readAll(mimeApps()),
              "[Removed Associations]\napplication/x-corvellum=morlevant.desktop;\n");
    // Opening again takes the removal back.
    EXPECT_EQ(commands("o"), QStringList{matched});
    EXPECT_EQ(readAll(mimeApps()),
              "[Default Applications]\napplication/x-corvellum=morlevant.desktop;\n");

    for (const char* file : {"applications/morlevant.desktop", "mime/packages/morlevant.xml"})
        EXPECT_EQ(readAll(data(file)), "installed") << file;
    for (const char* file :
         {"applications/morlevant-user.desktop", "mime/packages/morlevant-user.xml"})
        EXPECT_FALSE(QFile::exists(data(file))) << file;
    EXPECT_TRUE(shell.tools.isEmpty());
}

TEST_F(Association, CancelStopsASystemEntryFromOpeningWorkspaces) {
    install("system");
    EXPECT_EQ(commands("cc"), QStringList({cancelled, noMatch}));
    EXPECT_EQ(readAll(mimeApps()),
              "[Removed Associations]\napplication/x-corvellum=morlevant.desktop;\n");
    EXPECT_FALSE(QDir(data("")).exists());
}

TEST_F(Association, AnotherProgramsDefaultStaysAndCancelOnlyWithdrawsOurs) {
    const QString other = "[Default Applications]\napplication/x-corvellum=other.desktop;\n";
    testing::writeBytes(mimeApps().toStdString(), other.toStdString());
    EXPECT_EQ(commands("oc"), QStringList({alreadyMatched, noMatch}));
    EXPECT_EQ(readAll(mimeApps()), other);

    install("system");
    EXPECT_EQ(commands("oc"), QStringList({alreadyMatched, cancelled}));
    EXPECT_EQ(readAll(mimeApps()),
              other + "[Removed Associations]\napplication/x-corvellum=morlevant.desktop;\n");
}

TEST_F(Association, AnEntryWithoutItsTypeIsNoInstallAndAListThatOpenMadeGoesWithCancel) {
    testing::writeBytes(folders.path("system/applications/morlevant.desktop").toStdString(), "");
    commands("o");
    EXPECT_TRUE(QFile::exists(data("applications/morlevant-user.desktop")));
    commands("c");
    EXPECT_FALSE(QFile::exists(mimeApps()));
}

TEST_F(Association, AFolderThatCannotBeWrittenIsNamedAndNothingIsClaimed) {
    // The data folder's place is taken by a file, so nothing can be created below it.
    testing::writeBytes(folders.path("data").toStdString(), "");
    const QStringList messages = commands("o");
    ASSERT_EQ(messages.size(), 1);
    EXPECT_TRUE(messages[0].startsWith("error|Morlevant|Cannot write " +
                                       data("applications/morlevant-user.desktop")))
        << messages[0].toStdString();
    EXPECT_FALSE(QFile::exists(mimeApps()));
}

// The list of default programs, edited line by line (a list of our entry alone, written and
// taken back, is run by AUserInstallKeepsItsEntryAndTypeOnlyTheDefaultChanges).
const QString defaults = MimeAppsList::defaultApplications;
const QString removed = MimeAppsList::removedAssociations;
const QString type = "application/x-corvellum";
const QString ours = "morlevant.desktop";

TEST(MimeAppsList, AddingAnEntryKeepsEveryOtherLine) {
    struct Case {
        QString list;
        QString group;
        QString expected;
    };
    const Case cases[] = {
        // A missing group goes at the end, after a last line without a line end.
        {"[Added Associations]\ntext/plain=a.desktop;", removed,
         "[Added Associations]\ntext/plain=a.desktop;\n"
         "[Removed Associations]\napplication/x-corvellum=morlevant.desktop;\n"},
        // The key goes first in its group; the group is found with blanks around it.
        {"# mine\n [Default Applications] \ntext/plain=a.desktop;\n\n[Other]\nk=v\n", defaults,
         "# mine\n [Default Applications] \napplication/x-corvellum=morlevant.desktop;\n"
         "text/plain=a.desktop;\n\n[Other]\nk=v\n"},
        // An existing key gets the entry first, once.
        {"[Removed Associations]\napplication/x-corvellum = other.desktop;morlevant.desktop\n",
         removed,
         "[Removed Associations]\napplication/x-corvellum =morlevant.desktop;other.desktop;\n"},
        // The same type in another group is another key.
        {"[Added Associations]\napplication/x-corvellum=other.desktop;\n", defaults,
         "[Added Associations]\napplication/x-corvellum=other.desktop;\n"
         "[Default Applications]\napplication/x-corvellum=morlevant.desktop;\n"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(MimeAppsList::withEntry(c.list, c.group, type, ours), c.expected)
            << c.list.toStdString();
}

TEST(MimeAppsList, RemovingAnEntryDropsWhatItLeavesEmpty) {
    struct Case {
        QString list;
        QString expected;
    };
    const Case cases[] = {
        {"[Other]\nk=v\n[Default Applications]\napplication/x-corvellum=morlevant.desktop;\n\n"
         "[Last]\nk=v\n",
         "[Other]\nk=v\n[Last]\nk=v\n"},
        {"[Default Applications]\napplication/x-corvellum=other.desktop;morlevant.desktop;\n",
         "[Default Applications]\napplication/x-corvellum=other.desktop;\n"},
        {"[Default Applications]\n# kept\napplication/x-corvellum=morlevant.desktop;\n",
         "[Default Applications]\n# kept\n"},
        // Nothing of ours: the text stays byte for byte, odd spacing included.
        {"[Default Applications]\napplication/x-corvellum = other.desktop\n",
         "[Default Applications]\napplication/x-corvellum = other.desktop\n"},
        {"[Added Associations]\napplication/x-corvellum=morlevant.desktop;",
         "[Added Associations]\napplication/x-corvellum=morlevant.desktop;"},
        {"[Default Applications]\napplication/x-corvellum-old=morlevant.desktop;\n",
         "[Default Applications]\napplication/x-corvellum-old=morlevant.desktop;\n"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(MimeAppsList::withoutEntry(c.list, defaults, type, ours), c.expected)
            << c.list.toStdString();
}

// The files, folders, pages and programs the window opens outside itself.
TEST(OpenRules, TheNineKindsGoToTheirDefaultProgramOthersToTheChosenOne) {
    const QString browser = "/usr/bin/viewer";
    for (const char* path : {"/d/song.wav", "/d/SONG.WAV", "/d/a.bmp", "/d/a.zip", "/d/setup.exe",
                             "/d/help.chm", "/d/photo.JPG", "/d/a.gif", "/d/a.mp3", "/d/a.mid"})
        EXPECT_EQ(ExternalPrograms::programFor(path, browser), QString()) << path;
    for (const char* path : {"/d/notes.txt", "/d/page.html", "/d/page.htm", "/d/README",
                             "/d/a.jpeg", "/d/wav", "/d/x.wav.txt"})
        EXPECT_EQ(ExternalPrograms::programFor(path, browser), browser) << path;
}

TEST_F(Association, WhatTheDesktopRefusesIsSaidInOneMessageEach) {
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

TEST_F(Association, ChoosesOnlyAProgramAndKeepsTheOldOneOtherwise) {
    const QString tool = folders.path("viewer");
    const QString text = folders.path("notes.txt");
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
