// The editor as the user sees it. With MORLEVANT_SCREENSHOT_DIR set, each tab is saved there as
// a picture (taken so under a virtual X display, also with QT_SCALE_FACTOR=2).
#include "tests/editor/EditorFixture.h"

#include <QImage>
#include <QScreen>

namespace morlevant {
namespace {

using EditorPicture = testing::EditorFixture;

TEST_F(EditorPicture, EveryTabFitsASmallScreen) {
    // Its own size fits a 1280 x 800 screen with room for the window frame.
    const QSize needed = dialog->sizeHint();
    EXPECT_LE(needed.width(), 1200);
    EXPECT_LE(needed.height(), 720);

    const QString folder = qEnvironmentVariable("MORLEVANT_SCREENSHOT_DIR");
    click("Option1(1)");
    for (int i = 0; i < tabs()->count(); ++i) {
        tabs()->setCurrentIndex(i);
        if (i > 0) // each operation tab as it looks when chosen
            click(QStringLiteral("Check%1").arg(i + 2));
        QApplication::processEvents();
        const QImage picture = dialog->grab().toImage();
        if (!folder.isEmpty()) {
            EXPECT_TRUE(picture.save(folder + QStringLiteral("/editor-%1.png").arg(i)));
        }
        if (i > 0)
            click(QStringLiteral("Check%1").arg(i + 2));
    }
    click("Opent");
    QApplication::processEvents();
    if (!folder.isEmpty()) {
        EXPECT_TRUE(dialog->grab().save(folder + QStringLiteral("/editor-templates.png")));
    }
}

} // namespace
} // namespace morlevant
