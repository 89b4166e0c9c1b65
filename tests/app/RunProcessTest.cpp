// morlevant-run as a process: interrupted by a signal, killed, short of disk space, or run twice
// at once, it leaves every result whole (POSIX only).
#include "tests/support/RunnerFixture.h"

#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/wait.h>
#include <thread>

extern char** environ;

using namespace morlevant;
using namespace morlevant::testing;

namespace fs = std::filesystem;

namespace {

// A started morlevant-run, its error stream kept in a file.
class RunProcess {
public:
    // `prefix` comes before the program, for a shell that limits it.
    RunProcess(const RunnerFixture& fixture, const std::vector<std::string>& prefix = {})
        : errFile_(fixture.home.file("stderr-" + std::to_string(++started_))) {
        std::vector<std::string> arguments = prefix;
        for (const std::string& argument : {std::string(MORLEVANT_RUN), std::string("--home"),
                                            fixture.home.path().string(), fixture.taskName})
            arguments.push_back(argument);
        std::vector<char*> argv;
        for (std::string& argument : arguments)
            argv.push_back(argument.data());
        argv.push_back(nullptr);
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_addopen(&actions, 2, errFile_.c_str(),
                                         O_WRONLY | O_CREAT | O_TRUNC, 0600);
        posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
        EXPECT_EQ(posix_spawn(&pid_, argv[0], &actions, nullptr, argv.data(), environ), 0);
        posix_spawn_file_actions_destroy(&actions);
    }

    void signal(int number) const { ::kill(pid_, number); }

    // The exit code, or 128 + the signal that ended the process.
    int wait() const {
        int status = 0;
        ::waitpid(pid_, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    }

    std::string errors() const { return readBytes(errFile_); }

private:
    static inline int started_ = 0;
    std::string errFile_;
    pid_t pid_ = 0;
};

// Lines enough that a run is still writing when the test has seen its temporary appear.
std::string manyLines() {
    std::string block;
    for (int i = 0; i < 16384; ++i)
        block += "row 1234567890 of a long file\n";
    std::string text;
    for (int i = 0; i < 96; ++i)
        text += block;
    return text;
}

bool waitUntilExists(const std::string& path) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (!fs::exists(path))
        if (std::chrono::steady_clock::now() > end)
            return false;
    return true;
}

class RunProcessTest : public ::testing::Test {
protected:
    RunProcessTest() {
        fixture.set({{5, "5"}, {19, "4"}, {24, "\\d+"}, {23, "#"}}); // filter and replace
        fixture.writeSource("a.txt", "1\n");
        fixture.writeSource("b.txt", manyLines());
        fixture.writeSource("b.txt.modify", "older result");
        fixture.writeTask({"a.txt", "b.txt"});
    }
    std::string temporary() const { return fixture.source("b.txt.modify.unfinished"); }

    RunnerFixture fixture;
};

TEST_F(RunProcessTest, SignalStopsTheRunAndKeepsTheOlderResult) {
    const struct { int signal, exitCode; } cases[] = {{SIGINT, 130}, {SIGTERM, 143}};
    for (const auto& c : cases) {
        const RunProcess run(fixture);
        ASSERT_TRUE(waitUntilExists(temporary()));
        run.signal(c.signal);
        EXPECT_EQ(run.wait(), c.exitCode);
        EXPECT_EQ(run.errors(), "morlevant-run: interrupted while working " +
                                    fixture.source("b.txt") +
                                    ": the result being written was dropped and any older one "
                                    "kept; 1 of 2 files were done before\n");
        EXPECT_EQ(fixture.result("a.txt.modify"), "#\r\n") << "finished files stay";
        EXPECT_EQ(fixture.result("b.txt.modify"), "older result");
        EXPECT_FALSE(fs::exists(temporary()));
    }
}

TEST_F(RunProcessTest, KilledRunLeavesOnlyATemporaryThatTheNextRunTakesOver) {
    const RunProcess killed(fixture);
    ASSERT_TRUE(waitUntilExists(temporary()));
    killed.signal(SIGKILL);
    EXPECT_EQ(killed.wait(), 128 + SIGKILL);
    EXPECT_EQ(fixture.result("b.txt.modify"), "older result");

    const RunProcess next(fixture);
    EXPECT_EQ(next.wait(), 0) << next.errors();
    EXPECT_FALSE(fs::exists(temporary()));
    EXPECT_EQ(fs::file_size(fixture.source("b.txt.modify")), 16384 * 96 * 22)
        << "every row \"row # of a long file\" and CR LF";
}

// The disk fills up during the merge (here: a limit on the size of any file written): the
// older merge stays whole and the message gives the system's reason.
TEST_F(RunProcessTest, FullDiskDuringAMergeKeepsTheOlderMerge) {
    fixture.set({{5, "6"}, {26, "5"}});
    fixture.writeTask({"a.txt", "b.txt"});
    fixture.writeSource("../outcome/merge/merge-application-file.txt", "older merge");
    const RunProcess run(fixture,
                         {"/bin/sh", "-c", "ulimit -f 64; trap '' XFSZ; exec \"$@\"", "limited"});
    EXPECT_EQ(run.wait(), 1);
    EXPECT_NE(run.errors().find("Cannot write " + fixture.home.file("outcome/merge/") +
                                "merge-application-file.txt: File too large"),
              std::string::npos)
        << run.errors();
    EXPECT_EQ(fixture.mergeResult(), "older merge");
    EXPECT_FALSE(
        fs::exists(fixture.home.file("outcome/merge/merge-application-file.txt.unfinished")));
}

// Two runs of one merge task at once: the second waits for the first, and the merge holds the
// files once, whole.
TEST_F(RunProcessTest, TwoRunsOfATaskAtOnceGiveOneWholeResult) {
    fixture.set({{5, "6"}, {26, "5"}});
    fixture.writeTask({"a.txt", "b.txt"});
    const RunProcess first(fixture);
    const RunProcess second(fixture);
    EXPECT_EQ(first.wait(), 0) << first.errors();
    EXPECT_EQ(second.wait(), 0) << second.errors();
    EXPECT_EQ(fs::file_size(fixture.home.file("outcome/merge/merge-application-file.txt")),
              3 + fs::file_size(fixture.source("b.txt")) + 16384 * 96);
}

} // namespace
