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
    const auto messageFor = [&](const std::string& path) {
        try {
            readTaskPageSettings(path);
        } catch (const TaskError& error) {
            return std::string(error.what());
        }
        return std::string("no error");
    };
    EXPECT_NE(messageFor(dir.file("absent.ttp")).find("missing"), std::string::npos);
    writeBytes(dir.file("empty.ttp"), "");
    EXPECT_NE(messageFor(dir.file("empty.ttp")).find("empty"), std::string::npos);
    writeBytes(dir.file("short.ttp"), "1\r\n2\r\n");
    EXPECT_NE(messageFor(dir.file("short.ttp")).find("only 2 of its 31"), std::string::npos);
}

} // namespace
