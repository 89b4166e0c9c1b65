#include "mainwindow/TaskTreeView.h"
#include "mainwindow/TextViewer.h"
#include "tests/mainwindow/WindowFixture.h"

#include <QImage>
#include <QProcess>

namespace morlevant {
namespace {

using Screenshot = testing::WindowFixture;

// The example workspace as a user first sees it, all tasks expanded and a file open in the
// viewer. With MORLEVANT_SCREENSHOT set to a file name the picture is saved there (the README's
// picture is taken so, under a virtual X display).
TEST_F(Screenshot, ExampleWorkspaceShowsTasksFilesAndViewer) {
    QProcess prepare;
    prepare.start("bash", {MORLEVANT_EXAMPLES "/prepare-home.sh", homeFile("")});
    ASSERT_TRUE(prepare.waitForFinished(30000));
    ASSERT_EQ(prepare.exitCode(), 0) << prepare.readAllStandardError().toStdString();
    start(homeFile("Example.tsk"));
    window->showNormal();
    window->resize(1000, 560);
    window->tvMain()->expandAll();
    select({"Raise Prices", "prices"});
    const QImage picture = window->grab().toImage(); // paints every widget, also without a file
    EXPECT_FALSE(window->txtMain()->toPlainText().isEmpty());

    const QString target = qEnvironmentVariable("MORLEVANT_SCREENSHOT");
    if (!target.isEmpty()) {
        EXPECT_TRUE(picture.save(target));
    }
}

} // namespace
} // namespace morlevant
