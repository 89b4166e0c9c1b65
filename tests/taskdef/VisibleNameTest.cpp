// Names in messages: whatever prints as nothing is shown by name, and nothing cuts them short.
#include "taskdef/VisibleName.h"

#include <gtest/gtest.h>

using namespace std::string_literals;

namespace {

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
        EXPECT_EQ(morlevant::visibleName(c.name), c.shown);
}

} // namespace
