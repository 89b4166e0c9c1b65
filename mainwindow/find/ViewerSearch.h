#pragma once

#include "mainwindow/find/SearchState.h"

#include <optional>

namespace morlevant {

// The viewer search over the viewer's text, whose selection starts at selectionStart (0-based):
// returns where the match of state.findText starts, or nothing when there is none. It starts
// one character past the selection when the selection is where the last search left it and
// the text has not changed since, so that "Find &Next" moves on; otherwise at the selection
// itself. Going forward it always looks in the upper-cased text, also with match case on (so a
// find text with lower-case letters is then never found forward); going backward it compares
// as match case says. Afterwards state.findPosition is the selection start the search leaves
// and state.newText is clear.
std::optional<qsizetype> searchViewerText(SearchState& state, const QString& text,
                                          qsizetype selectionStart);

// The text with each character upper-cased on its own, so positions stay where they were.
QString upperCasedInPlace(const QString& text);

} // namespace morlevant
