#include "editor/DateTimeSamples.h"

#include <QDateTime>
#include <QLocale>
#include <array>

namespace morlevant {

QString weekdayName(int weekday) {
    static const std::array<const char*, 7> names = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                                     "Thursday", "Friday", "Saturday"};
    if (weekday < 1 || weekday > 7)
        return {};
    return QString::fromLatin1(names[static_cast<std::size_t>(weekday - 1)]);
}

QStringList dateTimeSamples(const QDateTime& moment, const QLocale& locale) {
    const QDate date = moment.date();
    const QTime time = moment.time();
    // The named forms on the locale's formats: "long" and "short" are the locale's long and
    // short formats; "medium date" is the day, the abbreviated month and two-digit year
    // ("22-Nov-26") and "medium time" the twelve-hour time without seconds ("09:05 AM"), as
    // the locale has no medium form of its own; "general date" is the short date with the
    // long time. The text goes into files, so the long time leaves out the time zone.
    QString longTimeFormat = locale.timeFormat(QLocale::LongFormat);
    longTimeFormat.remove(u't');
    const QString longTime = locale.toString(time, longTimeFormat.trimmed());
    const QString shortTime = locale.toString(time, QLocale::ShortFormat);
    const QString mediumTime = locale.toString(time, QStringLiteral("hh:mm AP"));
    const QString longDate = locale.toString(date, QLocale::LongFormat);
    const QString mediumDate = locale.toString(date, QStringLiteral("dd-MMM-yy"));
    const QString shortDate = locale.toString(date, QLocale::ShortFormat);
    const QString generalDate = shortDate + u' ' + longTime;
    // QDate counts Monday as 1 and Sunday as 7; the lookup starts the week on Sunday.
    const QString weekday = weekdayName(date.dayOfWeek() % 7 + 1);

    // The fixed patterns always use these separators and digits, whatever the locale.
    return {longTime,
            shortTime,
            mediumTime,
            generalDate,
            longDate,
            mediumDate,
            shortDate,
            longDate + weekday,
            shortDate + weekday,
            weekday,
            moment.toString(QStringLiteral("dd/MM/yyyy")),
            moment.toString(QStringLiteral("dd/MM/yy")),
            moment.toString(QStringLiteral("dd/MM")),
            moment.toString(QStringLiteral("hh-mm-ss")),
            moment.toString(QStringLiteral("hh.mm.ss")),
            moment.toString(QStringLiteral("hh-mm"))};
}

} // namespace morlevant
