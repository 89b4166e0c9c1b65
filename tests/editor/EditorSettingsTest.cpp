#include "editor/DateTimeSamples.h"
#include "taskdef/TaskPageSettings.h"
#include "tests/editor/EditorFixture.h"
#include "tests/support/QStringPrinter.h"

#include <QComboBox>
#include <QLocale>
#include <QPlainTextEdit>
#include <QTreeWidget>
#include <map>

namespace morlevant {
namespace {

using EditorSettings = testing::EditorFixture;

// "ok" refuses a page that is not complete; a line break in a large find or replace box, which
// moves every later line of the settings file, is saved only when the user says yes (the "yes"
// is run by OkWritesTheThirtyOneLinesOfEveryPage). Refused, the editor stays open as it was.
TEST_F(EditorSettings, OkRefusesAnIncompletePageAndLeavesEverythingAsItWas) {
    const QString askForAction =
        "information|Morlevant|What do you want to do?Please press the check button!";
    const QString lineBreak = "yesno|Morlevant|The large find or replace box holds a line break.";
    const std::pair<QStringList, QString> cases[] = {
        {{}, "information|Morlevant|You didn't edit task page"},
        {{"Option1(1)", "Check2"}, "information|Morlevant|You didn't edit task page"},
        {{"Check3"}, "information|Morlevant|Calculate steps was empty"},
        {{"Check4"}, "information|Morlevant|What string do you want to find"},
        {{"Check5"}, askForAction},
        {{"Check6"}, askForAction},
        // A replacement alone finds nothing.
        {{"Check4", "Text2=x"}, "information|Morlevant|What string do you want to find"},
        {{"Check4", "Text1=cat", "Text7=one\rtwo"}, lineBreak},
        {{"Check4", "Text1=cat", "Text8=one\rtwo"}, lineBreak},
    };
    for (const auto& [clicks, message] : cases) {
        SCOPED_TRACE(clicks.join(", ").toStdString());
        prompts.asked.clear();
        reopen();
        driver().perform(clicks);
        const TaskPageSettings shown = dialog->settings();
        if (message == lineBreak)
            prompts.answers.enqueue(Answer::No);
        click("ok");
        ASSERT_EQ(prompts.asked.size(), 1);
        EXPECT_TRUE(prompts.asked[0].startsWith(message)) << prompts.asked[0].toStdString();
        EXPECT_TRUE(dialog->isVisible());
        EXPECT_EQ(dialog->settings(), shown);
        EXPECT_FALSE(std::filesystem::exists(home.file("Job.ttp")));
    }
    // The large box alone is enough.
    reopen();
    driver().perform({"Check4", "Text7=a", "ok"});
    EXPECT_EQ(dialog->result(), QDialog::Accepted);
}

TEST_F(EditorSettings, StepsAreBuiltByTheOperatorButtons) {
    clickAll({"Check3", "Command_cal(0)"});
    EXPECT_EQ(prompts.asked,
              QStringList{"information|Morlevant|Please input a number in the textbox"});
    driver().perform({"Text_cal(1)=5", "Text_cal(3)=2", "Text_cal(6)=1.5.2", "Command_cal(0)",
                      "Command_cal(2)", "Command_cal(2)", "Command_cal(5)"});
    EXPECT_EQ(text("Text_cal(7)"), "+5,*2,*2,%1.5.2,");
    EXPECT_EQ(text("Text_cal(3)"), "2"); // the operand stays for the next click
}

TEST_F(EditorSettings, OkWritesTheThirtyOneLinesOfEveryPage) {
    // The file of an editor left on its defaults, but for the lines each case changes.
    const auto file = [](std::map<int, const char*> changed) {
        const QStringList defaults = QString("1|||0|0|0|Left|No|No||||||||||0|22/11/2026||||||0|||"
                                             "divided file(*).txt|00001|99999")
                                         .split(u'|');
        std::string text;
        for (int line = 1; line <= 31; ++line)
            text += (changed.count(line) ? std::string(changed[line])
                                         : defaults[line - 1].toStdString()) +
                    "\r\n";
        return text;
    };
    const std::pair<QStringList, std::map<int, const char*>> cases[] = {
        {{"Check3", "Text_cal(0)=2", "Text_cal(1)=5", "Command_cal(0)"},
         {{5, "3"}, {6, "02"}, {10, "+5,"}}},
        // Ranges taken out; a line break in the large boxes moves every later line down.
        {{"Option1(1)", "Text_column=3-8", "Check2", "Check4", "Text1=cat", "Text7=a\rb",
          "Text8=c\rd"},
         {{1, "2"}, {3, "3-8"}, {4, "1"}, {5, "4"}, {11, "cat"}, {17, "a\r\nb"}, {18, "c\r\nd"}}},
        // "select by row and column" with both boxes blank is the whole text.
        {{"Option1(1)", "Check5", "Check_id(5)", "Text_id(3)=[0-9]+"},
         {{5, "5"}, {19, "6"}, {24, "[0-9]+"}}},
        {{"Check6", "Check_dm(0)", "Text_dm(0)=100"}, {{5, "6"}, {26, "1"}, {27, "100"}}},
    };
    for (const auto& [steps, changed] : cases) {
        reopen();
        driver().perform(steps);
        // Saving a line break is confirmed first (refusing it is tried above).
        if (steps.join(u',').contains("Text7"))
            prompts.answers.enqueue(Answer::Yes);
        click("ok");
        EXPECT_EQ(dialog->result(), QDialog::Accepted);
        EXPECT_EQ(written(), file(changed)) << steps.join(", ").toStdString();
    }
}

TEST_F(EditorSettings, AnUnwritableSettingsFileIsReportedAndTheEditorStaysOpen) {
    std::filesystem::create_directory(home.file("Job.ttp"));
    driver().perform({"Check4", "Text1=x", "ok"});
    ASSERT_EQ(prompts.asked.size(), 1);
    EXPECT_TRUE(prompts.asked[0].startsWith("error|Morlevant|Cannot write the task settings file"));
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_EQ(text("Text1"), "x");
}

TEST_F(EditorSettings, TemplateLibraryAddsSamplesOnEveryOpeningAndNeverCrashes) {
    auto* library = control<QTreeWidget>("list_temp");
    auto* selected = control<QTreeWidget>("list_select");
    EXPECT_FALSE(control("frame_temp")->isVisible());
    clickAll({"Opent", "Opent"});
    EXPECT_TRUE(control("frame_temp")->isVisible());
    ASSERT_EQ(library->topLevelItemCount(), 6);

    library->setCurrentItem(library->topLevelItem(0), 0, QItemSelectionModel::NoUpdate);
    click("cmd_delete"); // the current row, but nothing selected
    EXPECT_EQ(library->topLevelItemCount(), 6);
    library->setCurrentItem(library->topLevelItem(2));
    click("cmd_add");
    ASSERT_EQ(selected->topLevelItemCount(), 1);
    EXPECT_EQ(selected->topLevelItem(0)->text(1), "reverse");
    click("cmd_delete");
    EXPECT_EQ(library->topLevelItemCount(), 5);
}

TEST_F(EditorSettings, FilterTemplatesSupplyThePattern) {
    auto* list = control<QTreeWidget>("ListView_id");
    ASSERT_EQ(list->topLevelItemCount(), 12);
    click("Check5");
    const auto clickRow = [list](int row) {
        QTreeWidgetItem* item = list->topLevelItem(row);
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                          list->visualItemRect(item).center());
    };
    clickRow(0);
    EXPECT_EQ(text("Text_id(3)"), list->topLevelItem(0)->text(1) + "1111");
    clickRow(3);
    EXPECT_EQ(text("Text_id(3)"), "");
}

// The editor opened on a task's settings shows every control as the settings file says, so that
// "ok" without a change writes the same file again.
TEST_F(EditorSettings, EveryPageWrittenByTheEditorComesBackAsItWas) {
    const QStringList cases[] = {
        {"Check3", "Combox_cal(1)", "Text_cal(0)=2", "Text_cal(3)=1.5", "Command_cal(2)",
         "Text_cal(1)=5", "Command_cal(0)"},
        {"Option1(1)", "Text_row=3-8", "Text_column=2-4", "Check2", "Check4", "Text1=cat",
         "Text4=dog", "Text6=x", "Text7=a b", "Text8=c"},
        {"Check5", "Check_id(3)", "Text_id(2)=[$&]", "Text_id(3)=[0-9]+", "Text_id(4)=kept"},
        {"Option1(1)", "Text_row=1-2,5-9", "Check2", "Check6", "Check_dm(2)", "Text_dm(2)=p(*).txt",
         "Text_dm(3)=7", "Text_dm(4)=70"},
    };
    for (const QStringList& steps : cases) {
        reopen();
        driver().perform(steps);
        click("ok");
        const std::string file = written();
        const TaskPageSettings settings = readTaskPageSettings(home.file("Job.ttp"));

        reopen();
        dialog->showSettings(settings);
        EXPECT_EQ(dialog->settings(), settings) << steps.join(", ").toStdString();
        click("ok");
        EXPECT_EQ(written(), file) << steps.join(", ").toStdString();
    }
}

TEST_F(EditorSettings, TheChosenPageAndActionDisableTheOthersAsAClickWould) {
    TaskPageSettings settings;
    for (int line = 1; line <= TaskPageSettings::lineCount; ++line)
        settings.line(line) = "v" + std::to_string(line);
    settings.rangeMode = "2";
    settings.takeRangesOut = "1";
    settings.operationPage = "6";
    settings.alignment = "Right";
    settings.nonNumericAlert = "Yes";
    settings.crossBorderAlert = "No";
    settings.insertAction = "2";
    settings.dateTimeFormat = "Friday 13";
    settings.divideAction = "3";
    dialog->showSettings(settings);

    EXPECT_EQ(dialog->settings(), settings);
    for (int tab = 1; tab <= 4; ++tab)
        EXPECT_EQ(tabs()->isTabEnabled(tab), tab == 4) << tab;
    EXPECT_EQ(enabled({"Text_row", "Check2", "Check_dm(0)", "Check_dm(2)", "Check_dm(4)"}),
              "11010");
    EXPECT_EQ(text("Text_dm(2)"), "v29");
    EXPECT_EQ(control<QComboBox>("Combox_id(0)")->currentText(), "Friday 13");
    EXPECT_EQ(control<QPlainTextEdit>("Text8")->toPlainText(), "v18");
    // Unticking the page gives the other tabs back, as after a click.
    click("Check6");
    EXPECT_TRUE(tabs()->isTabEnabled(1));
}

// The sixteen forms of a moment that the insert page offers.
TEST(DateTimeSamples, SixteenFormsOfTheMomentInListOrder) {
    // A Sunday, so the weekday lookup and Qt's Monday-first numbering must agree.
    const QDateTime moment(QDate(2026, 11, 22), QTime(9, 5, 7));
    const QLocale locale(QLocale::English, QLocale::UnitedStates);
    // The long time without the time zone: the text goes into files.
    EXPECT_EQ(dateTimeSamples(moment, locale),
              QStringList({"9:05:07 AM", "9:05 AM", "09:05 AM", "11/22/26 9:05:07 AM",
                           "Sunday, November 22, 2026", "22-Nov-26", "11/22/26",
                           "Sunday, November 22, 2026Sunday", "11/22/26Sunday", "Sunday",
                           "22/11/2026", "22/11/26", "22/11", "09-05-07", "09.05.07", "09-05"}));
    EXPECT_EQ(dateTimeSamples(moment, locale).at(initialDateTimeSample), "22/11/2026");
}

// Which controls the editor enables, and what it says, as the user clicks.
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

// A merge of ranges left in place says, ticked and unticked, that it merges the whole text.
TEST_F(EditorRules, DivideActionsExcludeEachOtherAndAMergeOfRangesInPlaceSaysSo) {
    const char* notice = "information|Morlevant|You didn't choose take the operating ranges "
                         "out,the result will be the same as allrange";
    const struct {
        QStringList clicks;
        const char* divideBoxesEnabled;
        int notices;
    } cases[] = {
        {{"Check6"}, "11001", 0},
        {{"Check6", "Option1(1)"}, "11111", 0},
        {{"Check6", "Check_dm(0)"}, "10000", 0},
        {{"Check6", "Option1(1)", "Check2", "Check2"}, "00001", 0},
        {{"Check6", "Check_dm(4)", "Check_dm(4)"}, "11001", 0},
        {{"Option1(1)", "Check6", "Check_dm(4)", "Check_dm(4)"}, "11111", 2},
        {{"Option1(1)", "Check2", "Check6", "Check_dm(4)"}, "00001", 0},
    };
    for (const auto& sequence : cases) {
        SCOPED_TRACE(sequence.clicks.join(", ").toStdString());
        prompts.asked.clear();
        reopen();
        clickAll(sequence.clicks);
        EXPECT_EQ(enabled(divideBoxes), sequence.divideBoxesEnabled);
        EXPECT_EQ(prompts.asked.count(notice), sequence.notices);
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
