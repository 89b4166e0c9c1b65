// The text viewer, loading a file and finding in it, and Find in All Files.
#include "mainwindow/find/FileSearch.h"
#include "mainwindow/find/FindInAllFiles.h"
#include "mainwindow/find/SearchState.h"
#include "mainwindow/find/ViewerSearch.h"
#include "mainwindow/viewer/BlockLoading.h"
#include "mainwindow/viewer/TextViewer.h"
#include "mainwindow/viewer/ViewerLoader.h"
#include "tests/support/NonRegularFiles.h"
#include "tests/support/QStringPrinter.h"
#include "tests/support/ScriptedPrompts.h"
#include "tests/support/TempDir.h"
#include "tests/support/TreeText.h"
#include "workspace/WorkspaceState.h"

#include <QTextDocument>
#include <gtest/gtest.h>

namespace morlevant {
namespace {

using testing::writeBytes;

class Loading : public ::testing::Test {
protected:
    QString file(const std::string& name, const std::string& bytes) const {
        writeBytes(folder.file(name), bytes);
        return path(name);
    }
    QString path(const std::string& name) const {
        return QString::fromStdString(folder.file(name));
    }

    testing::TempDir folder;
};

TEST_F(Loading, BlocksJoinWithoutBreakingLinesOrCharacters) {
    // Lines of 64 bytes up to the end of the first block, whose last byte is then a CR whose
    // LF opens the next block, or the first half of a character.
    const std::size_t block = std::size_t(1) << 20;
    std::string lines;
    while (lines.size() < block - 64)
        lines += std::string(63, 'a') + "\n";
    const std::tuple<std::string, QString, qsizetype> cases[] = {
        {lines + std::string(63, 'a') + "\r\nb\r\n", "aa\nb\n", qsizetype(block / 64 + 1)},
        {lines + std::string(63, 'c') + "é\n", "cé\n", qsizetype(block / 64)},
        {"one\r\ntwo\rthree\nfour", "one\ntwo\nthree\nfour", 3},
        {"\n\r\n\r", "\n\n\n", 3},
        // Separators of the document's own, in the file, are not taken as line ends.
        {"a\u2028b\u2029c\n", "a\ufffdb\ufffdc\n", 1},
    };
    for (const auto& [bytes, end, lineEnds] : cases) {
        QTextDocument document;
        ASSERT_FALSE(loadPlainText(document, file("blocks.txt", bytes)));
        const QString text = document.toPlainText();
        EXPECT_TRUE(text.endsWith(end)) << end.toStdString();
        EXPECT_EQ(text.count(u'\n'), lineEnds) << end.toStdString();
        EXPECT_EQ(text.count(QChar::ReplacementCharacter), end.count(QChar::ReplacementCharacter))
            << end.toStdString();
    }
}

TEST_F(Loading, AFileOverTheLimitShowsItsFirstPartAndSaysSo) {
    std::string kilobyteLines;
    for (int line = 0; line < 3 * 1024; ++line)
        kilobyteLines += std::string(1023, 'x') + "\n";
    QTextDocument document;
    ASSERT_FALSE(loadPlainText(document, file("big.txt", kilobyteLines), qint64(2) << 20));
    const QStringList lines = document.toPlainText().split(u'\n');
    ASSERT_EQ(lines.size(), 2 * 1024 + 1);
    EXPECT_EQ(lines.last(),
              "[Only the first 2 MB of this 3 MB file are shown; the rest is not shown.]");
    EXPECT_EQ(notShownLine(qint64(64) << 20, (qint64(1) << 30) + 1),
              "[Only the first 64 MB of this 1,025 MB file are shown; the rest is not shown.]");

    // A part that ends inside a line gets the notice on a line of its own.
    ASSERT_FALSE(loadPlainText(document, file("lines.txt", "one\ntwo\nthree\n"), 10));
    EXPECT_EQ(document.toPlainText(), "one\ntwo\nth\n" + notShownLine(10, 14));
    EXPECT_EQ(loadPlainText(document, path("missing.txt")).value_or("").left(10), "Can't open");
    EXPECT_TRUE(document.isEmpty());
}

class LoadText : public Loading {
protected:
    LoadText() { loader.setTempFilePath(path("corvellum.tmp")); }
    QString tag(const QString& remark, const QString& filePath) const {
        return remark + QChar(0) + filePath;
    }

