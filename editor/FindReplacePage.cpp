#include "editor/FindReplacePage.h"

#include "editor/EditorWidgets.h"
#include "editor/KeyFilter.h"
#include "taskdef/TaskPageSettings.h"

#include <QGridLayout>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QVBoxLayout>

namespace morlevant {

namespace {

// A line break in the large boxes is written as the settings file's own line end; the file
// has no escaping, so every later line moves down by one.
std::string withFileLineEnds(const QString& text) {
    QString written = text;
    written.replace(u'\n', QStringLiteral("\r\n"));
    return written.toStdString();
}

} // namespace

FindReplacePage::FindReplacePage(QWidget* parent)
    : OperationPage(QStringLiteral("Frame_replace"), PageCode::FindAndReplace, parent),
      find4_(named<QPlainTextEdit>(QStringLiteral("Text7"))),
      replace4_(named<QPlainTextEdit>(QStringLiteral("Text8"))) {
    auto* grid = new QGridLayout;
    for (int i = 0; i < 6; ++i) {
        auto* box = named<QLineEdit>(QStringLiteral("Text") + QString::number(i + 1));
        lineBoxes_[static_cast<std::size_t>(i)] = box;
        const int row = i / 2;
        const int column = (i % 2) * 2;
        grid->addWidget(labelFor(plainLabel(i % 2 == 0 ? QStringLiteral("text  to  find:")
                                                       : QStringLiteral("raplace with:")),
                                 box),
                        row, column);
        grid->addWidget(box, row, column + 1);
    }
    grid->addWidget(labelFor(plainLabel(QStringLiteral("text  to  find:")), find4_), 3, 0,
                    Qt::AlignTop);
    grid->addWidget(find4_, 3, 1);
    grid->addWidget(labelFor(plainLabel(QStringLiteral("raplace with:")), replace4_), 3, 2,
                    Qt::AlignTop);
    grid->addWidget(replace4_, 3, 3);
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(3, 1);
    grid->setRowStretch(3, 1);
    // The four pairs share their labels' words; the description tells them apart.
    for (int i = 0; i < 8; ++i) {
        QWidget* box = i < 6 ? static_cast<QWidget*>(lineBoxes_[static_cast<std::size_t>(i)])
                             : (i == 6 ? static_cast<QWidget*>(find4_) : replace4_);
        box->setAccessibleDescription(QStringLiteral("pair %1 of 4").arg(i / 2 + 1));
    }
    // Enter moves through the boxes in order, Text6 on to the large box Text7.
    for (int i = 0; i < 6; ++i) {
        QWidget* next =
            i < 5 ? static_cast<QWidget*>(lineBoxes_[static_cast<std::size_t>(i + 1)]) : find4_;
        KeyFilter::install(lineBoxes_[static_cast<std::size_t>(i)], &KeyFilter::notEnter, next);
    }
    // Tab leaves the large boxes rather than typing a tab into them.
    find4_->setTabChangesFocus(true);
    replace4_->setTabChangesFocus(true);

    auto* layout = new QVBoxLayout(controls());
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(grid, 1);
    layout->addWidget(plainLabel(QStringLiteral("Following Replacement Can Work At The Same Time!"),
                                 QStringLiteral("Label4")));
}

void FindReplacePage::store(TaskPageSettings& settings) const {
    std::string* lines[] = {&settings.find1,    &settings.replace1, &settings.find2,
                            &settings.replace2, &settings.find3,    &settings.replace3};
    for (std::size_t i = 0; i < lineBoxes_.size(); ++i)
        *lines[i] = lineBoxes_[i]->text().toStdString();
    settings.find4 = withFileLineEnds(find4_->toPlainText());
    settings.replace4 = withFileLineEnds(replace4_->toPlainText());
}

void FindReplacePage::loadControls(const TaskPageSettings& settings) {
    const std::string* lines[] = {&settings.find1,    &settings.replace1, &settings.find2,
                                  &settings.replace2, &settings.find3,    &settings.replace3};
    for (std::size_t i = 0; i < lineBoxes_.size(); ++i)
        lineBoxes_[i]->setText(QString::fromStdString(*lines[i]));
    find4_->setPlainText(QString::fromStdString(settings.find4));
    replace4_->setPlainText(QString::fromStdString(settings.replace4));
}

QString FindReplacePage::lineBreakQuestion() const {
    const auto holdsLineBreak = [](const QPlainTextEdit* box) {
        return box->toPlainText().contains(u'\n');
    };
    if (!holdsLineBreak(find4_) && !holdsLineBreak(replace4_))
        return {};
    return QStringLiteral(
        "The large find or replace box holds a line break. The task's settings file keeps one "
        "value per line, so the line break is written as an extra line and every setting after "
        "it moves down: the run then reads them in the wrong places (\"one\", a line break, "
        "\"two\" to find is run as: replace \"one\" with \"two\"). Save anyway?");
}

QString FindReplacePage::missingInput() const {
    bool nothingToFind = find4_->toPlainText().isEmpty();
    for (std::size_t i = 0; i < lineBoxes_.size(); i += 2) // the find boxes Text1, Text3, Text5
        nothingToFind = nothingToFind && lineBoxes_[i]->text().isEmpty();
    return nothingToFind ? QStringLiteral("What string do you want to find") : QString();
}

} // namespace morlevant
