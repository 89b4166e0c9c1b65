// morlevant-run in-process: exit codes, what goes to which stream, and the files it leaves;
// with --preview, what a task would do as unified diffs. And the window program's command line.
#include "app/RunCommand.h"

#include "MorlevantVersion.h"
#include "app/UnifiedDiff.h"
#include "app/WindowOptions.h"
#include "tests/support/QStringPrinter.h"
#include "tests/support/RunnerFixture.h"

#include <gtest/gtest.h>
#include <sstream>

using namespace morlevant;
using namespace morlevant::testing;

namespace {

TEST(UnifiedDiff, ShowsChangedRunsWithThreeRowsOfContext) {
    using Rows = std::vector<std::string>;
    const Rows ten = {"1", "2", "3", "4", "5", "6", "7", "8", "9", "10"};
    Rows changed = ten;
    changed[1] = "two";
    changed[9] = "ten";
    const struct {
        Rows before, after;
        std::string diff; // after the two headers
    } cases[] = {
        {ten, ten, ""},
        {ten, changed,
         "@@ -1,5 +1,5 @@\n 1\n-2\n+two\n 3\n 4\n 5\n@@ -7,4 +7,4 @@\n 7\n 8\n 9\n-10\n+ten\n"},
        {{"a", "b"}, {"a", "b", "END"}, "@@ -1,2 +1,3 @@\n a\n b\n+END\n"},
        {{}, {"p1", "p2"}, "@@ -0,0 +1,2 @@\n+p1\n+p2\n"},
        {{"a", "b", "c"}, {"c"}, "@@ -1,3 +1,1 @@\n-a\n-b\n c\n"},
        // Changes six rows apart share one hunk.
        {{"x", "1", "2", "3", "4", "5", "6", "y"},
         {"X", "1", "2", "3", "4", "5", "6", "Y"},
         "@@ -1,8 +1,8 @@\n-x\n+X\n 1\n 2\n 3\n 4\n 5\n 6\n-y\n+Y\n"},
    };
    for (const auto& c : cases) {
        const std::string diff = unifiedDiff(c.before, c.after, "old", "new");
        EXPECT_EQ(diff, c.diff.empty() ? "" : "--- old\n+++ new\n" + c.diff);
    }
}

class RunCommandTest : public ::testing::Test {
protected:
    RunCommandTest() {
        fixture.writeSource("a.txt", "a1\nabcdefgh\n");
        fixture.writeSource("b.txt", "b1");
        fixture.set({{5, "6"}, {26, "5"}, {28, "3"}, {29, "p*.txt"}, {30, "1"}});
    }

    // Writes the task "My Batch Task" over the files and runs the command; "HOME" in the
    // arguments stands for the program folder.
    int run(std::vector<std::string> arguments, bool terminal = false,
            const std::vector<std::string>& files = {"a.txt", "b.txt"}) {
        fixture.writeTask(files);
        for (std::string& argument : arguments)
            if (argument == "HOME")
                argument = home();
        RunEnvironment environment{
            {homeVariable, fixture.home.file("bin"), fixture.home.file("data")},
            [this](const std::string& folder) { opened.push_back(folder); }};
        environment.in = &in;
        return RunCommand(std::move(environment), out, err, terminal).run(arguments);
    }
    std::string home() const { return fixture.home.path().string(); }

