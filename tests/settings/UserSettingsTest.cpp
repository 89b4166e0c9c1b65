#include "settings/UserSettings.h"

#include "settings/RecentFiles.h"
#include "settings/SettingsStore.h"
#include "tests/support/QStringPrinter.h"
#include "tests/support/TempDir.h"

#include <QDir>
#include <gtest/gtest.h>

namespace morlevant {
namespace {

class UserSettingsTest : public ::testing::Test {
protected:
    // What the window holds before loading: its design-time state, unlike any default.
    static UserSettings beforeLoading() {
        UserSettings settings;
        settings.fontName = "Mono";
        settings.fontSize = 9;
        settings.fontBold = true;
        settings.addFileInSub = false;
        settings.split = 4000;
        settings.windowState = UserSettings::Normal;
        return settings;
    }

    UserSettings loaded() const {
        UserSettings settings = beforeLoading();
        LoadSet(store, settings, "/opt/morlevant/");
        settings.tempFilePath.clear();
        return settings;
    }

    testing::TempDir dir;
    SettingsStore store{QString::fromStdString(dir.file("settings.ini"))};
};

TEST_F(UserSettingsTest, ReadsBackWhatItWroteUnderOtherSpellings) {
    UserSettings saved;
    saved.fontName = "DejaVu Sans Mono";
    saved.fontSize = 10.5;
    saved.fontUnderline = true;
    saved.showHtml = false;
    saved.sameLevelDrag = false;
    saved.liveDrag = true;
    saved.editWithSettings = true;
    saved.BOIPath = "/srv/boi";
    saved.DataPath = "/srv/data";
    saved.split = 3150.5f;
    saved.defBrowse = "/usr/bin/firefox";
    SaveSet(store, saved);
    EXPECT_EQ(store.value("AFSon"), "True");
    EXPECT_EQ(store.value("fontu"), "True");
    EXPECT_EQ(store.value("EditWithSettings"), "True");
    EXPECT_EQ(store.value("Split"), "3150.5");
    EXPECT_EQ(store.value("LastDir"), QDir::toNativeSeparators(QDir::currentPath()));
    EXPECT_EQ(loaded(), saved);
}

TEST_F(UserSettingsTest, AcceptsBooleansAsWordsOrNumbersAndNeverStartsMinimised) {
    const std::pair<const char*, bool> booleans[] = {
        {"True", true}, {"false", false}, {" 2.5 ", true}, {"0.0", false}};
    for (const auto& [text, value] : booleans) {
        store.setValue("AFSon", text);
        EXPECT_EQ(loaded().addFileInSub, value) << text;
    }
    const std::pair<const char*, int> windowStates[] = {
        {"0", UserSettings::Normal}, {"1", UserSettings::Normal}, {"2", UserSettings::Maximised}};
    for (const auto& [stored, state] : windowStates) {
        store.setValue("WndStyle", stored);
        EXPECT_EQ(loaded().windowState, state) << stored;
    }
}

TEST(SettingsStore, KeysWrittenByHandInAnyCaseMeanTheSameAndAreWrittenBackOnce) {
    testing::TempDir dir;
    const std::string ini = dir.file("settings.ini");
    for (const char* line : {"AFSon=False", "afson=False", "AFSON=False"}) {
        testing::writeBytes(ini, std::string("[Setting]\n") + line + "\nFontName=Mono\n");
        {
            SettingsStore store(QString::fromStdString(ini));
            EXPECT_EQ(store.value("AFson"), "False") << line;
            EXPECT_EQ(store.value("fontname"), "Mono") << line;
        }
        EXPECT_EQ(QByteArray::fromStdString(testing::readBytes(ini)).toLower().count("afson"), 1)
            << line;
    }
}

class RecentFilesTest : public UserSettingsTest {
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

    RecentFiles recent{store};
};

TEST_F(RecentFilesTest, KeepsTheFourNewestAndMovesAReopenedOneToTheFront) {
    const QStringList five = {"/a.tsk", "/b.tsk", "/c.tsk", "/d.tsk", "/e.tsk"};
    EXPECT_EQ(shown(openInTurn(five)), "&1 /e.tsk | &2 /d.tsk | &3 /c.tsk | &4 /b.tsk");
    EXPECT_EQ(recent.FindRecentFile("/a.tsk"), RecentFiles::notFound);
    EXPECT_EQ(recent.FindRecentFile("/c.tsk"), 2);
    EXPECT_EQ(recent.FindRecentFile("/C.tsk"), RecentFiles::notFound);
    const std::pair<int, const char*> cases[] = {
        {0, "&1 /e.tsk | &2 /d.tsk | &3 /c.tsk | &4 /b.tsk"},
        {2, "&1 /c.tsk | &2 /e.tsk | &3 /d.tsk | &4 /b.tsk"},
        {3, "&1 /b.tsk | &2 /e.tsk | &3 /d.tsk | &4 /c.tsk"},
    };
    for (const auto& [position, menu] : cases) {
        // Whatever the ring held, these five in turn leave e, d, c, b.
        EXPECT_EQ(shown(openInTurn(five)), cases[0].second);
        EXPECT_EQ(shown(recent.UpdateRecentFiles(position)), menu) << position;
        EXPECT_EQ(shown(recent.ShowRecentFiles()), menu);
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
