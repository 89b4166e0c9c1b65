#include "workspace/CommandAvailability.h"

#include "taskdef/TaskFiles.h"
#include "taskdef/TaskPageSettings.h"
#include "tests/support/TempDir.h"
#include "tests/support/TreeText.h"

#include <gtest/gtest.h>

namespace morlevant {
namespace {

using testing::buildTree;
using testing::find;

TEST(CommandAvailability, FollowsTheKindOfNode) {
    testing::TempDir home;
    const QString folder = QString::fromStdString(home.path().string() + "/");
    std::filesystem::create_directories(home.path() / "task");
    TaskPageSettings complete;
    writeTaskPageSettings(taskSettingsPath(folder.toStdString(), "Edited"), complete);
    testing::writeBytes(taskSettingsPath(folder.toStdString(), "Emptied"), "");

    TaskTreeModel model;
    buildTree(model, "Empty Emptied[e.txt] Edited[d.txt[sub.txt]] Group[Inner[i.txt]]");

    struct Case {
        QStringList node;
        bool addFileInSub;
        CommandAvailability expected;
    };
    //            import add   edit   run    delete sort   open
    const Case cases[] = {
        {{}, true, {true, true, false, false, false, false, false}},
        {{"Empty"}, true, {true, true, false, false, true, false, false}},
        {{"Emptied"}, true, {true, true, true, false, true, false, false}},
        {{"Edited"}, true, {true, true, true, true, true, false, false}},
        {{"Emptied", "e.txt"}, true, {false, false, false, false, true, true, true}},
        {{"Emptied", "e.txt"}, false, {true, false, false, false, true, true, true}},
        {{"Edited", "d.txt"}, false, {true, false, false, false, true, true, true}},
        {{"Group", "Inner"}, true, {true, true, true, false, true, true, false}},
    };
    for (const Case& c : cases) {
        const QStandardItem* node = c.node.isEmpty() ? nullptr : find(model, c.node);
        EXPECT_EQ(CommandAvailability::forNode(node, c.addFileInSub, folder), c.expected)
            << c.node.join('/').toStdString() << " sub " << c.addFileInSub;
    }
}

} // namespace
} // namespace morlevant
