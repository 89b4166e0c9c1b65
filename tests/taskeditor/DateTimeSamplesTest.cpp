#include "DateTimeSamples.h"

#include "QStringPrinter.h"

#include <QDateTime>
#include <QLocale>
#include <gtest/gtest.h>

namespace morlevant {
namespace {

TEST(DateTimeSamples, WeekdayLookupStartsOnSundayAndKnowsOnlySevenDays) {
    const std::pair<int, const char*> cases[] = {{1, "Sunday"}, {4, "Wednesday"}, {7, "Saturday"},
                                                 {0, ""},       {8, ""},          {-1, ""}};
    for (const auto& [number, name] : cases)
        EXPECT_EQ(weekdayName(number), name) << number;
}

TEST(DateTimeSamples, SixteenFormsOfTheMomentInListOrder) {
    // A Sunday, so the weekday lookup and Qt's Monday-first numbering must agree.
    const QDateTime moment(QDate(2026, 11, 22), QTime(9, 5, 7));
    const QLocale locale(QLocale::English, QLocale::UnitedKingdom);
    const QStringList samples = dateTimeSamples(moment, locale);
    ASSERT_EQ(samples.size(), 16);
    const QString longDate = locale.toString(moment.date(), QLocale::LongFormat);
    const QString shortDate = locale.toString(moment.date(), QLocale::ShortFormat);
    EXPECT_EQ(samples[0], locale.toString(moment.time(), QLocale::LongFormat));
    EXPECT_EQ(samples[3], shortDate + " " + samples[0]);
    EXPECT_EQ(samples[4], longDate);
    EXPECT_EQ(samples[6], shortDate);
    EXPECT_EQ(samples.mid(7, 3),
              QStringList({longDate + "Sunday", shortDate + "Sunday", "Sunday"}));
    EXPECT_EQ(samples.mid(initialDateTimeSample),
              QStringList({"22/11/2026", "22/11/26", "22/11", "09-05-07", "09.05.07", "09-05"}));
}

} // namespace
} // namespace morlevant
