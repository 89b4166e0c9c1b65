#pragma once

#include "engine/TaskRunner.h"
#include "engine/run/RunProgress.h"

#include <QObject>
#include <QString>
#include <QTimer>
#include <atomic>
#include <functional>
#include <thread>

class QProgressBar;

namespace morlevant {

class MainStatusBar;
class Prompts;

// One run of a task on a thread of its own, so that the window keeps painting while it lasts.
// The progress bar advances with the bytes read and the status bar names the file being worked
// ("3 of 12: report.txt"). The run's messages are shown by the window's thread, in order, the
// run waiting for each; it ends with "Vell down!", one error message, or, when stopped, how far
// it came. Then ended() is emitted.
class BackgroundRun final : public QObject {
    Q_OBJECT

public:
    using FolderOpener = std::function<void(const QString& folder)>;

    BackgroundRun(RunRequest request, Prompts& prompts, FolderOpener openFolder, QProgressBar& bar,
                  MainStatusBar& status);
    // Stops the run and waits for its thread; messages it still wanted to show are not shown.
    ~BackgroundRun() override;
    BackgroundRun(const BackgroundRun&) = delete;
    BackgroundRun& operator=(const BackgroundRun&) = delete;

    // Asks the run to stop at its next block. `quietly`: nothing is shown at its end (the window
    // is closing).
    void stop(bool quietly = false);
    bool hasEnded() const { return ended_; }

signals:
    void ended();

private:
    enum class Outcome { Done, Failed, Stopped };
    void work(RunCallbacks callbacks);
    void showMessage(const std::string& text);
    void showProgress();
    void conclude(Outcome outcome, const QString& text);

    RunRequest request_;
    Prompts& prompts_;
    FolderOpener openFolder_;
    QProgressBar& bar_;
    MainStatusBar& status_;
    QString statusBefore_; // the status bar's file, given back at the end
    RunProgress progress_;
    QTimer poll_;
    int stepsPerFile_ = 1; // of the bar
    std::atomic<bool> stop_{false};
    std::atomic<bool> abandoned_{false}; // the window no longer waits for the run's messages
    bool quiet_ = false;
    bool ended_ = false;
    std::thread thread_;
};

} // namespace morlevant
