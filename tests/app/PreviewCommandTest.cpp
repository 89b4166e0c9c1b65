// morlevant-run --preview: what a task would do, as unified diffs, and nothing written.
#include "app/RunCommand.h"
#include "app/UnifiedDiff.h"
#include "tests/support/RunnerFixture.h"

#include <gtest/gtest.h>
#include <sstream>

using namespace morlevant;
using morlevant::testing::RunnerFixture;

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

class PreviewCommandTest : public ::testing::Test {
protected:
    int run(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), {"--home", fixture.home.path().string()});
        RunEnvironment environment{{"", fixture.home.file("bin"), fixture.home.file("data")}, {}};
        return RunCommand(std::move(environment), out, err, false).run(arguments);
    }
    RunnerFixture fixture;
    std::ostringstream out, err;
};

TEST_F(PreviewCommandTest, PrintsEachFilesDiffAndWritesNothing) {
    fixture.set({{5, "4"}, {11, "b"}, {12, "B"}});
    fixture.writeSource("a.txt", "a\nb\nc\nb\n");
    fixture.writeSource("b.txt", "b\n");
    fixture.writeTask({"a.txt", "b.txt"});
    EXPECT_EQ(run({"--preview", "2", "My Batch Task"}), 0) << err.str();
    const std::string a = fixture.source("a.txt");
    const std::string b = fixture.source("b.txt");
    EXPECT_EQ(out.str(), "--- " + a + "\n+++ " + a + ".modify\n@@ -1,2 +1,2 @@\n a\n-b\n+B\n" +
                             "--- " + b + "\n+++ " + b + ".modify\n@@ -1,1 +1,1 @@\n-b\n+B\n");
    EXPECT_FALSE(fixture.exists("a.txt.modify"));
    EXPECT_FALSE(fixture.exists("b.txt.modify"));
}

TEST_F(PreviewCommandTest, ShowsDividePiecesAsNewFilesAndStopsOnTheRunsError) {
    fixture.set({{5, "6"}, {26, "1"}, {27, "2"}});
    fixture.writeSource("r.txt", "1\n2\n3\n");
    fixture.writeTask({"r.txt"});
    EXPECT_EQ(run({"--preview", "My Batch Task"}), 0) << err.str();
    const std::string folder = fixture.source("r/");
    EXPECT_EQ(out.str(), "--- /dev/null\n+++ " + folder + "p(001).txt\n@@ -0,0 +1,2 @@\n+1\n+2\n" +
                             "--- /dev/null\n+++ " + folder + "p(002).txt\n@@ -0,0 +1,1 @@\n+3\n");
    EXPECT_FALSE(fixture.exists("r"));

    fixture.set({{27, "0"}});
    fixture.writeTask({"r.txt"});
    EXPECT_EQ(run({"--preview", "My Batch Task"}), 1);
    EXPECT_NE(err.str().find("rows per piece \"0\""), std::string::npos) << err.str();
}

} // namespace
