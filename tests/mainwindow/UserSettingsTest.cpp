#include "UserSettings.h"

#include "QStringPrinter.h"
#include "SettingsStore.h"

#include <QDir>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace morlevant {
namespace {

class UserSettingsTest : public ::testing::Test {
protected:
    QTemporaryDir dir;
    SettingsStore store{dir.filePath("settings.ini")};
    const QString programFolder = "/opt/morlevant/";
};

TEST_F(UserSettingsTest, GivesAFreshUserTheDefaults) {
    UserSettings settings;
    settings.fontName = "Mono";
    settings.split = 5000;
    settings.addFileInSub = false;
    settings.windowState = UserSettings::Normal;
    LoadSet(store, settings, programFolder);
    EXPECT_EQ(settings.fontName, "宋体");
    EXPECT_EQ(settings.fontSize, 12);
    EXPECT_FALSE(settings.fontBold || settings.fontItalic || settings.fontUnderline);
    EXPECT_TRUE(settings.addFileInSub && settings.showHtml && settings.sameLevelDrag);
    EXPECT_FALSE(settings.liveDrag);
    EXPECT_EQ(settings.split, 2700);
    EXPECT_EQ(settings.BOIPath, programFolder);
    EXPECT_EQ(settings.DataPath, programFolder);
    EXPECT_EQ(settings.defBrowse, "");
    EXPECT_EQ(settings.windowState, UserSettings::Maximised);
    EXPECT_TRUE(settings.tempFilePath.endsWith("/corvellum.tmp"));
}

TEST_F(UserSettingsTest, ReadsBackWhatItWrote) {
    UserSettings saved;
    saved.fontName = "DejaVu Sans Mono";
    saved.fontSize = 10.5;
    saved.fontBold = true;
    saved.fontUnderline = true;
    saved.addFileInSub = false;
    saved.showHtml = false;
    saved.sameLevelDrag = false;
    saved.liveDrag = true;
    saved.BOIPath = "/srv/boi";
    saved.DataPath = "/srv/data";
    saved.split = 3150.5f;
    saved.defBrowse = "/usr/bin/firefox";
    saved.windowState = UserSettings::Normal;
    SaveSet(store, saved);

    // Written under the writer's spellings, as text.
    EXPECT_EQ(store.value("AFSon"), "False");
    EXPECT_EQ(store.value("fontbold"), "True");
    EXPECT_EQ(store.value("Split"), "3150.5");
    EXPECT_EQ(store.value("WndStyle"), "0");
    EXPECT_EQ(store.value("LastDir"), QDir::toNativeSeparators(QDir::currentPath()));

    UserSettings loaded;
    LoadSet(store, loaded, programFolder);
    EXPECT_EQ(loaded.fontName, saved.fontName);
    EXPECT_EQ(loaded.fontSize, saved.fontSize);
    EXPECT_EQ(loaded.fontBold, true);
    EXPECT_EQ(loaded.fontItalic, false);
    EXPECT_EQ(loaded.fontUnderline, true);
    EXPECT_EQ(loaded.addFileInSub, false);
    EXPECT_EQ(loaded.showHtml, false);
    EXPECT_EQ(loaded.sameLevelDrag, false);
    EXPECT_EQ(loaded.liveDrag, true);
    EXPECT_EQ(loaded.BOIPath, saved.BOIPath);
    EXPECT_EQ(loaded.DataPath, saved.DataPath);
    EXPECT_EQ(loaded.split, saved.split);
    EXPECT_EQ(loaded.defBrowse, saved.defBrowse);
    EXPECT_EQ(loaded.windowState, UserSettings::Normal);
}

TEST_F(UserSettingsTest, AcceptsBooleansAsWordsOrNumbers) {
    const struct {
        const char* text;
        bool value;
    } cases[] = {{"True", true}, {"false", false}, {"-1", true},  {"0", false},
                 {"1", true},    {" 2.5 ", true},  {"0.0", false}};
    for (const auto& c : cases) {
        store.setValue("Drag", c.text);
        UserSettings settings;
        settings.liveDrag = !c.value;
        LoadSet(store, settings, programFolder);
        EXPECT_EQ(settings.liveDrag, c.value) << c.text;
    }
}

TEST_F(UserSettingsTest, KeepsThePreviousValueForABadOne) {
    store.setValue("fontname", " ");
    store.setValue("fontsize", "big");
    store.setValue("fontbold", "maybe");
    store.setValue("split", "wide");
    store.setValue("wndstyle", "7");
    store.setValue("fonti", "True"); // good values around the bad ones still apply
    store.setValue("defbrowse", "/usr/bin/browser");
    UserSettings settings;
    settings.fontName = "Mono";
    settings.fontSize = 9;
    settings.fontBold = true;
    settings.split = 4000;
    settings.windowState = UserSettings::Normal;
    LoadSet(store, settings, programFolder);
    EXPECT_EQ(settings.fontName, "Mono");
    EXPECT_EQ(settings.fontSize, 9);
    EXPECT_TRUE(settings.fontBold);
    EXPECT_EQ(settings.split, 4000);
    EXPECT_EQ(settings.windowState, UserSettings::Normal);
    EXPECT_TRUE(settings.fontItalic);
    EXPECT_EQ(settings.defBrowse, "/usr/bin/browser");
}

TEST_F(UserSettingsTest, NeverStartsMinimised) {
    const struct {
        const char* stored;
        int state;
    } cases[] = {
        {"0", UserSettings::Normal}, {"1", UserSettings::Normal}, {"2", UserSettings::Maximised}};
    for (const auto& c : cases) {
        store.setValue("WndStyle", c.stored);
        UserSettings settings;
        settings.windowState = UserSettings::Normal;
        LoadSet(store, settings, programFolder);
        EXPECT_EQ(settings.windowState, c.state) << c.stored;
    }
}

} // namespace
} // namespace morlevant
