#include "engine/text/Utf8.h"

#include <gtest/gtest.h>
#include <string>

using namespace morlevant;

namespace {

// An invalid byte is found wherever it falls among runs of ASCII, which are passed over in
// steps of eight bytes, and a valid character between such runs does not end the check.
TEST(Utf8, ValidityAtEveryPositionAmongAscii) {
    const std::string pieces[] = {"\x80", "\xc3", "\xe2\x82", "\xed\xa0\x80", "\xf5\x80\x80\x80"};
    for (std::size_t before = 0; before <= 17; ++before) {
        for (std::size_t after = 0; after <= 9; after += 9) {
            const std::string head(before, 'a');
            const std::string tail(after, 'b');
            for (const std::string& bad : pieces)
                EXPECT_FALSE(isValidUtf8(head + bad + tail)) << before << " " << after;
            EXPECT_TRUE(isValidUtf8(head + "\xc3\xa9" + tail + "\xf0\x9f\x98\x80" + head));
            EXPECT_FALSE(isValidUtf8(head + "\xc3\xa9" + tail + "\xff" + head));
        }
    }
    EXPECT_TRUE(isValidUtf8(""));
}

} // namespace
