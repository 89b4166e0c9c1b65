#include "mainwindow/find/SearchState.h"
#include "mainwindow/viewer/BlockLoading.h"
#include "mainwindow/viewer/TextViewer.h"
#include "mainwindow/viewer/ViewerLoader.h"
#include "tests/support/NonRegularFiles.h"
#include "tests/support/QStringPrinter.h"
#include "tests/support/ScriptedPrompts.h"
#include "tests/support/TempDir.h"

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
    const struct {
        std::string bytes;
        QString end;
        qsizetype lineEnds;
    } cases[] = {
        {lines + std::string(63, 'a') + "\r\nb\r\n", "aa\nb\n", qsizetype(block / 64 + 1)},
        {lines + std::string(63, 'c') + "é\n", "cé\n", qsizetype(block / 64)},
        {"one\r\ntwo\rthree\nfour", "one\ntwo\nthree\nfour", 3},
        {"\n\r\n\r", "\n\n\n", 3},
        // Separators of the document's own, in the file, are not taken as line ends.
        {"a\u2028b\u2029c\n", "a\ufffdb\ufffdc\n", 1},
    };
    for (const auto& c : cases) {
        QTextDocument document;
        ASSERT_FALSE(loadPlainText(document, file("blocks.txt", c.bytes)));
        const QString text = document.toPlainText();
        EXPECT_TRUE(text.endsWith(c.end)) << c.end.toStdString();
        EXPECT_EQ(text.count(u'\n'), c.lineEnds) << c.end.toStdString();
        EXPECT_EQ(text.count(QChar::ReplacementCharacter), c.end.count(QChar::ReplacementCharacter))
            << c.end.toStdString();
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
    const struct {
        QString path;
        const char* reason;
    } cases[] = {
        {path("folder.htm"), "it is a folder"},
        {path("pipe"), "it is a named pipe"},
        {"/dev/zero", "it is a device"},
        {path("socket"), "it is a socket"},
    };
    for (const auto& c : cases) {
        viewer.showText("before");
        prompts.asked.clear();
        loader.loadtext(tag("", c.path), true);
        EXPECT_EQ(prompts.asked,
                  QStringList{"error|Morlevant|Can't show " + c.path + ": " + c.reason + "."});
        EXPECT_EQ(viewer.toPlainText(), "");
        EXPECT_EQ(viewer.shownFile(), c.path); // not tried again until picked anew
    }
    prompts.asked.clear();
    loader.loadtext(tag("", path("gone.txt")), true);
    EXPECT_EQ(viewer.toPlainText(), "Can't find file - " + path("gone.txt"));
    EXPECT_TRUE(prompts.asked.isEmpty());
}

} // namespace
} // namespace morlevant
