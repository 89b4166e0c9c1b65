#include "mainwindow/viewer/TextViewer.h"

#include "mainwindow/viewer/BlockLoading.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QLocale>

namespace morlevant {

TextViewer::TextViewer(QWidget* parent) : QPlainTextEdit(parent) {
    setObjectName(QStringLiteral("txtMain"));
    setReadOnly(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setContextMenuPolicy(Qt::CustomContextMenu);
}

std::optional<QString> TextViewer::showFile(const QString& readPath, const QString& shownAs) {
    const auto failure = loadPlainText(*document(), readPath);
    moveCursor(QTextCursor::Start);
    shownFile_ = shownAs;
    return failure;
}

void TextViewer::showText(const QString& text, const QString& shownAs) {
    setGroupedText(*document(), text);
    moveCursor(QTextCursor::Start);
    shownFile_ = shownAs;
}

void TextViewer::setWrap(bool on) {
    setLineWrapMode(on ? QPlainTextEdit::WidgetWidth : QPlainTextEdit::NoWrap);
    setParagraphRows(*document());
}

// A new width or font makes the view lay the document out afresh and forget each paragraph's
// rows; see setParagraphRows.
void TextViewer::resizeEvent(QResizeEvent* event) {
    QPlainTextEdit::resizeEvent(event);
    setParagraphRows(*document());
}

void TextViewer::changeEvent(QEvent* event) {
    QPlainTextEdit::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        setParagraphRows(*document());
}

void TextViewer::copyToClipboard() {
    const QString selected = textCursor()
                                 .selectedText()
                                 .replace(QChar::ParagraphSeparator, u'\n')
                                 .replace(QChar::LineSeparator, u'\n');
    QGuiApplication::clipboard()->setText(selected.isEmpty() ? toPlainText() : selected);
}

QString TextViewer::caretText() const {
    const LineColumn caret = lineColumnAt(*document(), textCursor().selectionEnd());
    // Thousands separated by a comma whatever the user's locale, as the status bar always shows.
    const QLocale english(QLocale::English);
    return QStringLiteral("row: ") + english.toString(caret.line + 1) +
           QStringLiteral("  column:") + english.toString(caret.column + 1);
}

} // namespace morlevant
