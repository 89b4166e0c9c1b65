// The editor opened on a task's settings shows every control as the settings file says, so that
// "ok" without a change writes the same file again.
#include "taskdef/TaskPageSettings.h"
#include "tests/editor/EditorFixture.h"
#include "tests/support/QStringPrinter.h"

#include <QComboBox>
#include <QPlainTextEdit>

namespace morlevant {
namespace {

using EditorShowsSettings = testing::EditorFixture;

TEST_F(EditorShowsSettings, EveryPageWrittenByTheEditorComesBackAsItWas) {
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

TEST_F(EditorShowsSettings, TheChosenPageAndActionDisableTheOthersAsAClickWould) {
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
    EXPECT_FALSE(tabs()->isTabEnabled(1));
    EXPECT_FALSE(tabs()->isTabEnabled(2));
    EXPECT_FALSE(tabs()->isTabEnabled(3));
    EXPECT_TRUE(tabs()->isTabEnabled(4));
    EXPECT_EQ(enabled({"Text_row", "Check2", "Check_dm(0)", "Check_dm(2)", "Check_dm(4)"}),
              "11010");
    EXPECT_EQ(text("Text_dm(2)"), "v29");
    EXPECT_EQ(control<QComboBox>("Combox_id(0)")->currentText(), "Friday 13");
    EXPECT_EQ(control<QPlainTextEdit>("Text8")->toPlainText(), "v18");
    // Unticking the page gives the other tabs back, as after a click.
    click("Check6");
    EXPECT_TRUE(tabs()->isTabEnabled(1));
}

} // namespace
} // namespace morlevant
