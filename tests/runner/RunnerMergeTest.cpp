#include "engine/pages/PieceNames.h"
#include "tests/support/RunnerFixture.h"

#include <gtest/gtest.h>

using namespace morlevant;
using morlevant::testing::RunnerFixture;

namespace {

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

TEST(RunnerProgress, AdvancesPerFileEvenWhenNothingIsDone) {
    RunnerFixture fixture;
    fixture.settings.operationPage = "0";
    fixture.writeSource("a.txt", "a");
    fixture.run({"a.txt", "a.txt", "a.txt"});
    EXPECT_EQ(fixture.progress, (std::vector<std::pair<int, int>>{{1, 3}, {2, 3}, {3, 3}}));
    EXPECT_FALSE(fixture.exists("a.txt.modify"));
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

} // namespace
