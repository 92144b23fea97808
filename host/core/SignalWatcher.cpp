#include "SignalWatcher.h"

#include <QLoggingCategory>
#include <QSocketNotifier>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace {

Q_LOGGING_CATEGORY(lcHost, "netinfo.host")

constexpr std::array<int, 3> kSignals = { SIGTERM, SIGINT, SIGHUP };
// The self-pipe: the handler may only write(), so the event loop does the rest.
int g_pipe[2] = { -1, -1 };

extern "C" void onSignal(int signalNumber)
{
    const int saved = errno;
    const unsigned char byte = static_cast<unsigned char>(signalNumber);
    // A full pipe already holds a wake-up; losing this byte loses nothing.
    [[maybe_unused]] const ssize_t written = ::write(g_pipe[1], &byte, 1);
    errno = saved;
}

} // namespace

SignalWatcher::SignalWatcher(QObject* parent)
    : QObject(parent)
{
    if (g_pipe[0] >= 0) {
        qCWarning(lcHost, "SignalWatcher: another watcher already handles the stop signals");
        return;
    }
    if (::pipe2(g_pipe, O_CLOEXEC | O_NONBLOCK) != 0) {
        qCWarning(lcHost,
            "SignalWatcher: cannot create a pipe (%s); stop signals end the program without "
            "saving",
            strerror(errno));
        g_pipe[0] = g_pipe[1] = -1;
        return;
    }
    m_notifier = new QSocketNotifier(g_pipe[0], QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, &SignalWatcher::drain);
    struct sigaction action = {};
    action.sa_handler = onSignal;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    for (int signalNumber : kSignals)
        ::sigaction(signalNumber, &action, nullptr);
}

SignalWatcher::~SignalWatcher()
{
    if (!m_notifier)
        return;
    for (int signalNumber : kSignals)
        ::signal(signalNumber, SIG_DFL);
    delete m_notifier;
    ::close(g_pipe[0]);
    ::close(g_pipe[1]);
    g_pipe[0] = g_pipe[1] = -1;
}

QString SignalWatcher::name(int signalNumber)
{
    switch (signalNumber) {
    case SIGTERM:
        return QStringLiteral("SIGTERM");
    case SIGINT:
        return QStringLiteral("SIGINT");
    case SIGHUP:
        return QStringLiteral("SIGHUP");
    default:
        return QStringLiteral("signal %1").arg(signalNumber);
    }
}

void SignalWatcher::drain()
{
    unsigned char bytes[16];
    ssize_t count;
    while ((count = ::read(g_pipe[0], bytes, sizeof bytes)) > 0) {
        for (ssize_t i = 0; i < count; ++i)
            emit received(bytes[i]);
    }
}
