// morlevant-icons: writes the program's icon as PNG files in the hicolor theme's layout
// (OUT/NxN/apps/morlevant.png), rendered from the same drawing the window uses.
#include "mainwindow/icons/ToolbarImageList.h"

#include <QDir>
#include <QGuiApplication>
#include <QIcon>
#include <QPixmap>
#include <cstdio>

int main(int argc, char** argv) {
    // Rendering needs no screen: the build may run without one.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    if (argc != 2) {
        std::fputs("Usage: morlevant-icons OUT\n", stderr);
        return 2;
    }
    const QIcon icon = morlevant::programIcon();
    for (const int size : {16, 22, 24, 32, 48, 64, 128, 256}) {
        const QString folder =
            QStringLiteral("%1/%2x%2/apps").arg(QString::fromLocal8Bit(argv[1])).arg(size);
        if (!QDir().mkpath(folder) ||
            !icon.pixmap(QSize(size, size)).save(folder + QStringLiteral("/morlevant.png"))) {
            std::fprintf(stderr, "Cannot write the %dx%d icon in %s\n", size, size, argv[1]);
            return 1;
        }
    }
    return 0;
}
