#include "taskdef/TextLines.h"

#include <gtest/gtest.h>

using namespace morlevant;

namespace {

using Lines = std::vector<std::string_view>;

TEST(TextLines, EndAtCrLfLfOrALoneCr) {
    const struct {
        std::string_view text;
        Lines lines;
    } cases[] = {
        {"", {}},
        {"a\r\nb\nc\rd", {"a", "b", "c", "d"}},
        {"a\r\n", {"a"}},         // a final line end starts no further line
        {"\n\nb", {"", "", "b"}}, // blank lines are kept, so numbers count them
        {"a\n\rb", {"a", "", "b"}},
        {"a\r\r\nb", {"a", "", "b"}},
        {"\r", {""}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(textLines(c.text), c.lines) << testing::PrintToString(std::string(c.text));
}

} // namespace
