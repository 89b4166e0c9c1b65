#include "mainwindow/QtPrompts.h"

#include <QApplication>
#include <QFileDialog>
#include <QFontDatabase>
#include <QFontDialog>
#include <QGridLayout>
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

QMessageBox::StandardButton QtPrompts::showBox(QMessageBox::Icon icon, const QString& title,
                                               const QString& text,
                                               QMessageBox::StandardButtons buttons,
                                               QMessageBox::StandardButton defaultButton) {
    QMessageBox box(icon, title, text, buttons, owner());
    box.setDefaultButton(defaultButton);
    widenForTitle(box);
    box.exec();
    return box.standardButton(box.clickedButton());
}

void QtPrompts::widenForTitle(QMessageBox& box) {
    // The frame draws the title in the desktop's title font beside its own buttons (close,
    // and often minimise and maximise), about 40 pixels each.
    constexpr int frameButtons = 3 * 40;
    const QFontMetrics title(QFontDatabase::systemFont(QFontDatabase::TitleFont));
    const int width = title.horizontalAdvance(box.windowTitle()) + frameButtons;
    if (auto* grid = qobject_cast<QGridLayout*>(box.layout()))
        grid->addItem(new QSpacerItem(width, 0, QSizePolicy::Minimum, QSizePolicy::Minimum),
                      grid->rowCount(), 0, 1, grid->columnCount());
}

void QtPrompts::information(const QString& text, const QString& title) {
    showBox(QMessageBox::Information, title, text, QMessageBox::Ok, QMessageBox::Ok);
}

void QtPrompts::error(const QString& text, const QString& title) {
    showBox(QMessageBox::Critical, title, text, QMessageBox::Ok, QMessageBox::Ok);
}

Answer QtPrompts::question(const QString& text, const QString& title, Buttons buttons) {
    return answerOf(
        showBox(QMessageBox::Question, title, text, offeredButtons(buttons), QMessageBox::Yes),
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
                                         request.filter, request.selectedFilter);
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
