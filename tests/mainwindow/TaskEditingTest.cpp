// A task made, edited through the task editor and run from the window, as a user does it: the
// pages that work line by line, over the whole text (dividing and merging are run from the
// window by WindowRun).
#include "mainwindow/MainStatusBar.h"
#include "tests/mainwindow/WindowFixture.h"

#include <QProgressBar>

namespace morlevant {
namespace {

using TaskEditing = testing::WindowFixture;

TEST_F(TaskEditing, EachPageEditedInTheEditorRunsToItsResult) {
    const struct {
        const char* name;
        QStringList steps; // in the editor
        const char* expected;
    } cases[] = {
        // A line without a number counts as 0.
        {"calculate", {"Check3", "Text_cal(1)=5", "Command_cal(0)"}, "15\r\n5\r\n"},
        {"replace", {"Check4", "Text1=x", "Text2=y"}, "10\r\ny\r\n"},
        {"filter", {"Check5", "Check_id(4)", "Text_id(3)=[0-9]"}, "\r\nx\r\n"},
    };
    start();
    for (const auto& task : cases) {
        const QString file = makeFile(std::string("in/") + task.name + ".txt", "10\nx\n");
        menus().mnuAddPoint->trigger();
        window->selectedNode()->setText(task.name);
        prompts.fileNames.enqueue({file});
        menus().mnuAddfile->trigger();
        select({task.name});
        editorScript = [&task](const testing::EditorDriver& editor) {
            editor.perform(task.steps);
            editor.click("ok");
        };
        menus().mnuEditCap->trigger();
        ASSERT_EQ(toolbar().image(ToolbarButton::runTask), toolbarImage::runTask) << task.name;
        click(ToolbarButton::runTask);
        EXPECT_EQ(prompts.messages().last(), "information|Morlevant|Vell down!") << task.name;
        EXPECT_EQ(testing::readBytes((file + ".modify").toStdString()), task.expected) << task.name;
        EXPECT_EQ(window->sbMain()->ProgressBar1()->value(), 0);
    }
}

} // namespace
} // namespace morlevant
