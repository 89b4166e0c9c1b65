// One source file, one task each: the bytes of every file the run leaves under "files/".
#include "RunnerFixture.h"

#include <functional>
#include <gtest/gtest.h>

using namespace morlevant;
using morlevant::testing::RunnerFixture;

namespace {

const std::string fiveRows = "r1\r\nr2\r\nr3\r\nr4\r\nr5\r\n";

struct PageCase {
    const char* name;
    std::function<void(TaskPageSettings&)> set;
    std::string input; // files/in.txt
    std::vector<std::pair<std::string, std::string>> expected;
    std::vector<std::string> absent = {};
    std::vector<std::string> messages = {};
};

void insertString(TaskPageSettings& s) {
    s.operationPage = "5";
    s.insertAction = "2";
    s.insertString = "INS";
}

void inPlace(TaskPageSettings& s, const char* rows, const char* columns) {
    s.rangeMode = "2";
    s.takeRangesOut = "0";
    s.rowRange = rows;
    s.columnRange = columns;
}

void rangesOut(TaskPageSettings& s, const char* rows, const char* columns) {
    inPlace(s, rows, columns);
    s.takeRangesOut = "1";
}

void divide(TaskPageSettings& s, const char* action) {
    s.operationPage = "6";
    s.divideAction = action;
    s.divideByRowValue = "2";
    s.divideByColumnValue = "2";
}

const PageCase pageCases[] = {
    {"InsertStringAfterLastRow", insertString, fiveRows, {{"in.txt.modify", fiveRows + "INS\r\n"}}},
    {"InsertDateTimeText",
     [](TaskPageSettings& s) {
         insertString(s);
         s.insertAction = "1";
         s.dateTimeFormat = "2024-05-06 07:08";
     },
     "a",
     {{"in.txt.modify", "a\r\n2024-05-06 07:08\r\n"}}},
    {"LineEndsBecomeCrLf",
     insertString,
     "a\rb\nc\r\n\r\nd",
     {{"in.txt.modify", "a\r\nb\r\nc\r\n\r\nd\r\nINS\r\n"}}},
    {"InvalidBytesPassUnchanged",
     insertString,
     "\xff\xfe x\xe2\x82\r\n",
     {{"in.txt.modify", "\xff\xfe x\xe2\x82\r\nINS\r\n"}}},
    {"EmptySourceStillGetsInsertion", insertString, "", {{"in.txt.modify", "INS\r\n"}}},
    {"InsertFileAppendsItsLines",
     [](TaskPageSettings& s) {
         insertString(s);
         s.insertAction = "3";
     },
     "a\r\n",
     {{"in.txt.modify", "a\r\ni1\r\ni2\r\n"}}},
    {"InPlaceInsertPointAndAppendInRows",
     [](TaskPageSettings& s) {
         insertString(s);
         inPlace(s, "2-2,4-5", "");
     },
     fiveRows,
     {{"in.txt.modify", "r1\r\nINS\r\nr2INS\r\nr3\r\nr4INS\r\nr5INS\r\n"}}},
    {"InPlaceInsertBeforeEachColumnRange",
     [](TaskPageSettings& s) {
         insertString(s);
         inPlace(s, "", "4-9,2-3,2-2");
     },
     "abcdef\r\nab\r\näöüß",
     {{"in.txt.modify", "aINSbcINSdef\r\naINSbINS\r\näINSöüINSß\r\n"}}},
    {"InPlaceInsertFileJoined",
     [](TaskPageSettings& s) {
         insertString(s);
         s.insertAction = "3";
         inPlace(s, "1-1", "");
     },
     "a\r\nb",
     {{"in.txt.modify", "i1i2\r\nai1i2\r\nb\r\n"}}},
    {"RangesOutInsertKeepsSelectedColumns",
     [](TaskPageSettings& s) {
         insertString(s);
         rangesOut(s, "2-3", "2-2,1-1");
     },
     fiveRows,
     {{"in.txt.modify", "2r\r\n3r\r\nINS\r\n"}}},
    {"DivideByRow",
     [](TaskPageSettings& s) { divide(s, "1"); },
     fiveRows,
     {{"in/p(001).txt", "r1\r\nr2\r\n"},
      {"in/p(002).txt", "r3\r\nr4\r\n"},
      {"in/p(003).txt", "r5\r\n"}},
     {"in.txt.modify", "in/p(004).txt"}},
    {"DivideByRowTemplateWithoutStarKeepsLastPiece",
     [](TaskPageSettings& s) {
         divide(s, "1");
         s.divideNameTemplate = "same.txt";
     },
     fiveRows,
     {{"in/same.txt", "r5\r\n"}}},
    {"DivideByRowInPlaceCountsRowsInRanges",
     [](TaskPageSettings& s) {
         divide(s, "1");
         s.divideByRowValue = "1";
         inPlace(s, "2-3", "1-1");
     },
     fiveRows,
     {{"in/p(001).txt", "r1\r\nr2\r\n"}, {"in/p(002).txt", "r3\r\nr4\r\nr5\r\n"}},
     {"in/p(003).txt"}},
    {"DivideByRowRangesOutNumbersWrittenRows",
     [](TaskPageSettings& s) {
         divide(s, "1");
         s.divideByRowValue = "3";
         rangesOut(s, "2-5", "2-2");
     },
     fiveRows,
     {{"in/p(001).txt", "2\r\n3\r\n4\r\n"}, {"in/p(002).txt", "5\r\n"}}},
    {"DivideByColumn",
     [](TaskPageSettings& s) { divide(s, "2"); },
     "abcde\r\nab\r\n\r\nabcd",
     {{"in/p(001).txt", "ab\r\nab\r\n\r\nab\r\n"},
      {"in/p(002).txt", "cd\r\n\r\n\r\ncd\r\n"},
      {"in/p(003).txt", "e\r\n\r\n\r\n\r\n"}},
     {"in/p(004).txt"},
     {"2"}},
    {"DivideByColumnCountsCharacters",
     [](TaskPageSettings& s) { divide(s, "2"); },
     "äöü\xff",
     {{"in/p(001).txt", "äö\r\n"}, {"in/p(002).txt", "ü\xff\r\n"}}},
    {"DivideByColumnOfEmptyFileMakesOneEmptyPiece",
     [](TaskPageSettings& s) { divide(s, "2"); },
     "",
     {{"in/p(001).txt", ""}},
     {"in/p(002).txt"}},
    {"DivideByColumnRangesOutDividesSelectedText",
     [](TaskPageSettings& s) {
         divide(s, "2");
         rangesOut(s, "1-2", "1-3");
     },
     "abcde\r\nab\r\nxyz",
     {{"in/p(001).txt", "ab\r\nab\r\n"}, {"in/p(002).txt", "c\r\n\r\n"}},
     {"in.txtmodify", "in/p(003).txt"}},
    {"DivideByColumnRangesOutWithManyPieces",
     [](TaskPageSettings& s) {
         divide(s, "2");
         s.divideByColumnValue = "1";
         rangesOut(s, "", "");
     },
     std::string(40, 'x') + "y",
     {{"in/p(001).txt", "x\r\n"}, {"in/p(041).txt", "y\r\n"}},
     {"in/p(042).txt"}},
    {"DivideByRowRangesOnePiecePerRange",
     [](TaskPageSettings& s) {
         divide(s, "3");
         rangesOut(s, "1-2,2-3", "2-3");
     },
     fiveRows + "",
     {{"in/p(001).txt", "1\r\n2\r\n"}, {"in/p(002).txt", "2\r\n3\r\n"}}},
    {"DivideByColumnRangesOnePiecePerRange",
     [](TaskPageSettings& s) {
         divide(s, "4");
         rangesOut(s, "", "3-4,1-1");
     },
     "abcdef\r\nab",
     {{"in/p(001).txt", "cd\r\n\r\n"}, {"in/p(002).txt", "a\r\na\r\n"}}},
    {"DivideByColumnInPlaceDoesNothing",
     [](TaskPageSettings& s) {
         divide(s, "2");
         inPlace(s, "1-2", "");
     },
     fiveRows,
     {},
     {"in", "in.txt.modify"}},
    {"DivideByRangeRowWholeTextDoesNothing",
     [](TaskPageSettings& s) { divide(s, "3"); },
     fiveRows,
     {},
     {"in"}},
    {"UnknownPageLeavesFileUntouched",
     [](TaskPageSettings& s) { s.operationPage = "9"; },
     fiveRows,
     {{"in.txt", fiveRows}},
     {"in.txt.modify", "in"}},
    {"UnknownRangeModeLeavesFileUntouched",
     [](TaskPageSettings& s) {
         insertString(s);
         s.rangeMode = "";
     },
     fiveRows,
     {},
     {"in.txt.modify"}},
};

class RunnerPages : public ::testing::TestWithParam<PageCase> {};

TEST_P(RunnerPages, WritesExactlyTheExpectedFiles) {
    const PageCase& c = GetParam();
    RunnerFixture fixture;
    c.set(fixture.settings);
    fixture.settings.insertFile = fixture.source("ins.txt");
    fixture.writeSource("ins.txt", "i1\ni2");
    fixture.writeSource("in.txt", c.input);
    fixture.run({"in.txt"});

    for (const auto& [name, bytes] : c.expected) {
        ASSERT_TRUE(fixture.exists(name)) << name;
        EXPECT_EQ(fixture.result(name), bytes) << name;
    }
    for (const std::string& name : c.absent)
        EXPECT_FALSE(fixture.exists(name)) << name;
    EXPECT_EQ(fixture.messages, c.messages);
    EXPECT_EQ(fixture.result("in.txt"), c.input) << "the source is never changed";
}

INSTANTIATE_TEST_SUITE_P(Runner, RunnerPages, ::testing::ValuesIn(pageCases),
                         [](const auto& info) { return std::string(info.param.name); });

// The per-line pages: one simple case each through the real routines.
const PageCase linePageCases[] = {
    {"FindAndReplace",
     [](TaskPageSettings& s) {
         s.operationPage = "4";
         s.find1 = "a";
         s.replace1 = "b";
     },
     "aXa\nc",
     {{"in.txt.modify", "bXb\r\nc\r\n"}}},
    {"FindAndReplaceInRowRanges",
     [](TaskPageSettings& s) {
         s.operationPage = "4";
         s.find1 = "a";
         s.replace1 = "b";
         inPlace(s, "2-2", "");
     },
     "a\na\na",
     {{"in.txt.modify", "a\r\nb\r\na\r\n"}}},
    {"CalculatePlusOne",
     [](TaskPageSettings& s) {
         s.operationPage = "3";
         s.decimalNumber = "0";
         s.calculateSteps = "+1";
     },
     "1\r\n41",
     {{"in.txt.modify", "2\r\n42\r\n"}}},
    {"FilterDeleteDigitsRangesOutDropsOtherRows",
     [](TaskPageSettings& s) {
         s.operationPage = "5";
         s.insertAction = "5";
         s.filterPattern = "[0-9]";
         rangesOut(s, "1-1", "");
     },
     "a1b22\r\nc3",
     {{"in.txt.modify", "ab\r\n"}}},
};

INSTANTIATE_TEST_SUITE_P(LinePages, RunnerPages, ::testing::ValuesIn(linePageCases),
                         [](const auto& info) { return std::string(info.param.name); });

} // namespace
