#include "mainwindow/desktop/FileAssociation.h"

#include "mainwindow/desktop/ExternalPrograms.h"
#include "tests/support/DesktopFolders.h"
#include "tests/support/QStringPrinter.h"
#include "tests/support/RecordingShell.h"
#include "tests/support/ScriptedPrompts.h"

#include <QFile>
#include <gtest/gtest.h>

namespace morlevant {
namespace {

using testing::DesktopFolders;
using testing::RecordingShell;
using testing::ScriptedPrompts;

QString readAll(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

class Association : public ::testing::Test {
protected:
    QString data(const QString& name) const { return folders.path("data/" + name.toStdString()); }
    QString mimeApps() const { return folders.path("config/mimeapps.list"); }
    QStringList associateAndRemove(int times, bool remove) {
        ExternalPrograms programs(prompts, shell, program);
        for (int i = 0; i < times; ++i)
            remove ? programs.removeAssociation() : programs.associate();
        return prompts.messages();
    }

    DesktopFolders folders;
    ScriptedPrompts prompts;
    RecordingShell shell;
    const QString program = folders.path("my programs/morlevant");
};

TEST_F(Association, AssociatingTwiceLeavesTheFirstRecordsAndRemovingTwiceSaysThereIsNone) {
    shell.refuses = true; // desktop tools that are missing do not spoil the association
    EXPECT_EQ(associateAndRemove(1, false),
              QStringList{"information|Morlevant|FileMatch succeed，you can open it directly next "
                          "time!"});
    EXPECT_EQ(shell.tools, QStringList({"update-mime-database " + data("mime"),
                                        "update-desktop-database " + data("applications")}));
    // A record changed by hand shows that the second association writes nothing.
    testing::writeBytes(data("applications/morlevant.desktop").toStdString(), "changed by hand");
    prompts.asked.clear();
    shell.tools.clear();
    EXPECT_EQ(associateAndRemove(1, false),
              QStringList{"information|Morlevant|*.tsk file matched"});
    EXPECT_EQ(readAll(data("applications/morlevant.desktop")), "changed by hand");
    EXPECT_TRUE(shell.tools.isEmpty());

    prompts.asked.clear();
    EXPECT_EQ(associateAndRemove(2, true), QStringList({"information|Morlevant|Cancel file match！",
                                                        "information|Morlevant|File no match！"}));
    EXPECT_FALSE(QFile::exists(data("mime/packages/morlevant.xml")));
    EXPECT_FALSE(QFile::exists(data("applications/morlevant.desktop")));
    EXPECT_FALSE(readAll(mimeApps()).contains("morlevant"));
}

TEST_F(Association, WritesTheTypeTheEntryThatOpensItAndMakesItTheDefault) {
    testing::writeBytes(mimeApps().toStdString(),
                        "[Default Applications]\ntext/plain=editor.desktop;\n");
    associateAndRemove(1, false);
    EXPECT_EQ(readAll(data("mime/packages/morlevant.xml")), FileAssociation::mimePackage());
    EXPECT_EQ(readAll(data("applications/morlevant.desktop")),
              FileAssociation(shell, program).desktopEntry());
    EXPECT_EQ(readAll(mimeApps()), "[Default Applications]\n"
                                   "application/x-corvellum=morlevant.desktop;\n"
                                   "text/plain=editor.desktop;\n");

    associateAndRemove(1, true);
    EXPECT_EQ(readAll(mimeApps()), "[Default Applications]\ntext/plain=editor.desktop;\n");
}

TEST_F(Association, AFolderThatCannotBeWrittenIsNamedAndNothingIsClaimed) {
    // The data folder's place is taken by a file, so nothing can be created below it.
    testing::writeBytes(folders.path("data").toStdString(), "");
    const QStringList messages = associateAndRemove(1, false);
    ASSERT_EQ(messages.size(), 1);
    EXPECT_TRUE(messages[0].startsWith("error|Morlevant|Cannot write " +
                                       data("applications/morlevant.desktop")))
        << messages[0].toStdString();
    EXPECT_TRUE(shell.tools.isEmpty());
}

TEST(DefaultApplication, IsSetAndTakenOutWithoutDisturbingOtherTypes) {
    const QString ours = "application/x-corvellum=morlevant.desktop;";
    struct Case {
        const char* list;
        const char* entry;
        QString expected;
    };
    const Case cases[] = {
        {"", "morlevant.desktop", "[Default Applications]\n" + ours + "\n"},
        {"[Default Applications]\napplication/x-corvellum=other.desktop;\n[Other]\nk=v\n",
         "morlevant.desktop", "[Default Applications]\n" + ours + "\n[Other]\nk=v\n"},
        {"[Default Applications]\nx/y=a.desktop;\napplication/x-corvellum=morlevant.desktop;\n", "",
         "[Default Applications]\nx/y=a.desktop;\n"},
        // Another program made the default since: it stays.
        {"[Default Applications]\napplication/x-corvellum=other.desktop;\n", "",
         "[Default Applications]\napplication/x-corvellum=other.desktop;\n"},
        {"[Added Associations]\napplication/x-corvellum=morlevant.desktop;\n", "",
         "[Added Associations]\napplication/x-corvellum=morlevant.desktop;\n"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(FileAssociation::withDefaultApplication(c.list, c.entry), c.expected) << c.list;
}

} // namespace
} // namespace morlevant
