#include "WorkspaceFile.h"

#include "NodeTag.h"
#include "QStringPrinter.h"
#include "TaskTreeModel.h"

#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace morlevant {
namespace {

const QChar nul(0);

QByteArray readAll(const QString& path) {
    QFile file(path);
    file.open(QIODevice::ReadOnly);
    return file.readAll();
}

void writeAll(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

// The tree as one line per node: depth in dots, Text, the Tag with its NUL shown as "|", the
// image and the selected image.
QString outline(const TaskTreeModel& model) {
    QStringList lines;
    for (const QStandardItem* node : model.nodesInOrder()) {
        int depth = 0;
        for (const QStandardItem* up = node->parent(); up; up = up->parent())
            ++depth;
        QString tag = TaskTreeModel::tag(node);
        lines << QString(depth, '.') + node->text() + " [" + tag.replace(nul, '|') + "] " +
                     QString::number(TaskTreeModel::image(node)) + "/" +
                     QString::number(TaskTreeModel::selectedImage(node));
    }
    return lines.join('\n');
}

TEST(WorkspaceFile, WritesTheWorkedExample) {
    TaskTreeModel model;
    QStandardItem* task = model.appendNode(nullptr, "My Batch Task");
    model.appendNode(task, "notes", "/work/tasks/data/notes.txt", 11);
    model.appendNode(task, "report", "/other/report.txt", 11);
    model.appendNode(nullptr, "My Batch Task 3");
    EXPECT_EQ(WorkspaceFile::write(model, "/work/tasks/"),
              "\"K 0\",\"My Batch Task\",\"\xFF\"\r\n"
              "\"K1\",\"notes\",\"\xFF"
              "data/notes.txt\"\r\n"
              "\"K1\",\"report\",\"\xFF/other/report.txt\"\r\n"
              "\"K 0\",\"My Batch Task 3\",\"\xFF\"\r\n");
}

TEST(WorkspaceFile, GivesAnEmptyTreeItsTaskBeforeWriting) {
    TaskTreeModel model;
    EXPECT_EQ(WorkspaceFile::write(model, "/w/"), "\"K 0\",\"My Batch Task\",\"\xFF\"\r\n");
    EXPECT_EQ(model.nodeCount(), 1);
}

TEST(WorkspaceFile, NumbersKeysInPreOrderAndKeepsRemarks) {
    TaskTreeModel model;
    QStandardItem* a = model.appendNode(nullptr, "a");
    QStandardItem* b = model.appendNode(a, "b", QString("seen") + nul + "/w/b.txt");
    model.appendNode(b, "c", "/w/c.htm");
    model.appendNode(a, "d");
    model.appendNode(model.appendNode(nullptr, "e"), "f", "/x/f.txt");
    EXPECT_EQ(WorkspaceFile::write(model, "/w/"), "\"K 0\",\"a\",\"\xFF\"\r\n"
                                                  "\"K1\",\"b\",\"seen\xFF"
                                                  "b.txt\"\r\n"
                                                  "\"K2\",\"c\",\"\xFF"
                                                  "c.htm\"\r\n"
                                                  "\"K1\",\"d\",\"\xFF\"\r\n"
                                                  "\"K 0\",\"e\",\"\xFF\"\r\n"
                                                  "\"K5\",\"f\",\"\xFF/x/f.txt\"\r\n");
}

TEST(WorkspaceFile, StoresPathsRelativeToTheWorkspaceFolder) {
    const struct {
        const char* path;
        const char* stored;
    } cases[] = {
        {"/work/tasks/data/notes.txt", "data/notes.txt"},
        {"/WORK/Tasks/notes.txt", "notes.txt"},   // found without regard to case
        {"/mnt/work/tasks/a.txt", "sks/a.txt"},   // found inside, cut from the start
        {"/work/task/a.txt", "/work/task/a.txt"}, // not found
        {"/work/tasks/", ""},
        {"", ""},
    };
    for (const auto& c : cases)
        EXPECT_EQ(WorkspaceFile::FNtoSave(c.path, "/work/tasks/"), c.stored) << c.path;
    EXPECT_EQ(WorkspaceFile::FNtoSave("/a/b.txt", ""), "/a/b.txt");
}

TEST(WorkspaceFile, ReadsTheTreeWithImagesAndTags) {
    TaskTreeModel model;
    const auto result = WorkspaceFile::read(model,
                                            "\"K 0\",\"My Batch Task\",\"\xFF\"\r\n"
                                            "\"K1\",\"notes\",\"\xFF"
                                            "data/notes.txt\"\n"
                                            "\"K1\",\"page\",\"linked\xFF/x/page.HTML\"\r"
                                            "\"K3\",\"inner\",\"\xFF\"\r\n"
                                            "\"K0\",\"second\",\"\xFF"
                                            "a.zip\"\r\n"
                                            "\"K5\",\"plain\",\"b.txt\"\r\n",
                                            "/w/");
    EXPECT_TRUE(result.treeReplaced);
    EXPECT_FALSE(result.problem);
    EXPECT_EQ(outline(model), "My Batch Task [] 12/13\n"
                              ".notes [|/w/data/notes.txt] 11/11\n"
                              ".page [linked|/x/page.HTML] 10/10\n"
                              "..inner [] 0/0\n"
                              "second [|/w/a.zip] 2/2\n"
                              ".plain [|/w/b.txt] 11/11");
}

TEST(WorkspaceFile, GivesAnEmptyFileOneTask) {
    for (const QByteArray& bytes : {QByteArray(), QByteArray("\r\n\r\n")}) {
        TaskTreeModel model;
        model.appendNode(nullptr, "old");
        const auto result = WorkspaceFile::read(model, bytes, "/w/");
        EXPECT_TRUE(result.treeReplaced);
        EXPECT_FALSE(result.problem);
        EXPECT_EQ(outline(model), "My Batch Task [] 2/2");
    }
}

TEST(WorkspaceFile, RoundTripsAwkwardCaptionsAndPaths) {
    const QString captions[] = {
        "with, comma", "say \"hi\"", "\"quoted\"",   "a\",\"b", "ends with \"",
        "  spaced  ",  "K 0",        "unicode 宋体", "",        "x\",",
    };
    TaskTreeModel model;
    QStandardItem* task = model.appendNode(nullptr, "task", {}, 12);
    TaskTreeModel::setSelectedImage(task, 13);
    for (const QString& caption : captions) {
        model.appendNode(nullptr, caption);
        model.appendNode(task, caption, QString("r,\"") + nul + "/w/" + caption + ".txt", 11);
    }
    const QByteArray bytes = WorkspaceFile::write(model, "/w/");
    TaskTreeModel loaded;
    const auto result = WorkspaceFile::read(loaded, bytes, "/w/");
    EXPECT_FALSE(result.problem) << result.problem->toStdString();
    EXPECT_EQ(outline(loaded), outline(model));
    EXPECT_EQ(WorkspaceFile::write(loaded, "/w/"), bytes);
}

TEST(WorkspaceFile, RoundTripsALargeWorkspace) {
    TaskTreeModel model;
    for (int t = 0; t < 10; ++t) {
        QStandardItem* task = model.appendNode(nullptr, QString("task %1").arg(t));
        for (int f = 0; f < 1000; ++f)
            model.appendNode(task, QString("f%1").arg(f), QString("/w/%1/f%2.txt").arg(t).arg(f));
    }
    const QByteArray bytes = WorkspaceFile::write(model, "/w/");
    TaskTreeModel loaded;
    EXPECT_FALSE(WorkspaceFile::read(loaded, bytes, "/w/").problem);
    EXPECT_EQ(loaded.nodeCount(), 10010);
    EXPECT_EQ(WorkspaceFile::write(loaded, "/w/"), bytes);
}

TEST(WorkspaceFile, StopsAtARecordItCannotUse) {
    const struct {
        QByteArray bytes;
        bool treeReplaced;
        const char* tree;
        const char* problem;
    } cases[] = {
        {"\"K 0\",\"a\",\"\xFF\"\r\n\"K1\",\"b\",\"\xFF\"\r\n\"K7\",\"c\",\"\xFF\"\r\n"
         "\"K1\",\"d\",\"\xFF\"\r\n",
         true, "a [] 12/13\n.b [] 0/0", "line 3 names K7"},
        {"\"K 0\",\"a\",\"\xFF\"\r\n\"K2\",\"self\",\"\xFF\"\r\n", true, "a [] 0/0",
         "line 2 names K2"},
        {"\"K 0\",\"a\",\"\xFF\"\r\nrubbish\r\n\"K1\",\"b\",\"\xFF\"\r\n", true, "a [] 0/0",
         "line 2 is not"},
        {"\"K 0\",\"a\",\"\xFF\"\r\n\"K-1\",\"b\",\"\xFF\"\r\n", true, "a [] 0/0", "line 2 is not"},
        {"Dear diary,\r\nnothing happened.\r\n", false, "old [] 0/0", "not a task file"},
        {QByteArray("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16), false, "old [] 0/0", "not a task file"},
    };
    for (const auto& c : cases) {
        TaskTreeModel model;
        model.appendNode(nullptr, "old");
        const auto result = WorkspaceFile::read(model, c.bytes, "/w/");
        EXPECT_EQ(result.treeReplaced, c.treeReplaced) << c.tree;
        EXPECT_EQ(outline(model), c.tree);
        ASSERT_TRUE(result.problem) << c.tree;
        EXPECT_TRUE(result.problem->contains(c.problem)) << result.problem->toStdString();
    }
}

TEST(WorkspaceFile, KeepsWhatALineCutShortHolds) {
    const struct {
        QByteArray last;
        const char* node;
    } cases[] = {
        {"\"K1\",\"notes\",\"\xFF"
         "data/no",
         ".notes [|/w/data/no] 0/0"},
        {"\"K1\",\"notes\",\"\xFF", ".notes [] 0/0"},
        {"\"K1\",\"not", ".not [] 0/0"},
        {"\"K1\"", ". [] 0/0"},
        {"\"K1\",,", ". [] 0/0"},
        {"\"K1\",\"caf\xE9\",\"\xFF\"", ".café [] 0/0"}, // Latin-1 from an older system
    };
    for (const auto& c : cases) {
        TaskTreeModel model;
        const auto result =
            WorkspaceFile::read(model, "\"K 0\",\"a\",\"\xFF\"\r\n" + c.last, "/w/");
        EXPECT_FALSE(result.problem) << c.node;
        EXPECT_EQ(outline(model).section('\n', 1), c.node);
    }
}

TEST(WorkspaceFile, NeverCrashesOnRandomBytes) {
    QRandomGenerator random(20261122);
    for (int round = 0; round < 200; ++round) {
        QByteArray bytes(random.bounded(1, 400), Qt::Uninitialized);
        for (char& byte : bytes)
            byte = static_cast<char>(random.bounded(256));
        if (round % 2 == 0) // also garbage behind a good first record
            bytes.prepend("\"K 0\",\"a\",\"\xFF\"\r\n\"K1\",\"");
        TaskTreeModel model;
        model.appendNode(nullptr, "old");
        const auto result = WorkspaceFile::read(model, bytes, "/w/");
        if (!result.treeReplaced) {
            EXPECT_EQ(outline(model), "old [] 0/0");
        }
        EXPECT_GE(model.nodeCount(), 1);
        WorkspaceFile::write(model, "/w/");
    }
}

TEST(Workspace, SavesTwiceToTheSameBytesAndLoadsAfterAMove) {
    QTemporaryDir dir;
    QDir(dir.path()).mkpath("old/data");
    const QString oldFile = dir.filePath("old/work.tsk");
    TaskTreeModel model;
    WorkspaceState state;
    state.setTaskFile(oldFile);
    state.TaskDirty = true;
    QStandardItem* task = model.appendNode(nullptr, "My Batch Task");
    model.appendNode(task, "notes", dir.filePath("old/data/notes.txt"), 11);
    ASSERT_FALSE(saveWorkspace(model, state));
    EXPECT_FALSE(state.TaskDirty);
    const QByteArray first = readAll(oldFile);
    ASSERT_FALSE(saveWorkspace(model, state));
    EXPECT_EQ(readAll(oldFile), first);
    EXPECT_TRUE(first.contains("\xFF"
                               "data/notes.txt"));

    QDir(dir.path()).rename("old", "new");
    TaskTreeModel loaded;
    WorkspaceState opened;
    opened.TaskDirty = true;
    const QString newFile = dir.filePath("new/work.tsk");
    ASSERT_FALSE(loadWorkspace(loaded, opened, newFile));
    EXPECT_EQ(opened.TaskFileName, newFile);
    EXPECT_EQ(opened.TaskDir, QDir::toNativeSeparators(dir.filePath("new")) + QDir::separator());
    EXPECT_TRUE(opened.HasTaskFile);
    EXPECT_FALSE(opened.TaskDirty);
    EXPECT_EQ(NodeTag::split(TaskTreeModel::tag(loaded.item(0)->child(0))).path,
              dir.filePath("new/data/notes.txt"));
}

TEST(Workspace, ReportsFilesItCannotUseAndProtectsThem) {
    QTemporaryDir dir;
    TaskTreeModel model;
    model.appendNode(nullptr, "mine");
    WorkspaceState state;
    state.setTaskFile(dir.filePath("mine.tsk"));

    const auto missing = loadWorkspace(model, state, dir.filePath("absent.tsk"));
    ASSERT_TRUE(missing);
    EXPECT_TRUE(missing->contains("absent.tsk"));
    EXPECT_TRUE(loadWorkspace(model, state, dir.path()));
    writeAll(dir.filePath("notes.txt"), "just some notes\r\n");
    ASSERT_TRUE(loadWorkspace(model, state, dir.filePath("notes.txt")));
    EXPECT_EQ(outline(model), "mine [] 0/0");
    EXPECT_EQ(state.TaskFileName, dir.filePath("mine.tsk"));

    // A damaged file loads as far as it can and becomes the open workspace.
    writeAll(dir.filePath("damaged.tsk"), "\"K 0\",\"a\",\"\xFF\"\r\n\"K9\",\"b\",\"\xFF\"\r\n");
    const auto damaged = loadWorkspace(model, state, dir.filePath("damaged.tsk"));
    ASSERT_TRUE(damaged);
    EXPECT_TRUE(damaged->contains("line 2"));
    EXPECT_EQ(outline(model), "a [] 0/0");
    EXPECT_EQ(state.TaskFileName, dir.filePath("damaged.tsk"));
    EXPECT_FALSE(state.TaskDirty);

    state.setTaskFile(dir.filePath("no/such/folder/x.tsk"));
    state.TaskDirty = true;
    const auto unsaved = saveWorkspace(model, state);
    ASSERT_TRUE(unsaved);
    EXPECT_TRUE(unsaved->contains("x.tsk"));
    EXPECT_TRUE(state.TaskDirty);
}

TEST(WorkspaceState, NamesTheFileInTheTitle) {
    WorkspaceState state;
    EXPECT_EQ(state.windowTitle(), "Morlevant v1.0");
    state.setTaskFile("/home/ann/jobs/week.tsk");
    EXPECT_EQ(state.TaskDir, QDir::toNativeSeparators("/home/ann/jobs/"));
    EXPECT_EQ(state.windowTitle(), "Morlevant v1.0 - /home/ann/jobs/week.tsk");
    state.TaskDirty = true;
    state.clear();
    EXPECT_EQ(state.windowTitle(), "Morlevant v1.0");
    EXPECT_FALSE(state.TaskDirty);
}

} // namespace
} // namespace morlevant
