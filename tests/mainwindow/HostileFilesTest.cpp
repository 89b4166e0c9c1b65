// What the window says about files it cannot use: each problem once, naming the file.
#include "WindowFixture.h"

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

} // namespace
} // namespace morlevant
