#include "taskdef/TaskFiles.h"

#include "taskdef/InstallLayout.h"
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

TEST(TaskEdited, OnlyACompleteSettingsFileOfAUsableNameCounts) {
    TempDir home;
    const std::string folder = home.path().string();
    std::filesystem::create_directories(home.path() / "task");
    writeBytes(taskSettingsPath(folder, "Done"), std::string(31, '\n'));
    writeBytes(taskSettingsPath(folder, "Emptied"), "");
    std::filesystem::create_directories(home.path() / "task" / "a");
    writeBytes(home.file("task/a/b.ttp"), std::string(31, '\n')); // yet "a/b" names no task
    for (const auto& [name, edited] :
         {std::pair{"Done", true}, std::pair{"Emptied", false}, std::pair{"Never", false},
          std::pair{"a/b", false}, std::pair{"", false}})
        EXPECT_EQ(isTaskEdited(folder, name), edited) << name;
}

TEST(ProgramFolder, HomeVariableThenWritableProgramFolderThenUserData) {
    TempDir dir;
    const std::string writable = dir.file("prefix/bin");
    std::filesystem::create_directories(writable);
    EXPECT_EQ(resolveProgramFolder({"/home/set", writable, "/data"}), "/home/set");
    EXPECT_EQ(resolveProgramFolder({"", writable, "/data"}), writable);
    EXPECT_EQ(resolveProgramFolder({"", dir.file("absent"), "/data"}), "/data");
    EXPECT_TRUE(std::filesystem::is_empty(writable)) << "the write probe is removed";
    // An installed program keeps its tasks in the user's data folder, though its own is writable.
    writeBytes(installedDataFolder(writable) + "/help/index.html", "<html/>");
    EXPECT_EQ(resolveProgramFolder({"", writable, "/data"}), "/data");
    EXPECT_EQ(resolveProgramFolder({"/home/set", writable, "/data"}), "/home/set");
}

TEST(ProgramFolder, TheMergeFolderIsMadeWithTheFoldersAboveIt) {
    TempDir dir;
    const std::string firstStart = dir.file("data/Morlevant");
    EXPECT_FALSE(createMergeFolder(firstStart));
    EXPECT_TRUE(std::filesystem::is_directory(mergeFolder(firstStart)));
    EXPECT_FALSE(createMergeFolder(firstStart)) << "a second start finds it made";

    writeBytes(dir.file("blocked/outcome"), "a file where the folder goes");
    EXPECT_TRUE(createMergeFolder(dir.file("blocked")));
}

} // namespace
