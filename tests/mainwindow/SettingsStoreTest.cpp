#include "SettingsStore.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace morlevant {
namespace {

TEST(SettingsStore, MatchesKeysWithoutRegardToCase) {
    QTemporaryDir dir;
    const QString ini = dir.filePath("settings.ini");
    {
        SettingsStore store(ini);
        store.setValue("AFSon", "False");
        store.setValue("Split", "3000");
    }
    SettingsStore store(ini);
    EXPECT_EQ(store.value("AFson", "-1"), "False");
    EXPECT_EQ(store.value("split"), "3000");
    EXPECT_TRUE(store.contains("SPLIT"));
    store.remove("sPlIt");
    EXPECT_FALSE(store.contains("Split"));
    EXPECT_EQ(store.value("Split", "2700"), "2700");
    store.remove("NeverThere");
}

} // namespace
} // namespace morlevant
