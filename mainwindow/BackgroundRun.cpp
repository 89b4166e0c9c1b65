#include "mainwindow/BackgroundRun.h"

#include "engine/io/LineReader.h"
#include "mainwindow/MainStatusBar.h"
#include "platform/Prompts.h"

#include <QFileInfo>
#include <QProgressBar>
#include <algorithm>
#include <chrono>
#include <exception>
#include <future>
#include <limits>
#include <memory>

namespace morlevant {

namespace {

// Steps of the bar per file: enough to move with the bytes of a large one, and fewer for a run
// of millions of files, whose steps must stay within the bar's range.
int stepsPerFile(int files) {
    return std::clamp(std::numeric_limits<int>::max() / std::max(files, 1), 1, 1000);
}

} // namespace

BackgroundRun::BackgroundRun(RunRequest request, Prompts& prompts, FolderOpener openFolder,
                             QProgressBar& bar, MainStatusBar& status)
    : request_(std::move(request)), prompts_(prompts), openFolder_(std::move(openFolder)),
      bar_(bar), status_(status), statusBefore_(status.path()) {
    request_.stop = &stop_;
    request_.progress = &progress_;
    const int files = request_.fileCount.value_or(0);
    stepsPerFile_ = stepsPerFile(files);
    bar_.setRange(0, std::max(files, 1) * stepsPerFile_);
    bar_.setValue(0);
    connect(&poll_, &QTimer::timeout, this, &BackgroundRun::showProgress);
    poll_.start(100);

    RunCallbacks callbacks;
    callbacks.message = [this](const std::string& text) { showMessage(text); };
    callbacks.openFolder = [this](const std::string& folder) {
        QMetaObject::invokeMethod(
            this, [this, folder] { openFolder_(QString::fromStdString(folder)); },
            Qt::QueuedConnection);
    };
    thread_ = std::thread(&BackgroundRun::work, this, std::move(callbacks));
}

BackgroundRun::~BackgroundRun() {
    abandoned_ = true;
    stop_ = true;
    if (thread_.joinable())
        thread_.join();
}

void BackgroundRun::stop(bool quietly) {
    // Closing the window does not wait for a message to be seen: the run goes on to its stop.
    if (quietly) {
        quiet_ = true;
        abandoned_ = true;
    }
    stop_ = true;
}

void BackgroundRun::work(RunCallbacks callbacks) {
    Outcome outcome = Outcome::Done;
    QString text = QStringLiteral("Vell down!");
    try {
        RunTask(request_, callbacks);
    } catch (const RunStopped& stopped) {
        outcome = Outcome::Stopped;
        text = QStringLiteral("Stopped after %1 of %2 files").arg(stopped.done).arg(stopped.total);
    } catch (const std::exception& failure) {
        // A TaskError names the file and the cause; anything else is reported the same way.
        outcome = Outcome::Failed;
        text = QString::fromStdString(failure.what());
    } catch (...) {
        outcome = Outcome::Failed;
        text = QStringLiteral("The run failed for a reason it could not name");
    }
    QMetaObject::invokeMethod(
        this, [this, outcome, text] { conclude(outcome, text); }, Qt::QueuedConnection);
}

// On the run's thread: the window's thread shows the message, and the run goes on once it has
// been seen, as it would after an OK box of its own.
void BackgroundRun::showMessage(const std::string& text) {
    auto seen = std::make_shared<std::promise<void>>();
    std::future<void> done = seen->get_future();
    QMetaObject::invokeMethod(
        this,
        [this, seen, text] {
            if (!quiet_)
                prompts_.information(QString::fromStdString(text), promptTitle);
            seen->set_value();
        },
        Qt::QueuedConnection);
    while (done.wait_for(std::chrono::milliseconds(50)) != std::future_status::ready)
        if (abandoned_)
            return;
}

void BackgroundRun::showProgress() {
    const RunProgress::Snapshot now = progress_.snapshot();
    bar_.setValue(static_cast<int>(now.files * stepsPerFile_));
    if (now.working >= 0)
        status_.setPath(QStringLiteral("%1 of %2: %3")
                            .arg(now.working + 1)
                            .arg(now.total)
                            .arg(QFileInfo(QString::fromStdString(now.path)).fileName()));
}

void BackgroundRun::conclude(Outcome outcome, const QString& text) {
    thread_.join();
    poll_.stop();
    bar_.setValue(0);
    status_.setPath(statusBefore_);
    ended_ = true;
    if (!quiet_) {
        if (outcome == Outcome::Failed)
            prompts_.error(text, promptTitle);
        else
            prompts_.information(text, promptTitle);
    }
    emit ended();
}

} // namespace morlevant
