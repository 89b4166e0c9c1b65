#include "mainwindow/find/ViewerSearch.h"

#include "tests/support/QStringPrinter.h"

#include <gtest/gtest.h>

namespace morlevant {
namespace {

//                         0         1
//                         012345678901234
const QString sample = QStringLiteral("abc xyz ABC abc");

TEST(ViewerSearch, StepsDirectionsAndCase) {
    struct Case {
        const char* name;
        QString findText;
        bool matchCase;
        int direction;
        qsizetype findPosition; // as the last search or load left it
        bool newText;
        qsizetype selectionStart;
        qsizetype found; // -1: not found
    };
    constexpr int fwd = SearchState::forward;
    constexpr int back = SearchState::backward;
    const Case cases[] = {
        {"after a load the caret itself matches", "abc", false, fwd, 1, true, 0, 0},
        {"find next moves past the last match", "abc", false, fwd, 0, false, 0, 8},
        {"a moved caret starts at itself", "abc", false, fwd, 0, false, 8, 8},
        {"nothing after the last match", "abc", false, fwd, 12, false, 12, -1},
        {"match case forward never finds lower case", "abc", true, fwd, 1, true, 0, -1},
        {"match case forward finds lower case by capitals", "ABC", true, fwd, 1, true, 0, 0},
        {"backward finds the match before", "abc", false, back, 12, false, 12, 8},
        {"backward with match case skips capitals", "abc", true, back, 12, false, 12, 0},
        {"backward from the very start", "abc", false, back, 1, true, 0, -1},
        {"backward misses a match one before the caret", "bc", false, back, 1, true, 2, -1},
        {"any other direction goes backward", "xyz", false, 2, 1, true, 15, 4},
    };
    for (const Case& c : cases) {
        SearchState state;
        state.findText = c.findText;
        state.matchCase = c.matchCase;
        state.direction = c.direction;
        state.findPosition = c.findPosition;
        state.newText = c.newText;
        const auto found = searchViewerText(state, sample, c.selectionStart);
        EXPECT_EQ(found.value_or(-1), c.found) << c.name;
        EXPECT_EQ(state.findPosition, c.found >= 0 ? c.found : c.selectionStart) << c.name;
        EXPECT_FALSE(state.newText) << c.name;
    }
}

TEST(ViewerSearch, UpperCasingKeepsEveryCharacterInItsPlace) {
    // "ß" grows to "SS" in the full mapping; the search keeps it one character.
    const QString text = QStringLiteral("straße abc ÄBC");
    EXPECT_EQ(upperCasedInPlace(text), QStringLiteral("STRAßE ABC ÄBC"));
    SearchState state;
    state.findText = "abc";
    EXPECT_EQ(searchViewerText(state, text, 0), 7);
    state.findText = QStringLiteral("äbc");
    EXPECT_EQ(searchViewerText(state, text, 7), 11);
}

} // namespace
} // namespace morlevant
