#include "mainwindow/find/FileSearch.h"

#include "mainwindow/find/FindInAllFiles.h"
#include "mainwindow/find/ViewerSearch.h"
#include "tests/support/NonRegularFiles.h"
#include "tests/support/QStringPrinter.h"
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

// Find and Find Next in the text shown.
//                         0         1
//                         012345678901234
const QString sample = QStringLiteral("abc xyz ABC abc");

TEST(ViewerSearch, StepsDirectionsAndCase) {
    struct Case {
        const char* name;
        QString findText;
        bool matchCase;
        int direction;
        qsizetype findPosition; // as the last search or load left it
        bool newText;
        qsizetype selectionStart;
        qsizetype found; // -1: not found
    };
    constexpr int fwd = SearchState::forward;
    constexpr int back = SearchState::backward;
    const Case cases[] = {
        {"after a load the caret itself matches", "abc", false, fwd, 1, true, 0, 0},
        {"find next moves past the last match", "abc", false, fwd, 0, false, 0, 8},
        {"a moved caret starts at itself", "abc", false, fwd, 0, false, 8, 8},
        {"nothing after the last match", "abc", false, fwd, 12, false, 12, -1},
        {"match case forward never finds lower case", "abc", true, fwd, 1, true, 0, -1},
        {"match case forward finds lower case by capitals", "ABC", true, fwd, 1, true, 0, 0},
        {"backward finds the match before", "abc", false, back, 12, false, 12, 8},
        {"backward with match case skips capitals", "abc", true, back, 12, false, 12, 0},
        {"backward from the very start", "abc", false, back, 1, true, 0, -1},
        {"backward misses a match one before the caret", "bc", false, back, 1, true, 2, -1},
        {"any other direction goes backward", "xyz", false, 2, 1, true, 15, 4},
    };
    for (const Case& c : cases) {
        SearchState state;
        state.findText = c.findText;
        state.matchCase = c.matchCase;
        state.direction = c.direction;
        state.findPosition = c.findPosition;
        state.newText = c.newText;
        const auto found = searchViewerText(state, sample, c.selectionStart);
        EXPECT_EQ(found.value_or(-1), c.found) << c.name;
        EXPECT_EQ(state.findPosition, c.found >= 0 ? c.found : c.selectionStart) << c.name;
        EXPECT_FALSE(state.newText) << c.name;
    }
}

TEST(ViewerSearch, UpperCasingKeepsEveryCharacterInItsPlace) {
    // "ß" grows to "SS" in the full mapping; the search keeps it one character.
    const QString text = QStringLiteral("straße abc ÄBC");
    EXPECT_EQ(upperCasedInPlace(text), QStringLiteral("STRAßE ABC ÄBC"));
    SearchState state;
    state.findText = "abc";
    EXPECT_EQ(searchViewerText(state, text, 0), 7);
    state.findText = QStringLiteral("äbc");
    EXPECT_EQ(searchViewerText(state, text, 7), 11);
}

} // namespace
} // namespace morlevant
