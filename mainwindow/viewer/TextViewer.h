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

    // Shows the file at readPath in blocks (see loadPlainText) with the caret at the start, and
    // remembers shownAs as the file shown. Returns the reason when the file cannot be read (the
    // viewer is then empty).
    std::optional<QString> showFile(const QString& readPath, const QString& shownAs);
    // Shows a text of the program's own, such as a note that the file is missing; shownAs is
    // remembered as the file shown (empty: none).
    void showText(const QString& text, const QString& shownAs = {});
    // The file now shown; empty when none is, which makes the next click read it again.
    const QString& shownFile() const { return shownFile_; }
    void forgetShownFile() { shownFile_.clear(); }

    void setWrap(bool on);
    // The selected text to the clipboard, or the whole text when nothing is selected.
    void copyToClipboard();
    // The caret, that is the selection's end, as the status bar shows it: "row: 1,234
    // column:5". Both count characters of the text shown, from 1.
    QString caretText() const;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    QString shownFile_;
};

} // namespace morlevant
