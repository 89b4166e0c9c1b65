#include "FileTypes.h"

#include <gtest/gtest.h>

namespace morlevant {
namespace {

TEST(Imagen, GivesTheIconOfTheLastFourCharacters) {
    const struct {
        const char* path;
        int image;
    } cases[] = {
        {"", 0},
        {"/data/readme", 0},
        {"/data/picture.bmp", 1},
        {"/data/ARCHIVE.ZIP", 2},
        {"c.exe", 3},
        {"x.jpg", 5},
        {"song.wav", 9},
        {"/data/notes.txt", 11},
        {"/data/page.htm", 10},
        {"/data/PAGE.HTML", 10},
        {"/data/page.xhtml", 10},
        {"/data/file.jpeg", 0},
        {"/data/TXT", 0},
        {".txt", 11},
        {"bmp", 0},
    };
    for (const auto& c : cases)
        EXPECT_EQ(Imagen(QString::fromUtf8(c.path)), c.image) << c.path;
}

} // namespace
} // namespace morlevant
