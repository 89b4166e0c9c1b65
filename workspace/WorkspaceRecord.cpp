#include "workspace/WorkspaceRecord.h"

#include <QStringDecoder>
#include <algorithm>

namespace morlevant {

namespace {

constexpr char pathSeparator = '\xFF';

// Fields never span lines: a line break that found its way into a caption becomes a blank.
QByteArray fieldBytes(const QString& text) {
    QByteArray bytes = text.toUtf8();
    bytes.replace('\r', ' ').replace('\n', ' ');
    return bytes;
}

// UTF-8 as written by this program; bytes that are not UTF-8 come from an older Latin-1 file.
QString decode(QByteArrayView bytes) {
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = utf8(bytes);
    return utf8.hasError() ? QString::fromLatin1(bytes) : text;
}

QByteArrayView unquoted(QByteArrayView field) {
    field = field.trimmed();
    if (field.startsWith('"'))
        field = field.sliced(1);
    if (field.endsWith('"'))
        field.chop(1);
    return field;
}

// "K 0" and "K0" name the top level, "K7" the node of line 7.
std::optional<int> keyNumber(QByteArrayView key) {
    if (!key.startsWith('K'))
        return std::nullopt;
    const QByteArrayView digits = key.sliced(1).trimmed();
    const bool isNumber =
        !digits.isEmpty() && digits.size() <= 9 &&
        std::all_of(digits.begin(), digits.end(), [](char c) { return c >= '0' && c <= '9'; });
    if (!isNumber)
        return std::nullopt;
    return digits.toInt();
}

// End of a field that starts at from: a quoted field runs to the first quote followed by a
// comma, an unquoted one to the first comma; the line's end otherwise.
qsizetype fieldEnd(QByteArrayView line, qsizetype from) {
    if (from < line.size() && line[from] == '"') {
        const qsizetype close = line.indexOf("\",", from + 1);
        return close < 0 ? line.size() : close + 1;
    }
    const qsizetype comma = line.indexOf(',', from);
    return comma < 0 ? line.size() : comma;
}

} // namespace

QByteArray WorkspaceRecord::format() const {
    const QByteArray key =
        parentNumber == 0 ? QByteArray("K 0") : "K" + QByteArray::number(parentNumber);
    return '"' + key + "\",\"" + fieldBytes(caption) + "\",\"" + fieldBytes(remark) +
           pathSeparator + fieldBytes(storedPath) + "\"\r\n";
}

std::optional<WorkspaceRecord> WorkspaceRecord::parse(QByteArrayView line) {
    const qsizetype keyEnd = fieldEnd(line, 0);
    const std::optional<int> parent = keyNumber(unquoted(line.first(keyEnd)));
    if (!parent)
        return std::nullopt;
    WorkspaceRecord record;
    record.parentNumber = *parent;
    if (keyEnd >= line.size())
        return record;

    const qsizetype captionStart = keyEnd + 1;
    const qsizetype separator = line.indexOf(pathSeparator, captionStart);
    qsizetype captionEnd = -1;
    if (separator >= 0) {
        const qsizetype quoted = line.first(separator).lastIndexOf("\",\"");
        captionEnd = quoted >= captionStart ? quoted + 1 : line.first(separator).lastIndexOf(',');
    }
    if (captionEnd < captionStart)
        captionEnd = fieldEnd(line, captionStart);
    record.caption = decode(unquoted(line.sliced(captionStart, captionEnd - captionStart)));
    if (captionEnd >= line.size())
        return record;

    const QByteArrayView third = unquoted(line.sliced(captionEnd + 1));
    const qsizetype split = third.indexOf(pathSeparator);
    record.remark = split < 0 ? QString() : decode(third.first(split));
    record.storedPath = decode(split < 0 ? third : third.sliced(split + 1));
    return record;
}

} // namespace morlevant
