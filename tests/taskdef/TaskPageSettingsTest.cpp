#include "taskdef/TaskPageSettings.h"

#include "tests/support/NonRegularFiles.h"
#include "tests/support/TaskErrorOf.h"
#include "tests/support/TempDir.h"

#include <gtest/gtest.h>

using namespace morlevant;
using namespace morlevant::testing;

namespace {

// Lines "1", "2", ... up to `count`, each followed by `end`.
std::string numberedLines(int count, const std::string& end) {
    std::string text;
    for (int n = 1; n <= count; ++n)
        text += std::to_string(n) + end;
    return text;
}

TEST(TaskPageSettingsFile, ReadsEachFieldFromItsLine) {
    TempDir dir;
    writeBytes(dir.file("lf.ttp"), numberedLines(30, "\n") + "31");
    const TaskPageSettings lf = readTaskPageSettings(dir.file("lf.ttp"));
    EXPECT_EQ(lf.rangeMode, "1");
    EXPECT_EQ(lf.divideNumberTo, "31");

    // A value holding a line end moves every later field down.
    TaskPageSettings settings;
    for (int n = 1; n <= TaskPageSettings::lineCount; ++n)
        settings.line(n) = "v" + std::to_string(n);
    settings.find4 = "first\r\nsecond";
    writeTaskPageSettings(dir.file("t.ttp"), settings);
    const TaskPageSettings back = readTaskPageSettings(dir.file("t.ttp"));
    EXPECT_EQ(back.find4, "first");
    EXPECT_EQ(back.replace4, "second");
    EXPECT_EQ(back.insertAction, "v18");
}

// The window asks whether a task is complete on every click on it: the answer must agree with
// the reader a run uses.
TEST(TaskPageSettingsFile, TheCompletenessCheckAgreesWithTheReader) {
    const struct {
        const char* name;
        std::string text;
        const char* refused; // part of the reader's message, or nullptr when it reads the file
    } cases[] = {
        {"empty", "", "is empty"},
        {"thirty lines", numberedLines(30, "\r\n"), "has only 30 of its 31 lines"},
        {"thirty-one lines", numberedLines(31, "\r\n"), nullptr},
        {"last line unended", numberedLines(30, "\n") + "31", nullptr},
        {"a lone CR ends a line", numberedLines(30, "\r") + "\r", nullptr},
        {"LF CR is two ends", numberedLines(29, "\n") + "\n\r", nullptr},
        {"only CR LF pairs", std::string(30, '\r') + "\n", "has only 30 of its 31 lines"},
        {"more than needed", numberedLines(40, "\r\n"), nullptr},
    };
    TempDir dir;
    for (const auto& c : cases) {
        writeBytes(dir.file("t.ttp"), c.text);
        const std::string message = taskErrorOf([&] { readTaskPageSettings(dir.file("t.ttp")); });
        if (c.refused == nullptr) {
            EXPECT_EQ(message, "no error") << c.name;
        } else {
            EXPECT_NE(message.find(c.refused), std::string::npos) << c.name << ": " << message;
        }
        EXPECT_EQ(hasCompleteTaskPageSettings(dir.file("t.ttp")), c.refused == nullptr) << c.name;
    }
    EXPECT_NE(taskErrorOf([&] { readTaskPageSettings(dir.file("absent.ttp")); }).find("missing"),
              std::string::npos);
    EXPECT_FALSE(hasCompleteTaskPageSettings(dir.file("absent.ttp")));
    EXPECT_FALSE(hasCompleteTaskPageSettings(dir.path().string()));
    ASSERT_TRUE(makeFifo(dir.file("pipe.ttp")));
    EXPECT_FALSE(hasCompleteTaskPageSettings(dir.file("pipe.ttp"))); // and does not wait
}

} // namespace
