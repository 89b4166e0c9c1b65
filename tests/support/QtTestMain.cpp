// Test main for suites that need a running Qt application (models, settings, widgets). Tests
// never need a display: without a platform chosen they run offscreen, also while CTest lists
// them at build time.
#include <QApplication>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QApplication::setApplicationName("Morlevant");
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
