#include "BlockLoading.h"

#include <QAbstractTextDocumentLayout>
#include <QFile>
#include <QLocale>
#include <QStringDecoder>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

namespace morlevant {

namespace {

constexpr qint64 blockSize = qint64(1) << 20;

QString megabytes(qint64 bytes) {
    const QLocale english(QLocale::English);
    return english.toString((bytes + (qint64(1) << 20) - 1) >> 20) + QStringLiteral(" MB");
}

// Characters, not UTF-16 units: one outside the Basic Multilingual Plane counts once.
qsizetype characterCount(QStringView text) {
    qsizetype count = 0;
    for (const QChar c : text)
        count += c.isLowSurrogate() ? 0 : 1;
    return count;
}

// Inserts decoded text piece by piece at a cursor, turning every line end into a line
// separator and every linesPerParagraph-th into a paragraph break.
class LineGrouper {
public:
    explicit LineGrouper(QTextDocument& document) : document_(document), cursor_(&document) {
        // No undo history, which would keep a second copy; one edit block, so that the view
        // lays the text out once, not after every piece.
        document_.clear();
        document_.setUndoRedoEnabled(false);
        cursor_.beginEditBlock();
    }

    void insert(QStringView text) {
        QString grouped;
        grouped.reserve(text.size() + 1);
        if (pendingCr_ && !text.isEmpty() && text.front() == u'\n')
            text = text.mid(1); // the LF of a CR LF parted between two pieces
        pendingCr_ = false;
        for (qsizetype i = 0; i < text.size(); ++i) {
            const QChar c = text[i];
            if (c == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n')
                continue; // the LF that follows ends the line
            if (c == u'\r' || c == u'\n') {
                grouped +=
                    ++lines_ % linesPerParagraph == 0 ? QChar(u'\n') : QChar(QChar::LineSeparator);
            } else {
                grouped += c;
            }
        }
        pendingCr_ = !text.isEmpty() && text.back() == u'\r';
        cursor_.insertText(grouped);
    }

    void finish() {
        cursor_.endEditBlock();
        setParagraphRows(document_);
    }

    bool endsWithLineEnd() const {
        return document_.characterCount() <= 1 || lastInserted() == QChar::LineSeparator ||
               lastInserted() == QChar::ParagraphSeparator;
    }

private:
    QChar lastInserted() const { return document_.characterAt(document_.characterCount() - 2); }

    QTextDocument& document_;
    QTextCursor cursor_;
    qsizetype lines_ = 0;
    bool pendingCr_ = false;
};

} // namespace

QString notShownLine(qint64 shownBytes, qint64 fileBytes) {
    return QStringLiteral("[Only the first %1 of this %2 file are shown; the rest is not shown.]")
        .arg(megabytes(shownBytes), megabytes(fileBytes));
}

std::optional<QString> loadPlainText(QTextDocument& document, const QString& path, qint64 limit) {
    document.clear();
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QStringLiteral("Can't open %1: %2.").arg(path, file.errorString());

    LineGrouper grouper(document);
    QStringDecoder utf8(QStringDecoder::Utf8);
    qint64 shown = 0;
    while (shown < limit) {
        const QByteArray bytes = file.read(std::min(blockSize, limit - shown));
        if (bytes.isEmpty())
            break;
        shown += bytes.size();
        grouper.insert(QString(utf8.decode(bytes)));
    }
    if (file.error() != QFileDevice::NoError) {
        grouper.finish();
        document.clear();
        return QStringLiteral("Can't read %1: %2.").arg(path, file.errorString());
    }
    if (const qint64 size = file.size(); shown < size) {
        if (!grouper.endsWithLineEnd())
            grouper.insert(u"\n");
        grouper.insert(notShownLine(shown, size));
    }
    grouper.finish();
    return std::nullopt;
}

void setGroupedText(QTextDocument& document, const QString& text) {
    LineGrouper grouper(document);
    grouper.insert(text);
    grouper.finish();
}

void setParagraphRows(QTextDocument& document) {
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        if (block.layout()->lineCount() > 0)
            continue; // laid out: the view knows its rows
        block.setLineCount(block == document.lastBlock()
                               ? static_cast<int>(block.text().count(QChar::LineSeparator)) + 1
                               : linesPerParagraph);
    }
    if (QAbstractTextDocumentLayout* layout = document.documentLayout())
        emit layout->documentSizeChanged(layout->documentSize());
}

LineColumn lineColumnAt(const QTextDocument& document, int position) {
    const QTextBlock block = document.findBlock(position);
    const QString before = block.text().left(position - block.position());
    const qsizetype lineStart = before.lastIndexOf(QChar::LineSeparator) + 1;
    return {block.blockNumber() * qsizetype(linesPerParagraph) + before.count(QChar::LineSeparator),
            characterCount(QStringView(before).mid(lineStart))};
}

} // namespace morlevant