    TextViewer viewer;
    SearchState search;
    testing::ScriptedPrompts prompts;
    ViewerLoader loader{viewer, search, prompts};
};

TEST_F(LoadText, ShowsACardForNonTextKindsAndHtmlWithoutTagsOnlyWhenAsked) {
    // Which paths are of those kinds is pinned by the open rules (ExternalPrograms).
    loader.loadtext(tag("sound", "/nowhere/a.wav"), true);
    EXPECT_EQ(viewer.toPlainText(),
              QString("File name: /nowhere/a.wav\n\nremark: sound") + QChar(0));
    EXPECT_EQ(viewer.shownFile(), "/nowhere/a.wav");

    // Tags, also across lines, are dropped; entities and stray brackets are no tags and stay,
    // and a tag never closed hides the rest.
    const std::string html = "<p>Hi &amp; &lt;b&gt;\n<a\nhref=x>there</a>\n\nstray > closes "
                             "nothing\nopen < never closed\nstill inside";
    const QString page = file("site.html.d/page.HTML", html);
    loader.loadtext(tag("", page), true);
    EXPECT_EQ(viewer.toPlainText(),
              "Hi &amp; &lt;b&gt;\n\nthere\n\nstray  closes nothing\nopen \n\n");
    loader.loadtext(tag("", page), false);
    EXPECT_EQ(viewer.toPlainText(), QString::fromStdString(html));
    // ".HTM" anywhere in the path counts, also in a folder's name.
    const QString notes = file("site.html.d/notes.txt", "<b>bold</b>");
    loader.loadtext(tag("", notes), true);
    EXPECT_EQ(viewer.toPlainText(), "bold\n");
    EXPECT_TRUE(prompts.asked.isEmpty());
}

TEST_F(LoadText, WhatIsNotARegularFileIsRefusedWithOneMessage) {
    ASSERT_TRUE(testing::makeFifo(folder.file("pipe")));
    const testing::UnixSocket socket(folder.file("socket"));
    ASSERT_TRUE(socket.bound());
    std::filesystem::create_directories(folder.path() / "folder.htm");
    const std::pair<QString, const char*> cases[] = {
        {path("folder.htm"), "it is a folder"},
        {path("pipe"), "it is a named pipe"},
        {"/dev/zero", "it is a device"},
        {path("socket"), "it is a socket"},
    };
    for (const auto& [file, reason] : cases) {
        viewer.showText("before");
        prompts.asked.clear();
        loader.loadtext(tag("", file), true);
        EXPECT_EQ(prompts.asked,
                  QStringList{"error|Morlevant|Can't show " + file + ": " + reason + "."});
        EXPECT_EQ(viewer.toPlainText(), "");
        EXPECT_EQ(viewer.shownFile(), file); // not tried again until picked anew
    }
    prompts.asked.clear();
    loader.loadtext(tag("", path("gone.txt")), true);
    EXPECT_EQ(viewer.toPlainText(), "Can't find file - " + path("gone.txt"));
    EXPECT_TRUE(prompts.asked.isEmpty());
}

using FileSearch = Loading;

TEST_F(FileSearch, FindsTheBytesWhereverTheyLieAcrossBlocks) {
    // Blocks of 4 bytes: "abcd|efgh|ij\r\n" puts every two-letter text on or across an edge.
    const std::string path = file("text.txt", "abcdefghij\r\nÜnï").toStdString();
    for (const char* text : {"abcd", "de", "defghi", "j\r\nÜ", "ï"})
        EXPECT_TRUE(Search(path, text, 4)) << text;
    for (const char* text : {"ABCD", "hij\r\nx"})
        EXPECT_FALSE(Search(path, text, 4)) << text;
    EXPECT_TRUE(Search(path, "abcdefghij", 1));
    EXPECT_TRUE(Search(path, "de", 1 << 20));
    EXPECT_FALSE(Search(path, "ed", 1 << 20));
}

TEST_F(FileSearch, OnlyRegularFilesMatch) {
    EXPECT_FALSE(Search(folder.file("missing.txt"), "a"));
    EXPECT_FALSE(Search(folder.path().string(), "a")); // a folder
    EXPECT_FALSE(Search(file("empty.txt", "").toStdString(), "a"));
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
    constexpr int fwd = SearchState::forward;
    constexpr int back = SearchState::backward;
    const struct {
        const char* name;
        QString findText;
        bool matchCase;
        int direction;
        qsizetype findPosition; // as the last search or load left it
        bool newText;
        qsizetype selectionStart;
        qsizetype found; // -1: not found
    } cases[] = {
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
    for (const auto& c : cases) {
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
