// Files worked at once give what a run one at a time gives: the same bytes, messages and alerts
// in list order, the first failure in list order, and no half-written result after a stop.
#include "engine/io/LineReader.h"
#include "engine/run/FileSchedule.h"
#include "tests/support/RunnerFixture.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <map>

using namespace morlevant;
using morlevant::testing::Lines;
using morlevant::testing::operator+;
using morlevant::testing::RunnerFixture;

namespace {

// Every file and folder under files/.
std::map<std::string, std::string> filesLeft(const RunnerFixture& fixture) {
    return morlevant::testing::snapshot(fixture.home.path() / "files");
}

// Sources that meet in their results: the same file twice, a hard link to it, two names with
// one divide folder ("a/"), an empty file, ends of every kind, lines past a block.
void writeMixedSources(const RunnerFixture& fixture) {
    fixture.writeSource("a.txt", "10 x\r\n2\n30,5\rlast");
    fixture.writeSource("a.csv", "col1,col2\nabcdefghijklmnopqrstuvwxy\n");
    fixture.writeSource("empty.txt", "");
    fixture.writeSource("wide.txt", std::string(LineReader::blockSize + 4464, 'w') + "\n7\n" +
                                        std::string(23, 'z'));
    for (int i = 0; i < 6; ++i)
        fixture.writeSource(
            "n" + std::to_string(i) + ".txt",
            std::string(i == 5 ? LineReader::blockSize - 536 : std::size_t(i) * 5, 'q') + "\n" +
                std::to_string(i) + "\n");
    std::filesystem::create_hard_link(fixture.source("a.txt"), fixture.source("link.txt"));
}

// Messages of a run in `from`'s home as a run in `to`'s tells them: the alerts and failures name
// each file by its path.
std::vector<std::string> inHomeOf(std::vector<std::string> messages, const RunnerFixture& from,
                                  const RunnerFixture& to) {
    const std::string old = from.home.path().string();
    for (std::string& message : messages)
        for (std::size_t at; (at = message.find(old)) != std::string::npos;)
            message.replace(at, old.size(), to.home.path().string());
    return messages;
}

const std::vector<std::string> mixedList = {"a.txt",     "n0.txt", "a.csv",    "wide.txt",
                                            "n1.txt",    "a.txt",  "link.txt", "n2.txt",
                                            "empty.txt", "n3.txt", "n4.txt",   "n5.txt"};

struct JobsCase {
    const char* name;
    Lines lines;
};

const JobsCase jobsCases[] = {
    {"CalculateWithAlerts", {{5, "3"}, {6, "0"}, {10, "*3"}, {8, "Yes"}, {9, "Yes"}}},
    {"ReplaceInRanges", Lines{{1, "2"}, {2, "1-2"}, {3, "1-3"}, {4, "0"}} +
                            Lines{{5, "4"}, {11, "Yes"}, {12, "q"}, {13, "Q"}}},
    {"FilterAndOutput", {{5, "5"}, {19, "6"}, {24, "[0-9]+"}}},
    {"InsertString", {{5, "5"}, {19, "2"}, {21, "END"}}},
    {"DivideByRow", {{5, "6"}, {26, "1"}, {27, "1"}}},
    // Its notice comes once for each line that ends inside the third piece.
    {"DivideByColumn", {{5, "6"}, {26, "2"}, {28, "30000"}}},
    {"DivideByRangeRowTakenOut",
     Lines{{1, "2"}, {2, "1-1,2-3"}, {3, ""}, {4, "1"}} + Lines{{5, "6"}, {26, "3"}}},
};

class RunnerJobs : public ::testing::TestWithParam<JobsCase> {};

TEST_P(RunnerJobs, ManyAtOnceLeaveTheBytesAndMessagesOfOneAtATime) {
    RunnerFixture one;
    RunnerFixture many;
    many.jobs = 4;
    for (RunnerFixture* fixture : {&one, &many}) {
        writeMixedSources(*fixture);
        fixture->set(GetParam().lines);
        fixture->run(mixedList);
    }
    EXPECT_EQ(filesLeft(many), filesLeft(one));
    EXPECT_EQ(many.messages, inHomeOf(one.messages, one, many));
    ASSERT_FALSE(many.progress.empty());
    EXPECT_EQ(many.progress.back(), (std::pair<int, int>(12, 12)));
}

INSTANTIATE_TEST_SUITE_P(Pages, RunnerJobs, ::testing::ValuesIn(jobsCases),
                         [](const auto& info) { return std::string(info.param.name); });

// A file large enough to be worked in batches on several threads: ends of every kind (a lone CR
// among them), rows without a number far apart, and a line longer than a block in the middle.
std::string largeSource() {
    std::string text;
    for (int row = 1; text.size() < 1500000; ++row) {
        text += row % 7919 == 0 ? "no number here"
                                : std::to_string(row * 3) + " item " + std::to_string(row % 97);
        text += row % 3 == 0 ? "\r\n" : row % 1001 == 0 ? "\r" : "\n";
        if (row == 20000)
            text += std::string(2 * LineReader::blockSize, 'L') + " 5\n";
    }
    return text + "9 last";
}

const JobsCase largeFileCases[] = {
    {"CalculateWithAlerts", {{5, "3"}, {6, "2"}, {10, "+5,*2,/3"}, {8, "Yes"}}},
    {"ReplaceInRangesInPlace", Lines{{1, "2"}, {2, "5-40000"}, {3, "1-4,9-12"}, {4, "0"}} +
                                   Lines{{5, "4"}, {11, "Yes"}, {12, "1"}, {13, "one"}}},
    {"ReplaceInRangesTakenOut", Lines{{1, "2"}, {2, "3-30000,50000-60000"}, {3, "2-8"}, {4, "1"}} +
                                    Lines{{5, "4"}, {11, "Yes"}, {12, "it"}, {13, "IT"}}},
    {"FilterAndDelete", {{5, "5"}, {19, "5"}, {24, "[0-9]+"}}},
    {"FilterAndOutput", {{5, "5"}, {19, "6"}, {24, "m [0-9]"}}},
    {"MergeRangesTakenOut", Lines{{1, "2"}, {3, "2-8,1-3"}, {4, "1"}} + Lines{{5, "6"}, {26, "5"}}},
    // Copied through a thread that writes behind the reading one.
    {"Merge", {{5, "6"}, {26, "5"}}},
    {"InsertAtTheEnd", {{5, "5"}, {19, "2"}, {21, "END"}}},
    // The first row that fails is named, however far the threads have read ahead.
    {"FailsAtTheFirstNegativeRoot", {{5, "3"}, {10, "-120000,^0.5"}}},
};

class RunnerLargeFile : public ::testing::TestWithParam<JobsCase> {};

TEST_P(RunnerLargeFile, ThreadsOnOneFileLeaveTheBytesAndMessagesOfOne) {
    RunnerFixture one;
    RunnerFixture many;
    many.jobs = 3;
    std::string failures[2];
    for (RunnerFixture* fixture : {&one, &many}) {
        fixture->writeSource("large.txt", largeSource());
        fixture->set(GetParam().lines);
        failures[fixture == &many] = fixture->failure({"large.txt"});
    }
    EXPECT_EQ(filesLeft(many), filesLeft(one));
    if (std::string(GetParam().name).starts_with("Merge")) {
        EXPECT_EQ(many.mergeResult(), one.mergeResult());
    }
    EXPECT_EQ(failures[1], inHomeOf({failures[0]}, one, many)[0]);
    EXPECT_EQ(many.messages, inHomeOf(one.messages, one, many));
}

INSTANTIATE_TEST_SUITE_P(Pages, RunnerLargeFile, ::testing::ValuesIn(largeFileCases),
                         [](const auto& info) { return std::string(info.param.name); });

// A range worked in place on every row goes a block of lines at once where the routine can,
// rows that name every row line by line: both give the same bytes, read in order or in batches,
// with characters of several bytes and bytes that are not UTF-8 before the range.
TEST(RunnerLargeFileRanges, ABlockInPlaceGivesWhatItsLinesGive) {
    const std::string source = "\xc3\xa9"
                               "1 item \xc3\xa9\n\xff"
                               "1\xfe item 1\r\n" +
                               largeSource();
    const Lines replace = Lines{{1, "2"}, {3, "3-99999999"}, {4, "0"}, {5, "4"}} +
                          Lines{{11, "1"}, {12, "one"}, {13, "item"}, {14, "it"}, {15, "e"}};
    for (const int jobs : {1, 3}) {
        RunnerFixture everyRow;
        RunnerFixture rowsNamed;
        for (RunnerFixture* fixture : {&everyRow, &rowsNamed}) {
            fixture->jobs = jobs;
            fixture->writeSource("large.txt", source);
            fixture->set(replace + Lines{{2, fixture == &everyRow ? "" : "1-99999999"}});
            fixture->run({"large.txt"});
        }
        // Compared whole: a listing of where megabytes of text differ would not be read.
        EXPECT_TRUE(filesLeft(everyRow) == filesLeft(rowsNamed)) << jobs << " at once";
    }
}

bool anyUnfinished(const RunnerFixture& fixture) {
    for (const auto& [name, bytes] : filesLeft(fixture))
        if (name.ends_with(".unfinished"))
            return true;
    return false;
}

// The failing file that comes first in the list is named, whichever failed first; the file
// being worked when the run failed keeps its older result whole.
TEST(RunnerJobsFailure, TheFirstFailureInListOrderIsReportedAndTheOthersStop) {
    RunnerFixture fixture;
    fixture.jobs = 4;
    fixture.set({{5, "4"}, {11, "Yes"}, {12, "a"}, {13, "b"}});
    std::string big;
    for (int row = 0; row < 100000; ++row)
        big += "a row of a large file " + std::to_string(row) + "\n";
    fixture.writeSource("big.txt", big);
    fixture.writeSource("big.txt.modify", "older\r\n");
    fixture.writeSource("ok.txt", "a\n");
    const std::string error =
        fixture.failure({"big.txt", "missing1.txt", "ok.txt", "missing2.txt"});
    EXPECT_NE(error.find("missing1.txt"), std::string::npos) << error;
    EXPECT_FALSE(anyUnfinished(fixture));
    const std::string older = fixture.result("big.txt.modify");
    EXPECT_TRUE(older == "older\r\n" || older.size() > big.size()) << "whole, old or new";
}

// What the caller is told after a file fails the run there, as one at a time, on any thread.
TEST(RunnerJobsFailure, AFailureInTellingOfAFinishedFileFailsTheRun) {
    RunnerFixture fixture;
    fixture.jobs = 2;
    fixture.set({{5, "5"}, {19, "2"}, {21, "END"}});
    fixture.writeSource("a.txt", "a\n");
    fixture.writeSource("b.txt", "b\n");
    fixture.afterFile = [] { throw TaskError("The progress cannot be shown"); };
    EXPECT_EQ(fixture.failure({"a.txt", "b.txt"}), "The progress cannot be shown");
}

TEST(RunnerJobsFailure, AStopLeavesFinishedFilesAndNoHalfResult) {
    RunnerFixture fixture;
    fixture.jobs = 3;
    fixture.set({{5, "6"}, {26, "2"}, {28, "10"}});
    std::string wide = std::string(25, 'w') + "\n";
    for (int row = 0; row < 20000; ++row)
        wide += "row " + std::to_string(row) + "\n";
    fixture.writeSource("wide.txt", wide);
    fixture.writeSource("wide/p(001).txt", "older");
    fixture.onMessage = [&] { fixture.stop = true; };
    const RunStopped stopped = fixture.stopped({"wide.txt"});
    EXPECT_EQ(stopped.unfinished, fixture.source("wide.txt"));
    EXPECT_EQ(stopped.done, 0);
    EXPECT_EQ(fixture.result("wide/p(001).txt"), "older");
    EXPECT_FALSE(anyUnfinished(fixture));
}

// A file waits for the latest earlier one of its result place and for the latest earlier one
// that is the same file; the others go in list order.
TEST(FileScheduleTest, FilesMeetingInPlaceOrIdentityWaitForTheEarlierOne) {
    const FileIdentity same{1, 7};
    FileSchedule schedule({"p", "q", "p", "r", "s"}, {std::nullopt, same, std::nullopt, same, {}});
    EXPECT_EQ(schedule.take(), 0u);
    EXPECT_EQ(schedule.take(), 1u);
    EXPECT_EQ(schedule.take(), 4u) << "2 waits for 0 (place p), 3 for 1 (the same file)";
    EXPECT_EQ(schedule.take(), std::nullopt);
    schedule.finish(1);
    EXPECT_EQ(schedule.take(), 3u);
    schedule.finish(0);
    EXPECT_EQ(schedule.take(), 2u);
    EXPECT_TRUE(schedule.allTaken());
}

} // namespace
