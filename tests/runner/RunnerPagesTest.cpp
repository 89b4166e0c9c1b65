// One source file per task: the bytes of every file the run leaves beside it; merges, which
// gather the files of a task into one result; and previews, which show what a run would write.
#include "engine/pages/PieceNames.h"
#include "engine/preview/TaskPreview.h"
#include "tests/support/RunnerFixture.h"

#include <gtest/gtest.h>

using namespace morlevant;
using namespace morlevant::testing;

namespace fs = std::filesystem;

namespace {

const Lines insertString = {{5, "5"}, {19, "2"}, {21, "INS"}};
const Lines insertFile = {{5, "5"}, {19, "3"}};
const Lines divide = {{5, "6"}, {27, "2"}, {28, "2"}};
Lines inPlace(const char* rows, const char* columns) {
    return {{1, "2"}, {2, rows}, {3, columns}, {4, "0"}};
}
Lines rangesOut(const char* rows, const char* columns) {
    return {{1, "2"}, {2, rows}, {3, columns}, {4, "1"}};
}

const std::string fiveRows = "r1\r\nr2\r\nr3\r\nr4\r\nr5\r\n";

struct PageCase {
    const char* name;
    Lines lines;
    std::string input; // files/in.txt
    std::vector<std::pair<std::string, std::string>> expected;
    std::vector<std::string> absent = {};
    std::vector<std::string> messages = {};
};

const PageCase pageCases[] = {
    // Whole text (line 1 "1"): the rows, columns and take-out of lines 2 to 4 do not matter,
    // even unpaired ones left from an earlier choice, or "take out" left ticked ("all range"
    // greys it without unticking it).
    {"WholeTextCalculateIgnoresLeftoverRanges",
     Lines{{5, "3"}, {6, "0"}, {10, "*2"}, {1, "1"}, {2, "2-2"}, {3, "5"}, {4, "1"}},
     "1\n2\n",
     {{"in.txt.modify", "2\r\n4\r\n"}}},
    {"WholeTextReplaceIgnoresLeftoverRanges",
     Lines{{5, "4"}, {11, "r"}, {12, "R"}, {1, "1"}, {2, "2-2"}, {3, "5"}, {4, "1"}},
     fiveRows,
     {{"in.txt.modify", "R1\r\nR2\r\nR3\r\nR4\r\nR5\r\n"}}},
    {"WholeTextFilterIgnoresLeftoverRanges",
     Lines{{5, "5"}, {19, "5"}, {24, "\\d"}, {1, "1"}, {2, "2-2"}, {3, "5"}, {4, "1"}},
     "r1\nr2\n",
     {{"in.txt.modify", "r\r\nr\r\n"}}},
    {"InsertAfterLastRow", insertString, fiveRows, {{"in.txt.modify", fiveRows + "INS\r\n"}}},
    {"EmptySourceStillGetsInsertion", insertString, "", {{"in.txt.modify", "INS\r\n"}}},
    {"InsertFileAppendsItsLines", insertFile, "a", {{"in.txt.modify", "a\r\ni1\r\ni2\r\n"}}},
    {"InPlaceInsertPointAndRowsInRange",
     insertString + inPlace("2-2,4-5", ""),
     fiveRows,
     {{"in.txt.modify", "r1\r\nINS\r\nr2INS\r\nr3\r\nr4INS\r\nr5INS\r\n"}}},
    {"InPlaceInsertBeforeEachColumnRange",
     insertString + inPlace("", "4-9,2-3,2-2"),
     "abcdef\r\nab\r\näöüß",
     {{"in.txt.modify", "aINSbcINSdef\r\naINSbINS\r\näINSöüINSß\r\n"}}},
    {"InPlaceInsertFileJoined",
     insertFile + inPlace("1-1", ""),
     "a\r\nb",
     {{"in.txt.modify", "i1i2\r\nai1i2\r\nb\r\n"}}},
    {"RangesOutInsertKeepsSelectedColumns",
     insertString + rangesOut("2-3", "2-2,1-1"),
     fiveRows,
     {{"in.txt.modify", "2r\r\n3r\r\nINS\r\n"}}},
    {"DivideByRow",
     divide + Lines{{26, "1"}},
     fiveRows,
     {{"in/p(001).txt", "r1\r\nr2\r\n"},
      {"in/p(002).txt", "r3\r\nr4\r\n"},
      {"in/p(003).txt", "r5\r\n"}},
     {"in.txt.modify", "in/p(004).txt"}},
    {"DivideByRowTemplateWithoutStarGathersEveryRow",
     divide + Lines{{26, "1"}, {29, "same.txt"}},
     fiveRows,
     {{"in/same.txt", "r1\r\nr2\r\nr3\r\nr4\r\nr5\r\n"}}},
    {"DivideByRowInPlaceCountsRowsInRanges",
     divide + Lines{{26, "1"}, {27, "1"}} + inPlace("2-3", "1-1"),
     fiveRows,
     {{"in/p(001).txt", "r1\r\nr2\r\n"}, {"in/p(002).txt", "r3\r\nr4\r\nr5\r\n"}},
     {"in/p(003).txt"}},
    {"DivideByRowRangesOutNumbersWrittenRows",
     divide + Lines{{26, "1"}, {27, "3"}} + rangesOut("2-5", "2-2"),
     fiveRows,
     {{"in/p(001).txt", "2\r\n3\r\n4\r\n"}, {"in/p(002).txt", "5\r\n"}}},
    {"DivideByColumn",
     divide + Lines{{26, "2"}},
     "abcde\r\nab\r\n\r\näöü\xff",
     {{"in/p(001).txt", "ab\r\nab\r\n\r\näö\r\n"},
      {"in/p(002).txt", "cd\r\n\r\n\r\nü\xff\r\n"},
      {"in/p(003).txt", "e\r\n\r\n\r\n\r\n"}},
     {"in/p(004).txt"},
     {"2"}},
    {"DivideByColumnRangesOutDividesSelectedText",
     divide + Lines{{26, "2"}} + rangesOut("1-2", "1-3"),
     "abcde\r\nab\r\nxyz",
     {{"in/p(001).txt", "ab\r\nab\r\n"}, {"in/p(002).txt", "c\r\n\r\n"}},
     {"in.txtmodify", "in/p(003).txt"}},
    {"DivideByRowRangesOnePiecePerRange",
     divide + Lines{{26, "3"}} + rangesOut("1-2,2-3", "2-3"),
     fiveRows,
     {{"in/p(001).txt", "1\r\n2\r\n"}, {"in/p(002).txt", "2\r\n3\r\n"}}},
    {"DivideByColumnRangesOnePiecePerRange",
     divide + Lines{{26, "4"}} + rangesOut("", "3-4,1-1"),
     "abcdef\r\nab",
     {{"in/p(001).txt", "cd\r\n\r\n"}, {"in/p(002).txt", "a\r\na\r\n"}}},
    // The per-line pages in the range modes (the whole text is run end to end by TaskEditing).
    {"FindAndReplaceLeavesRowsOutsideTheRanges",
     Lines{{5, "4"}, {11, "a"}, {12, "b"}} + inPlace("2-2", ""),
     "a\na\na",
     {{"in.txt.modify", "a\r\nb\r\na\r\n"}}},
    {"FilterRangesOutDropsOtherRows",
     Lines{{5, "5"}, {19, "5"}, {24, "[0-9]"}} + rangesOut("1-1", ""),
     "a1b22\r\nc3",
     {{"in.txt.modify", "ab\r\n"}}},
    // Codes that select no page for their range mode leave every file untouched.
    {"DivideByColumnInPlaceWritesNothing",
     divide + Lines{{26, "2"}} + inPlace("1-2", ""),
     fiveRows,
     {},
     {"in.txt.modify", "in/p(001).txt"}},
    {"UnknownPageCodeWritesNothing",
     Lines{{5, "7"}, {11, "r"}, {12, "x"}},
     fiveRows,
     {},
     {"in.txt.modify"}},
};

class RunnerPages : public ::testing::TestWithParam<PageCase> {};

TEST_P(RunnerPages, WritesExactlyTheExpectedFiles) {
    const PageCase& c = GetParam();
    RunnerFixture fixture;
    fixture.settings.insertFile = fixture.source("ins.txt");
    fixture.set(c.lines);
    fixture.writeSource("ins.txt", "i1\ni2");
    fixture.writeSource("in.txt", c.input);
    fixture.run({"in.txt"});

    for (const auto& [name, bytes] : c.expected)
        EXPECT_EQ(fixture.result(name), bytes) << name;
    for (const std::string& name : c.absent)
        EXPECT_FALSE(fixture.exists(name)) << name;
    EXPECT_EQ(fixture.messages, c.messages);
    EXPECT_EQ(fixture.progress, (std::vector<std::pair<int, int>>{{1, 1}})) << "done or not";
    EXPECT_EQ(fixture.result("in.txt"), c.input) << "the source is never changed";
}

INSTANTIATE_TEST_SUITE_P(Runner, RunnerPages, ::testing::ValuesIn(pageCases),
                         [](const auto& info) { return std::string(info.param.name); });

// "Yes" on the Calculate page's alerts: one message after the run counts the rows that held no
// number and the results wider than their column range, with the first five places; "No" says
// nothing.
TEST(RunnerAlerts, CountRowsWithoutANumberAndResultsPastTheirRange) {
    RunnerFixture fixture;
    const Lines calculateInPlace = {{1, "2"}, {2, ""},  {3, "1-2"},  {4, "0"},
                                    {5, "3"}, {6, "0"}, {10, "*100"}};
    fixture.writeSource("a.txt", "1\nab\n9\n");
    fixture.writeSource("b.txt", "x\nx\nx\nx\nx\nx\n");
    fixture.set(calculateInPlace + Lines{{8, "Yes"}, {9, "Yes"}});
    fixture.run({"a.txt", "b.txt"});
    const std::string a = fixture.source("a.txt");
    const std::string b = fixture.source("b.txt");
    EXPECT_EQ(fixture.messages,
              std::vector<std::string>{"7 rows held no number and counted as 0: " + a + " row 2, " +
                                       b + " row 1, " + b + " row 2, " + b + " row 3, " + b +
                                       " row 4, …; 2 results ran past the "
                                       "width of the column range: " +
                                       a + " row 1, " + a + " row 3"});
    EXPECT_EQ(fixture.result("a.txt.modify"), "100\r\n 0\r\n900\r\n");

    fixture.messages.clear();
    fixture.set({{8, "No"}, {9, "No"}});
    fixture.run({"a.txt", "b.txt"});
    EXPECT_TRUE(fixture.messages.empty());
}

// Merging the task's files into one result.
class RunnerMerge : public ::testing::Test {
protected:
    RunnerMerge() {
        fixture.settings.operationPage = "6";
        fixture.settings.divideAction = "5";
        fixture.writeSource("a.txt", "a1\r\na2\r\na3\r\na4");
        fixture.writeSource("b.txt", "b1\nb2\nb3\n");
        fixture.writeSource("c.txt", "");
    }
    RunnerFixture fixture;
};

TEST_F(RunnerMerge, ConcatenatesInListOrderAfreshEachRunAndOpensAfterTheLastCountedFile) {
    fixture.run({"b.txt", "c.txt", "a.txt"});
    EXPECT_EQ(fixture.progress, (std::vector<std::pair<int, int>>{{1, 3}, {2, 3}, {3, 3}}));
    const std::string merged = "b1\r\nb2\r\nb3\r\na1\r\na2\r\na3\r\na4\r\n";
    EXPECT_EQ(fixture.mergeResult(), merged);
    EXPECT_EQ(fixture.opened, std::vector<std::string>{mergeFolder(fixture.home.path().string())});
    fixture.run({"b.txt", "c.txt", "a.txt"});
    EXPECT_EQ(fixture.mergeResult(), merged);
    EXPECT_EQ(fixture.opened.size(), 2u);

    fixture.run({"a.txt", "b.txt", "c.txt"}, 2);
    EXPECT_EQ(fixture.opened.size(), 3u) << "after the second of three files";
    fixture.run({"a.txt", "b.txt"}, 5);
    EXPECT_EQ(fixture.opened.size(), 3u);
}

TEST_F(RunnerMerge, InPlaceRowRangesDoNotRestrictItAndRangesOutTestDoublingRowNumbers) {
    fixture.settings.rangeMode = "2";
    fixture.settings.rowRange = "1-1";
    fixture.run({"c.txt", "b.txt"});
    EXPECT_EQ(fixture.mergeResult(), "b1\r\nb2\r\nb3\r\n");

    fixture.settings.takeRangesOut = "1";
    fixture.settings.rowRange = "1-3";
    fixture.settings.columnRange = "2-2";
    fixture.run({"a.txt", "b.txt"});
    // Lines 1, 2, 3 are tested as rows 1, 2, 4: line 3 is left out.
    EXPECT_EQ(fixture.mergeResult(), "1\r\n2\r\n1\r\n2\r\n");
}

TEST(PieceNames, ReplaceEveryStarWithTheNumberPaddedToTheFirstsWidth) {
    TaskPageSettings settings;
    settings.divideNameTemplate = "part(*)-*.txt";
    settings.divideNumberFrom = "00001";
    const PieceNames names(settings);
    EXPECT_EQ(names.PieceNameByRow(11, 10), "part(00002)-00002.txt");
    EXPECT_EQ(names.PieceNameByColumn(99998), "part(99999)-99999.txt");
    EXPECT_THROW(names.PieceNameByColumn(99999), TaskError);
}

// A preview works the task's own pages on the first rows of a file and writes nothing beside
// the sources.
using Rows = std::vector<std::string>;

struct PreviewCase {
    const char* name;
    Lines lines;
    TaskPreview::Kind kind;
    Rows result = {};                                     // Lines and Merge
    std::size_t changed = 0;                              // Lines
    std::vector<std::pair<std::string, Rows>> files = {}; // Pieces and Merge: name, first rows
};

using Kind = TaskPreview::Kind;
const PreviewCase previewCases[] = {
    {"Replace", {{5, "4"}, {11, "r"}, {12, "R"}}, Kind::Lines, {"R1", "x", "R3"}, 2},
    {"InsertAtTheEndOfTheSample",
     {{5, "5"}, {19, "2"}, {21, "END"}},
     Kind::Lines,
     {"r1", "x", "r3", "END"},
     1},
    {"DivideByRow",
     {{5, "6"}, {26, "1"}, {27, "2"}},
     Kind::Pieces,
     {},
     0,
     {{"p(001).txt", {"r1", "x"}}, {"p(002).txt", {"r3"}}}},
    // The merge's first rows: "b", past the rows shown, is not among them.
    {"Merge",
     {{5, "6"}, {26, "5"}},
     Kind::Merge,
     {"r1", "x", "r3"},
     0,
     {{"a.txt", {"r1", "x", "r3"}}, {"b.txt", {"b"}}}},
    {"ColumnDivideInPlaceDoesNothing",
     {{1, "2"}, {4, "0"}, {5, "6"}, {26, "2"}, {28, "1"}},
     Kind::Nothing},
};

class Previews : public ::testing::TestWithParam<PreviewCase> {};

TEST_P(Previews, ShowWhatTheRunWouldWriteAndWriteNothing) {
    const PreviewCase& c = GetParam();
    RunnerFixture fixture;
    fixture.set(c.lines);
    // Three rows of a.txt are previewed; the fourth is past the sample.
    fixture.writeSource("a.txt", "r1\nx\nr3\nr4\n");
    fixture.writeSource("b.txt", "b");
    const auto before = snapshot(fixture.home.path());

    const TaskPreview preview =
        previewTask(fixture.settings, {fixture.source("a.txt"), fixture.source("b.txt")},
                    fixture.source("a.txt"), 3);

    EXPECT_EQ(snapshot(fixture.home.path()), before);
    EXPECT_FALSE(preview.error) << *preview.error;
    EXPECT_EQ(preview.kind, c.kind);
    if (c.kind == Kind::Nothing)
        return;
    EXPECT_EQ(preview.result.rows, c.result);
    std::vector<std::pair<std::string, Rows>> shown;
    for (const PreviewFile& file : preview.files)
        shown.emplace_back(fs::path(file.name).filename().string(), file.rows);
    EXPECT_EQ(shown, c.files);
    if (c.kind == Kind::Lines) {
        EXPECT_EQ(preview.source.rows, (Rows{"r1", "x", "r3"}));
        EXPECT_EQ(preview.changedRows(), c.changed);
    }
}

INSTANTIATE_TEST_SUITE_P(Runner, Previews, ::testing::ValuesIn(previewCases),
                         [](const auto& info) { return std::string(info.param.name); });

// An error the run would meet shows with the run's own message, naming the source and its
// line rather than the preview's copy.
TEST(Preview, ShowsTheRunsErrorAboutTheSource) {
    const struct {
        Lines lines;
        std::string message; // after the source's name
    } cases[] = {
        {{{5, "3"}, {6, "0"}, {10, "/0"}}, ", line 1: "},
        {{{5, "5"}, {19, "4"}, {24, "(?<n>a)\\k<m>"}}, ""},
    };
    for (const auto& c : cases) {
        RunnerFixture fixture;
        fixture.writeSource("a.txt", "1\n2\n");
        fixture.set(c.lines);
        const TaskPreview preview =
            previewTask(fixture.settings, {fixture.source("a.txt")}, fixture.source("a.txt"), 200);
        ASSERT_TRUE(preview.error) << c.message;
        EXPECT_EQ(preview.error->find("morlevant-preview"), std::string::npos) << *preview.error;
        EXPECT_NE(preview.error->find(c.message), std::string::npos) << *preview.error;
    }
    RunnerFixture fixture;
    fixture.set({{5, "4"}, {11, "r"}});
    const TaskPreview missing = previewTask(fixture.settings, {}, fixture.source("gone.txt"), 200);
    ASSERT_TRUE(missing.error);
    EXPECT_NE(missing.error->find(fixture.source("gone.txt")), std::string::npos);
}

} // namespace
