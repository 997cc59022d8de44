#include "platform/qt/QtEndRequests.h"

#include <QCoreApplication>
#include <QEvent>
#include <QGuiApplication>
#include <QSessionManager>
#include <QSocketNotifier>

namespace nib {

QtEndRequests::QtEndRequests(int signalled, std::function<void()> keep, std::function<void()> end)
    : end_(std::move(end))
{
    if (signalled >= 0) {
        auto* notifier = new QSocketNotifier(signalled, QSocketNotifier::Read, this);
        connect(notifier, &QSocketNotifier::activated, this, [this, notifier] {
            notifier->setEnabled(false);
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
