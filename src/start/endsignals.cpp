#include "start/endsignals.h"

#include "platform/process.h"

#include <QGuiApplication>
#include <QSessionManager>
#include <QSocketNotifier>
#include <csignal>
#include <sys/socket.h>
#include <unistd.h>

namespace {

// [0] is written by the handler, [1] read on the event loop.
int g_pair[2] = {-1, -1};

const int kSignals[] = {SIGTERM, SIGINT, SIGHUP};

extern "C" void onEndSignal(int number)
{
    const unsigned char byte = static_cast<unsigned char>(number);
    // Nothing to do when the pipe is full: an end is already on its way.
    [[maybe_unused]] const ssize_t written = ::write(g_pair[0], &byte, 1);
}

void setHandler(int number, void (*handler)(int))
{
    struct sigaction action = {};
    action.sa_handler = handler;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    sigaction(number, &action, nullptr);
}

} // namespace

EndSignals::EndSignals(QObject* parent) : QObject(parent)
{
    if (::socketpair(AF_UNIX, SOCK_STREAM, 0, g_pair) != 0) {
        return; // no pair: the signals keep their default, which ends the process
    }
    m_notifier = new QSocketNotifier(g_pair[1], QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, &EndSignals::signalArrived);
    for (int number : kSignals) {
        setHandler(number, onEndSignal);
    }
}

EndSignals::~EndSignals()
{
    if (!m_notifier) {
        return;
    }
    for (int number : kSignals) {
        setHandler(number, SIG_DFL);
    }
    delete m_notifier;
    ::close(g_pair[0]);
    ::close(g_pair[1]);
    g_pair[0] = g_pair[1] = -1;
}

void EndSignals::watchSession(QGuiApplication& app)
{
    // The session manager asks for the data to be saved before it ends the
    // session; the ordinary end is that save. Qt asks for a direct connection.
    connect(&app, &QGuiApplication::commitDataRequest, this, &EndSignals::sessionEnding, Qt::DirectConnection);
}

void EndSignals::signalArrived()
{
    unsigned char byte = 0;
    if (::read(g_pair[1], &byte, 1) != 1) {
        return;
    }
    request(byte == SIGHUP ? SessionEnding : Terminated);
}

void EndSignals::sessionEnding(QSessionManager&)
{
    request(SessionEnding);
}

void EndSignals::request(Reason reason)
{
    // A second signal while the first end waits (on a box nobody answers, say)
    // ends the run at once, as a second Ctrl+C is meant to.
    if (m_requested) {
        platform::End(0);
    }
    m_requested = true;
    emit endRequested(reason);
}
