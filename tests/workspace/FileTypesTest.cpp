#include "workspace/FileTypes.h"

#include "workspace/TreeImage.h"

#include <gtest/gtest.h>

namespace morlevant {
namespace {

// The icon of each file kind follows the program's list of kinds; these are the rules around it.
TEST(Imagen, GivesTheIconOfTheLastFourCharacters) {
    const struct {
        const char* path;
        int image;
    } cases[] = {
        {"", treeImage::none},
        {"/data/notes.txt", treeImage::text},
        {"page.htm", treeImage::html},
        {"PAGE.HTML", treeImage::html},
        {"x.jpeg", treeImage::none},
        {"/data/TXT", treeImage::none},
        {"/pics/A.Bmp", treeImage::bitmap},
    };
    for (const auto& c : cases)
        EXPECT_EQ(Imagen(QString::fromUtf8(c.path)), c.image) << c.path;
}

} // namespace
} // namespace morlevant
