#include "taskdef/TaskPageSettings.h"

#include "taskdef/TaskError.h"
#include "tests/support/NonRegularFiles.h"
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

// The window asks this on every click on a task: it must agree with the reader a run uses.
TEST(TaskPageSettingsFile, TheCompletenessCheckAgreesWithTheReader) {
    const auto lines = [](int count, const std::string& end) {
        std::string text;
        for (int n = 1; n <= count; ++n)
            text += std::to_string(n) + end;
        return text;
    };
    const struct {
        const char* name;
        std::string text;
        bool complete;
    } cases[] = {
        {"empty", "", false},
        {"thirty lines", lines(30, "\r\n"), false},
        {"thirty-one lines", lines(31, "\r\n"), true},
        {"last line unended", lines(30, "\n") + "31", true},
        {"CR LF counts once", lines(20, "\r\n"), false},
        {"a lone CR ends a line", lines(30, "\r") + "\r", true},
        {"LF CR is two ends", lines(29, "\n") + "\n\r", true},
        {"only line ends", std::string(31, '\n'), true},
        {"only CR LF pairs", std::string(30, '\r') + "\n", false},
        {"more than needed", lines(40, "\r\n"), true},
    };
    TempDir dir;
    for (const auto& c : cases) {
        writeBytes(dir.file("t.ttp"), c.text);
        bool readable = true;
        try {
            readTaskPageSettings(dir.file("t.ttp"));
        } catch (const TaskError&) {
            readable = false;
        }
        EXPECT_EQ(readable, c.complete) << c.name;
        EXPECT_EQ(hasCompleteTaskPageSettings(dir.file("t.ttp")), c.complete) << c.name;
    }
    EXPECT_FALSE(hasCompleteTaskPageSettings(dir.file("absent.ttp")));
    EXPECT_FALSE(hasCompleteTaskPageSettings(dir.path().string()));
    ASSERT_TRUE(morlevant::testing::makeFifo(dir.file("pipe.ttp")));
    EXPECT_FALSE(hasCompleteTaskPageSettings(dir.file("pipe.ttp"))); // and does not wait
}

} // namespace
