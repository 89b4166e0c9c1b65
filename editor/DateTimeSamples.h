#pragma once

#include <QString>
#include <QStringList>

class QDateTime;
class QLocale;

namespace morlevant {

// The weekday of number 1 (Sunday) to 7 (Saturday); any other number gives an empty text.
QString weekdayName(int weekday);

// The sixteen renderings of one moment that "insert date and time:" offers, in list order:
// the locale's named forms, the long and short dates with the weekday, the weekday alone,
// then "dd/mm/yyyy", "dd/mm/yy", "dd/mm", "hh-mm-ss", "hh.mm.ss" and "hh-mm".
QStringList dateTimeSamples(const QDateTime& moment, const QLocale& locale);

// The sample selected when the editor opens: "dd/mm/yyyy".
inline constexpr int initialDateTimeSample = 10;

} // namespace morlevant
