#include "mainwindow/QtPrompts.h"

#include <QApplication>
#include <QFileDialog>
#include <QFontDialog>
#include <QInputDialog>
#include <QLineEdit>

namespace morlevant {

namespace {

QString initialPath(const FileDialogRequest& request) {
    if (request.fileName.isEmpty() || request.fileName.startsWith(u'*'))
        return request.directory;
    return QDir(request.directory).filePath(request.fileName);
}

} // namespace

QtPrompts::QtPrompts(QWidget* parent) : parent_(parent) {}

QWidget* QtPrompts::owner() const {
    // A prompt from inside a modal dialog (the task editor) belongs over that dialog.
    QWidget* modal = QApplication::activeModalWidget();
    return modal != nullptr ? modal : parent_;
}

void QtPrompts::information(const QString& text, const QString& title) {
    QMessageBox::information(owner(), title, text);
}

void QtPrompts::error(const QString& text, const QString& title) {
    QMessageBox::critical(owner(), title, text);
}

Answer QtPrompts::question(const QString& text, const QString& title, Buttons buttons) {
    return answerOf(
        QMessageBox::question(owner(), title, text, offeredButtons(buttons), QMessageBox::Yes),
        buttons);
}

QMessageBox::StandardButtons QtPrompts::offeredButtons(Buttons buttons) {
    QMessageBox::StandardButtons offered = QMessageBox::Yes | QMessageBox::No;
    if (buttons == Buttons::YesNoCancel)
        offered |= QMessageBox::Cancel;
    return offered;
}

Answer QtPrompts::answerOf(QMessageBox::StandardButton chosen, Buttons buttons) {
    if (chosen == QMessageBox::Yes)
        return Answer::Yes;
    if (chosen == QMessageBox::No || buttons == Buttons::YesNo)
        return Answer::No;
    return Answer::Cancel;
}

QStringList QtPrompts::openFileNames(const FileDialogRequest& request) {
    return QFileDialog::getOpenFileNames(owner(), request.title, initialPath(request),
                                         request.filter);
}

QString QtPrompts::openFileName(const FileDialogRequest& request) {
    return QFileDialog::getOpenFileName(owner(), request.title, initialPath(request),
                                        request.filter);
}

QString QtPrompts::saveFileName(const FileDialogRequest& request) {
    return QFileDialog::getSaveFileName(owner(), request.title, initialPath(request),
                                        request.filter);
}

std::optional<QFont> QtPrompts::chooseFont(const QFont& initial) {
    bool accepted = false;
    const QFont chosen = QFontDialog::getFont(&accepted, initial, owner());
    if (!accepted)
        return std::nullopt;
    return chosen;
}

QString QtPrompts::inputText(const QString& prompt, const QString& title) {
    return QInputDialog::getText(owner(), title, prompt);
}

std::optional<QString> QtPrompts::editText(const QString& prompt, const QString& title,
                                           const QString& initial) {
    bool accepted = false;
    const QString text =
        QInputDialog::getText(owner(), title, prompt, QLineEdit::Normal, initial, &accepted);
    if (!accepted)
        return std::nullopt;
    return text;
}

} // namespace morlevant
