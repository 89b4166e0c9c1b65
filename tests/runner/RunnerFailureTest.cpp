// Runs that cannot go on stop with a message naming the file or value and the cause, and keep
// what they wrote.
#include "RunnerFixture.h"

#include <functional>
#include <gtest/gtest.h>

using namespace morlevant;
using morlevant::testing::RunnerFixture;
using morlevant::testing::writeBytes;

namespace {

struct FailureCase {
    const char* name;
    std::function<void(RunnerFixture&)> set; // before the task's files are written
    std::vector<std::string> mentions;       // texts the message must hold
    std::function<void(RunnerFixture&)> spoil = [](RunnerFixture&) {}; // after
};

void divideByRow(RunnerFixture& f) {
    f.settings.operationPage = "6";
    f.settings.divideAction = "1";
    f.settings.divideByRowValue = "1";
}

std::string settingsPath(const RunnerFixture& f) {
    return taskSettingsPath(f.home.path().string(), f.taskName);
}

void insertFile(RunnerFixture& f) {
    f.settings.operationPage = "5";
    f.settings.insertAction = "3";
    f.settings.insertFile = f.source("absent.txt");
}

const FailureCase failureCases[] = {
    {"RowsPerPieceNotANumber",
     [](RunnerFixture& f) {
         divideByRow(f);
         f.settings.divideByRowValue = "abc";
     },
     {"rows per piece", "\"abc\""}},
    {"RowsPerPieceZero",
     [](RunnerFixture& f) {
         divideByRow(f);
         f.settings.divideByRowValue = "0";
     },
     {"rows per piece", "\"0\""}},
    {"ColumnsPerPieceNotANumber",
     [](RunnerFixture& f) {
         divideByRow(f);
         f.settings.divideAction = "2";
         f.settings.divideByColumnValue = "";
     },
     {"columns per piece"}},
    {"PieceNumberWiderThanTemplate",
     [](RunnerFixture& f) {
         divideByRow(f);
         f.settings.divideNumberFrom = "9";
     },
     {"10", "wider"}},
    {"UnpairedRowRanges",
     [](RunnerFixture& f) {
         f.settings.rangeMode = "2";
         f.settings.rowRange = "1-2,5";
     },
     {"row ranges", "1-2,5"}},
    {"UnpairedColumnRanges",
     [](RunnerFixture& f) {
         f.settings.rangeMode = "2";
         f.settings.takeRangesOut = "1";
         f.settings.columnRange = "3";
     },
     {"column ranges"}},
    {"MissingInsertionFile", insertFile, {"absent.txt"}},
    {"MissingSourceFile", [](RunnerFixture& f) { f.settings.operationPage = "4"; }, {"gone.txt"}},
    {"EmptySettingsFile",
     [](RunnerFixture&) {},
     {"empty"},
     [](RunnerFixture& f) { writeBytes(settingsPath(f), ""); }},
    {"ShortSettingsFile",
     [](RunnerFixture&) {},
     {"only 2"},
     [](RunnerFixture& f) { writeBytes(settingsPath(f), "1\r\n0\r\n"); }},
    {"MissingSettingsFile",
     [](RunnerFixture&) {},
     {"missing"},
     [](RunnerFixture& f) { std::filesystem::remove(settingsPath(f)); }},
    {"MissingFileList",
     [](RunnerFixture&) {},
     {"file list", "missing"},
     [](RunnerFixture& f) {
         std::filesystem::remove(taskFileListPath(f.home.path().string(), f.taskName));
     }},
    {"DivisionByZeroNamesFileAndLine",
     [](RunnerFixture& f) {
         f.settings.operationPage = "3";
         f.settings.decimalNumber = "0";
         f.settings.calculateSteps = "/0";
     },
     {"in.txt, line 1: "}},
};

class RunnerFailures : public ::testing::TestWithParam<FailureCase> {};

TEST_P(RunnerFailures, StopWithAClearMessage) {
    RunnerFixture fixture;
    fixture.writeSource("in.txt", "r1\r\nr2\r\n");
    fixture.settings.operationPage = "5";
    fixture.settings.insertAction = "2";
    GetParam().set(fixture);

    fixture.writeTask({"in.txt", "gone.txt"});
    GetParam().spoil(fixture);
    std::string message = "no error";
    try {
        fixture.runOnly(2);
    } catch (const TaskError& error) {
        message = error.what();
    }
    for (const std::string& text : GetParam().mentions)
        EXPECT_NE(message.find(text), std::string::npos) << message;
    EXPECT_EQ(fixture.result("in.txt"), "r1\r\nr2\r\n");
}

INSTANTIATE_TEST_SUITE_P(Runner, RunnerFailures, ::testing::ValuesIn(failureCases),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(RunnerFailure, KeepsWhatWasWrittenBeforeTheFailure) {
    RunnerFixture fixture;
    fixture.settings.operationPage = "5";
    fixture.settings.insertAction = "2";
    fixture.settings.insertString = "X";
    fixture.writeSource("a.txt", "a");
    EXPECT_NE(fixture.failure({"a.txt", "gone.txt", "a.txt"}).find("gone.txt"), std::string::npos);
    EXPECT_EQ(fixture.result("a.txt.modify"), "a\r\nX\r\n");
    EXPECT_EQ(fixture.progress.size(), 1u);
}

TEST(RunnerFailure, PieceWrittenBeforeTheNumberOverflowIsKept) {
    RunnerFixture fixture;
    divideByRow(fixture);
    fixture.settings.divideNumberFrom = "8";
    fixture.writeSource("in.txt", "r1\nr2\nr3\n");
    EXPECT_NE(fixture.failure({"in.txt"}).find("wider"), std::string::npos);
    EXPECT_EQ(fixture.result("in/p(8).txt"), "r1\r\n");
    EXPECT_EQ(fixture.result("in/p(9).txt"), "r2\r\n");
}

TEST(RunnerFailure, InsertingTheResultIntoItselfIsRefused) {
    RunnerFixture fixture;
    insertFile(fixture);
    fixture.writeSource("in.txt", "a");
    fixture.settings.insertFile = fixture.source("in.txt.modify");
    EXPECT_NE(fixture.failure({"in.txt"}).find("result being written"), std::string::npos);
}

TEST(RunnerFailure, TaskNameWithASeparatorWritesNothingOutsideTheTaskFolder) {
    RunnerFixture fixture;
    fixture.taskName = "../escape";
    const std::string home = fixture.home.path().string();
    EXPECT_THROW(taskSettingsPath(home, fixture.taskName), TaskError);
    EXPECT_THROW(prepareTaskForEditing(home, fixture.taskName, {"x"}), TaskError);
    EXPECT_THROW(fixture.runOnly(1), TaskError);
    EXPECT_FALSE(std::filesystem::exists(fixture.home.path() / "escape.edt"));
    EXPECT_FALSE(std::filesystem::exists(fixture.home.path() / "escape.ttp"));
}

} // namespace
