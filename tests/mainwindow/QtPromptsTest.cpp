#include "mainwindow/QtPrompts.h"

#include <QFontDatabase>
#include <QLayout>
#include <gtest/gtest.h>

namespace morlevant {
namespace {

TEST(QtPrompts, TheButtonChosenIsTheAnswerAndClosingCountsAsTheLast) {
    const struct {
        Buttons buttons;
        QMessageBox::StandardButton chosen;
        Answer answer;
    } cases[] = {
        {Buttons::YesNo, QMessageBox::Yes, Answer::Yes},
        {Buttons::YesNo, QMessageBox::Escape, Answer::No},
        {Buttons::YesNoCancel, QMessageBox::No, Answer::No},
        {Buttons::YesNoCancel, QMessageBox::Escape, Answer::Cancel},
    };
    for (const auto& c : cases)
        EXPECT_EQ(QtPrompts::answerOf(c.chosen, c.buttons), c.answer)
            << "buttons " << static_cast<int>(c.buttons) << ", chosen " << c.chosen;
}

// A box is never narrower than its title needs, however short its message.
TEST(QtPrompts, ABoxIsWideEnoughForItsTitle) {
    const QString title =
        QStringLiteral("Delete this task with all folders and files, a long title");
    QMessageBox box(QMessageBox::Question, title, QStringLiteral("Yes?"),
                    QMessageBox::Yes | QMessageBox::No);
    const int before = box.layout()->totalMinimumSize().width();
    QtPrompts::widenForTitle(box);
    const int needed =
        QFontMetrics(QFontDatabase::systemFont(QFontDatabase::TitleFont)).horizontalAdvance(title);
    EXPECT_LT(before, needed);
    EXPECT_GT(box.layout()->totalMinimumSize().width(), needed);
}

} // namespace
} // namespace morlevant
