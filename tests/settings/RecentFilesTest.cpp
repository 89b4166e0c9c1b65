#include "settings/RecentFiles.h"

#include "settings/SettingsStore.h"
#include "tests/support/QStringPrinter.h"
#include "tests/support/TempDir.h"

#include <gtest/gtest.h>

namespace morlevant {
namespace {

class RecentFilesTest : public ::testing::Test {
protected:
    // The menu as text: visible entries' captions, a disabled one in brackets.
    static QString shown(const RecentMenu& menu) {
        QStringList captions;
        for (const RecentEntry& entry : menu) {
            if (entry.visible)
                captions << (entry.enabled ? entry.caption : "[" + entry.caption + "]");
        }
        return captions.join(" | ");
    }

    RecentMenu openInTurn(const QStringList& paths) {
        RecentMenu menu;
        for (const QString& path : paths)
            menu = recent.enterRecentFile(path);
        return menu;
    }

    testing::TempDir dir;
    SettingsStore store{QString::fromStdString(dir.file("settings.ini"))};
    RecentFiles recent{store};
};

TEST_F(RecentFilesTest, KeepsTheFourNewestAndMovesAReopenedOneToTheFront) {
    const QStringList five = {"/a.tsk", "/b.tsk", "/c.tsk", "/d.tsk", "/e.tsk"};
    EXPECT_EQ(shown(openInTurn(five)), "&1 /e.tsk | &2 /d.tsk | &3 /c.tsk | &4 /b.tsk");
    EXPECT_EQ(recent.FindRecentFile("/a.tsk"), RecentFiles::notFound);
    EXPECT_EQ(recent.FindRecentFile("/c.tsk"), 2);
    EXPECT_EQ(recent.FindRecentFile("/C.tsk"), RecentFiles::notFound);
    const struct {
        int position;
        const char* menu;
    } cases[] = {
        {0, "&1 /e.tsk | &2 /d.tsk | &3 /c.tsk | &4 /b.tsk"},
        {2, "&1 /c.tsk | &2 /e.tsk | &3 /d.tsk | &4 /b.tsk"},
        {3, "&1 /b.tsk | &2 /e.tsk | &3 /d.tsk | &4 /c.tsk"},
    };
    for (const auto& c : cases) {
        for (const char* key : {"FirstFile", "0File", "1File", "2File", "3File"})
            store.remove(key);
        openInTurn(five);
        EXPECT_EQ(shown(recent.UpdateRecentFiles(c.position)), c.menu) << c.position;
        EXPECT_EQ(shown(recent.ShowRecentFiles()), c.menu);
    }
}

TEST_F(RecentFilesTest, FillsAnEmptyHistoryAndMovesEntriesOfARingNotYetFull) {
    EXPECT_EQ(shown(recent.ShowRecentFiles()), "[no history]");
    EXPECT_EQ(shown(recent.AddRecentFile("   ")), "[no history]");
    const RecentMenu menu = recent.enterRecentFile("/my work/x.tsk");
    EXPECT_EQ(shown(menu), "&1 /my work/x.tsk");
    EXPECT_EQ(RecentFiles::pathOfCaption(menu[0].caption), "/my work/x.tsk");

    EXPECT_EQ(shown(openInTurn({"/a.tsk", "/b.tsk", "/a.tsk"})),
              "&1 /a.tsk | &2 /b.tsk | &3 /my work/x.tsk");
    EXPECT_EQ(shown(openInTurn({"/my work/x.tsk"})), "&1 /my work/x.tsk | &2 /a.tsk | &3 /b.tsk");
    EXPECT_EQ(shown(recent.UpdateRecentFiles(2)), "&1 /b.tsk | &2 /my work/x.tsk | &3 /a.tsk");
}

TEST_F(RecentFilesTest, StopsAtAHoleInTheRing) {
    store.setValue("FirstFile", "2");
    store.setValue("2File", "/a.tsk");
    store.setValue("3File", "/b.tsk");
    store.setValue("1File", "/hidden.tsk");
    EXPECT_EQ(shown(recent.ShowRecentFiles()), "&1 /a.tsk | &2 /b.tsk");
    EXPECT_EQ(recent.FindRecentFile("/hidden.tsk"), RecentFiles::notFound);
    store.setValue("FirstFile", "9");
    EXPECT_EQ(shown(recent.ShowRecentFiles()), "[no history]");
}

} // namespace
} // namespace morlevant
