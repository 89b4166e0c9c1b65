#include "engine/InsertInRanges.h"
#include "tests/engine/RangedRoutineRun.h"

#include <gtest/gtest.h>

using namespace morlevant;
using morlevant::testing::Mode;
using morlevant::testing::runLine;

// Each routine on one line of 10 MB, once: a routine that re-reads the whole line per match or
// per character, or recurses per character, does not finish here.
namespace {

// Blocks of 100 bytes, each "é 12345 " and "x" up to the end: UTF-8, but not ASCII.
const std::string& longLine() {
    static const std::string line = [] {
        std::string block = "\xc3\xa9 12345 ";
        block.append(100 - block.size(), 'x');
        std::string text;
        for (int i = 0; i < 100 * 1024; ++i)
            text += block;
        return text;
    }();
    return line;
}
const std::size_t blocks = 100 * 1024;

} // namespace

TEST(LongLine, Calculate) {
    TaskPageSettings settings;
    settings.calculateSteps = "+1,*2";
    settings.decimalNumber = "0";
    settings.columnRange = "2-7";
    const auto operation = makeCalculation(settings);
    EXPECT_EQ(runLine(*operation, Mode::Whole, longLine()), "2");
    const std::string inPlace = runLine(*operation, Mode::InPlace, longLine());
    EXPECT_EQ(inPlace.size(), longLine().size());
    EXPECT_EQ(inPlace.substr(0, 10), "\xc3\xa9 24692 x"); // right-aligned: line 7 is blank
}

TEST(LongLine, Replace) {
    TaskPageSettings settings;
    settings.find1 = "12345";
    settings.replace1 = "!";
    settings.find2 = "xxxxxxx";
    const std::string out = runLine(*makeReplacement(settings), Mode::Whole, longLine());
    EXPECT_EQ(out.size(), blocks * 5);
    EXPECT_EQ(out.substr(0, 10), "\xc3\xa9 ! \xc3\xa9 ! ");
}

TEST(LongLine, Filter) {
    TaskPageSettings settings;
    settings.filterPattern = "(\\d)\\d+";
    settings.filterReplacement = "$1";
    EXPECT_EQ(runLine(*makeFilter(settings, 1), Mode::Whole, longLine()).size(), blocks * 96);
    settings.columnRange = "1-" + std::to_string(longLine().size());
    EXPECT_EQ(runLine(*makeFilter(settings, 3), Mode::Out, longLine()).size(), blocks * 6);
}

// Twenty thousand column ranges on a row of 100,000 characters: walking every range for every
// insertion point would take seconds here.
TEST(LongLine, InsertBeforeManyColumnRanges) {
    std::string ranges;
    for (int start = 40'000; start > 0; start -= 2) // written in descending order
        ranges += std::to_string(start) + "-" + std::to_string(start) + (start > 2 ? "," : "");
    const std::vector<std::size_t> at = insertionColumns(RangePairs::parse(ranges, "columns"));
    ASSERT_EQ(at.size(), 20'000u);
    LineColumns row;
    const std::string text(100'000, 'x');
    row.assign(text);
    std::string out;
    InsertInRanges(at, row, "|", out);
    EXPECT_EQ(out.size(), text.size() + 20'000);
    EXPECT_EQ(out.substr(0, 6), "x|xx|x");
}
