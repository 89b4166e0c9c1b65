#include "taskdef/TaskPageSettings.h"

#include "taskdef/TaskError.h"
#include "tests/support/TempDir.h"

#include <gtest/gtest.h>

using namespace morlevant;
using morlevant::testing::TempDir;
using morlevant::testing::writeBytes;

namespace {

TaskPageSettings numbered() {
    TaskPageSettings settings;
    for (int n = 1; n <= TaskPageSettings::lineCount; ++n)
        settings.line(n) = "v" + std::to_string(n);
    return settings;
}

TEST(TaskPageSettingsFile, MultiLineValueShiftsLaterFields) {
    TempDir dir;
    TaskPageSettings settings = numbered();
    settings.find4 = "first\r\nsecond";
    writeTaskPageSettings(dir.file("t.ttp"), settings);
    const TaskPageSettings back = readTaskPageSettings(dir.file("t.ttp"));
    EXPECT_EQ(back.find4, "first");
    EXPECT_EQ(back.replace4, "second");
    EXPECT_EQ(back.insertAction, "v18");
}

TEST(TaskPageSettingsFile, AcceptsLfAndMissingLastLineEnd) {
    TempDir dir;
    std::string text;
    for (int n = 1; n <= 31; ++n)
        text += std::to_string(n) + (n < 31 ? "\n" : "");
    writeBytes(dir.file("t.ttp"), text);
    const TaskPageSettings back = readTaskPageSettings(dir.file("t.ttp"));
    EXPECT_EQ(back.rangeMode, "1");
    EXPECT_EQ(back.divideNumberTo, "31");
}

TEST(TaskPageSettingsFile, MissingEmptyOrShortFilesAreClearErrors) {
    TempDir dir;
    writeBytes(dir.file("empty.ttp"), "");
    writeBytes(dir.file("short.ttp"), "1\r\n2\r\n");
    for (const auto& [name, says] : {std::pair{"absent.ttp", "missing"},
                                     {"empty.ttp", "empty"},
                                     {"short.ttp", "only 2 of its 31"}}) {
        try {
            readTaskPageSettings(dir.file(name));
            ADD_FAILURE() << name;
        } catch (const TaskError& error) {
            EXPECT_NE(std::string(error.what()).find(says), std::string::npos) << error.what();
        }
    }
}

} // namespace
