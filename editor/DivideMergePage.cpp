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

namespace {

constexpr int rangeRowBox = 2;
constexpr int rangeColumnBox = 3;
constexpr int mergeBox = 4;

bool isRangeDivide(int k) {
    return k == rangeRowBox || k == rangeColumnBox;
}

} // namespace

DivideMergePage::DivideMergePage(Prompts& prompts, const EditRangePage& ranges, QWidget* parent)
    : OperationPage(QStringLiteral("Frame_cut"), 6, parent), prompts_(prompts), ranges_(ranges) {
    const char* captions[] = {"divide by row:", "divide by column:", "divide by range-row:",
                              "divide by range-column:", "merge:"};
    for (int k = 0; k < 5; ++k) {
        auto* box = named<QCheckBox>(arrayName("Check_dm", k), QString::fromLatin1(captions[k]));
        actions_[static_cast<std::size_t>(k)] = box;
        connect(box, &QCheckBox::clicked, this, [this, k] { actionClicked(k); });
    }
    const char* defaults[] = {"", "", "divided file(*).txt", "00001", "99999"};
    for (int i = 0; i < 5; ++i)
        texts_[static_cast<std::size_t>(i)] =
            named<QLineEdit>(arrayName("Text_dm", i), QString::fromLatin1(defaults[i]));

    auto* actions = new QGridLayout;
    actions->addWidget(actions_[0], 0, 0);
    actions->addWidget(texts_[0], 0, 1);
    actions->addWidget(actions_[1], 1, 0);
    actions->addWidget(texts_[1], 1, 1);
    actions->addWidget(actions_[rangeRowBox], 2, 0);
    actions->addWidget(plainLabel(QStringLiteral("select by row and column only")), 2, 1);
    actions->addWidget(actions_[rangeColumnBox], 3, 0);
    actions->addWidget(plainLabel(QStringLiteral("select by row and column only")), 3, 1);
    actions->addWidget(actions_[mergeBox], 4, 0);
    actions->setColumnStretch(1, 1);

    auto* numbers = new QHBoxLayout;
    numbers->addWidget(plainLabel(QStringLiteral("range of (*):")));
    numbers->addWidget(texts_[3], 1);
    numbers->addWidget(plainLabel(QStringLiteral("-")));
    numbers->addWidget(texts_[4], 1);

    auto* layout = new QVBoxLayout(controls());
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(actions);
    layout->addSpacing(12);
    layout->addWidget(plainLabel(QStringLiteral("divide filename template:")));
    layout->addWidget(texts_[2]);
    layout->addLayout(numbers);
    layout->addStretch(1);

    disableActions({rangeRowBox, rangeColumnBox}); // the editor opens on "all range"
}

void DivideMergePage::enableActions(std::initializer_list<int> which) {
    for (int k : which) {
        bool otherTicked = false;
        for (int other = 0; other < 5; ++other)
            otherTicked |= other != k && actions_[static_cast<std::size_t>(other)]->isChecked();
        actions_[static_cast<std::size_t>(k)]->setEnabled(
            !otherTicked && !(isRangeDivide(k) && ranges_.allRange()));
    }
}

void DivideMergePage::disableActions(std::initializer_list<int> which) {
    for (int k : which)
        actions_[static_cast<std::size_t>(k)]->setEnabled(false);
}

void DivideMergePage::pageChosen(bool chosen) {
    if (chosen)
        enableActions({0, 1, rangeRowBox, rangeColumnBox, mergeBox});
}

void DivideMergePage::rangeModeClicked(bool selectByRanges) {
    if (!selectByRanges)
        disableActions({rangeRowBox, rangeColumnBox});
    else if (isChosen())
        enableActions({rangeRowBox, rangeColumnBox});
}

void DivideMergePage::takeOutClicked(bool ticked) {
    // Ticking enables the four divides again; unticking disables them, leaving "merge:".
    if (ticked)
        enableActions({0, 1, rangeRowBox, rangeColumnBox});
    else
        disableActions({0, 1, rangeRowBox, rangeColumnBox});
}

void DivideMergePage::actionClicked(int k) {
    // One action only: the others are disabled, never unticked, while box k is ticked.
    enableActions({0, 1, rangeRowBox, rangeColumnBox, mergeBox});
    // A merge ignores ranges that stay in place: say so, whether "merge:" was ticked or not.
    if (k == mergeBox && !ranges_.takeRangesOut() && ranges_.selectByRanges())
        prompts_.information(QStringLiteral("You didn't choose take the operating ranges out,"
                                            "the result will be the same as allrange"),
                             promptTitle);
}

void DivideMergePage::store(TaskPageSettings& settings) const {
    settings.divideAction = std::to_string(actionCode(actions_));
    settings.divideByRowValue = texts_[0]->text().toStdString();
    settings.divideByColumnValue = texts_[1]->text().toStdString();
    settings.divideNameTemplate = texts_[2]->text().toStdString();
    settings.divideNumberFrom = texts_[3]->text().toStdString();
    settings.divideNumberTo = texts_[4]->text().toStdString();
}

QString DivideMergePage::missingInput() const {
    return actionCode(actions_) > 0 ? QString() : noActionMessage();
}

} // namespace morlevant
