#include "LineOperation.h"

#include <gtest/gtest.h>

using namespace morlevant;

// Each routine on one line of 10 MB, once: a routine that re-reads the whole line per match or
// per character, or recurses per character, does not finish here.
namespace {

constexpr std::size_t tenMegabytes = 10 * 1024 * 1024;

// "é" and a number every 100 bytes, so the line is UTF-8 but not ASCII.
std::string longLine() {
    std::string block = "\xc3\xa9 12345 ";
    block.append(100 - block.size(), 'x');
    std::string line;
    line.reserve(tenMegabytes);
    while (line.size() + block.size() <= tenMegabytes)
        line += block;
    return line;
}

} // namespace

TEST(LongLine, CalculateReadsOnlyTheLeadingNumber) {
    TaskPageSettings settings;
    settings.calculateSteps = "+1,*2";
    settings.decimalNumber = "0";
    settings.columnRange = "2-7";
    const std::string line = longLine();
    const auto operation = makeCalculation(settings);
    std::string out;
    operation->wholeLine(line, out);
    EXPECT_EQ(out, "2");
    LineColumns columns;
    columns.assign(line);
    operation->inRanges(columns, out);
    EXPECT_EQ(out.size(), line.size());
    EXPECT_EQ(out.substr(0, 10), "\xc3\xa9 24692 x"); // right-aligned: line 7 is blank
}

TEST(LongLine, ReplaceEveryOccurrence) {
    TaskPageSettings settings;
    settings.find1 = "12345";
    settings.replace1 = "!";
    settings.find2 = "x";
    settings.replace2 = "";
    const std::string line = longLine();
    std::string out;
    makeReplacement(settings)->wholeLine(line, out);
    EXPECT_EQ(out.size(), line.size() / 100 * 5);
    EXPECT_EQ(out.substr(0, 10), "\xc3\xa9 ! \xc3\xa9 ! ");
}

TEST(LongLine, FilterEveryMatch) {
    TaskPageSettings settings;
    settings.filterPattern = "(\\d)\\d+";
    settings.filterReplacement = "$1";
    const std::string line = longLine();
    std::string out;
    makeFilter(settings, 1)->wholeLine(line, out);
    EXPECT_EQ(out.size(), line.size() - line.size() / 100 * 4);

    settings.columnRange = "1-" + std::to_string(line.size());
    LineColumns columns;
    columns.assign(line);
    makeFilter(settings, 3)->rangesOut(columns, out);
    EXPECT_EQ(out.size(), line.size() / 100 * 6);
}
