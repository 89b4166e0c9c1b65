#include "mainwindow/viewer/BlockLoading.h"

#include <QAbstractTextDocumentLayout>
#include <QFile>
#include <QLocale>
#include <QStringDecoder>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <vector>

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

// Characters the document would take as the end of a line or a paragraph (or of a frame) of
// its own; in a file they are shown as replacement characters, so that only the file's line
// ends part its lines.
bool breaksParagraphs(QChar c) {
    return c == QChar::LineSeparator || c == QChar::ParagraphSeparator || c == QChar(0xfdd0) ||
           c == QChar(0xfdd1);
}

// Where a paragraph lies in the file: the line it starts in, the column it starts at (not 0
// for the further rows of a long line) and how many rows it holds.
struct ParagraphPlace final : QTextBlockUserData {
    ParagraphPlace(qsizetype line, qsizetype column) : firstLine(line), firstColumn(column) {}
    qsizetype firstLine;
    qsizetype firstColumn;
    int rows = 1;
};

// Inserts decoded text piece by piece at a cursor, grouping lines into paragraphs (see
// linesPerParagraph) and noting where each paragraph lies in the file.
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
        grouped.reserve(text.size() + text.size() / rowCharacters + 1);
        if (pendingCr_ && !text.isEmpty() && text.front() == u'\n')
            text = text.mid(1); // the LF of a CR LF parted between two pieces
        for (qsizetype i = 0; i < text.size(); ++i) {
            const QChar c = text[i];
            if (c == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n')
                continue; // the LF that follows ends the line
            if (c == u'\r' || c == u'\n') {
                ++line_;
                lineCharacters_ = 0;
                rowLength_ = 0;
                if (++paragraphLines_ == linesPerParagraph ||
                    paragraphLength_ >= paragraphCharacters)
                    startParagraph(grouped, 0);
                else
                    grouped += QChar(QChar::LineSeparator);
                continue;
            }
            if (c.isLowSurrogate()) { // the second half of a character: never cut before it
                grouped += c;
                continue;
            }
            if (rowLength_ == rowCharacters)
                startParagraph(grouped, lineCharacters_);
            grouped += breaksParagraphs(c) ? QChar(QChar::ReplacementCharacter) : c;
            ++lineCharacters_;
            ++rowLength_;
            ++paragraphLength_;
        }
        pendingCr_ = !text.isEmpty() && text.back() == u'\r';
        cursor_.insertText(grouped);
    }

    void finish() {
        cursor_.endEditBlock();
        std::size_t index = 0;
        for (QTextBlock block = document_.begin(); block.isValid() && index < places_.size();
             block = block.next()) {
            auto* place = new ParagraphPlace(places_[index++]);
            place->rows = static_cast<int>(block.text().count(QChar::LineSeparator)) + 1;
            block.setUserData(place);
        }
        setParagraphRows(document_);
    }

    bool endsWithLineEnd() const { return lineCharacters_ == 0; }

private:
    void startParagraph(QString& grouped, qsizetype column) {
        grouped += u'\n';
        places_.emplace_back(line_, column);
        paragraphLines_ = 0;
        paragraphLength_ = 0;
        rowLength_ = 0;
    }

    QTextDocument& document_;
    QTextCursor cursor_;
    std::vector<ParagraphPlace> places_{ParagraphPlace(0, 0)};
    qsizetype line_ = 0;           // lines ended so far
    qsizetype lineCharacters_ = 0; // characters of the line being read
    int rowLength_ = 0;            // characters of it in the row being filled
    int paragraphLines_ = 0;       // line ends in the paragraph being filled
    int paragraphLength_ = 0;      // characters in it
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
        const auto* place = static_cast<const ParagraphPlace*>(block.userData());
        if (place != nullptr && block.layout()->lineCount() == 0) // laid out: the view knows
            block.setLineCount(place->rows);
    }
    if (QAbstractTextDocumentLayout* layout = document.documentLayout())
        emit layout->documentSizeChanged(layout->documentSize());
}

LineColumn lineColumnAt(const QTextDocument& document, int position) {
    const QTextBlock block = document.findBlock(position);
    const auto* place = static_cast<const ParagraphPlace*>(block.userData());
    const QString before = block.text().left(position - block.position());
    const qsizetype separators = before.count(QChar::LineSeparator);
    const qsizetype lineStart = before.lastIndexOf(QChar::LineSeparator) + 1;
    const qsizetype firstColumn = place != nullptr && separators == 0 ? place->firstColumn : 0;
    return {(place != nullptr ? place->firstLine : block.blockNumber()) + separators,
            firstColumn + characterCount(QStringView(before).mid(lineStart))};
}

} // namespace morlevant
