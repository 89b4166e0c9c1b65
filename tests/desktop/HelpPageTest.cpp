#include "mainwindow/ExternalPrograms.h"
#include "taskdef/InstallLayout.h"
#include "taskdef/TaskFiles.h"
#include "tests/support/QStringPrinter.h"
#include "tests/support/TempDir.h"

#include <QDir>
#include <QFile>
#include <QSet>
#include <QXmlStreamReader>
#include <gtest/gtest.h>

namespace morlevant {
namespace {

using testing::TempDir;
using testing::writeBytes;

TEST(HelpPage, IsFoundBesideTheProgramAndWhereTheInstallPutsIt) {
    TempDir dir;
    const QString buildTree = QString::fromStdString(dir.file("build/app"));
    writeBytes(dir.file("build/app/help/index.html"), "<html/>");
    EXPECT_EQ(ExternalPrograms::findHelpPage(buildTree), buildTree + "/help/index.html");

    const std::string bin = dir.file("prefix/bin");
    std::filesystem::create_directories(bin);
    EXPECT_EQ(ExternalPrograms::findHelpPage(QString::fromStdString(bin)), QString());
    EXPECT_FALSE(isInstalledProgram(bin));
    const std::string installed = installedDataFolder(bin) + "/help/index.html";
    writeBytes(installed, "<html/>");
    EXPECT_EQ(ExternalPrograms::findHelpPage(QString::fromStdString(bin)),
              QString::fromStdString(installed));
    EXPECT_TRUE(installed.starts_with(dir.file("prefix/")));
}

TEST(HelpPage, AnInstalledProgramKeepsItsTasksInTheUsersDataFolder) {
    TempDir dir;
    const std::string bin = dir.file("prefix/bin");
    std::filesystem::create_directories(bin);
    EXPECT_EQ(resolveProgramFolder({"", bin, "/data"}), bin);
    writeBytes(installedDataFolder(bin) + "/help/index.html", "<html/>");
    EXPECT_EQ(resolveProgramFolder({"", bin, "/data"}), "/data");
    EXPECT_EQ(resolveProgramFolder({"/home/set", bin, "/data"}), "/home/set");
}

// The page is read by browsers, but written well-formed so that a mistake in it shows here;
// every link inside it leads to a section.
TEST(HelpPage, IsWellFormedAndItsLinksLeadSomewhere) {
    QFile page(MORLEVANT_SOURCE "/help/index.html");
    ASSERT_TRUE(page.open(QIODevice::ReadOnly));
    QXmlStreamReader html(&page);
    QSet<QString> ids;
    QStringList links;
    QStringList headings;
    while (!html.atEnd()) {
        if (html.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (html.attributes().hasAttribute("id"))
            ids.insert(html.attributes().value("id").toString());
        if (html.name() == u"a")
            links.append(html.attributes().value("href").toString());
        if (html.name() == u"h2")
            headings.append(html.readElementText());
    }
    ASSERT_FALSE(html.hasError()) << html.errorString().toStdString() << " at line "
                                  << html.lineNumber();
    ASSERT_FALSE(links.isEmpty());
    for (const QString& link : links) {
        ASSERT_TRUE(link.startsWith('#')) << link.toStdString();
        EXPECT_TRUE(ids.contains(link.mid(1))) << link.toStdString();
    }
    for (const char* topic : {"window", "pages", "ranges", "command line", "settings"})
        EXPECT_TRUE(headings.join(' ').contains(topic)) << topic;
}

} // namespace
} // namespace morlevant
