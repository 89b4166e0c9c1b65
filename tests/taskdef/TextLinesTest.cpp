// The text of a task's files: the number a line starts with, and names as messages show them.
// How the files' lines end is checked with the engine's reader, in TextScanTest.
#include "taskdef/LeadingNumber.h"
#include "taskdef/VisibleName.h"

#include <cmath>
#include <gtest/gtest.h>

using namespace morlevant;

namespace {

using namespace std::string_literals;

TEST(LeadingNumber, ReadsAsFarAsANumberGoes) {
    const std::pair<const char*, double> cases[] = {
        {"10", 10},  {"10abc", 10}, {"  -2.5e1x", -25}, {"+7", 7},  {".5", 0.5}, {"5.", 5},
        {"1e", 1},   {"1e+", 1},    {"abc", 0},         {"", 0},    {"-", 0},    {".", 0},
        {"12a", 12}, {"3-4", 3},    {"1E+20", 1e20},    {"\t4", 4},
    };
    for (const auto& [text, value] : cases)
        EXPECT_DOUBLE_EQ(LeadingNumber(text), value) << text;
    EXPECT_TRUE(std::isinf(LeadingNumber("1e999")));
    EXPECT_EQ(LeadingNumber("1e-999"), 0.0);
}

// Names in messages: whatever prints as nothing is shown by name, and nothing cuts them short.
TEST(VisibleName, ShowsWhatPrintsAsNothing) {
    const struct {
        std::string name, shown;
    } cases[] = {
        {"/in/a b.txt", "/in/a b.txt"},
        {"/in/ä€😀.txt", "/in/ä€😀.txt"},
        {"/in/a.txt ", "/in/a.txt[space]"},
        {"  ", "[space][space]"},
        {" /in/a.txt", "[space]/in/a.txt"},
        {"\xEF\xBB\xBF/in/a.txt", "[BOM]/in/a.txt"},
        {"/in/a\0b.txt"s, "/in/a[NUL]b.txt"},
        {"x\ny\rz\t", "x[LF]y[CR]z[TAB]"},
        {"a\x1B[0mb\x7F", "a[U+001B][0mb[U+007F]"},
        {"a\u200Bb\u2028c\u0085", "a[U+200B]b[U+2028]c[U+0085]"},
        {"\u202Etxt.exe\u00A0", "[U+202E]txt.exe[U+00A0]"},
        {"bad\xFF\xC0\x80\xED\xA0\x80"
         "end",
         "bad[xFF][xC0][x80][xED][xA0][x80]end"},
        {"cut\xE2\x82", "cut[xE2][x82]"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(visibleName(c.name), c.shown);
}

} // namespace
