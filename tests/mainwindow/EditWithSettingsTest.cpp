// "Edit Task opens with the task's settings" (option menu): off, "&Edit Task" empties the
// settings as it always has; on, the editor shows them and "cancel" leaves the task as it was.
#include "tests/mainwindow/WindowFixture.h"

#include <QCheckBox>

namespace morlevant {
namespace {

class EditWithSettings : public testing::WindowFixture {
protected:
    // The start-up task with one file, edited once to replace "cat" with "dog".
    void SetUp() override {
        start();
        first = showFile("a", "in/a.txt", "cat\n");
        select({"My Batch Task"});
        editorScript = [](const testing::EditorDriver& editor) {
            editor.perform({"Check4", "Text1=cat", "Text2=dog", "ok"});
        };
        menus().mnuEditCap->trigger();
        settingsFile = testing::readBytes(home.file("task/My Batch Task.ttp"));
        listFile = testing::readBytes(home.file("task/My Batch Task.edt"));
        ASSERT_EQ(settingsFile.substr(0, 5), "1\r\n\r\n");
    }
    std::string settings() const { return testing::readBytes(home.file("task/My Batch Task.ttp")); }
    std::string fileList() const { return testing::readBytes(home.file("task/My Batch Task.edt")); }

    QString first;
    std::string settingsFile;
    std::string listFile;
};

TEST_F(EditWithSettings, OffTheEditorOpensOnTheDefaultsAndCancelLeavesTheSettingsEmpty) {
    EXPECT_FALSE(menus().mnuEditWithSettings->isChecked());
    QString shown;
    editorScript = [&shown](const testing::EditorDriver& editor) {
        shown = editor.text("Text1");
        editor.click("cancel");
    };
    menus().mnuEditCap->trigger();
    EXPECT_EQ(shown, "");
    EXPECT_EQ(settings(), "");
}

TEST_F(EditWithSettings, OnTheEditorShowsTheSettingsAndCancelLeavesTheTaskAsItWas) {
    menus().mnuEditWithSettings->trigger();
    // A file imported since the last edit reaches the list only with the next confirmed edit.
    window->model().appendNode(node({"My Batch Task"}), "b", makeFile("in/b.txt", "b\n"),
                               treeImage::text);
    QString shown;
    bool chosen = false;
    editorScript = [&](const testing::EditorDriver& editor) {
        shown = editor.text("Text1") + "/" + editor.text("Text2");
        chosen = editor.control<QCheckBox>("Check4")->isChecked();
        editor.click("cancel");
    };
    menus().mnuEditCap->trigger();
    EXPECT_EQ(shown, "cat/dog");
    EXPECT_TRUE(chosen);
    EXPECT_EQ(settings(), settingsFile);
    EXPECT_EQ(fileList(), listFile);
    EXPECT_TRUE(menus().RunTask->isEnabled());

    // "ok" without a change writes the same settings, and now the whole list.
    editorScript = [](const testing::EditorDriver& editor) { editor.click("ok"); };
    menus().mnuEditCap->trigger();
    EXPECT_EQ(settings(), settingsFile);
    EXPECT_EQ(fileList(), listFile + homeFile("in/b.txt").toStdString() + "\r\n");
}

TEST_F(EditWithSettings, OnSettingsThatAreNotCompleteShowTheDefaultsAndStayAsTheyAre) {
    menus().mnuEditWithSettings->trigger();
    testing::writeBytes(home.file("task/My Batch Task.ttp"), "1\r\n\r\n");
    QString shown = "?";
    editorScript = [&shown](const testing::EditorDriver& editor) {
        shown = editor.text("Text1");
        editor.click("cancel");
    };
    menus().mnuEditCap->trigger();
    EXPECT_EQ(shown, "");
    EXPECT_EQ(settings(), "1\r\n\r\n");
}

TEST_F(EditWithSettings, TheOptionIsRememberedInTheSettingsStore) {
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
