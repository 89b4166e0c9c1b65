#pragma once

#include <QString>

namespace morlevant {

// What the find commands remember for the whole run, shared by the find dialog and
// "Find &Next", and reset by the viewer whenever it loads a file.
struct SearchState {
    static constexpr int backward = 0; // up
    static constexpr int forward = 1;  // down

    QString findText;
    bool matchCase = false;
    int direction = forward;
    // The viewer's selection start after the last search; a load sets 1, which no selection
    // start right after a load equals, so the next search starts at the caret itself.
    qsizetype findPosition = 1;
    // Set by a load, by opening the find dialog and by every change of its text; cleared by
    // each search.
    bool newText = true;

    void textLoaded() {
        findPosition = 1;
        newText = true;
    }
};

} // namespace morlevant
