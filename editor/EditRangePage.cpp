#include "editor/EditRangePage.h"

#include "editor/EditorWidgets.h"
#include "editor/RangeBoxCheck.h"
#include "taskdef/TaskPageSettings.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLineEdit>
#include <QRadioButton>
#include <QVBoxLayout>

namespace morlevant {

EditRangePage::EditRangePage(Prompts& prompts, QWidget* parent)
    : QWidget(parent),
      allRange_(named<QRadioButton>(arrayName("Option1", 0), QStringLiteral("all range"))),
      selectByRanges_(
          named<QRadioButton>(arrayName("Option1", 1), QStringLiteral("select by row and column"))),
      rowBox_(named<QLineEdit>(QStringLiteral("Text_row"))),
      columnBox_(named<QLineEdit>(QStringLiteral("Text_column"))),
      rowLabel_(plainLabel(QStringLiteral("row"), arrayName("check1", 0))),
      columnLabel_(plainLabel(QStringLiteral("column"), arrayName("check1", 1))),
      takeOut_(named<QCheckBox>(QStringLiteral("Check2"),
                                QStringLiteral("take the operating ranges out"))) {
    setObjectName(QStringLiteral("Frame_range"));
    labelFor(rowLabel_, rowBox_);
    labelFor(columnLabel_, columnBox_);
    RangeBoxCheck::install(rowBox_, RangeBox::Row, prompts, columnBox_);
    RangeBoxCheck::install(columnBox_, RangeBox::Column, prompts);

    auto* ranges = new QGridLayout;
    ranges->setColumnMinimumWidth(0, 24);
    ranges->addWidget(rowLabel_, 0, 1);
    ranges->addWidget(rowBox_, 0, 2);
    ranges->addWidget(plainLabel(QStringLiteral(
                          "(example:   1-1,100-200,1000-10000)    blank stand for all row")),
                      1, 2);
    ranges->addWidget(columnLabel_, 2, 1);
    ranges->addWidget(columnBox_, 2, 2);
    ranges->addWidget(plainLabel(QStringLiteral(
                          "(example:   1-1,100-200,1000-10000)    blank stand for all column")),
                      3, 2);
    ranges->setColumnStretch(2, 1);

    auto* note = plainLabel(
        QStringLiteral(
            "If you choose this option,the operate ranges will be taked out and then go on"),
        QStringLiteral("Label12"));
    note->setWordWrap(true);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(allRange_);
    layout->addWidget(selectByRanges_);
    layout->addLayout(ranges);
    layout->addSpacing(12);
    layout->addWidget(takeOut_);
    layout->addWidget(note);
    layout->addStretch(1);

    allRange_->setChecked(true);
    applyRangeMode(false);
    connect(allRange_, &QRadioButton::clicked, this, [this] {
        applyRangeMode(false);
        emit rangeModeClicked(false);
    });
    connect(selectByRanges_, &QRadioButton::clicked, this, [this] {
        applyRangeMode(true);
        emit rangeModeClicked(true);
    });
    connect(takeOut_, &QCheckBox::clicked, this, &EditRangePage::takeOutClicked);
}

void EditRangePage::applyRangeMode(bool selectByRanges) {
    // The ranges can be taken out only from a row and column selection; the box is disabled,
    // not unticked, under "all range".
    for (QWidget* control :
         std::initializer_list<QWidget*>{rowBox_, columnBox_, rowLabel_, columnLabel_, takeOut_})
        control->setEnabled(selectByRanges);
}

bool EditRangePage::selectByRanges() const {
    return selectByRanges_->isChecked();
}

bool EditRangePage::allRange() const {
    return allRange_->isChecked();
}

bool EditRangePage::takeRangesOut() const {
    return takeOut_->isChecked();
}

void EditRangePage::load(const TaskPageSettings& settings) {
    const bool byRanges = settings.rangeMode == "2";
    (byRanges ? selectByRanges_ : allRange_)->setChecked(true);
    rowBox_->setText(QString::fromStdString(settings.rowRange));
    columnBox_->setText(QString::fromStdString(settings.columnRange));
    takeOut_->setChecked(settings.takeRangesOut == "1");
    applyRangeMode(byRanges);
}

void EditRangePage::store(TaskPageSettings& settings) const {
    if (allRange())
        settings.rangeMode = "1";
    else if (selectByRanges())
        settings.rangeMode = rowBox_->text().isEmpty() && columnBox_->text().isEmpty() ? "1" : "2";
    settings.rowRange = rowBox_->text().toStdString();
    settings.columnRange = columnBox_->text().toStdString();
    settings.takeRangesOut = takeRangesOut() ? "1" : "0";
}

} // namespace morlevant
