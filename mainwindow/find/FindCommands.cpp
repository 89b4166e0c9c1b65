#include "mainwindow/find/FindCommands.h"

#include "mainwindow/find/SearchState.h"
#include "mainwindow/find/ViewerSearch.h"
#include "mainwindow/find/frmFind.h"
#include "mainwindow/viewer/TextViewer.h"
#include "platform/Prompts.h"

namespace morlevant {

FindCommands::FindCommands(SearchState& state, TextViewer& viewer, Prompts& prompts)
    : state_(state), viewer_(viewer), prompts_(prompts) {}

frmFind* FindCommands::dialog() const {
    return dialog_;
}

void FindCommands::mnuFind(QWidget* parent) {
    if (dialog_)
        dialog_->close();
    const QString selected = viewer_.textCursor().selectedText();
    dialog_ = new frmFind(
        state_, selected.isEmpty() ? state_.findText : selected, [this] { searchViewer(); },
        parent);
    dialog_->show();
}

void FindCommands::mnuFindNext(QWidget* parent) {
    if (state_.findText.isEmpty())
        mnuFind(parent);
    else
        searchViewer();
}

void FindCommands::searchViewer() {
    QTextCursor cursor = viewer_.textCursor();
    const auto found = searchViewerText(state_, viewer_.toPlainText(), cursor.selectionStart());
    if (!found) {
        prompts_.information(QStringLiteral("Can't find \"") + state_.findText + u'"', promptTitle);
        return;
    }
    cursor.setPosition(static_cast<int>(*found));
    cursor.setPosition(static_cast<int>(*found + state_.findText.size()), QTextCursor::KeepAnchor);
    viewer_.setTextCursor(cursor);
}

} // namespace morlevant
