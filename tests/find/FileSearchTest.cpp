#include "mainwindow/find/FileSearch.h"

#include "mainwindow/find/FindInAllFiles.h"
#include "tests/support/NonRegularFiles.h"
#include "tests/support/TempDir.h"
#include "tests/support/TreeText.h"
#include "workspace/WorkspaceState.h"

#include <gtest/gtest.h>

namespace morlevant {
namespace {

using testing::writeBytes;

class FileSearch : public ::testing::Test {
protected:
    std::string file(const std::string& name, const std::string& bytes) const {
        writeBytes(folder.file(name), bytes);
        return folder.file(name);
    }
    testing::TempDir folder;
};

TEST_F(FileSearch, FindsTheBytesWhereverTheyLieAcrossBlocks) {
    // Blocks of 4 bytes: "abcd|efgh|ij\r\n" puts every two-letter text on or across an edge.
    const std::string path = file("text.txt", "abcd"
                                              "efgh"
                                              "ij\r\n"
                                              "Ünï");
    const struct {
        const char* text;
        std::size_t blockSize;
        bool found;
    } cases[] = {
        {"abcd", 4, true},      {"de", 4, true},         {"defghi", 4, true},
        {"j\r\nÜ", 4, true},    {"ï", 4, true},          {"ABCD", 4, false},
        {"hij\r\nx", 4, false}, {"abcdefghij", 1, true}, {"de", 1 << 20, true},
        {"ed", 1 << 20, false},
    };
    for (const auto& c : cases)
        EXPECT_EQ(Search(path, c.text, c.blockSize), c.found) << c.text << " / " << c.blockSize;
}

TEST_F(FileSearch, OnlyRegularFilesMatch) {
    EXPECT_FALSE(Search(folder.file("missing.txt"), "a"));
    EXPECT_FALSE(Search(folder.path().string(), "a")); // a folder
    EXPECT_FALSE(Search(file("empty.txt", ""), "a"));
    ASSERT_TRUE(testing::makeFifo(folder.file("pipe")));
    EXPECT_FALSE(Search(folder.file("pipe"), "a")); // and returns at once
    EXPECT_FALSE(Search("/dev/zero", std::string(1, '\0')));
}

TEST_F(FileSearch, FindInAllFilesGathersTheMatchingFilesInTreeOrder) {
    TaskTreeModel model;
    WorkspaceState state;
    const QString base = QString::fromStdString(folder.path().string()) + "/";
    testing::buildTree(model, "A[b.txt a.txt] B[c.txt missing.txt] Empty", base);
    file("b.txt", "the needle\r\n");
    file("a.txt", "no pin here\r\n");
    file("c.txt", "needles and more\r\n");
    model.appendNode(testing::find(model, {"B"}), "remarked",
                     QString("a remark") + QChar(0) + base + "b.txt", treeImage::text);

    QStandardItem* group = findInAllFiles(model, state, "needle");
    EXPECT_EQ(testing::treeText(model), "A[b.txt a.txt] B[c.txt missing.txt remarked] Empty "
                                        "Include Files:needle [b.txt c.txt remarked]");
    EXPECT_EQ(TaskTreeModel::tag(group->child(2)),
              TaskTreeModel::tag(testing::find(model, {"B", "remarked"})));
    EXPECT_TRUE(state.TaskDirty);

    // The earlier group is searched too; a text no file holds still leaves its group.
    findInAllFiles(model, state, "needles");
    findInAllFiles(model, state, "Needle");
    EXPECT_EQ(testing::treeText(model),
              "A[b.txt a.txt] B[c.txt missing.txt remarked] Empty "
              "Include Files:needle [b.txt c.txt remarked] Include Files:needles [c.txt c.txt] "
              "Include Files:Needle ");
}

} // namespace
} // namespace morlevant
