#pragma once

#include <QPlainTextEdit>
#include <optional>

namespace morlevant {

// The viewer `txtMain`: shows the file of the selected node, read-only, as plain text decoded
// as UTF-8 (bytes that are not UTF-8 show as replacement characters; nothing is written).
class TextViewer final : public QPlainTextEdit {
    Q_OBJECT

public:
    explicit TextViewer(QWidget* parent = nullptr);

    // Shows the file at path; returns the reason when it cannot be read (the viewer is then
    // empty).
    std::optional<QString> showFile(const QString& path);
    // Shows a text of the program's own, such as a note that the file is missing.
    void showText(const QString& text);
    // The file now shown; empty when none is, which makes the next showFile read it again.
    const QString& shownFile() const { return shownFile_; }
    void forgetShownFile() { shownFile_.clear(); }

    void setWrap(bool on);
    // The selected text to the clipboard, or the whole text when nothing is selected.
    void copyToClipboard();
    // The caret's place as the status bar shows it: "row: 1,234  column:5".
    QString caretText() const;

private:
    QString shownFile_;
};

} // namespace morlevant
