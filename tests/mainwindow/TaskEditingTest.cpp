// A task made, edited through the task editor and run from the window, as a user does it. What
// each page writes is pinned by the editor's and the runner's tests; dividing and merging are
// run from the window by WindowRun.
#include "tests/mainwindow/WindowFixture.h"

namespace morlevant {
namespace {

using TaskEditing = testing::WindowFixture;

TEST_F(TaskEditing, APageEditedInTheEditorRunsToItsResult) {
    start();
    const QString file = makeFile("in/calculate.txt", "10\nx\n");
    menus().mnuAddPoint->trigger();
    window->selectedNode()->setText("calculate");
    prompts.fileNames.enqueue({file});
    menus().mnuAddfile->trigger();
    select({"calculate"});
    editorScript = [](const testing::EditorDriver& editor) {
        editor.perform({"Check3", "Text_cal(1)=5", "Command_cal(0)"});
        editor.click("ok");
    };
    menus().mnuEditCap->trigger();
    ASSERT_EQ(toolbar().image(ToolbarButton::runTask), toolbarImage::runTask);
    click(ToolbarButton::runTask);
    EXPECT_EQ(prompts.messages().last(), "information|Morlevant|Vell down!");
    // A line without a number counts as 0.
    EXPECT_EQ(testing::readBytes((file + ".modify").toStdString()), "15\r\n5\r\n");
}

} // namespace
} // namespace morlevant
