#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <optional>

namespace morlevant {

// One line of a ".tsk" file: the parent's key, the caption, and the remark and path joined by
// the byte 0xFF. Captions and paths are UTF-8, in which 0xFF never occurs, so the byte
// separates remark and path unambiguously (files from Latin-1 systems use the same byte).
struct WorkspaceRecord {
    int parentNumber = 0; // 0 for a top-level node, otherwise the parent's line number
    QString caption;
    QString remark;
    QString storedPath;

    // Fields are written in double quotes without escaping, as the format always has been.
    QByteArray format() const;
    // Reads one line. A caption may itself hold quotes and commas: it runs to the last '","'
    // before the 0xFF byte of the third field (or, without one, to the first quote followed
    // by a comma). A line cut short keeps what it holds. Returns nothing when the line does not
    // start with a parent key ("K 0", "K7").
    static std::optional<WorkspaceRecord> parse(QByteArrayView line);
};

} // namespace morlevant
