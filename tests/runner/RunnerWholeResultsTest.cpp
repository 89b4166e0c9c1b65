// A run that is stopped, raced, or reads a file that changes under it leaves every result whole:
// the new one, or the older one as it was, never a part.
#include "engine/io/ResultFile.h"
#include "engine/io/RunLock.h"
#include "tests/support/NonRegularFiles.h"
#include "tests/support/RunnerFixture.h"

#include <chrono>
#include <fstream>
#include <gtest/gtest.h>
#include <thread>

using namespace morlevant;
using morlevant::testing::Lines;
using morlevant::testing::operator+;
using morlevant::testing::RunnerFixture;

namespace fs = std::filesystem;

namespace {

const Lines replaceAtoB = {{5, "4"}, {11, "a"}, {12, "b"}};
const Lines mergeAll = {{5, "6"}, {26, "5"}};
// Columns of three: a row of 7 or 8 characters ends inside the third piece, and the run
// announces it through its message callback, in the middle of reading the file.
const Lines divideByColumn = {{5, "6"}, {26, "2"}, {28, "3"}, {29, "p*.txt"}, {30, "1"}};

// A source whose first row is announced, followed by more rows than one block holds.
std::string announcedThenLong() {
    std::string text = "1234567\n";
    for (int row = 0; row < 20000; ++row)
        text += "abcdef\n";
    return text;
}

std::string temporaryOf(const RunnerFixture& fixture, const std::string& name) {
    return ResultFile::temporaryPath(fixture.source(name));
}

TEST(WholeResults, StoppedRunKeepsFinishedFilesAndTheOlderResultOfTheUnfinishedOne) {
    RunnerFixture fixture;
    fixture.set(divideByColumn);
    fixture.writeSource("a.txt", "xy\n");
    fixture.writeSource("b.txt", announcedThenLong());
    fixture.writeSource("c.txt", "xy\n");
    fixture.writeSource("b/p1.txt", "older piece");
    fixture.writeTask({"a.txt", "b.txt", "c.txt"});
    int announced = 0;
    try {
        RunCallbacks callbacks;
        callbacks.message = [&](const std::string&) {
            ++announced;
            fixture.stop = true;
        };
        RunRequest request{fixture.home.path().string(), fixture.taskName, 3};
        request.stop = &fixture.stop;
        RunTask(request, callbacks);
        ADD_FAILURE() << "the run was not stopped";
    } catch (const RunStopped& stopped) {
        EXPECT_EQ(stopped.unfinished, fixture.source("b.txt"));
        EXPECT_EQ(stopped.done, 1);
        EXPECT_EQ(stopped.total, 3);
    }
    EXPECT_EQ(announced, 1) << "stopped at the next block";
    EXPECT_EQ(fixture.result("a/p1.txt"), "xy\r\n");
    EXPECT_EQ(fixture.result("b/p1.txt"), "older piece");
    EXPECT_FALSE(fs::exists(temporaryOf(fixture, "b/p1.txt")));
    EXPECT_FALSE(fs::exists(fixture.source("c")));
}

TEST(WholeResults, StopBetweenFilesNamesNoUnfinishedFile) {
    RunnerFixture fixture;
    fixture.set(replaceAtoB);
    fixture.writeSource("a.txt", "a\n");
    fixture.writeSource("b.txt", "a\n");
    fixture.writeTask({"a.txt", "b.txt"});
    RunCallbacks callbacks;
    callbacks.progress = [&](int, int) { fixture.stop = true; };
    RunRequest request{fixture.home.path().string(), fixture.taskName, 2};
    request.stop = &fixture.stop;
    try {
        RunTask(request, callbacks);
        ADD_FAILURE() << "the run was not stopped";
    } catch (const RunStopped& stopped) {
        EXPECT_EQ(stopped.unfinished, "");
        EXPECT_EQ(stopped.done, 1);
    }
    EXPECT_EQ(fixture.result("a.txt.modify"), "b\r\n");
    EXPECT_FALSE(fixture.exists("b.txt.modify"));
}

// A merge is one result for all files: a failure at the second file keeps the older merge.
// Here the second source is swapped for a named pipe after the list was checked, which must
// neither hang the run nor be read.
TEST(WholeResults, FailingMergeKeepsTheOlderMergeAndNeverReadsAPipe) {
    RunnerFixture fixture;
    fixture.set(mergeAll);
    fixture.writeSource("a.txt", "a\n");
    fixture.writeSource("b.txt", "b\n");
    fixture.writeSource("../outcome/merge/merge-application-file.txt", "older merge");
    fixture.writeTask({"a.txt", "b.txt"});
    RunCallbacks callbacks;
    callbacks.progress = [&](int, int) {
        fs::remove(fixture.source("b.txt"));
        ASSERT_TRUE(morlevant::testing::makeFifo(fixture.source("b.txt")));
    };
    RunRequest request{fixture.home.path().string(), fixture.taskName, 2};
    try {
        RunTask(request, callbacks);
        ADD_FAILURE() << "the pipe was read";
    } catch (const TaskError& error) {
        EXPECT_NE(std::string(error.what()).find("b.txt: it is not a regular file"),
                  std::string::npos)
            << error.what();
    }
    EXPECT_EQ(fixture.mergeResult(), "older merge");
    std::vector<std::string> left;
    for (const auto& entry : fs::directory_iterator(fixture.home.path() / "outcome" / "merge"))
        left.push_back(entry.path().filename().string());
    EXPECT_EQ(left, std::vector<std::string>{"merge-application-file.txt"}) << "no temporary";
}

// Saved in place (appended to) or saved by replacing the file (a new file renamed over it)
// while the run reads it: either way the run stops with the file named, and drops its result.
TEST(WholeResults, SourceChangedWhileReadStopsTheRun) {
    const struct {
        const char* name;
        std::function<void(const RunnerFixture&)> change;
    } cases[] = {
        {"appended",
         [](const RunnerFixture& f) {
             std::ofstream(f.source("b.txt"), std::ios::app) << "more\n";
         }},
        {"rewritten in place, same size",
         [](const RunnerFixture& f) {
             // Past the granularity of the file system's clock, as a later save would be.
             std::this_thread::sleep_for(std::chrono::milliseconds(20));
             std::fstream file(f.source("b.txt"), std::ios::in | std::ios::out | std::ios::binary);
             file.seekp(0);
             file << '9';
         }},
        {"replaced",
         [](const RunnerFixture& f) {
             morlevant::testing::writeBytes(f.source("new.txt"), "new\n");
             fs::rename(f.source("new.txt"), f.source("b.txt"));
         }},
    };
    for (const auto& test : cases) {
        RunnerFixture fixture;
        fixture.set(divideByColumn);
        fixture.writeSource("b.txt", announcedThenLong());
        fixture.writeSource("b/p1.txt", "older piece");
        fixture.writeTask({"b.txt"});
        RunCallbacks callbacks;
        bool changed = false;
        callbacks.message = [&](const std::string&) {
            if (!std::exchange(changed, true))
                test.change(fixture);
        };
        RunRequest request{fixture.home.path().string(), fixture.taskName, 1};
        try {
            RunTask(request, callbacks);
            ADD_FAILURE() << test.name << ": the change went unnoticed";
        } catch (const TaskError& error) {
            EXPECT_NE(std::string(error.what())
                          .find(fixture.source("b.txt") + " changed while it was being read"),
                      std::string::npos)
                << error.what();
        }
        EXPECT_EQ(fixture.result("b/p1.txt"), "older piece") << test.name;
        EXPECT_FALSE(fs::exists(temporaryOf(fixture, "b/p1.txt"))) << test.name;
    }
}

// Whatever stands under a result's temporary name (left by a killed run, or put there) is
// replaced, never written through or emptied: no file outside the task changes.
TEST(WholeResults, WhatStandsUnderTheTemporaryNameIsReplacedNotWrittenThrough) {
    const struct {
        const char* name;
        std::function<void(const RunnerFixture&, const std::string& temporary)> plant;
    } cases[] = {
        {"longer leftover",
         [](const RunnerFixture&, const std::string& temporary) {
             morlevant::testing::writeBytes(temporary, std::string(1000, 'x'));
         }},
        {"hard link",
         [](const RunnerFixture& f, const std::string& temporary) {
             fs::create_hard_link(f.source("keep.txt"), temporary);
         }},
        {"symbolic link",
         [](const RunnerFixture& f, const std::string& temporary) {
             fs::create_symlink(f.source("keep.txt"), temporary);
         }},
        {"pipe",
         [](const RunnerFixture&, const std::string& temporary) {
             ASSERT_TRUE(morlevant::testing::makeFifo(temporary));
         }},
    };
    for (const auto& test : cases) {
        RunnerFixture fixture;
        fixture.set(replaceAtoB);
        fixture.writeSource("a.txt", "a\n");
        fixture.writeSource("keep.txt", "keep");
        test.plant(fixture, temporaryOf(fixture, "a.txt.modify"));
        EXPECT_EQ(fixture.failure({"a.txt"}), "no error") << test.name;
        EXPECT_EQ(fixture.result("a.txt.modify"), "b\r\n") << test.name;
        EXPECT_EQ(fixture.result("keep.txt"), "keep") << test.name;
        EXPECT_FALSE(fs::exists(fs::symlink_status(temporaryOf(fixture, "a.txt.modify"))))
            << test.name;
    }
}

TEST(WholeResults, SecondRunOfATaskIsRefusedOrWaits) {
    RunnerFixture fixture;
    fixture.set(replaceAtoB);
    fixture.writeSource("a.txt", "a\n");
    fixture.writeTask({"a.txt"});
    const std::string lockPath = taskLockPath(fixture.home.path().string(), fixture.taskName);
    auto otherRun = RunLock::tryTake(lockPath);
    ASSERT_TRUE(otherRun);
    EXPECT_FALSE(RunLock::tryTake(lockPath)) << "the lock is held";

    // The window refuses at once and writes nothing.
    EXPECT_NE(fixture.failure({"a.txt"}).find("is being run elsewhere"), std::string::npos);
    EXPECT_FALSE(fixture.exists("a.txt.modify"));

    // The command line waits for the other run to end, and can be stopped while it waits.
    fixture.waitForOtherRun = true;
    std::thread stopper([&] {
        while (fixture.waited == 0)
            std::this_thread::yield();
        fixture.stop = true;
    });
    EXPECT_THROW(fixture.runOnly(1), RunStopped);
    stopper.join();
    fixture.stop = false;

    std::thread waiting([&] { fixture.runOnly(1); });
    while (fixture.waited < 2)
        std::this_thread::yield();
    EXPECT_FALSE(fixture.exists("a.txt.modify"));
    otherRun.reset();
    waiting.join();
    EXPECT_EQ(fixture.result("a.txt.modify"), "b\r\n");
}

// Two runs writing the same result at the same moment (two tasks that share a source): the
// second is refused rather than writing into the first one's temporary.
TEST(WholeResults, ResultBeingWrittenByAnotherRunIsNotTouched) {
    RunnerFixture fixture;
    const std::string path = fixture.source("a.txt.modify");
    fs::create_directories(fs::path(path).parent_path());
    ResultFile first(path, ResultFile::Start::Empty);
    first.write("first", 5);
    try {
        ResultFile second(path, ResultFile::Start::Empty);
        ADD_FAILURE() << "two writers of one result";
    } catch (const TaskError& error) {
        EXPECT_NE(std::string(error.what()).find("another run is writing it"), std::string::npos);
    }
    first.commit();
    EXPECT_EQ(fixture.result("a.txt.modify"), "first");
}

// The file to insert is held in memory in place: one that never ends (a device, a pipe) or
// that is larger than the bound is refused with the reason, and no run hangs on it.
TEST(WholeResults, FileToInsertMustBeARegularFileOfBoundedSize) {
    RunnerFixture fixture;
    const std::string huge = fixture.source("huge.txt");
    morlevant::testing::writeBytes(huge, "");
    fs::resize_file(huge, (std::uintmax_t{64} << 20) + 1);
    ASSERT_TRUE(morlevant::testing::makeFifo(fixture.source("pipe")));
    const struct {
        std::string file;
        const char* reason;
    } cases[] = {
        {fixture.source("pipe"), "pipe: it is not a regular file"},
        {"/dev/zero", "/dev/zero: it is not a regular file"},
        {huge, "is too large; at most 64 MB"},
    };
    const Lines insertFileInPlace = {{1, "2"}, {2, "1-1"}, {4, "0"}, {5, "5"}, {19, "3"}};
    fixture.writeSource("a.txt", "a\n");
    for (const auto& test : cases) {
        fixture.set(insertFileInPlace + Lines{{22, test.file}});
        const std::string message = fixture.failure({"a.txt"});
        EXPECT_NE(message.find(test.reason), std::string::npos) << message;
        EXPECT_FALSE(fixture.exists("a.txt.modify"));
    }
}

} // namespace
