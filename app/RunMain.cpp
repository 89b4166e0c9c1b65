// morlevant-run: hands the command line and the program's surroundings to RunCommand.
#include "app/ProgramSurroundingsFromQt.h"
#include "app/RunCommand.h"

#include <QCoreApplication>
#include <QDir>
#include <QProcess>
#include <QThread>
#include <algorithm>
#include <atomic>
#include <csignal>
#include <iostream>

#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

namespace {

// Ctrl+C, SIGTERM and SIGHUP ask the run to stop at its next block, so that it can drop the result
// it was writing; a second one ends the program at once.
std::atomic<bool> stopRequested{false};
volatile std::sig_atomic_t stopSignal = 0;

extern "C" void requestStop(int signal) {
    stopSignal = signal;
    stopRequested.store(true);
    std::signal(signal, SIG_DFL);
}

// A detached file-manager process rather than QDesktopServices, which needs a GUI application
// and a display that a command-line run may not have.
void openFolder(const std::string& folder) {
    const QString path = QDir::toNativeSeparators(QString::fromStdString(folder));
#ifdef _WIN32
    const QString fileManager = QStringLiteral("explorer");
#else
    const QString fileManager = QStringLiteral("xdg-open");
#endif
    if (!QProcess::startDetached(fileManager, {path}))
        std::cerr << "No file manager on this desktop opens " << folder << ".\n";
}

bool errorIsTerminal() {
#ifdef _WIN32
    return _isatty(2) != 0;
#else
    return isatty(2) != 0;
#endif
}

} // namespace

int main(int argc, char* argv[]) {
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("Morlevant"));

    std::vector<std::string> arguments;
    const QStringList all = QCoreApplication::arguments();
    for (qsizetype i = 1; i < all.size(); ++i)
        arguments.push_back(all[i].toStdString());

    static_assert(std::atomic<bool>::is_always_lock_free, "set from a signal handler");
    std::signal(SIGINT, requestStop);
    std::signal(SIGTERM, requestStop);
#ifdef SIGHUP
    std::signal(SIGHUP, requestStop); // the terminal was closed
#endif
    morlevant::RunEnvironment environment{morlevant::programSurroundingsFromQt(), openFolder,
                                          &stopRequested, [] { return int{stopSignal}; }};
    environment.in = &std::cin;
    environment.defaultJobs = std::max(1, QThread::idealThreadCount());
    morlevant::RunCommand command(std::move(environment), std::cout, std::cerr, errorIsTerminal());
    return command.run(arguments);
}
