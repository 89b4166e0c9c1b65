#include "mainwindow/desktop/MimeAppsList.h"

#include <algorithm>

namespace morlevant::MimeAppsList {

namespace {

// The list's lines without the final line end, and the place of one group's lines in them.
struct Lines {
    explicit Lines(const QString& list) : lines(list.split(u'\n')) {
        if (lines.last().isEmpty())
            lines.removeLast();
    }
    QString text() const { return lines.isEmpty() ? QString() : lines.join(u'\n') + u'\n'; }

    // The index of the group's header, or -1.
    qsizetype header(const QString& group) const {
        const QString wanted = u'[' + group + u']';
        for (qsizetype i = 0; i < lines.size(); ++i)
            if (lines[i].trimmed() == wanted)
                return i;
        return -1;
    }
    // One past the group's last line.
    qsizetype end(qsizetype header) const {
        qsizetype i = header + 1;
        while (i < lines.size() && !lines[i].trimmed().startsWith(u'['))
            ++i;
        return i;
    }
    // The index of the key's line in the group, or -1.
    qsizetype key(qsizetype header, const QString& type) const {
        for (qsizetype i = header + 1; i < end(header); ++i) {
            const QString& line = lines[i];
            if (!line.trimmed().startsWith(u'#') && line.section(u'=', 0, 0).trimmed() == type &&
                line.contains(u'='))
                return i;
        }
        return -1;
    }
    QStringList values(qsizetype key) const {
        QStringList values = lines[key].section(u'=', 1).split(u';', Qt::SkipEmptyParts);
        for (QString& value : values)
            value = value.trimmed();
        values.removeAll(QString());
        return values;
    }
    void setValues(qsizetype key, const QStringList& values) {
        lines[key] = lines[key].section(u'=', 0, 0) + u'=' + values.join(u';') + u';';
    }

    QStringList lines;
};

} // namespace

QStringList entries(const QString& list, const QString& group, const QString& type) {
    const Lines lines(list);
    const qsizetype header = lines.header(group);
    const qsizetype key = header < 0 ? -1 : lines.key(header, type);
    return key < 0 ? QStringList() : lines.values(key);
}

QString withEntry(const QString& list, const QString& group, const QString& type,
                  const QString& entry) {
    Lines lines(list);
    qsizetype header = lines.header(group);
    if (header < 0) {
        lines.lines.append(u'[' + group + u']');
        header = lines.lines.size() - 1;
    }
    const qsizetype key = lines.key(header, type);
    if (key < 0) {
        lines.lines.insert(header + 1, type + u'=' + entry + u';');
    } else {
        QStringList values = lines.values(key);
        values.removeAll(entry);
        values.prepend(entry);
        lines.setValues(key, values);
    }
    return lines.text();
}

QString withoutEntry(const QString& list, const QString& group, const QString& type,
                     const QString& entry) {
    Lines lines(list);
    const qsizetype header = lines.header(group);
    const qsizetype key = header < 0 ? -1 : lines.key(header, type);
    if (key < 0 || !lines.values(key).contains(entry))
        return list;
    QStringList values = lines.values(key);
    values.removeAll(entry);
    if (values.isEmpty())
        lines.lines.removeAt(key);
    else
        lines.setValues(key, values);

    const qsizetype end = lines.end(header);
    const bool emptyGroup =
        std::all_of(lines.lines.begin() + header + 1, lines.lines.begin() + end,
                    [](const QString& line) { return line.trimmed().isEmpty(); });
    if (emptyGroup)
        lines.lines.remove(header, end - header);
    return lines.text();
}

} // namespace morlevant::MimeAppsList
