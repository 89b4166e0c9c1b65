// "Edit Task opens with the task's settings" (option menu): off, "&Edit Task" empties the
// settings as it always has; on, the editor shows them and "cancel" leaves the task as it was.
#include "tests/mainwindow/WindowFixture.h"

namespace morlevant {
namespace {

class EditWithSettings : public testing::WindowFixture {
protected:
    // The start-up task with one file, edited once to replace "cat" with "dog".
    void SetUp() override {
        start();
        showFile("a", "in/a.txt", "cat\n");
        select({"My Batch Task"});
        editorScript = [](const testing::EditorDriver& editor) {
            editor.perform({"Check4", "Text1=cat", "Text2=dog", "ok"});
        };
        menus().mnuEditCap->trigger();
        settingsFile = settings();
        ASSERT_EQ(settingsFile.substr(0, 5), "1\r\n\r\n");
    }
    std::string settings() const { return testing::readBytes(home.file("task/My Batch Task.ttp")); }
    std::string fileList() const { return testing::readBytes(home.file("task/My Batch Task.edt")); }
    // Opens the editor and cancels it, giving what its two top boxes showed.
    QString shownOnCancel() {
        QString shown = "?";
        editorScript = [&shown](const testing::EditorDriver& editor) {
            shown = editor.text("Text1") + "/" + editor.text("Text2");
            editor.click("cancel");
        };
        menus().mnuEditCap->trigger();
        return shown;
    }

    std::string settingsFile;
};

TEST_F(EditWithSettings, OnlyWhenOnTheEditorShowsTheSettingsAndCancelKeepsThem) {
    menus().mnuEditWithSettings->trigger();
    // A file imported since the last edit reaches the list only with the next confirmed edit.
    window->model().appendNode(node({"My Batch Task"}), "b", makeFile("in/b.txt", "b\n"),
                               treeImage::text);
    const std::string listFile = fileList();
    EXPECT_EQ(shownOnCancel(), "cat/dog");
    EXPECT_EQ(settings(), settingsFile);
    EXPECT_EQ(fileList(), listFile);
    EXPECT_TRUE(menus().RunTask->isEnabled());

    // "ok" without a change writes the same settings, and now the whole list.
    editorScript = [](const testing::EditorDriver& editor) { editor.click("ok"); };
    menus().mnuEditCap->trigger();
    EXPECT_EQ(settings(), settingsFile);
    EXPECT_EQ(fileList(), listFile + homeFile("in/b.txt").toStdString() + "\r\n");

    // Settings that are not complete show the defaults and stay as they are.
    testing::writeBytes(home.file("task/My Batch Task.ttp"), "1\r\n\r\n");
    EXPECT_EQ(shownOnCancel(), "/");
    EXPECT_EQ(settings(), "1\r\n\r\n");

    // Off again, the editor opens on the defaults and a cancel leaves the settings empty.
    menus().mnuEditWithSettings->trigger();
    testing::writeBytes(home.file("task/My Batch Task.ttp"), settingsFile);
    EXPECT_EQ(shownOnCancel(), "/");
    EXPECT_EQ(settings(), "");
}

TEST_F(EditWithSettings, TheOptionIsRememberedInTheSettingsStore) {
    EXPECT_FALSE(menus().mnuEditWithSettings->isChecked());
    menus().mnuEditWithSettings->trigger();
    window->state().TaskDirty = false;
    window->close();
    EXPECT_EQ(store.value("EditWithSettings"), "True");
    window.reset();
    start();
    EXPECT_TRUE(menus().mnuEditWithSettings->isChecked());
}

} // namespace
} // namespace morlevant
