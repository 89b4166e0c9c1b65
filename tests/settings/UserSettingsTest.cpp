#include "settings/UserSettings.h"

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
    const struct {
        const char* text;
        bool value;
    } booleans[] = {{"True", true}, {"false", false}, {" 2.5 ", true}, {"0.0", false}};
    for (const auto& c : booleans) {
        store.setValue("AFSon", c.text);
        EXPECT_EQ(loaded().addFileInSub, c.value) << c.text;
    }
    const struct {
        const char* stored;
        int state;
    } windowStates[] = {
        {"0", UserSettings::Normal}, {"1", UserSettings::Normal}, {"2", UserSettings::Maximised}};
    for (const auto& c : windowStates) {
        store.setValue("WndStyle", c.stored);
        EXPECT_EQ(loaded().windowState, c.state) << c.stored;
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

} // namespace
} // namespace morlevant
