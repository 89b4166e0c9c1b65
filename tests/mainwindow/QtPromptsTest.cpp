#include "mainwindow/QtPrompts.h"

#include <gtest/gtest.h>

namespace morlevant {
namespace {

TEST(QtPrompts, QuestionsOfferTheirButtons) {
    EXPECT_EQ(QtPrompts::offeredButtons(Buttons::YesNo), QMessageBox::Yes | QMessageBox::No);
    EXPECT_EQ(QtPrompts::offeredButtons(Buttons::YesNoCancel),
              QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
}

TEST(QtPrompts, TheButtonChosenIsTheAnswerAndClosingCountsAsTheLast) {
    const struct {
        Buttons buttons;
        QMessageBox::StandardButton chosen;
        Answer answer;
    } cases[] = {
        {Buttons::YesNo, QMessageBox::Yes, Answer::Yes},
        {Buttons::YesNo, QMessageBox::No, Answer::No},
        {Buttons::YesNo, QMessageBox::NoButton, Answer::No},
        {Buttons::YesNo, QMessageBox::Escape, Answer::No},
        {Buttons::YesNoCancel, QMessageBox::Yes, Answer::Yes},
        {Buttons::YesNoCancel, QMessageBox::No, Answer::No},
        {Buttons::YesNoCancel, QMessageBox::Cancel, Answer::Cancel},
        {Buttons::YesNoCancel, QMessageBox::NoButton, Answer::Cancel},
        {Buttons::YesNoCancel, QMessageBox::Escape, Answer::Cancel},
    };
    for (const auto& c : cases)
        EXPECT_EQ(QtPrompts::answerOf(c.chosen, c.buttons), c.answer)
            << "buttons " << static_cast<int>(c.buttons) << ", chosen " << c.chosen;
}

} // namespace
} // namespace morlevant
