// What the window says about files it cannot use: each problem once, naming the file.
#include "taskdef/TaskFiles.h"
#include "taskdef/TaskPageSettings.h"
#include "tests/mainwindow/WindowFixture.h"

#include <QCloseEvent>

namespace morlevant {
namespace {

using HostileFiles = testing::WindowFixture;

TEST_F(HostileFiles, AWorkspaceThatIsAFolderIsReportedOnce) {
    std::filesystem::create_directories(home.path() / "dir.tsk");
    start(homeFile("dir.tsk"));
    ASSERT_EQ(prompts.messages().size(), 1) << prompts.messages().join("\n").toStdString();
    EXPECT_TRUE(prompts.messages().at(0).contains("dir.tsk"));

    prompts.asked.clear();
    prompts.fileNames.enqueue({homeFile("dir.tsk")});
    menus().mnuOpen->trigger();
    EXPECT_EQ(prompts.messages().size(), 1) << prompts.messages().join("\n").toStdString();
}

TEST_F(HostileFiles, ACloseRequestDuringARunWaitsForItsEnd) {
    start();
    window->show();
    window->model().appendNode(node({"My Batch Task"}), "a", makeFile("in/a.txt", "a\n"),
                               treeImage::text);
    TaskPageSettings settings;
    settings.rangeMode = "1";
    settings.takeRangesOut = "0";
    settings.operationPage = "4";
    settings.find1 = "a";
    std::filesystem::create_directories(home.path() / "task");
    writeTaskPageSettings(home.file("task/My Batch Task.ttp"), settings);
    writeTaskFileList(home.file("task/My Batch Task.edt"), {home.file("in/a.txt")});
    select({"My Batch Task", "a"});
    select({"My Batch Task"});
    // Delivered while the run repaints its progress bar.
    QCoreApplication::postEvent(window.get(), new QCloseEvent);
    menus().RunTask->trigger();
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(prompts.messages(), QStringList{"information|Morlevant|Vell down!"});
}

} // namespace
} // namespace morlevant
