#pragma once

#include "platform/Prompts.h"

#include <QMessageBox>

class QWidget;

namespace morlevant {

// The prompts as the user sees them: message boxes, input boxes and the desktop's file and
// font dialogs, each modal over `parent`.
class QtPrompts final : public Prompts {
public:
    explicit QtPrompts(QWidget* parent = nullptr);

    void setParent(QWidget* parent) { parent_ = parent; }

    void information(const QString& text, const QString& title) override;
    void error(const QString& text, const QString& title) override;
    Answer question(const QString& text, const QString& title, Buttons buttons) override;
    QStringList openFileNames(const FileDialogRequest& request) override;
    QString openFileName(const FileDialogRequest& request) override;
    QString saveFileName(const FileDialogRequest& request) override;
    std::optional<QFont> chooseFont(const QFont& initial) override;
    QString inputText(const QString& prompt, const QString& title) override;
    std::optional<QString> editText(const QString& prompt, const QString& title,
                                    const QString& initial) override;

    // The message box's buttons for a question, and the answer the button it returned means.
    // A box closed without a button (Escape, the window's close button) returns the escape
    // button or none; either counts as the last button offered.
    static QMessageBox::StandardButtons offeredButtons(Buttons buttons);
    static Answer answerOf(QMessageBox::StandardButton chosen, Buttons buttons);
    // Makes the box at least as wide as its title needs beside the frame's buttons, so that the
    // title is not cut short to "M…t" over a short message.
    static void widenForTitle(QMessageBox& box);

private:
    QWidget* owner() const;
    // Shows a box over owner() and returns the button chosen (NoButton when closed without one).
    QMessageBox::StandardButton showBox(QMessageBox::Icon icon, const QString& title,
                                        const QString& text, QMessageBox::StandardButtons buttons,
                                        QMessageBox::StandardButton defaultButton);

    QWidget* parent_;
};

} // namespace morlevant