    RunnerFixture fixture;
    std::string homeVariable;
    std::istringstream in;
    std::ostringstream out, err;
    std::vector<std::string> opened;
};

TEST_F(RunCommandTest, RunsATaskAndSaysVellDown) {
    EXPECT_EQ(run({"--home", "HOME", "My Batch Task"}), 0);
    EXPECT_EQ(fixture.mergeResult(), "a1\r\nabcdefgh\r\nb1\r\n");
    EXPECT_TRUE(opened.empty()) << "a merge opens the folder only with --open";

    homeVariable = home();
    EXPECT_EQ(run({"--open", "My Batch Task"}), 0);
    EXPECT_EQ(opened, std::vector<std::string>{mergeFolder(home())});
    EXPECT_EQ(out.str(), "Vell down!\nVell down!\n");
    EXPECT_EQ(err.str(), "") << "no bar when the error stream is not a terminal";
}

TEST_F(RunCommandTest, FailureAfterSomeFilesKeepsThemAndEndsTheBarLine) {
    fixture.set({{5, "3"}, {6, "0"}, {10, "/0"}}); // fails on the first line of a file
    fixture.writeSource("a.txt", "");
    EXPECT_EQ(run({"--home", "HOME", "My Batch Task"}, true), 1);
    EXPECT_TRUE(std::filesystem::exists(fixture.source("a.txt.modify")));
    EXPECT_FALSE(std::filesystem::exists(fixture.source("b.txt.modify")));
    EXPECT_NE(err.str().find("1/2 files\nmorlevant-run: "), std::string::npos) << err.str();
    EXPECT_NE(err.str().find("b.txt"), std::string::npos);
}

// A task not found without --home names the folder looked in and how to choose another.
TEST_F(RunCommandTest, AFailureIsOneLineOnTheErrorStreamAndExitCodeOne) {
    writeBytes(taskSettingsPath(home(), "Cancelled"), "");
    std::filesystem::create_directories(taskFileListPath(home(), "Folder"));
    homeVariable = home();
    const std::string lookedIn = " (looked in the program folder " + home() +
                                 "; choose another with --home DIR or MORLEVANT_HOME)\n";
    const std::pair<std::vector<std::string>, std::string> cases[] = {
        {{"--home", "HOME", "Nope"}, "Nope.edt"},
        {{"Elsewhere"}, "Elsewhere.edt is missing: edit the task first" + lookedIn},
        {{"--home", "HOME", "Cancelled"}, "edit"},
        {{"--home", "HOME", "x/y"}, "x/y"},
        {{"--home", "HOME", "Folder"}, "Folder.edt cannot be read: it is a folder"},
        {{"--home=", "T"}, "--home is empty"},
        {{"--home", "/nonexistent/m", "T"}, "/nonexistent"},
    };
    for (const auto& [arguments, mentions] : cases) {
        SCOPED_TRACE(mentions);
        out.str("");
        err.str("");
        EXPECT_EQ(run(arguments), 1);
        EXPECT_EQ(out.str(), "");
        const std::string message = err.str();
        EXPECT_EQ(message.rfind("morlevant-run: ", 0), 0u) << message;
        EXPECT_EQ(std::count(message.begin(), message.end(), '\n'), 1) << message;
        EXPECT_NE(message.find(mentions), std::string::npos) << message;
        EXPECT_EQ(message.find("looked in") == std::string::npos, arguments.size() > 1);
    }
}

TEST_F(RunCommandTest, AWrongCommandLineIsExitCodeTwoAndRunsNothing) {
    const struct {
        std::vector<std::string> arguments;
        const char* mentions;
    } cases[] = {
        {{"--home", "HOME"}, "no task named"},
        {{"--fast", "My Batch Task"}, "unknown option --fast"},
        {{"My", "Batch Task"}, "only one task"},
        {{"My Batch Task", "--home"}, "--home needs a folder"},
        {{"--jobs", "0", "My Batch Task"}, "--jobs needs a number"},
        {{"--jobs=two", "My Batch Task"}, "\"two\" is not one"},
        {{"My Batch Task", "--files-from"}, "--files-from needs a list"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.mentions);
        err.str("");
        EXPECT_EQ(run(c.arguments), 2);
        EXPECT_NE(err.str().find(c.mentions), std::string::npos) << err.str();
        EXPECT_NE(err.str().find("--help shows the usage"), std::string::npos) << err.str();
    }
    EXPECT_EQ(out.str(), "");
    EXPECT_EQ(fixture.mergeResult(), "") << "nothing ran";
}

// The task's settings over the files of a list instead of its own; a list with an entry that is
// not a full path, or names no file, runs nothing, and so does a merge, which gathers the task's
// own files.
TEST_F(RunCommandTest, FilesFromAListOrTheStandardInputReplaceTheTaskList) {
    fixture.writeSource("c.txt", "c1\n");
    const std::string list = fixture.home.file("list.txt");
    const auto refused = [&](const std::string& entries, const std::string& mentions) {
        err.str("");
        writeBytes(list, entries);
        EXPECT_EQ(run({"--home", "HOME", "--files-from", list, "My Batch Task"}), 1);
        EXPECT_NE(err.str().find(mentions), std::string::npos) << err.str();
    };
    refused(fixture.source("c.txt"), "A merge gathers every file");

    fixture.set({{5, "5"}, {19, "2"}, {21, "END"}});
    writeBytes(list, fixture.source("c.txt") + "\n\n" + fixture.source("a.txt"));
    EXPECT_EQ(run({"--home", "HOME", "--jobs", "2", "--files-from", list, "My Batch Task"}), 0);
    EXPECT_EQ(fixture.result("c.txt.modify"), "c1\r\nEND\r\n");
    EXPECT_TRUE(fixture.exists("a.txt.modify"));
    EXPECT_FALSE(fixture.exists("b.txt.modify")) << "the task's own list is not worked";

    in.str(fixture.source("b.txt") + "\r\n");
    EXPECT_EQ(run({"--home", "HOME", "--files-from=-", "My Batch Task"}), 0);
    EXPECT_EQ(fixture.result("b.txt.modify"), "b1\r\nEND\r\n");

    std::filesystem::remove(fixture.source("a.txt.modify"));
    refused(fixture.source("a.txt") + "\nfiles/b.txt\n",
            "\"files/b.txt\" on line 2, which is not a full path");
    refused(fixture.source("a.txt") + "\n" + fixture.source("gone.txt"),
            "names " + fixture.source("gone.txt") + ", which does not exist");
    EXPECT_FALSE(fixture.exists("a.txt.modify")) << "nothing ran";
}

TEST_F(RunCommandTest, HelpAndVersionAnswerOnTheOutputStreamAndRunNothing) {
    EXPECT_EQ(run({"--version", "My Batch Task"}), 0);
    EXPECT_EQ(out.str(), std::string("morlevant-run ") + programVersion + "\n");
    out.str("");
    EXPECT_EQ(run({"--help"}), 0);
    EXPECT_EQ(out.str(), RunCommand::usage);
    EXPECT_EQ(out.str().find('&'), std::string::npos) << "menu captions lose their accelerator";
    EXPECT_EQ(err.str(), "");
    EXPECT_EQ(fixture.mergeResult(), "") << "nothing ran";
}

// --preview: what a task would do, as unified diffs, and nothing written.
TEST_F(RunCommandTest, PreviewPrintsEachFilesDiffAndWritesNothing) {
    fixture.set({{5, "4"}, {11, "b"}, {12, "B"}});
    fixture.writeSource("a.txt", "a\nb\nc\nb\n");
    fixture.writeSource("b.txt", "b\n");
    EXPECT_EQ(run({"--home", "HOME", "--preview", "2", "My Batch Task"}), 0) << err.str();
    const std::string a = fixture.source("a.txt");
    const std::string b = fixture.source("b.txt");
    EXPECT_EQ(out.str(), "--- " + a + "\n+++ " + a + ".modify\n@@ -1,2 +1,2 @@\n a\n-b\n+B\n" +
                             "--- " + b + "\n+++ " + b + ".modify\n@@ -1,1 +1,1 @@\n-b\n+B\n");
    EXPECT_FALSE(fixture.exists("a.txt.modify"));
    EXPECT_FALSE(fixture.exists("b.txt.modify"));
}

TEST_F(RunCommandTest, PreviewShowsDividePiecesAsNewFilesAndStopsOnTheRunsError) {
    fixture.set({{5, "6"}, {26, "1"}, {27, "2"}});
    fixture.writeSource("r.txt", "1\n2\n3\n");
    EXPECT_EQ(run({"--home", "HOME", "--preview", "My Batch Task"}, false, {"r.txt"}), 0)
        << err.str();
    const std::string folder = fixture.source("r/");
    EXPECT_EQ(out.str(), "--- /dev/null\n+++ " + folder + "p1.txt\n@@ -0,0 +1,2 @@\n+1\n+2\n" +
                             "--- /dev/null\n+++ " + folder + "p2.txt\n@@ -0,0 +1,1 @@\n+3\n");
    EXPECT_FALSE(fixture.exists("r"));

    fixture.set({{27, "0"}});
    EXPECT_EQ(run({"--home", "HOME", "--preview", "My Batch Task"}, false, {"r.txt"}), 1);
    EXPECT_NE(err.str().find("rows per piece \"0\""), std::string::npos) << err.str();
}

// The window program's command line, read before there is an application or a display.
using Action = WindowOptions::Action;

WindowOptions readOptions(QStringList arguments) {
    arguments.prepend("/usr/bin/morlevant");
    return readWindowOptions(arguments);
}

TEST(WindowOptions, NamesTheWorkspaceToOpen) {
    const struct {
        QStringList arguments;
        QString workspace;
    } cases[] = {
        {{}, ""},
        {{"/home/u/Example.tsk"}, "/home/u/Example.tsk"},
        // A path with blanks that reached us in pieces is one path.
        {{"/home/u/my", "work.tsk"}, "/home/u/my work.tsk"},
        {{"--", "-odd.tsk"}, "-odd.tsk"},
        // Qt's options are Qt's, with their values.
        {{"-platform", "offscreen", "-reverse", "a.tsk", "-style=fusion"}, "a.tsk"},
    };
    for (const auto& c : cases) {
        const WindowOptions options = readOptions(c.arguments);
        EXPECT_EQ(options.action, Action::Start) << c.arguments.join(' ').toStdString();
        EXPECT_EQ(options.workspace, c.workspace);
    }
}

TEST(WindowOptions, HelpAndVersionAreAnsweredWhateverElseIsGiven) {
    for (const QStringList& arguments :
         {QStringList{"--help"}, QStringList{"-h", "a.tsk"}, QStringList{"a.tsk", "--help"}}) {
        const WindowOptions options = readOptions(arguments);
        EXPECT_EQ(options.action, Action::ShowHelp);
        EXPECT_TRUE(options.text.startsWith("Usage: morlevant [OPTION]... [WORKSPACE]\n"));
        EXPECT_TRUE(options.text.contains("\"Run Task\"")) << "without its accelerator";
    }
    for (const QStringList& arguments : {QStringList{"--version"}, QStringList{"-v"}}) {
        const WindowOptions options = readOptions(arguments);
        EXPECT_EQ(options.action, Action::ShowVersion);
        EXPECT_EQ(options.text, QString("morlevant ") + programVersion + "\n");
    }
}

TEST(WindowOptions, AnOptionItDoesNotKnowIsAUsageError) {
    for (const QStringList& arguments : {QStringList{"--fast"}, QStringList{"-x", "a.tsk"},
                                         QStringList{"--version=2"}, QStringList{"-platform"}}) {
        const WindowOptions options = readOptions(arguments);
        EXPECT_EQ(options.action, Action::UsageError) << arguments.join(' ').toStdString();
        EXPECT_TRUE(options.text.startsWith("morlevant: ")) << options.text.toStdString();
        EXPECT_TRUE(options.text.endsWith("(morlevant --help shows the usage)\n"));
    }
}

} // namespace
