// A task made, edited through the task editor and run from the window, as a user does it.
#include "WindowFixture.h"

namespace morlevant {
namespace {

using TaskEditing = testing::WindowFixture;

TEST_F(TaskEditing, EachPageEditedInTheEditorRunsToItsResult) {
    const struct {
        const char* name;
        std::function<void(const testing::EditorDriver&)> fill;
        const char* result; // below the program folder
        const char* expected;
    } cases[] = {
        {"calculate", // a line without a number counts as 0
         [](const auto& editor) {
             editor.clickAll({"Check3"});
             editor.type("Text_cal(1)", "5");
             editor.click("Command_cal(0)");
         },
         "in/calculate.txt.modify", "15\r\n5\r\n"},
        {"replace",
         [](const auto& editor) {
             editor.click("Check4");
             editor.type("Text1", "x");
             editor.type("Text2", "y");
         },
         "in/replace.txt.modify", "10\r\ny\r\n"},
        {"filter",
         [](const auto& editor) {
             editor.clickAll({"Check5", "Check_id(4)"});
             editor.type("Text_id(3)", "[0-9]");
         },
         "in/filter.txt.modify", "\r\nx\r\n"},
        {"rows out",
         [](const auto& editor) {
             editor.click("Option1(1)");
             editor.type("Text_row", "2-2");
             editor.clickAll({"Check2", "Check6", "Check_dm(2)"});
         },
         "in/rows out/divided file(00001).txt", "x\r\n"},
        {"merge",
         [](const auto& editor) {
             editor.clickAll({"Check6", "Check_dm(4)"});
         },
         "outcome/merge/merge-application-file.txt", "10\r\nx\r\n"},
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
            task.fill(editor);
            editor.click("ok");
        };
        menus().mnuEditCap->trigger();
        ASSERT_TRUE(menus().RunTask->isEnabled()) << task.name;
        menus().RunTask->trigger();
        EXPECT_EQ(prompts.messages().last(), "information|Morlevant|Vell down!") << task.name;
        EXPECT_EQ(testing::readBytes(home.file(task.result)), task.expected) << task.name;
    }
}

TEST_F(TaskEditing, CancelLeavesTheTaskToBeEditedAgain) {
    start();
    window->model().appendNode(node({"My Batch Task"}), "a", makeFile("in/a.txt", "a\n"), 11);
    select({"My Batch Task"});
    editorScript = [](const testing::EditorDriver& editor) {
        editor.click("Check4");
        editor.type("Text1", "a");
        editor.click("cancel");
    };
    menus().mnuEditCap->trigger();
    EXPECT_EQ(testing::readBytes(home.file("task/My Batch Task.ttp")), "");
    EXPECT_FALSE(menus().RunTask->isEnabled());
}

} // namespace
} // namespace morlevant
