#include "mainwindow/TextViewer.h"
#include "tests/mainwindow/WindowFixture.h"
#include "tests/support/DesktopFolders.h"

#include <QCoreApplication>
#include <QFile>

namespace morlevant {
namespace {

using DesktopCommands = testing::WindowFixture;

TEST_F(DesktopCommands, TheChosenProgramOpensTheFileShownAndIsKept) {
    const QString viewer = makeFile("bin/viewer", "#!/bin/sh\n");
    QFile(viewer).setPermissions(QFile::ReadOwner | QFile::ExeOwner);
    const QString notes = makeFile("in/notes.txt", "alpha");
    const QString song = makeFile("in/song.wav", "RIFF");
    start();
    prompts.fileNames.enqueue({viewer});
    menus().mnuDefBrowse->trigger();
    EXPECT_EQ(window->settings().defBrowse, viewer);

    QStandardItem* task = node({"My Batch Task"});
    window->model().appendNode(task, "notes", notes, treeImage::text);
    window->model().appendNode(task, "song", song, 9);
    select({"My Batch Task", "notes"});
    click(ToolbarButton::openIt);
    select({"My Batch Task", "song"});
    menus().mnuXExec->trigger();
    EXPECT_EQ(shell.opened, QStringList({"program " + viewer + " " + notes,
                                         "url " + QUrl::fromLocalFile(song).toString()}));

    window->close();
    EXPECT_EQ(store.value("DefBrowse"), viewer);
}

TEST_F(DesktopCommands, TheOptionMenuAssociatesAndRemovesTheWorkspaceType) {
    testing::DesktopFolders folders;
    start();
    for (QAction* command : {menus().mnuFileMatch, menus().mnuFileMatch, menus().mnuCancelFileMatch,
                             menus().mnuCancelFileMatch})
        command->trigger();
    EXPECT_EQ(prompts.messages(),
              QStringList({"information|Morlevant|FileMatch succeed，you can open it directly "
                           "next time!",
                           "information|Morlevant|*.tsk file matched",
                           "information|Morlevant|Cancel file match！",
                           "information|Morlevant|File no match！"}));
}

TEST_F(DesktopCommands, HelpWithoutItsPageSaysWhereThePageBelongs) {
    start();
    menus().mnuHelp->trigger();
    ASSERT_EQ(prompts.messages().size(), 1);
    EXPECT_TRUE(prompts.messages()[0].startsWith("error|Morlevant|The help page is missing"));
    EXPECT_TRUE(shell.opened.isEmpty());
}

} // namespace
} // namespace morlevant
