#include "tests/editor/EditorFixture.h"
#include "tests/support/QStringPrinter.h"

namespace morlevant {
namespace {

using EditorRules = testing::EditorFixture;

const QStringList divideBoxes = {"Check_dm(0)", "Check_dm(1)", "Check_dm(2)", "Check_dm(3)",
                                 "Check_dm(4)"};

TEST_F(EditorRules, RangeBoxesAndTakingOutOnlyWithARowAndColumnSelection) {
    const QStringList rangeControls = {"Text_row", "Text_column", "check1(0)", "check1(1)",
                                       "Check2"};
    EXPECT_EQ(enabled(rangeControls), "00000");
    click("Option1(1)");
    EXPECT_EQ(enabled(rangeControls), "11111");
    click("Check2");
    click("Option1(0)");
    EXPECT_EQ(enabled(rangeControls), "00000");
    EXPECT_TRUE(control<QAbstractButton>("Check2")->isChecked()); // disabled, never unticked
}

TEST_F(EditorRules, DivideActionsExcludeEachOtherAndRangeDividesNeedASelection) {
    const struct {
        QStringList clicks;
        const char* divideBoxesEnabled;
    } cases[] = {
        {{"Check6"}, "11001"},
        {{"Check6", "Option1(1)"}, "11111"},
        {{"Check6", "Check_dm(0)"}, "10000"},
        {{"Check6", "Option1(1)", "Check2", "Check2"}, "00001"},
    };
    for (const auto& sequence : cases) {
        reopen();
        clickAll(sequence.clicks);
        EXPECT_EQ(enabled(divideBoxes), sequence.divideBoxesEnabled)
            << sequence.clicks.join(", ").toStdString();
    }
}

TEST_F(EditorRules, InsertActionsExcludeEachOtherAndFilteringWithoutReplacingEmptiesIt) {
    const QStringList actionBoxes = {"Check_id(0)", "Check_id(1)", "Check_id(2)",
                                     "Check_id(3)", "Check_id(4)", "Check_id(5)"};
    click("Check5");
    type("Text_id(2)", "[$1]");
    click("Check_id(3)");
    EXPECT_EQ(enabled(actionBoxes), "000100");
    EXPECT_EQ(text("Text_id(2)"), "[$1]");
    click("Check_id(3)");
    EXPECT_EQ(enabled(actionBoxes), "111111");
    click("Check_id(5)");
    EXPECT_EQ(enabled(actionBoxes), "000001");
    EXPECT_EQ(text("Text_id(2)"), "");
}

TEST_F(EditorRules, MergeNoticeOnlyWhenRangesStayInPlace) {
    const char* notice = "information|Morlevant|You didn't choose take the operating ranges "
                         "out,the result will be the same as allrange";
    const struct {
        QStringList clicks;
        int notices;
    } cases[] = {
        {{"Check6", "Check_dm(4)", "Check_dm(4)"}, 0},
        {{"Option1(1)", "Check6", "Check_dm(4)", "Check_dm(4)"}, 2}, // ticking and unticking
        {{"Option1(1)", "Check2", "Check6", "Check_dm(4)"}, 0},
    };
    for (const auto& sequence : cases) {
        prompts.asked.clear();
        reopen();
        clickAll(sequence.clicks);
        EXPECT_EQ(prompts.asked.count(notice), sequence.notices)
            << sequence.clicks.join(", ").toStdString();
    }
}

// How a text is tidied and checked is pinned by RangeText's tables; these are the boxes' wiring.
TEST_F(EditorRules, RangeBoxesAreTidiedAndCheckedWhenLeft) {
    click("Option1(1)");
    type("Text_row", "1--5,,,7-,-9");
    type("Text_column", "1-10,5-20");
    EXPECT_EQ(text("Text_row"), "1-5,7,9");
    control("Check2")->setFocus(Qt::TabFocusReason);
    control("Option1(0)")->setFocus(Qt::TabFocusReason); // leaving again says it once
    QApplication::processEvents(); // the message comes once the focus has settled
    EXPECT_EQ(text("Text_column"), "1-10,5-20");
    EXPECT_EQ(prompts.asked,
              QStringList{"information|Morlevant|column range error:10 was bigger than 5"});
    EXPECT_EQ(QApplication::focusWidget(), control("Text_column"));
}

} // namespace
} // namespace morlevant
