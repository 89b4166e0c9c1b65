#include "mainwindow/find/ViewerSearch.h"

namespace morlevant {

QString upperCasedInPlace(const QString& text) {
    // The full mapping is fast, but a few characters grow in it ("ß" becomes "SS").
    QString upper = text.toUpper();
    if (upper.size() == text.size())
        return upper;
    upper = text;
    for (QChar& c : upper)
        c = c.toUpper();
    return upper;
}

std::optional<qsizetype> searchViewerText(SearchState& state, const QString& text,
                                          qsizetype selectionStart) {
    const qsizetype step = state.findPosition == selectionStart && !state.newText ? 1 : 0;
    const qsizetype start = selectionStart + step;
    const QString needle = state.matchCase ? state.findText : upperCasedInPlace(state.findText);
    qsizetype found = -1;
    if (state.direction == SearchState::forward) {
        found = upperCasedInPlace(text).indexOf(needle, start);
    } else if (const qsizetype last = start - 2; last >= 0) {
        // Compares at every place from start - 1 (1-based) down to the first character.
        const QString haystack = state.matchCase ? text : upperCasedInPlace(text);
        found = haystack.lastIndexOf(needle, last);
    }
    state.findPosition = found >= 0 ? found : selectionStart;
    state.newText = false;
    if (found < 0)
        return std::nullopt;
    return found;
}

} // namespace morlevant
