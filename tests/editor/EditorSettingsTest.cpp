#include "tests/editor/EditorFixture.h"
#include "tests/support/QStringPrinter.h"

#include <QTreeWidget>
#include <map>

namespace morlevant {
namespace {

using EditorSettings = testing::EditorFixture;

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
        // A replacement alone finds nothing.
        {{"Check4", "Text2=x"}, "What string do you want to find"},
    };
    for (const auto& sequence : cases) {
        prompts.asked.clear();
        reopen();
        driver().perform(sequence.clicks);
        click("ok");
        EXPECT_EQ(prompts.asked, QStringList{QString("information|Morlevant|") + sequence.message})
            << sequence.clicks.join(", ").toStdString();
        EXPECT_TRUE(dialog->isVisible());
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
    const struct {
        QStringList steps;
        std::map<int, const char*> changed;
    } cases[] = {
        {{"Check3", "Text_cal(0)=2", "Text_cal(1)=5", "Command_cal(0)"},
         {{5, "3"}, {6, "02"}, {10, "+5,"}}},
        // Ranges taken out; a line break in the large boxes moves every later line down.
        {{"Option1(1)", "Text_column=3-8", "Check2", "Check4", "Text1=cat", "Text7=a\rb"},
         {{1, "2"}, {3, "3-8"}, {4, "1"}, {5, "4"}, {11, "cat"}, {17, "a\r\nb"}}},
        // "select by row and column" with both boxes blank is the whole text.
        {{"Option1(1)", "Check5", "Check_id(5)", "Text_id(3)=[0-9]+"},
         {{5, "5"}, {19, "6"}, {24, "[0-9]+"}}},
        {{"Check6", "Check_dm(0)", "Text_dm(0)=100"}, {{5, "6"}, {26, "1"}, {27, "100"}}},
    };
    for (const auto& page : cases) {
        reopen();
        driver().perform(page.steps);
        // Saving a line break is confirmed first (pinned by the editor's line-break test).
        if (page.steps.join(u',').contains("Text7"))
            prompts.answers.enqueue(Answer::Yes);
        click("ok");
        EXPECT_EQ(dialog->result(), QDialog::Accepted);
        EXPECT_EQ(written(), file(page.changed)) << page.steps.join(", ").toStdString();
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

} // namespace
} // namespace morlevant
