#include "TaskTreeView.h"
#include "TextViewer.h"
#include "ToolbarImageList.h"
#include "WindowFixture.h"

#include <QImage>
#include <QProcess>

namespace morlevant {
namespace {

// Whether an image has any pixel that is not fully transparent.
bool hasInk(const QImage& image) {
    const QImage argb = image.convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < argb.height(); ++y)
        for (int x = 0; x < argb.width(); ++x)
            if (qAlpha(argb.pixel(x, y)) > 0)
                return true;
    return false;
}

TEST(Icons, DrawAtEverySizeAndPixelRatio) {
    const ToolbarImageList images;
    for (const int image : {toolbarImage::newTask, toolbarImage::importFile,
                            toolbarImage::runTaskOff, toolbarImage::showHtml})
        for (const qreal ratio : {1.0, 2.0})
            for (const int side : {16, 24, 48}) {
                const QPixmap pixmap = images.icon(image).pixmap(QSize(side, side), ratio);
                EXPECT_EQ(pixmap.width(), qRound(side * ratio)) << image;
                EXPECT_TRUE(hasInk(pixmap.toImage())) << image << " at " << side;
            }
    EXPECT_TRUE(hasInk(programIcon().pixmap(64, 64).toImage()));
}

using Screenshot = testing::WindowFixture;

// The example workspace as a user first sees it, with a file open in the viewer. With
// MORLEVANT_SCREENSHOT set to a file name the picture is saved there (the README's picture is
// taken so, under a virtual X display).
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
    const QImage picture = window->grab().toImage();
    EXPECT_EQ(picture.width(), qRound(1000 * window->devicePixelRatioF()));
    EXPECT_TRUE(window->txtMain()->toPlainText().size() > 0);

    const QString target = qEnvironmentVariable("MORLEVANT_SCREENSHOT");
    if (!target.isEmpty()) {
        EXPECT_TRUE(picture.save(target));
    }
}

} // namespace
} // namespace morlevant
