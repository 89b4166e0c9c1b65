#include "taskdef/TaskFiles.h"

#include "tests/support/TaskErrorOf.h"
#include "tests/support/TempDir.h"

#include <filesystem>
#include <gtest/gtest.h>

using namespace morlevant;
using namespace morlevant::testing;

namespace {

using namespace std::string_literals;

TEST(TaskFileList, WritesThePathAfterTheFirstNulAndReadsAnyLineEnd) {
    TempDir dir;
    writeTaskFileList(dir.file("t.edt"), {"remark\0/in/a.txt"s, "/in/b.txt", "r\0/in/c\0d"s});
    EXPECT_EQ(readBytes(dir.file("t.edt")), "/in/a.txt\r\n/in/b.txt\r\n/in/c\0d\r\n"s);

    writeBytes(dir.file("t.edt"), "/a b/1.txt\r\n\r\n/2.txt\n/3.txt\r/4.txt");
    EXPECT_EQ(readTaskFileList(dir.file("t.edt")),
              (std::vector<std::string>{"/a b/1.txt", "/2.txt", "/3.txt", "/4.txt"}));
    EXPECT_THROW(readTaskFileList(dir.file("absent.edt")), TaskError);
}

// The list keeps one name per line: a name with a line break would come back as two, the part
// after the break taken relative to wherever the runner stands.
TEST(TaskFileList, RefusesANameWithALineBreakAndReadsOnlyFullPaths) {
    TempDir dir;
    writeBytes(dir.file("t.edt"), "kept");
    const struct {
        std::string tag, shown;
    } broken[] = {{"/in/x\ny.txt", "\"/in/x[LF]y.txt\""},
                  {"r\0/in/x\ry.txt"s, "\"/in/x[CR]y.txt\""}};
    for (const auto& c : broken) {
        const std::string error = taskErrorOf([&] {
            writeTaskFileList(dir.file("t.edt"), {"/in/a.txt", c.tag});
        });
        EXPECT_NE(error.find(c.shown + " cannot be a file of a task: its name holds a line break"),
                  std::string::npos)
            << error;
        EXPECT_EQ(readBytes(dir.file("t.edt")), "kept");
    }

    const struct {
        std::string list, named;
    } relative[] = {{"/in/x\ny.txt\r\n", "\"y.txt\" on line 2"},
                    {"/in/a.txt\r\n\r\n./b.txt\r\n", "\"./b.txt\" on line 3"},
                    {"in/a.txt", "\"in/a.txt\" on line 1"}};
    for (const auto& c : relative) {
        writeBytes(dir.file("t.edt"), c.list);
        const std::string error = taskErrorOf([&] { readTaskFileList(dir.file("t.edt")); });
        EXPECT_NE(
            error.find(dir.file("t.edt") + " holds " + c.named + ", which is not a full path"),
            std::string::npos)
            << error;
    }
}

TEST(PrepareTask, FailsClearlyWhereNothingMayBeWritten) {
    TempDir home;
    const std::string folder = home.path().string();
    for (const std::string name : {"a/b", "/abs", "../up", ""})
        EXPECT_THROW(prepareTaskForEditing(folder, name, {"/in/1.txt"}), TaskError) << name;
    EXPECT_THROW(prepareTaskForEditing(home.file("absent"), "T", {"/in/1.txt"}), TaskError);
    EXPECT_TRUE(std::filesystem::is_empty(home.path()));
}

} // namespace
