#include "taskdef/TaskFiles.h"

#include "taskdef/TaskError.h"
#include "tests/support/TempDir.h"

#include <filesystem>
#include <gtest/gtest.h>

using namespace morlevant;
using morlevant::testing::readBytes;
using morlevant::testing::TempDir;
using morlevant::testing::writeBytes;

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

TEST(PrepareTask, FailsClearlyWhereNothingMayBeWritten) {
    TempDir home;
    const std::string folder = home.path().string();
    for (const std::string name : {"a/b", "/abs", "../up", ""})
        EXPECT_THROW(prepareTaskForEditing(folder, name, {"/in/1.txt"}), TaskError) << name;
    EXPECT_THROW(prepareTaskForEditing(home.file("absent"), "T", {"/in/1.txt"}), TaskError);
    EXPECT_TRUE(std::filesystem::is_empty(home.path()));
}

} // namespace
