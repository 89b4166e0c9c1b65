// morlevant-run in-process: exit codes, what goes to which stream, and the files it leaves.
#include "RunCommand.h"

#include "TaskFiles.h"
#include "TaskPageSettings.h"
#include "TempDir.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <sstream>

using namespace morlevant;
using morlevant::testing::readBytes;
using morlevant::testing::TempDir;
using morlevant::testing::writeBytes;

namespace {

class RunCommandTest : public ::testing::Test {
protected:
    RunCommandTest() {
        std::filesystem::create_directories(home.path() / "task");
        writeBytes(home.file("files/a.txt"), "a1\nabcdefgh\n");
        writeBytes(home.file("files/b.txt"), "b1");
        settings.rangeMode = "1";
        settings.takeRangesOut = "0";
        settings.operationPage = "6";
        settings.divideAction = "5";
        settings.divideByColumnValue = "3";
        settings.divideNameTemplate = "p*.txt";
        settings.divideNumberFrom = "1";
    }

    void writeTask(const std::string& name) {
        writeTaskPageSettings(taskSettingsPath(homePath(), name), settings);
        writeTaskFileList(taskFileListPath(homePath(), name),
                          {home.file("files/a.txt"), home.file("files/b.txt")});
    }

    int run(const std::vector<std::string>& arguments, bool terminal = false) {
        RunEnvironment environment{homeVariable, home.file("bin"), home.file("data"),
                                   [this](const std::string& folder) { opened.push_back(folder); }};
        RunCommand command(std::move(environment), out, err, terminal);
        return command.run(arguments);
    }

    std::string homePath() const { return home.path().string(); }

    TempDir home;
    TaskPageSettings settings;
    std::string homeVariable;
    std::ostringstream out, err;
    std::vector<std::string> opened;
};

TEST_F(RunCommandTest, RunsATaskAndSaysVellDown) {
    writeTask("Merge All");
    EXPECT_EQ(run({"--home", homePath(), "Merge All"}), 0);
    EXPECT_EQ(out.str(), "Vell down!\n");
    EXPECT_EQ(err.str(), "") << "no bar when the error stream is not a terminal";
    EXPECT_EQ(readBytes(home.file("outcome/merge/merge-application-file.txt")),
              "a1\r\nabcdefgh\r\nb1\r\n");
    EXPECT_TRUE(opened.empty()) << "a merge opens the folder only with --open";
}

TEST_F(RunCommandTest, OpenShowsTheMergeFolderOnceTheHomeVariableGivesTheFolder) {
    writeTask("Merge All");
    homeVariable = homePath();
    EXPECT_EQ(run({"--open", "Merge All"}), 0);
    EXPECT_EQ(opened, std::vector<std::string>{mergeFolder(homePath())});
}

TEST_F(RunCommandTest, ProgressBarAndMessagesGoToTheErrorStream) {
    settings.divideAction = "2"; // "abcdefgh" ends inside its third piece of 3 columns
    writeTask("Columns");
    EXPECT_EQ(run({"--home=" + homePath(), "Columns"}, true), 0);
    EXPECT_EQ(out.str(), "Vell down!\n");
    const std::string shown = err.str();
    EXPECT_NE(shown.find("1/2 files"), std::string::npos) << shown;
    EXPECT_NE(shown.find("[##############################] 2/2 files\n"), std::string::npos)
        << shown;
    EXPECT_EQ(shown.rfind("3\n\r[", 0), 0u) << "the columns-per-piece message, then the bar";
    EXPECT_EQ(readBytes(home.file("files/a/p3.txt")), "\r\ngh\r\n");
}

struct FailureCase {
    const char* name;
    std::vector<std::string> arguments; // "HOME" stands for the program folder
    std::string mentions;
};

class RunCommandFailures : public RunCommandTest,
                           public ::testing::WithParamInterface<FailureCase> {};

TEST_P(RunCommandFailures, OneLineOnTheErrorStreamAndExitCodeOne) {
    writeTask("Merge All");
    writeBytes(taskSettingsPath(homePath(), "Cancelled"), "");
    std::vector<std::string> arguments = GetParam().arguments;
    for (std::string& argument : arguments)
        if (argument == "HOME")
            argument = homePath();
    EXPECT_EQ(run(arguments), 1);
    EXPECT_EQ(out.str(), "");
    const std::string message = err.str();
    EXPECT_EQ(message.rfind("morlevant-run: ", 0), 0u) << message;
    EXPECT_EQ(std::count(message.begin(), message.end(), '\n'), 1) << message;
    EXPECT_NE(message.find(GetParam().mentions), std::string::npos) << message;
}

INSTANTIATE_TEST_SUITE_P(
    Cli, RunCommandFailures,
    ::testing::Values(FailureCase{"NoTask", {"--home", "HOME"}, "no task"},
                      FailureCase{"TwoTasks", {"--home", "HOME", "a", "b"}, "one task"},
                      FailureCase{"UnknownOption", {"--fast", "x"}, "--fast"},
                      FailureCase{"HomeWithoutFolder", {"x", "--home"}, "--home"},
                      FailureCase{"UnknownTask", {"--home", "HOME", "Nope"}, "Nope.edt"},
                      FailureCase{"NotEdited", {"--home", "HOME", "Cancelled"}, "edit"},
                      FailureCase{"SeparatorInName", {"--home", "HOME", "x/y"}, "x/y"},
                      FailureCase{
                          "MissingHome", {"--home", "/nonexistent/m", "T"}, "/nonexistent/m"}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(RunCommandTest, HelpPrintsTheUsage) {
    EXPECT_EQ(run({"--help"}), 0);
    EXPECT_EQ(out.str(), RunCommand::usage);
    EXPECT_EQ(err.str(), "");
}

TEST_F(RunCommandTest, FailureAfterSomeFilesKeepsThemAndEndsTheBarLine) {
    settings.operationPage = "5";
    settings.insertAction = "2";
    writeTask("Insert");
    std::filesystem::remove(home.file("files/b.txt"));
    EXPECT_EQ(run({"--home", homePath(), "Insert"}, true), 1);
    EXPECT_EQ(readBytes(home.file("files/a.txt.modify")), "a1\r\nabcdefgh\r\n\r\n");
    EXPECT_NE(err.str().find("1/2 files\nmorlevant-run: "), std::string::npos) << err.str();
    EXPECT_NE(err.str().find("b.txt"), std::string::npos);
}

} // namespace
