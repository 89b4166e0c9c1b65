#pragma once

#include <QString>
#include <optional>

class QTextDocument;

namespace morlevant {

// How much of a file the viewer shows: the first 64 MB.
inline constexpr qint64 viewerSizeLimit = qint64(64) << 20;

// The viewer's document holds a file's lines in paragraphs of up to linesPerParagraph lines,
// the lines of one paragraph parted by line separators (U+2028). A paragraph per line costs a
// plain-text view several hundred bytes and several microseconds each, which for a file of a
// million lines is seconds and many times the file's size; grouped, the document is about the
// size of the text itself. A paragraph also ends after paragraphCharacters characters, and a
// line longer than rowCharacters is shown in rows of that length, each its own paragraph: a
// view lays out a whole paragraph at a time, and one of millions of characters would hold it
// for many seconds. The text the document gives back (toPlainText) has a line feed at every
// line end and at every such cut.
inline constexpr int linesPerParagraph = 256;
inline constexpr int paragraphCharacters = 32 * 1024;
inline constexpr int rowCharacters = 4096;

// Replaces the document's text with the file at path read as plain text, decoded as UTF-8,
// block by block: memory holds the document and one block, never the whole file as bytes and
// as text besides. A line ends at CR LF, LF or a lone CR. Of a file larger than limit bytes
// only the first limit bytes are shown, followed by a line that says the rest is not. The
// caller makes sure path is a regular file (see whyNotRegularFile). Returns the reason, naming
// the file, when it cannot be read; the document is then empty.
std::optional<QString> loadPlainText(QTextDocument& document, const QString& path,
                                     qint64 limit = viewerSizeLimit);

// Replaces the document's text with text, its lines held as loadPlainText holds them.
void setGroupedText(QTextDocument& document, const QString& text);

// Gives every paragraph that is not laid out yet the number of rows it holds, which a plain-
// text view takes as its number of rows until it lays the paragraph out, so that the scroll bar
// spans the whole text and moves line by line. The view counts one row for each paragraph
// after an edit and whenever it lays the document out afresh (a new width, font or wrap), so
// this is called after each of those.
void setParagraphRows(QTextDocument& document);

// The line of the file (from 0) and the column (characters from the line's start, from 0) of
// a position in a document filled by the two functions above.
struct LineColumn {
    qsizetype line;
    qsizetype column;
};
LineColumn lineColumnAt(const QTextDocument& document, int position);

// The line that ends a file shown only in part.
QString notShownLine(qint64 shownBytes, qint64 fileBytes);

} // namespace morlevant
