#include "platform/qt/QtEndRequests.h"

#include <QCoreApplication>
#include <QEvent>
#include <QGuiApplication>
#include <QSessionManager>

#include <sys/signalfd.h>
#include <unistd.h>

namespace nib {

EndSignals::EndSignals()
{
    for (int ignored : {SIGXFSZ, SIGPIPE}) std::signal(ignored, SIG_IGN);
    sigemptyset(&signals_);
    for (int number : {SIGTERM, SIGHUP, SIGINT}) sigaddset(&signals_, number);
    // Threads that are started later inherit this; what nohup ignores stays ignored.
    pthread_sigmask(SIG_BLOCK, &signals_, nullptr);
    file_ = Descriptor(signalfd(-1, &signals_, SFD_CLOEXEC | SFD_NONBLOCK));
    if (!file_) pthread_sigmask(SIG_UNBLOCK, &signals_, nullptr);
}

void EndSignals::Take()
{
    signalfd_siginfo which{};
    while (read(file_.Get(), &which, sizeof which) > 0) continue;
    pthread_sigmask(SIG_UNBLOCK, &signals_, nullptr);
}

QtEndRequests::QtEndRequests(EndSignals& caught, std::function<void()> keep, std::function<void()> end)
    : signals_(caught), end_(std::move(end))
{
    if (caught.Handle() >= 0) {
        notifier_.emplace(caught.Handle(), QSocketNotifier::Read);
        connect(&*notifier_, &QSocketNotifier::activated, this, [this] {
            notifier_->setEnabled(false);
            signals_.Take();
            end_();
        });
    }
    const auto keepAll = [keep = std::move(keep)](QSessionManager& session) {
        // Started anew by its user, not by the session: that would be an editor nobody asked for.
        session.setRestartHint(QSessionManager::RestartNever);
        keep();
    };
    // A session manager may ask for the one, the other, or both.
    connect(qGuiApp, &QGuiApplication::commitDataRequest, this, keepAll, Qt::DirectConnection);
    connect(qGuiApp, &QGuiApplication::saveStateRequest, this, keepAll, Qt::DirectConnection);
    qApp->installEventFilter(this);
}

/// The session's end comes as a wish to quit, which would ask about each changed document, and nobody answers. Our own
/// comes after the questions.
bool QtEndRequests::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != qApp || event->type() != QEvent::Quit) return false;
    end_();
    return true;
}

} // namespace nib
