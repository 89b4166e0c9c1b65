#include "editor/DivideMergePage.h"

#include "editor/EditRangePage.h"
#include "editor/EditorWidgets.h"
#include "platform/Prompts.h"
#include "taskdef/TaskPageSettings.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QVBoxLayout>

namespace morlevant {

DivideMergePage::DivideMergePage(Prompts& prompts, const EditRangePage& ranges, QWidget* parent)
    : OperationPage(QStringLiteral("Frame_cut"), PageCode::DivideOrMerge, parent),
      prompts_(prompts), ranges_(ranges) {
    const char* captions[] = {"divide by row:", "divide by column:", "divide by range-row:",
                              "divide by range-column:", "merge:"};
    for (int k = 0; k < actionBoxCount; ++k) {
        auto* box = named<QCheckBox>(arrayName("Check_dm", k), QString::fromLatin1(captions[k]));
        actions_[static_cast<std::size_t>(k)] = box;
        connect(box, &QCheckBox::clicked, this, [this, k] { actionClicked(k); });
    }
    const char* defaults[] = {"", "", "divided file(*).txt", "00001", "99999"};
    for (int i = 0; i < textBoxCount; ++i)
        texts_[static_cast<std::size_t>(i)] =
            named<QLineEdit>(arrayName("Text_dm", i), QString::fromLatin1(defaults[i]));

    texts_[RowsText]->setAccessibleName(spokenName(actions_[RowsBox]->text()));
    texts_[ColumnsText]->setAccessibleName(spokenName(actions_[ColumnsBox]->text()));

    auto* actions = new QGridLayout;
    actions->addWidget(actions_[RowsBox], 0, 0);
    actions->addWidget(texts_[RowsText], 0, 1);
    actions->addWidget(actions_[ColumnsBox], 1, 0);
    actions->addWidget(texts_[ColumnsText], 1, 1);
    actions->addWidget(actions_[RangeRowBox], 2, 0);
    actions->addWidget(plainLabel(QStringLiteral("select by row and column only")), 2, 1);
    actions->addWidget(actions_[RangeColumnBox], 3, 0);
    actions->addWidget(plainLabel(QStringLiteral("select by row and column only")), 3, 1);
    actions->addWidget(actions_[MergeBox], 4, 0);
    actions->setColumnStretch(1, 1);

    auto* numbers = new QHBoxLayout;
    numbers->addWidget(
        labelFor(plainLabel(QStringLiteral("range of (*):")), texts_[FirstNumberText]));
    numbers->addWidget(texts_[FirstNumberText], 1);
    numbers->addWidget(plainLabel(QStringLiteral("-")));
    numbers->addWidget(texts_[LastNumberText], 1);
    // The two ends of one range: "from" and "to" say which is which.
    texts_[FirstNumberText]->setAccessibleName(QStringLiteral("range of (*) from"));
    texts_[LastNumberText]->setAccessibleName(QStringLiteral("range of (*) to"));

    auto* layout = new QVBoxLayout(controls());
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(actions);
    layout->addSpacing(12);
    layout->addWidget(
        labelFor(plainLabel(QStringLiteral("divide filename template:")), texts_[TemplateText]));
    layout->addWidget(texts_[TemplateText]);
    layout->addLayout(numbers);
    layout->addStretch(1);

    disableActions({RangeRowBox, RangeColumnBox}); // the editor opens on "all range"
}

void DivideMergePage::enableActions(std::initializer_list<int> which) {
    for (int k : which) {
        bool otherTicked = false;
        for (int other = 0; other < actionBoxCount; ++other)
            otherTicked |= other != k && actions_[static_cast<std::size_t>(other)]->isChecked();
        actions_[static_cast<std::size_t>(k)]->setEnabled(
            !otherTicked && !((k == RangeRowBox || k == RangeColumnBox) && ranges_.allRange()));
    }
}

void DivideMergePage::disableActions(std::initializer_list<int> which) {
    for (int k : which)
        actions_[static_cast<std::size_t>(k)]->setEnabled(false);
}

void DivideMergePage::pageChosen(bool chosen) {
    if (chosen)
        enableActions({RowsBox, ColumnsBox, RangeRowBox, RangeColumnBox, MergeBox});
}

void DivideMergePage::rangeModeClicked(bool selectByRanges) {
    if (!selectByRanges)
        disableActions({RangeRowBox, RangeColumnBox});
    else if (isChosen())
        enableActions({RangeRowBox, RangeColumnBox});
}

void DivideMergePage::takeOutClicked(bool ticked) {
    // Ticking enables the four divides again; unticking disables them, leaving "merge:".
    if (ticked)
        enableActions({RowsBox, ColumnsBox, RangeRowBox, RangeColumnBox});
    else
        disableActions({RowsBox, ColumnsBox, RangeRowBox, RangeColumnBox});
}

void DivideMergePage::actionClicked(int k) {
    // One action only: the others are disabled, never unticked, while box k is ticked.
    enableActions({RowsBox, ColumnsBox, RangeRowBox, RangeColumnBox, MergeBox});
    // A merge ignores ranges that stay in place: say so, whether "merge:" was ticked or not.
    if (k == MergeBox && !ranges_.takeRangesOut() && ranges_.selectByRanges())
        prompts_.information(QStringLiteral("You didn't choose take the operating ranges out,"
                                            "the result will be the same as allrange"),
                             promptTitle);
}

void DivideMergePage::store(TaskPageSettings& settings) const {
    settings.divideAction = std::to_string(actionCode(actions_));
    settings.divideByRowValue = texts_[RowsText]->text().toStdString();
    settings.divideByColumnValue = texts_[ColumnsText]->text().toStdString();
    settings.divideNameTemplate = texts_[TemplateText]->text().toStdString();
    settings.divideNumberFrom = texts_[FirstNumberText]->text().toStdString();
    settings.divideNumberTo = texts_[LastNumberText]->text().toStdString();
}

void DivideMergePage::loadControls(const TaskPageSettings& settings) {
    tickAction(actions_, settings.divideAction);
    enableActions({RowsBox, ColumnsBox, RangeRowBox, RangeColumnBox, MergeBox});
    const std::string* lines[] = {&settings.divideByRowValue, &settings.divideByColumnValue,
                                  &settings.divideNameTemplate, &settings.divideNumberFrom,
                                  &settings.divideNumberTo};
    for (int i = 0; i < textBoxCount; ++i)
        texts_[static_cast<std::size_t>(i)]->setText(QString::fromStdString(*lines[i]));
}

QString DivideMergePage::missingInput() const {
    return actionCode(actions_) > 0 ? QString() : noActionMessage();
}

} // namespace morlevant
