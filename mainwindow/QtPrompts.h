#pragma once

#include "platform/Prompts.h"

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

private:
    QWidget* owner() const;

    QWidget* parent_;
};

} // namespace morlevant
