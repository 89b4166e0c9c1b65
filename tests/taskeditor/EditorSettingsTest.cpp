// What "ok" refuses, what it writes, the step builder and the template lists.
#include "EditorFixture.h"
#include "QStringPrinter.h"

#include <QPlainTextEdit>
#include <QTreeWidget>

namespace morlevant {
namespace {

using EditorSettings = testing::EditorFixture;

// The 31 lines of a settings file, each ended by CR LF.
std::string lines(std::initializer_list<const char*> values) {
    std::string text;
    for (const char* value : values)
        text += std::string(value) + "\r\n";
    return text;
}

TEST_F(EditorSettings, OkRefusesAnIncompletePageAndLeavesEverythingAsItWas) {
    const char* askForAction = "What do you want to do?Please press the check button!";
    const struct {
        QStringList clicks;
        const char* message;
    } cases[] = {
        {{}, "You didn't edit task page"},
        {{"Option1(1)", "Check2"}, "You didn't edit task page"},
        {{"Check3"}, "Calculate steps was empty"},
        {{"Check4"}, "What string do you want to find"},
        {{"Check5"}, askForAction},
        {{"Check6"}, askForAction},
    };
    for (const auto& sequence : cases) {
        prompts.asked.clear();
        reopen();
        clickAll(sequence.clicks);
        click("ok");
        EXPECT_EQ(prompts.asked, QStringList{QString("information|Morlevant|") + sequence.message})
            << sequence.clicks.join(", ").toStdString();
        EXPECT_TRUE(dialog->isVisible());
        EXPECT_FALSE(std::filesystem::exists(home.file("Job.ttp")));
    }
    // A replacement alone finds nothing; the large box alone is enough.
    reopen();
    prompts.asked.clear();
    click("Check4");
    type("Text2", "x");
    click("ok");
    EXPECT_EQ(prompts.asked.size(), 1);
    QTest::keyClicks(control("Text7"), "a");
    click("ok");
    EXPECT_EQ(prompts.asked.size(), 1);
    EXPECT_EQ(dialog->result(), QDialog::Accepted);
}

TEST_F(EditorSettings, StepsAreBuiltByTheOperatorButtons) {
    click("Check3");
    EXPECT_EQ(control<QAbstractButton>("Command_cal(2)")->text(), "\u00d7");
    EXPECT_EQ(control("Command_cal(1)")->toolTip(), "subtration");
    click("Command_cal(0)");
    EXPECT_EQ(prompts.asked,
              QStringList{"information|Morlevant|Please input a number in the textbox"});
    type("Text_cal(1)", "5");
    type("Text_cal(3)", "2");
    type("Text_cal(6)", "1.5.2");
    clickAll({"Command_cal(0)", "Command_cal(2)", "Command_cal(2)", "Command_cal(5)"});
    EXPECT_EQ(text("Text_cal(7)"), "+5,*2,*2,%1.5.2,");
    EXPECT_EQ(text("Text_cal(3)"), "2"); // the operand stays for the next click
    control("Text_cal(7)")->setFocus();
    QTest::keyClick(control("Text_cal(7)"), Qt::Key_End);
    QTest::keyClick(control("Text_cal(7)"), Qt::Key_Backspace);
    EXPECT_EQ(text("Text_cal(7)"), "+5,*2,*2,%1.5.2");
}

TEST_F(EditorSettings, CalculatePageWritesAllThirtyOneLines) {
    click("Check3");
    type("Text_cal(0)", "2");
    type("Text_cal(1)", "5");
    click("Command_cal(0)");
    click("ok");
    EXPECT_EQ(dialog->result(), QDialog::Accepted);
    EXPECT_EQ(written(), lines({"1",
                                "",
                                "",
                                "0",
                                "3",
                                "02",
                                "Left",
                                "No",
                                "No",
                                "+5,",
                                "",
                                "",
                                "",
                                "",
                                "",
                                "",
                                "",
                                "",
                                "0",
                                "22/11/2026",
                                "",
                                "",
                                "",
                                "",
                                "",
                                "0",
                                "",
                                "",
                                "divided file(*).txt",
                                "00001",
                                "99999"}));
}

TEST_F(EditorSettings, FindAndReplaceKeepsLineBreaksOfTheLargeBoxes) {
    click("Option1(1)");
    type("Text_column", "3-8");
    click("Check2");
    click("Check4");
    type("Text1", "cat");
    type("Text2", "dog");
    control<QPlainTextEdit>("Text7")->setPlainText("a\nb");
    click("ok");
    EXPECT_EQ(written(), lines({"2",     "",     "3-8",        "1", "4",   "0",
                                "Left",  "No",   "No",         "",  "cat", "dog",
                                "",      "",     "",           "",  "a",   "b",
                                "",      "0",    "22/11/2026", "",  "",    "",
                                "",      "",     "0",          "",  "",    "divided file(*).txt",
                                "00001", "99999"}));
}

TEST_F(EditorSettings, InsertAndDividePagesWriteTheirActionCodes) {
    const struct {
        QStringList clicks;
        std::pair<const char*, const char*> typed;
        std::string expected;
    } cases[] = {
        {{"Option1(1)", "Check5", "Check_id(5)"},
         {"Text_id(3)", "[0-9]+"},
         lines({"1",
                "",
                "",
                "0",
                "5",
                "0",
                "Left",
                "No",
                "No",
                "",
                "",
                "",
                "",
                "",
                "",
                "",
                "",
                "",
                "6",
                "22/11/2026",
                "",
                "",
                "",
                "[0-9]+",
                "",
                "0",
                "",
                "",
                "divided file(*).txt",
                "00001",
                "99999"})},
        {{"Check6", "Check_dm(0)"},
         {"Text_dm(0)", "100"},
         lines({"1",
                "",
                "",
                "0",
                "6",
                "0",
                "Left",
                "No",
                "No",
                "",
                "",
                "",
                "",
                "",
                "",
                "",
                "",
                "",
                "0",
                "22/11/2026",
                "",
                "",
                "",
                "",
                "",
                "1",
                "100",
                "",
                "divided file(*).txt",
                "00001",
                "99999"})},
    };
    for (const auto& page : cases) {
        reopen();
        clickAll(page.clicks);
        type(page.typed.first, page.typed.second);
        click("ok");
        EXPECT_EQ(written(), page.expected) << page.clicks.join(", ").toStdString();
    }
}

TEST_F(EditorSettings, CancelWritesNothing) {
    click("Check4");
    type("Text1", "x");
    click("cancel");
    EXPECT_EQ(dialog->result(), QDialog::Rejected);
    EXPECT_FALSE(std::filesystem::exists(home.file("Job.ttp")));
}

TEST_F(EditorSettings, AnUnwritableSettingsFileIsReportedAndTheEditorStaysOpen) {
    std::filesystem::create_directory(home.file("Job.ttp"));
    click("Check4");
    type("Text1", "x");
    click("ok");
    ASSERT_EQ(prompts.asked.size(), 1);
    EXPECT_TRUE(prompts.asked[0].startsWith("error|Morlevant|Cannot write the task settings file"));
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_EQ(text("Text1"), "x");
}

TEST_F(EditorSettings, TemplateLibraryAddsSamplesOnEveryOpeningAndNeverCrashes) {
    auto* library = control<QTreeWidget>("list_temp");
    auto* selected = control<QTreeWidget>("list_select");
    EXPECT_FALSE(control("frame_temp")->isVisible());
    click("Opent");
    click("Opent");
    EXPECT_TRUE(control("frame_temp")->isVisible());
    ASSERT_EQ(library->topLevelItemCount(), 6);
    EXPECT_EQ(library->topLevelItem(3)->text(0), "hello every one");

    library->setCurrentItem(library->topLevelItem(2));
    click("cmd_add");
    ASSERT_EQ(selected->topLevelItemCount(), 1);
    EXPECT_EQ(selected->topLevelItem(0)->text(1), "reverse");
    click("cmd_delete");
    EXPECT_EQ(library->topLevelItemCount(), 5);

    selected->setCurrentItem(nullptr);
    click("cmd_delete1");
    EXPECT_EQ(prompts.asked.size(), 1);
    EXPECT_EQ(selected->topLevelItemCount(), 1);
    clickAll({"cmd_apply", "apply"});
    EXPECT_EQ(selected->topLevelItemCount(), 1);
    EXPECT_FALSE(std::filesystem::exists(home.file("Job.ttp")));
}

TEST_F(EditorSettings, FilterTemplatesSupplyThePattern) {
    auto* list = control<QTreeWidget>("ListView_id");
    ASSERT_EQ(list->topLevelItemCount(), 12);
    EXPECT_EQ(list->topLevelItem(10)->text(0), "Web site");
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

} // namespace
} // namespace morlevant
