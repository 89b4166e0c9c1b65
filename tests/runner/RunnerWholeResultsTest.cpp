// A run that is stopped, raced, or reads a file that changes under it leaves every result whole:
// the new one, or the older one as it was, never a part.
#include "engine/io/ResultFile.h"
#include "engine/io/RunLock.h"
#include "tests/support/NonRegularFiles.h"
#include "tests/support/RunnerFixture.h"

#include <chrono>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <set>
#include <thread>

using namespace morlevant;
using namespace morlevant::testing;

namespace fs = std::filesystem;

namespace {

const Lines replaceAtoB = {{5, "4"}, {11, "a"}, {12, "b"}};
// Columns of three: a row of 7 characters ends inside the third piece, which the run announces
// through its message callback while it reads the file.
const Lines divideByColumn = {{5, "6"}, {26, "2"}, {28, "3"}, {29, "p*.txt"}, {30, "1"}};

// b.txt: a row that is announced, then more rows than one block holds; b's older piece beside.
void writeAnnouncedSource(const RunnerFixture& fixture) {
    std::string text = "1234567\n";
    for (int row = 0; row < 20000; ++row)
        text += "abcdef\n";
    fixture.writeSource("b.txt", text);
    fixture.writeSource("b/p1.txt", "older piece");
}

std::string temporaryOf(const RunnerFixture& fixture, const std::string& name) {
    return ResultFile::temporaryPath(fixture.source(name));
}

TEST(WholeResults, StoppedRunKeepsFinishedFilesAndTheOlderResultOfTheUnfinishedOne) {
    RunnerFixture fixture;
    fixture.set(divideByColumn);
    fixture.writeSource("a.txt", "xy\n");
    fixture.writeSource("c.txt", "xy\n");
    writeAnnouncedSource(fixture);
    fixture.onMessage = [&] { fixture.stop = true; };
    const RunStopped midFile = fixture.stopped({"a.txt", "b.txt", "c.txt"});
    EXPECT_EQ(midFile.unfinished, fixture.source("b.txt"));
    EXPECT_EQ(midFile.done, 1);
    EXPECT_EQ(midFile.total, 3);
    EXPECT_EQ(fixture.messages.size(), 1u) << "stopped at the next block";
    EXPECT_EQ(fixture.result("a/p1.txt"), "xy\r\n");
    EXPECT_EQ(fixture.result("b/p1.txt"), "older piece");
    EXPECT_FALSE(fs::exists(temporaryOf(fixture, "b/p1.txt")));

    // Stopped between files, no file was left unfinished.
    fixture.stop = false;
    fixture.onMessage = nullptr;
    fixture.afterFile = [&] { fixture.stop = true; };
    const RunStopped betweenFiles = fixture.stopped({"a.txt", "b.txt"});
    EXPECT_EQ(betweenFiles.unfinished, "");
    EXPECT_EQ(betweenFiles.done, 1);
}

// A merge is one result for all files: a failure at the second file keeps the older merge.
// Here the second source is swapped for a named pipe after the list was checked, which must
// neither hang the run nor be read.
TEST(WholeResults, FailingMergeKeepsTheOlderMergeAndNeverReadsAPipe) {
    RunnerFixture fixture;
    fixture.set({{5, "6"}, {26, "5"}});
    fixture.writeSource("a.txt", "a\n");
    fixture.writeSource("b.txt", "b\n");
    fixture.writeSource("../outcome/merge/merge-application-file.txt", "older merge");
    fixture.afterFile = [&] {
        fs::remove(fixture.source("b.txt"));
        ASSERT_TRUE(makeFifo(fixture.source("b.txt")));
    };
    const std::string message = fixture.failure({"a.txt", "b.txt"});
    EXPECT_NE(message.find("b.txt: it is not a regular file"), std::string::npos) << message;
    EXPECT_EQ(fixture.mergeResult(), "older merge");
    EXPECT_EQ(fs::directory_iterator(fixture.home.path() / "outcome" / "merge")->path().filename(),
              "merge-application-file.txt");
    EXPECT_FALSE(
        fs::exists(fixture.home.file("outcome/merge/merge-application-file.txt") + ".unfinished"));
}

// Saved in place (appended to, or rewritten at the same size) or saved by replacing the file
// while the run reads it: the run stops with the file named, and drops its result.
TEST(WholeResults, SourceChangedWhileReadStopsTheRun) {
    const std::function<void(const RunnerFixture&)> changes[] = {
        [](const RunnerFixture& f) { std::ofstream(f.source("b.txt"), std::ios::app) << "x\n"; },
        [](const RunnerFixture& f) {
            // Past the granularity of the file system's clock, as a later save would be.
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
            std::fstream(f.source("b.txt"), std::ios::in | std::ios::out) << '9';
        },
        [](const RunnerFixture& f) {
            writeBytes(f.source("new.txt"), "new\n");
            fs::rename(f.source("new.txt"), f.source("b.txt"));
        },
    };
    for (const auto& change : changes) {
        RunnerFixture fixture;
        fixture.set(divideByColumn);
        writeAnnouncedSource(fixture);
        fixture.onMessage = [&] { change(fixture); };
        EXPECT_NE(fixture.failure({"b.txt"}).find(fixture.source("b.txt") +
                                                  " changed while it was being read"),
                  std::string::npos);
        EXPECT_EQ(fixture.result("b/p1.txt"), "older piece");
        EXPECT_FALSE(fs::exists(temporaryOf(fixture, "b/p1.txt")));
    }
}

// Whatever stands under a result's temporary name (left by a killed run, or put there) is
// replaced, never written through or emptied: no file outside the task changes. One that
// another run is writing at this moment is not touched.
TEST(WholeResults, WhatStandsUnderTheTemporaryNameIsReplacedNotWrittenThrough) {
    const std::function<void(const std::string& keep, const std::string& temporary)> plants[] = {
        [](const std::string&, const std::string& t) { writeBytes(t, std::string(1000, 'x')); },
        [](const std::string& keep, const std::string& t) { fs::create_hard_link(keep, t); },
        [](const std::string& keep, const std::string& t) { fs::create_symlink(keep, t); },
        [](const std::string&, const std::string& t) { makeFifo(t); },
    };
    for (const auto& plant : plants) {
        RunnerFixture fixture;
        fixture.set(replaceAtoB);
        fixture.writeSource("a.txt", "a\n");
        fixture.writeSource("keep.txt", "keep");
        plant(fixture.source("keep.txt"), temporaryOf(fixture, "a.txt.modify"));
        EXPECT_EQ(fixture.failure({"a.txt"}), "no error");
        EXPECT_EQ(fixture.result("a.txt.modify"), "b\r\n");
        EXPECT_EQ(fixture.result("keep.txt"), "keep");
        EXPECT_FALSE(fs::exists(fs::symlink_status(temporaryOf(fixture, "a.txt.modify"))));
    }

    RunnerFixture fixture;
    ResultFile first(fixture.home.file("a.txt.modify"), ResultFile::Start::Empty);
    first.write("first", 5);
    EXPECT_THROW(ResultFile(fixture.home.file("a.txt.modify"), ResultFile::Start::Empty),
                 TaskError);
    first.commit();
    EXPECT_EQ(readBytes(fixture.home.file("a.txt.modify")), "first");
}

TEST(WholeResults, SecondRunOfATaskIsRefusedOrWaits) {
    RunnerFixture fixture;
    fixture.set(replaceAtoB);
    fixture.writeSource("a.txt", "a\n");
    fixture.writeTask({"a.txt"});
    auto otherRun = RunLock::tryTake(taskLockPath(fixture.home.path().string(), fixture.taskName));
    ASSERT_TRUE(otherRun);

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

// The file to insert is held in memory in place: one that never ends (a device, a pipe) or
// that is larger than the bound is refused with the reason, and no run hangs on it.
TEST(WholeResults, FileToInsertMustBeARegularFileOfBoundedSize) {
    RunnerFixture fixture;
    const std::string huge = fixture.source("huge.txt");
    writeBytes(huge, "");
    fs::resize_file(huge, (std::uintmax_t{64} << 20) + 1);
    ASSERT_TRUE(makeFifo(fixture.source("pipe")));
    fixture.writeSource("a.txt", "a\n");
    const std::pair<std::string, std::string> cases[] = {
        {fixture.source("pipe"), "pipe: it is not a regular file"},
        {"/dev/zero", "/dev/zero: it is not a regular file"},
        {huge, "is too large; at most 64 MB"},
    };
    for (const auto& [file, reason] : cases) {
        fixture.set({{1, "2"}, {2, "1-1"}, {4, "0"}, {5, "5"}, {19, "3"}, {22, file}});
        EXPECT_NE(fixture.failure({"a.txt"}).find(reason), std::string::npos) << reason;
        EXPECT_FALSE(fixture.exists("a.txt.modify"));
    }
}

// Runs that cannot go on stop with a message naming the file or value and the cause, and keep
// what they wrote.
const Lines divideByRow = {{5, "6"}, {26, "1"}, {27, "1"}};

struct FailureCase {
    const char* name;
    Lines lines;
    std::string mentions; // what the message must hold
};

const FailureCase failureCases[] = {
    {"RowsPerPieceNotANumber", divideByRow + Lines{{27, "abc"}}, "rows per piece \"abc\""},
    {"ColumnsPerPieceZero", divideByRow + Lines{{26, "2"}, {28, "0"}}, "columns per piece \"0\""},
    {"TemplateNamingAFolder", divideByRow + Lines{{29, "../p(*).txt"}}, "may not name a folder"},
    {"RowsPerPieceTooLarge", divideByRow + Lines{{27, std::string(30, '9')}},
     "is too large; at most 18446744073709551615"},
    {"TemplateWithANulShowsIt", divideByRow + Lines{{29, std::string("p\0/x", 4)}},
     "template \"p[NUL]/x\" is not a file name"},
    {"PieceNumberWiderThanTemplate", divideByRow + Lines{{30, "9"}}, "10 is wider"},
    {"UnpairedRowRanges", {{1, "2"}, {2, "1-2,5"}}, "row ranges \"1-2,5\""},
    {"MissingInsertionFile", {{19, "3"}, {22, "/nonexistent/ins.txt"}}, "/nonexistent/ins.txt"},
    {"InsertingTheResultIntoItself", {{19, "3"}, {22, "in.txt.modify"}}, "result being written"},
    {"DivisionByZeroNamesFileAndLine", {{5, "3"}, {6, "0"}, {10, "/0"}}, "in.txt, line 1: "},
};

class RunnerFailures : public ::testing::TestWithParam<FailureCase> {};

TEST_P(RunnerFailures, StopWithAClearMessage) {
    RunnerFixture fixture;
    fixture.writeSource("in.txt", "r1\r\nr2\r\n");
    fixture.set({{5, "5"}, {19, "2"}});
    fixture.set(GetParam().lines);
    if (fixture.settings.insertFile == "in.txt.modify")
        fixture.settings.insertFile = fixture.source("in.txt.modify");
    const std::string message = fixture.failure({"in.txt"});
    EXPECT_NE(message.find(GetParam().mentions), std::string::npos) << message;
    EXPECT_EQ(fixture.result("in.txt"), "r1\r\nr2\r\n");
}

INSTANTIATE_TEST_SUITE_P(Runner, RunnerFailures, ::testing::ValuesIn(failureCases),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(RunnerFailure, KeepsThePiecesWrittenBeforeALaterFailure) {
    RunnerFixture fixture;
    fixture.set(divideByRow + Lines{{30, "8"}});
    fixture.writeSource("in.txt", "r1\nr2\nr3\n");
    EXPECT_NE(fixture.failure({"in.txt"}).find("wider"), std::string::npos);
    EXPECT_EQ(fixture.result("in/p(8).txt"), "r1\r\n");
    EXPECT_EQ(fixture.result("in/p(9).txt"), "r2\r\n");
}

// What a folder holds, by name; a folder's name ends with "/".
std::set<std::string> entries(const std::filesystem::path& folder) {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        names.insert(entry.path().filename().string() + (entry.is_directory() ? "/" : ""));
    return names;
}

// A column divide of the rows with their column ranges taken out reads its source once per
// batch of pieces. When a later batch fails (here its first piece number is one digit too
// wide), the batches already closed stay whole, the failed one leaves no empty or partial
// piece, and nothing else (no copy of the text divided) is left beside the source.
TEST(RunnerFailure, ColumnDivideFailingPartWayLeavesOnlyWholePieces) {
    const struct {
        std::string firstNumber;
        std::uint64_t piecesKept; // numbered from firstNumber on
    } cases[] = {{"8", 0}, {"68", 32}};
    for (const auto& c : cases) {
        RunnerFixture fixture;
        fixture.set({{1, "2"}, {3, "2-41"}, {4, "1"}, {5, "6"}, {26, "2"}, {28, "1"}});
        fixture.settings.divideNumberFrom = c.firstNumber;
        const std::string row = "x0123456789012345678901234567890123456789";
        fixture.writeSource("in.txt", row + "\n" + row + "\n");
        EXPECT_NE(fixture.failure({"in.txt"}).find("is wider"), std::string::npos);

        std::set<std::string> expected;
        for (std::uint64_t v = 0; v < c.piecesKept; ++v) {
            const std::string name = "p(" + std::to_string(std::stoul(c.firstNumber) + v) + ").txt";
            expected.insert(name);
            const std::string column(1, row[v + 1]);
            EXPECT_EQ(fixture.result("in/" + name), column + "\r\n" + column + "\r\n") << name;
        }
        std::set<std::string> beside{"in.txt"};
        if (c.piecesKept)
            beside.insert("in/");
        const std::filesystem::path files = fixture.home.path() / "files";
        EXPECT_EQ(entries(files), beside) << c.firstNumber;
        if (c.piecesKept) {
            EXPECT_EQ(entries(files / "in"), expected) << c.firstNumber;
        }
    }
}

} // namespace
