#include "workspace/WorkspaceFile.h"

#include "MorlevantVersion.h"
#include "tests/support/NonRegularFiles.h"
#include "tests/support/QStringPrinter.h"
#include "tests/support/ScriptedPrompts.h"
#include "tests/support/TempDir.h"
#include "tests/support/TreeText.h"
#include "workspace/NodeTag.h"
#include "workspace/TaskTreeModel.h"
#include "workspace/WorkspaceBytes.h"
#include "workspace/WorkspaceSession.h"
#include "workspace/WorkspaceState.h"

#include <QDir>
#include <QFileInfo>
#include <QMap>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>

namespace morlevant {
namespace {

using namespace testing;

const QChar nul(0);
// Workspace files separate remark and path by the byte 0xff, written \377 below.

// The images a read gives, by name.
QString imageName(int image) {
    static const QMap<int, QString> names{{treeImage::none, "none"},
                                          {treeImage::bitmap, "bitmap"},
                                          {treeImage::archive, "archive"},
                                          {treeImage::html, "html"},
                                          {treeImage::text, "text"},
                                          {treeImage::closedFolder, "closedFolder"},
                                          {treeImage::openFolder, "openFolder"}};
    return names.value(image, QString::number(image));
}

// One line per node: depth in dots, Text, Tag (NUL shown as "|"), image/selected image.
QString outline(const TaskTreeModel& model) {
    QStringList lines;
    for (const QStandardItem* node : model.nodesInOrder()) {
        QString depth;
        for (const QStandardItem* up = node->parent(); up; up = up->parent())
            depth += '.';
        lines << depth + node->text() + " [" + TaskTreeModel::tag(node).replace(nul, '|') + "] " +
                     imageName(TaskTreeModel::image(node)) + "/" +
                     imageName(TaskTreeModel::selectedImage(node));
    }
    return lines.join('\n');
}

TEST(WorkspaceFile, NumbersKeysInPreOrderAndKeepsRemarks) {
    TaskTreeModel empty; // an empty tree is given the default task, which is saved
    EXPECT_EQ(WorkspaceFile::write(empty, "/w/"), "\"K 0\",\"My Batch Task\",\"\377\"\r\n");
    TaskTreeModel model;
    QStandardItem* a = model.appendNode(nullptr, "a");
    model.appendNode(model.appendNode(a, "b", QString("seen") + nul + "/w/b.txt"), "c");
    model.appendNode(a, "d");
    model.appendNode(model.appendNode(nullptr, "e"), "f", "/x/f.txt");
    EXPECT_EQ(WorkspaceFile::write(model, "/w/"), "\"K 0\",\"a\",\"\377\"\r\n"
                                                  "\"K1\",\"b\",\"seen\377b.txt\"\r\n"
                                                  "\"K2\",\"c\",\"\377\"\r\n"
                                                  "\"K1\",\"d\",\"\377\"\r\n"
                                                  "\"K 0\",\"e\",\"\377\"\r\n"
                                                  "\"K5\",\"f\",\"\377/x/f.txt\"\r\n");
}

TEST(WorkspaceFile, CutsTheWorkspaceFolderFoundAnywhereInAPath) {
    const std::pair<const char*, const char*> cases[] = {
        {"/work/tasks/data/notes.txt", "data/notes.txt"},
        {"/WORK/Tasks/notes.txt", "notes.txt"},
        {"/mnt/work/tasks/a.txt", "sks/a.txt"},
        {"/work/task/a.txt", "/work/task/a.txt"},
    };
    for (const auto& [path, stored] : cases)
        EXPECT_EQ(WorkspaceFile::FNtoSave(path, "/work/tasks/"), stored) << path;
}

TEST(WorkspaceFile, ReadsTheTreeWithImagesAndTags) {
    TaskTreeModel model;
    const auto result = WorkspaceFile::read(model,
                                            "\"K 0\",\"My Batch Task\",\"\377\"\r\n"
                                            "\"K1\",\"notes\",\"\377data/notes.txt\"\n"
                                            "\"K1\",\"page\",\"linked\377/x/page.HTML\"\r"
                                            "\"K3\",\"inner\",\"\377\"\r\n"
                                            "\"K0\",\"second\",\"b.txt\"\r\n"
                                            "\"K5\",\"pic\",\"\377A.Bmp\"\r\n"
                                            "\"K5\",\"old page\",\"\377p.htm\"\r\n"
                                            "\"K5\",\"photo\",\"\377x.jpeg\"\r\n"
                                            "\"K5\",\"no dot\",\"\377TXT\"\r\n"
                                            "\"K 0\",\"no files yet\",\"\377\"\r\n",
                                            "/w/");
    EXPECT_FALSE(result.problem);
    EXPECT_EQ(outline(model), "My Batch Task [] closedFolder/openFolder\n"
                              ".notes [|/w/data/notes.txt] text/text\n"
                              ".page [linked|/x/page.HTML] html/html\n"
                              "..inner [] none/none\n"
                              "second [|/w/b.txt] text/text\n"
                              // The icon follows the last four characters, in any case.
                              ".pic [|/w/A.Bmp] bitmap/bitmap\n"
                              ".old page [|/w/p.htm] html/html\n"
                              ".photo [|/w/x.jpeg] none/none\n"
                              ".no dot [|/w/TXT] none/none\n"
                              // A task shows its folder whether it holds files or not.
                              "no files yet [] closedFolder/openFolder");

    EXPECT_FALSE(WorkspaceFile::read(model, "\r\n", "/w/").problem);
    EXPECT_EQ(outline(model), "My Batch Task [] archive/archive");
}

TEST(WorkspaceFile, RoundTripsAwkwardCaptions) {
    TaskTreeModel model;
    QStandardItem* task = model.appendNode(nullptr, "task", {}, treeImage::closedFolder);
    TaskTreeModel::setSelectedImage(task, treeImage::openFolder);
    for (const QString caption :
         {"with, comma", "say \"hi\"", "\"quoted\"", "a\",\"b", "x\",", "  spaced  ", "宋体", ""}) {
        // Tasks show their folder, as the window makes them.
        TaskTreeModel::setFolderImages(model.appendNode(nullptr, caption));
        model.appendNode(task, caption, QString("r,\"") + nul + "/w/" + caption + ".txt",
                         treeImage::text);
    }
    const QByteArray bytes = WorkspaceFile::write(model, "/w/");
    TaskTreeModel loaded;
    EXPECT_FALSE(WorkspaceFile::read(loaded, bytes, "/w/").problem);
    EXPECT_EQ(outline(loaded), outline(model));
    EXPECT_EQ(WorkspaceFile::write(loaded, "/w/"), bytes);
}

// A record is one line: a line break in a caption, a remark or a path is written as a blank, so
// the records after it still read as they were written.
TEST(WorkspaceFile, WritesLineBreaksInFieldsAsBlanksAndReadsTheSameTreeBack) {
    TaskTreeModel model;
    QStandardItem* task = model.appendNode(nullptr, "two\nlines");
    model.appendNode(task, "x", QString("seen\non\r\nmonday") + nul + "/w/x\ny.txt");
    model.appendNode(task, "z", "/w/z\r.txt");
    model.appendNode(nullptr, "after");
    const QByteArray bytes = WorkspaceFile::write(model, "/w/");
    EXPECT_EQ(bytes, "\"K 0\",\"two lines\",\"\377\"\r\n"
                     "\"K1\",\"x\",\"seen on  monday\377x y.txt\"\r\n"
                     "\"K1\",\"z\",\"\377z .txt\"\r\n"
                     "\"K 0\",\"after\",\"\377\"\r\n");
    TaskTreeModel loaded;
    EXPECT_FALSE(WorkspaceFile::read(loaded, bytes, "/w/").problem);
    EXPECT_EQ(WorkspaceFile::write(loaded, "/w/"), bytes);
}

// A read stops at a record it cannot use and keeps the nodes before it, or the old tree when
// there are none; a line cut short still gives what it holds.
TEST(WorkspaceFile, StopsAtARecordItCannotUseAndKeepsWhatALineCutShortHolds) {
    const QByteArray first = "\"K 0\",\"a\",\"\377\"\r\n";
    const QString parent = "a [] closedFolder/openFolder\n";
    const struct {
        QByteArray bytes;
        QString tree;
        const char* problem; // nullptr when the whole file is read
    } cases[] = {
        {first + "\"K1\",\"b\",\"\377\"\r\n\"K7\",\"c\",\"\377\"\r\n\"K1\",\"d\",\"\377\"",
         parent + ".b [] none/none", "line 3 names K7"},
        {first + "\"K2\",\"self\",\"\377\"\r\n", parent.trimmed(), "line 2 names K2"},
        {first + "\r\nrubbish\r\n\"K1\",\"b\",\"\377\"", parent.trimmed(), "line 3 is not"},
        {QByteArray("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16), "old [] none/none", "not a task file"},
        {first + "\"K1\",\"notes\",\"\377data/no", parent + ".notes [|/w/data/no] none/none",
         nullptr},
        {first + "\"K1\"", parent + ". [] none/none", nullptr},
        // Latin-1 from an older system.
        {first + "\"K1\",\"caf\xE9\",\"\377\"", parent + ".café [] none/none", nullptr},
    };
    for (const auto& c : cases) {
        TaskTreeModel model;
        model.appendNode(nullptr, "old");
        const auto result = WorkspaceFile::read(model, c.bytes, "/w/");
        EXPECT_EQ(outline(model), c.tree);
        if (c.problem == nullptr) {
            EXPECT_FALSE(result.problem) << result.problem->toStdString();
        } else {
            ASSERT_TRUE(result.problem) << c.tree.toStdString();
            EXPECT_TRUE(result.problem->contains(c.problem)) << result.problem->toStdString();
        }
    }
}

TEST(WorkspaceFile, LoadsADeepNestUpToItsLimitAndSavesIt) {
    QByteArray bytes;
    for (int key = 0; key < 10000; ++key) // each node the child of the one before
        bytes += "\"K" + (key == 0 ? QByteArray(" 0") : QByteArray::number(key)) +
                 "\",\"n\",\"\377\"\r\n";
    TaskTreeModel model;
    const auto result = WorkspaceFile::read(model, bytes, "/w/");
    ASSERT_TRUE(result.problem);
    EXPECT_TRUE(result.problem->contains("line 257 nests deeper than 256 levels"))
        << result.problem->toStdString();
    EXPECT_EQ(model.nodeCount(), WorkspaceFile::maxDepth);
    EXPECT_EQ(WorkspaceFile::write(model, "/w/"), bytes.left(bytes.indexOf("\"K256\"")));
}

// New, Open, Save and Save As on the workspace the window shows.
class WorkspaceSessionTest : public ::testing::Test {
protected:
    QString path(const std::string& name) const {
        return QString::fromStdString(folder.file(name));
    }

    testing::TempDir folder;
    TaskTreeModel model;
    WorkspaceState state;
    testing::ScriptedPrompts prompts;
    QStringList chosen;
    WorkspaceSession session{model, state, prompts,
                             [this](const QString& file) { chosen.append(file); }};
};

TEST_F(WorkspaceSessionTest, SavesTwiceToTheSameBytesAndLoadsAfterAMove) {
    QDir(path("")).mkpath("old");
    state.setTaskFile(path("old/work.tsk"));
    state.TaskDirty = true;
    model.appendNode(model.appendNode(nullptr, "task"), "notes", path("old/data/n.txt"));
    ASSERT_FALSE(saveWorkspace(model, state));
    EXPECT_FALSE(state.TaskDirty);
    const std::string saved = readBytes(folder.file("old/work.tsk"));
    ASSERT_FALSE(saveWorkspace(model, state));
    EXPECT_EQ(readBytes(folder.file("old/work.tsk")), saved);

    QDir(path("")).rename("old", "new");
    WorkspaceState opened;
    ASSERT_FALSE(loadWorkspace(model, opened, path("new/work.tsk")));
    EXPECT_EQ(opened.windowTitle(),
              "Morlevant v" + QString::fromLatin1(programVersion) + " - " + path("new/work.tsk"));
    EXPECT_EQ(opened.TaskDir, path("new/"));
    EXPECT_EQ(NodeTag::split(TaskTreeModel::tag(model.item(0)->child(0))).path,
              path("new/data/n.txt"));
}

TEST_F(WorkspaceSessionTest, NewAsksAboutChangesAndCancelKeepsTheTree) {
    buildTree(model, "A[a.txt]");
    state.TaskDirty = true;
    prompts.answers.enqueue(Answer::Cancel);
    EXPECT_FALSE(session.mnuNew());
    EXPECT_EQ(treeText(model), "A[a.txt]");
    EXPECT_EQ(prompts.asked.last(), "yesnocancel|Open task|Save the task？");

    prompts.answers.enqueue(Answer::No);
    EXPECT_TRUE(session.mnuNew());
    EXPECT_EQ(treeText(model), "My Batch Task");
    EXPECT_FALSE(state.TaskDirty);
    EXPECT_FALSE(state.HasTaskFile);
}

// Save asks for a name once. A Save As that is cancelled or cannot write leaves the workspace
// under its old name: the title and the History, which follow that name, stay as they were.
TEST_F(WorkspaceSessionTest, SaveAsksForANameOnceAndASaveAsThatDoesNotSaveKeepsIt) {
    buildTree(model, "A");
    state.TaskDirty = true;
    prompts.fileNames.enqueue({path("work")});
    EXPECT_TRUE(session.mnuSave());
    EXPECT_TRUE(QFileInfo::exists(path("work.tsk")));
    EXPECT_EQ(state.TaskFileName, path("work.tsk"));
    EXPECT_FALSE(state.TaskDirty);
    EXPECT_EQ(chosen, QStringList{path("work.tsk")});
    EXPECT_TRUE(session.mnuSave()); // no second dialog: the script holds no more names
    EXPECT_EQ(prompts.dialogs.size(), 1);

    buildTree(model, "B");
    state.TaskDirty = true;
    const std::string before = testing::readBytes(folder.file("work.tsk"));
    testing::writeBytes(folder.file("blocked"), ""); // no one, root included, writes below a file
    for (const QString& name : {QString(), path("blocked/two.tsk"), path("missing/two.tsk")}) {
        prompts.asked.clear();
        prompts.fileNames.enqueue({name});
        EXPECT_FALSE(session.mnuSaveAs());
        EXPECT_EQ(prompts.messages().size(), name.isEmpty() ? 0 : 1);
        if (!name.isEmpty()) {
            EXPECT_TRUE(prompts.messages().at(0).startsWith(
                "error|Morlevant|Can't save the task file " + name))
                << prompts.messages().at(0).toStdString();
        }
        EXPECT_EQ(testing::readBytes(folder.file("work.tsk")), before);
        EXPECT_EQ(state.TaskFileName, path("work.tsk"));
        EXPECT_TRUE(state.TaskDirty);
        EXPECT_EQ(chosen, QStringList{path("work.tsk")});
    }
}

// Opening asks for a file, and a cancelled dialog leaves all as it was. A History entry asks its
// own question about changes.
TEST_F(WorkspaceSessionTest, OpenLoadsTheChosenFileAndOtherwiseChangesNothing) {
    buildTree(model, "Saved[a.txt]");
    prompts.fileNames.enqueue({path("saved.tsk")});
    session.mnuSaveAs();
    buildTree(model, "Other");
    prompts.fileNames.enqueue({});
    EXPECT_FALSE(session.mnuOpen());
    EXPECT_EQ(treeText(model), "Saved[a.txt] Other");
    EXPECT_TRUE(prompts.messages().isEmpty());
    EXPECT_EQ(chosen, QStringList{path("saved.tsk")});

    prompts.fileNames.enqueue({path("saved.tsk")});
    EXPECT_TRUE(session.mnuOpen());
    EXPECT_EQ(treeText(model), "Saved[a.txt]");
    EXPECT_EQ(state.TaskFileName, path("saved.tsk"));
    EXPECT_EQ(prompts.dialogs.last().title, "Open “Morlevant” Task File");
    EXPECT_EQ(session.lastDirectory(), QString::fromStdString(folder.path().string()));

    state.TaskDirty = true;
    prompts.answers.enqueue(Answer::Cancel);
    EXPECT_FALSE(session.openRecent(path("saved.tsk")));
    EXPECT_EQ(prompts.asked.last(), "yesnocancel|Open Task|Save the Task？");
    EXPECT_TRUE(state.TaskDirty);
}

// A named pipe would keep the window waiting for ever and /dev/zero would fill its memory: every
// way of opening a workspace reads only a regular file of a workspace's size, and otherwise
// says why and leaves the workspace as it was.
TEST_F(WorkspaceSessionTest, EveryOpenRefusesWhatIsNoRegularFileOrTooLarge) {
    ASSERT_TRUE(testing::makeFifo(folder.file("pipe.tsk")));
    std::filesystem::create_symlink("/dev/zero", folder.path() / "zero.tsk");
    std::filesystem::create_directories(folder.path() / "dir.tsk");
    testing::writeBytes(folder.file("huge.tsk"), "\"K 0\",\"a\",\"\377\"\r\n");
    std::filesystem::resize_file(folder.path() / "huge.tsk", maxWorkspaceBytes + 1);
    const struct {
        const char* name;
        const char* why;
    } cases[] = {
        {"pipe.tsk", "it is not a regular file"},
        {"zero.tsk", "it is not a regular file"},
        {"dir.tsk", "it is a folder, not a regular file"},
        {"huge.tsk", "it is too large to be a workspace (more than 64 MiB)"},
    };
    const std::function<bool(const QString&)> ways[] = {
        [&](const QString& file) { return session.CommandLineLoad(file); },
        [&](const QString& file) { return session.openRecent(file); },
        [&](const QString& file) {
            prompts.fileNames.enqueue({file});
            return session.mnuOpen();
        },
    };
    buildTree(model, "Kept[a.txt]");
    for (const auto& c : cases)
        for (const auto& open : ways) {
            prompts.asked.clear();
            EXPECT_FALSE(open(path(c.name)));
            EXPECT_EQ(prompts.messages(), QStringList{"error|Morlevant|Can't open the task file " +
                                                      path(c.name) + ": " + c.why});
            EXPECT_EQ(treeText(model), "Kept[a.txt]");
            EXPECT_FALSE(state.HasTaskFile);
        }
    EXPECT_TRUE(chosen.isEmpty());
}

} // namespace
} // namespace morlevant
