// Runs that cannot go on stop with a message naming the file or value and the cause, and keep
// what they wrote.
#include "tests/support/RunnerFixture.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <set>

using namespace morlevant;
using namespace morlevant::testing;

namespace {

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
