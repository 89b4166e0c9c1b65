#include "mainwindow/FileAssociation.h"

#include "mainwindow/ExternalPrograms.h"
#include "tests/support/DesktopFolders.h"
#include "tests/support/QStringPrinter.h"
#include "tests/support/RecordingShell.h"
#include "tests/support/ScriptedPrompts.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QXmlStreamReader>
#include <gtest/gtest.h>
#include <utility>

namespace morlevant {
namespace {

using testing::DesktopFolders;
using testing::RecordingShell;
using testing::ScriptedPrompts;

QString readAll(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

// The value of `key` in the [Desktop Entry] group of a desktop entry's text.
QString entryValue(const QString& entry, const QString& key) {
    for (const QString& line : entry.split(u'\n'))
        if (line.startsWith(key + u'='))
            return line.mid(key.size() + 1);
    return {};
}

// The arguments an Exec value stands for with `file` in place of %f, read as a desktop does:
// the value's own escapes first, then the quoting, then the field codes.
QStringList execArguments(const QString& exec, const QString& file) {
    QString value;
    for (qsizetype i = 0; i < exec.size(); ++i) {
        const bool escaped = exec[i] == u'\\' && i + 1 < exec.size();
        const QChar c = escaped ? exec[++i] : exec[i];
        value += escaped && c == u's' ? QChar(u' ') : c;
    }
    QStringList arguments;
    bool quoted = false;
    bool between = true; // the next character starts an argument
    for (qsizetype i = 0; i < value.size(); ++i) {
        if (!quoted && value[i] == u' ') {
            between = true;
            continue;
        }
        if (std::exchange(between, false))
            arguments.append(QString());
        if (value[i] == u'"')
            quoted = !quoted;
        else
            arguments.last() += quoted && value[i] == u'\\' ? value[++i] : value[i];
    }
    for (QString& argument : arguments)
        argument = argument == "%f" ? file : argument.replace("%%", "%");
    return arguments;
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
    QString program = folders.path("my programs/morlevant");
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

TEST_F(Association, TheEntrysCommandLineStartsTheProgramOnTheWorkspace) {
    // A program and a workspace whose paths hold characters the command line must quote.
    program = folders.path("my \"programs\" $HOME 100%/morlevant");
    QDir().mkpath(QFileInfo(program).absolutePath());
    ASSERT_TRUE(QFile::copy(ARGUMENT_RECORDER, program));
    associateAndRemove(1, false);
    const QString workspace = folders.path("my work/plan 'a'.tsk");
    const QStringList command = execArguments(
        entryValue(readAll(data("applications/morlevant.desktop")), "Exec"), workspace);
    ASSERT_EQ(command.size(), 2);

    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("RECORD_ARGUMENTS_TO", folders.path("arguments"));
    process.setProcessEnvironment(environment);
    process.start(command[0], command.mid(1));
    ASSERT_TRUE(process.waitForFinished(10000)) << process.errorString().toStdString();
    EXPECT_EQ(process.exitCode(), 0);
    EXPECT_EQ(readAll(folders.path("arguments")), workspace + "\n");
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

// The install puts the same type and entry in place for every user; only the program's path
// differs, found there through PATH.
TEST(InstalledFiles, DescribeTheTypeAndTheEntryAsTheAssociationDoes) {
    RecordingShell shell;
    const FileAssociation association(shell, "/opt/morlevant/bin/morlevant");
    EXPECT_EQ(readAll(MORLEVANT_SOURCE "/desktop/morlevant.xml"), FileAssociation::mimePackage());
    QString installed = readAll(MORLEVANT_SOURCE "/desktop/morlevant.desktop");
    installed.replace("Exec=morlevant %f", "Exec=/opt/morlevant/bin/morlevant %f");
    EXPECT_EQ(installed, association.desktopEntry());

    QXmlStreamReader mime(FileAssociation::mimePackage());
    QStringList seen;
    while (!mime.atEnd()) {
        if (mime.readNext() != QXmlStreamReader::StartElement)
            continue;
        const QString name = mime.name().toString();
        if (name == "mime-type")
            seen.append("type " + mime.attributes().value("type").toString());
        else if (name == "glob")
            seen.append("glob " + mime.attributes().value("pattern").toString());
        else if (name == "comment")
            seen.append("comment " + mime.readElementText());
    }
    EXPECT_FALSE(mime.hasError()) << mime.errorString().toStdString();
    EXPECT_EQ(seen, QStringList({"type application/x-corvellum", "comment Corvellum Document",
                                 "glob *.tsk"}));
    EXPECT_EQ(entryValue(association.desktopEntry(), "Type"), "Application");
    EXPECT_EQ(entryValue(association.desktopEntry(), "MimeType"), "application/x-corvellum;");
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
        {"[Added Associations]\nx/y=a.desktop;\n", "morlevant.desktop",
         "[Added Associations]\nx/y=a.desktop;\n[Default Applications]\n" + ours + "\n"},
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
