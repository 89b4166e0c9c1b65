// A task's two files, the list of its files (.edt) and its settings (.ttp), and the program
// folder that keeps them.
#include "taskdef/TaskFiles.h"

#include "taskdef/InstallLayout.h"
#include "taskdef/TaskPageSettings.h"
#include "tests/support/NonRegularFiles.h"
#include "tests/support/TaskErrorOf.h"
#include "tests/support/TempDir.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <unistd.h>

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

// A task's file is replaced whole or not at all: a write that fails (here, the name it is
// written under first is taken by a folder) leaves the older file as it was, and no other.
TEST(TaskFileList, AFailedWriteLeavesTheOlderFile) {
    TempDir dir;
    writeBytes(dir.file("t.edt"), "/in/old.txt\r\n");
    writeBytes(dir.file("t.ttp"), "old settings");
    const std::string writing = ".writing" + std::to_string(::getpid());
    std::filesystem::create_directory(dir.file("t.edt" + writing));
    std::filesystem::create_directory(dir.file("t.ttp" + writing));
    EXPECT_THROW(writeTaskFileList(dir.file("t.edt"), {"/in/new.txt"}), TaskError);
    EXPECT_THROW(writeTaskPageSettings(dir.file("t.ttp"), TaskPageSettings{}), TaskError);
    EXPECT_EQ(readBytes(dir.file("t.edt")), "/in/old.txt\r\n");
    EXPECT_EQ(readBytes(dir.file("t.ttp")), "old settings");
    std::filesystem::remove(dir.file("t.edt" + writing));
    writeTaskFileList(dir.file("t.edt"), {"/in/new.txt"});
    EXPECT_EQ(readBytes(dir.file("t.edt")), "/in/new.txt\r\n");
    EXPECT_FALSE(std::filesystem::exists(dir.file("t.edt" + writing)));
}

// A task file reached by a symbolic link is replaced where it lies, with its permissions: the link
// stays a link, and a file only its owner may read stays so.
TEST(TaskFileList, AFileThroughALinkIsReplacedWhereItLiesWithItsPermissions) {
    TempDir dir;
    std::filesystem::create_directory(dir.file("kept"));
    writeBytes(dir.file("kept/t.edt"), "/in/old.txt\r\n");
    std::filesystem::permissions(dir.file("kept/t.edt"), std::filesystem::perms::owner_read |
                                                             std::filesystem::perms::owner_write);
    std::filesystem::create_symlink("kept/t.edt", dir.file("t.edt"));
    writeTaskFileList(dir.file("t.edt"), {"/in/new.txt"});
    EXPECT_TRUE(std::filesystem::is_symlink(dir.file("t.edt")));
    EXPECT_EQ(readBytes(dir.file("kept/t.edt")), "/in/new.txt\r\n");
    EXPECT_EQ(std::filesystem::status(dir.file("kept/t.edt")).permissions(),
              std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
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

// Lines "1", "2", ... up to `count`, each followed by `end`.
std::string numberedLines(int count, const std::string& end) {
    std::string text;
    for (int n = 1; n <= count; ++n)
        text += std::to_string(n) + end;
    return text;
}

// A value holding a line end moves every later field down.
TEST(TaskPageSettingsFile, ReadsEachFieldFromItsLine) {
    TempDir dir;
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
            EXPECT_EQ(readTaskPageSettings(dir.file("t.ttp")).rangeMode, "1") << c.name;
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

// Where a program keeps its tasks, decided from its surroundings.
class ProgramFolder : public ::testing::Test {
protected:
    std::string resolve(const std::string& home = {}) const {
        return resolveProgramFolder({home, bin, dir.file("user")});
    }

    TempDir dir;
    const std::string bin = dir.file("prefix/bin");
    // A file of the probe's name tells whether the folder was written to.
    const std::string probe = bin + "/.morlevant-write-probe";
};

TEST_F(ProgramFolder, AWritableBuildFolderIsItsOwnAndTheHomeVariableWins) {
    writeBytes(probe, "kept");
    EXPECT_EQ(resolve(), bin);
    EXPECT_EQ(resolve("/elsewhere"), "/elsewhere");
}

TEST_F(ProgramFolder, AnInstalledProgramUsesTheUserFolderWithoutProbingItsOwn) {
    writeBytes(installedDataFolder(bin) + "/help/index.html", "<html/>");
    writeBytes(probe, "kept");
    EXPECT_EQ(resolve(), dir.file("user"));
    EXPECT_EQ(readBytes(probe), "kept");
}

} // namespace
