#include "mainwindow/QtPrompts.h"

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

} // namespace
} // namespace morlevant
