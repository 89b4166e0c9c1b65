// Loads a large text file into the viewer as a click on its node does and reports how long
// that took and how much memory it needed at its peak, against the file's size.
//
//     viewer_load_bench [megabytes] [--one-line]
//
// The file has lines of 20 to 100 characters, or with --one-line no line end at all; 50 MB
// unless told. Runs offscreen unless a display is chosen.
#include "mainwindow/viewer/BlockLoading.h"
#include "mainwindow/viewer/TextViewer.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTextDocument>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

namespace {

// A field of /proc/self/status in kilobytes ("VmRSS", "VmHWM"); 0 where there is none.
long statusKilobytes(const char* field) {
    std::ifstream status("/proc/self/status");
    std::string line;
    const std::string prefix = std::string(field) + ":";
    while (std::getline(status, line))
        if (line.rfind(prefix, 0) == 0)
            return std::atol(line.c_str() + prefix.size());
    return 0;
}

// Lines of 20 to 100 characters, mostly ASCII with some accented letters, ended by CR LF, or
// all of it on one line.
void writeTextFile(const QString& path, qint64 bytes, bool oneLine) {
    std::ofstream out(path.toStdString(), std::ios::binary);
    const std::string words[] = {"alpha ", "beta ", "gamma ", "délta ", "42.5 ", "x=17; ", "über "};
    qint64 written = 0;
    for (unsigned line = 1; written < bytes; ++line) {
        std::string text = std::to_string(line) + ": ";
        for (unsigned word = line % 7; text.size() < 20 + line % 80; word = (word * 3 + 1) % 7)
            text += words[word];
        text += oneLine ? " " : "\r\n";
        out << text;
        written += static_cast<qint64>(text.size());
    }
}

} // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const qint64 megabytes = argc > 1 ? std::atoll(argv[1]) : 50;
    const bool oneLine = argc > 2 && std::string(argv[2]) == "--one-line";

    QTemporaryDir folder;
    const QString path = folder.filePath("large.txt");
    writeTextFile(path, megabytes << 20, oneLine);
    const qint64 size = QFile(path).size();

    morlevant::TextViewer viewer;
    viewer.resize(900, 700);
    viewer.show();
    QApplication::processEvents();
    const long before = statusKilobytes("VmRSS");

    QElapsedTimer timer;
    timer.start();
    const auto failure = viewer.showFile(path, path);
    viewer.repaint(); // the first screen of text is laid out and drawn
    QApplication::processEvents();
    const qint64 elapsed = timer.elapsed();
    if (failure) {
        std::fprintf(stderr, "%s\n", qPrintable(*failure));
        return 1;
    }
    const double peak = (statusKilobytes("VmHWM") - before) * 1024.0;
    const QTextDocument& document = *viewer.document();
    const auto lines = morlevant::lineColumnAt(document, document.characterCount() - 1).line + 1;
    std::printf("file: %.1f MB, %lld lines (scroll bar up to %d)\n", size / 1048576.0,
                static_cast<long long>(lines), viewer.verticalScrollBar()->maximum());
    std::printf("load and first paint: %lld ms\n", static_cast<long long>(elapsed));
    std::printf("peak memory added: %.1f MB (%.2f times the file)\n", peak / 1048576.0,
                peak / static_cast<double>(size));
    return 0;
}
