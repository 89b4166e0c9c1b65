#include "TextViewer.h"

#include <QClipboard>
#include <QFile>
#include <QGuiApplication>
#include <QLocale>
#include <QTextBlock>

namespace morlevant {

TextViewer::TextViewer(QWidget* parent) : QPlainTextEdit(parent) {
    setObjectName(QStringLiteral("txtMain"));
    setReadOnly(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setContextMenuPolicy(Qt::CustomContextMenu);
}

std::optional<QString> TextViewer::showFile(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        showText(QString());
        return QStringLiteral("Cannot open %1: %2").arg(path, file.errorString());
    }
    setPlainText(QString::fromUtf8(file.readAll()));
    shownFile_ = path;
    return std::nullopt;
}

void TextViewer::showText(const QString& text) {
    setPlainText(text);
    shownFile_.clear();
}

void TextViewer::setWrap(bool on) {
    setLineWrapMode(on ? QPlainTextEdit::WidgetWidth : QPlainTextEdit::NoWrap);
}

void TextViewer::copyToClipboard() {
    const QString selected = textCursor().selectedText().replace(QChar::ParagraphSeparator, u'\n');
    QGuiApplication::clipboard()->setText(selected.isEmpty() ? toPlainText() : selected);
}

QString TextViewer::caretText() const {
    const QTextCursor cursor = textCursor();
    // Thousands separated by a comma whatever the user's locale, as the status bar always shows.
    const QLocale english(QLocale::English);
    return QStringLiteral("row: ") + english.toString(cursor.blockNumber() + 1) +
           QStringLiteral("  column:") + english.toString(cursor.positionInBlock() + 1);
}

} // namespace morlevant
