#pragma once

#include <QPointer>

class QWidget;

namespace morlevant {

class frmFind;
class Prompts;
class TextViewer;
struct SearchState;

// The two commands that search the viewer's text: "&Find" with its dialog and "Find &Next"
// without it, over the one search state of the run.
class FindCommands final {
public:
    FindCommands(SearchState& state, TextViewer& viewer, Prompts& prompts);

    // Opens the find dialog over parent, with the viewer's selected text or else the last find
    // text; a dialog already open starts afresh.
    void mnuFind(QWidget* parent);
    // Repeats the last search; with no find text yet it opens the dialog instead.
    void mnuFindNext(QWidget* parent);
    // Runs the viewer search and selects what it found, or says that nothing was.
    void searchViewer();

    // The open find dialog, nullptr when none is.
    frmFind* dialog() const;

private:
    SearchState& state_;
    TextViewer& viewer_;
    Prompts& prompts_;
    QPointer<frmFind> dialog_;
};

} // namespace morlevant
