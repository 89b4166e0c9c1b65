#include "workspace/FileTypes.h"

#include <gtest/gtest.h>

namespace morlevant {
namespace {

// The icon of each file kind follows the program's list of kinds; these are the rules around it.
TEST(Imagen, GivesTheIconOfTheLastFourCharacters) {
    const struct {
        const char* path;
        int image;
    } cases[] = {
        {"", 0},           {"/data/readme", 0}, {"/data/notes.txt", 11}, {"page.htm", 10},
        {"PAGE.HTML", 10}, {"x.jpeg", 0},       {"/data/TXT", 0},
    };
    for (const auto& c : cases)
        EXPECT_EQ(Imagen(QString::fromUtf8(c.path)), c.image) << c.path;
}

} // namespace
} // namespace morlevant
