#include "editor/DateTimeSamples.h"

#include "tests/support/QStringPrinter.h"

#include <QDateTime>
#include <QLocale>
#include <gtest/gtest.h>

namespace morlevant {
namespace {

TEST(DateTimeSamples, SixteenFormsOfTheMomentInListOrder) {
    // A Sunday, so the weekday lookup and Qt's Monday-first numbering must agree.
    const QDateTime moment(QDate(2026, 11, 22), QTime(9, 5, 7));
    const QLocale locale(QLocale::English, QLocale::UnitedStates);
    // The long time without the time zone: the text goes into files.
    EXPECT_EQ(dateTimeSamples(moment, locale),
              QStringList({"9:05:07 AM", "9:05 AM", "09:05 AM", "11/22/26 9:05:07 AM",
                           "Sunday, November 22, 2026", "22-Nov-26", "11/22/26",
                           "Sunday, November 22, 2026Sunday", "11/22/26Sunday", "Sunday",
                           "22/11/2026", "22/11/26", "22/11", "09-05-07", "09.05.07", "09-05"}));
    EXPECT_EQ(dateTimeSamples(moment, locale).at(initialDateTimeSample), "22/11/2026");
}

} // namespace
} // namespace morlevant
